// The output files of a conversion: temporary names, and the commit under the final ones.
//
// A piece is written under its final name with "tmp" behind it. Final names are touched by the commit alone,
// so a failed conversion leaves the files of an earlier one as they are; its own debris goes with the next
// conversion of the same output name.
#pragma once

#include <QString>

class ZuCmtrConverter;
class ZuCmtrDevParam;

namespace outputfiles {

/// Gives the device its temporary names and paths for outName in outDir, removes what an earlier failure left
/// under them, and names its CFG, DAT, HDR and INF files. False for a name that no file can have, one with a
/// NUL; then nothing is removed.
bool Name(const QString& outName, const QString& outDir, ZuCmtrDevParam* dev);

/// Puts the written pieces in place: each under its final name, or joined in one CFF file. Nothing is
/// reported; a revision 1999 record also clears away the HDR and INF files of an earlier one.
void Commit(ZuCmtrConverter& converter, ZuCmtrDevParam* dev);

} // namespace outputfiles
