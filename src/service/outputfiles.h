// The output files of a conversion: temporary names, and the commit under the final ones.
//
// A piece is written under its final name with "tmp" appended. Only the commit touches final names, so a
// failed conversion leaves the files of an earlier one as they are; what it leaves itself is removed by the
// next conversion of the same output name.
#pragma once

#include <QString>

class ZuCmtrConverter;
class ZuCmtrDevParam;

namespace outputfiles {

/// Gives the device its temporary names and paths for outName in outDir, removes what an earlier failure left
/// under them, and names its CFG, DAT, HDR and INF files. False for a name that no file can have, one with a
/// NUL character; then nothing is removed.
bool Name(const QString& outName, const QString& outDir, ZuCmtrDevParam* dev);

/// Puts the written pieces in place: each under its final name, or joined in one CFF file. Failures are not
/// reported. A revision 1999 record also removes the HDR and INF files of an earlier one.
void Commit(ZuCmtrConverter& converter, ZuCmtrDevParam* dev);

} // namespace outputfiles
