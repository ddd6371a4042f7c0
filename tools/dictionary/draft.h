// The text of a first sorting dictionary for the channels of a recording.
#pragma once

#include "dictionary/guess.h"

#include <QStringList>

namespace dictionary {

/// The lines of a device's section: nAnMax, A01 ..., nDiMax, D01 ..., nBayMax, BAY01 ..., each guess with a
/// comment that says so. A name that the ini file cannot hold, or that would be read back differently,
/// becomes a comment that says why.
QStringList DictionaryLines(const std::vector<Signal>& analog, const std::vector<Signal>& discrete);

/// The lines of a first lines.ini: a section for each piece of equipment with currents that is a line by its
/// name, with keys that are yet to be filled in.
QStringList LineDataDraft(const std::vector<Signal>& analog);

/// The lines of a whole ini file: the section [Default] with every key, and the device's section with the
/// dictionary. Texts that only the operator knows are left to be filled in.
QStringList CompleteIni(const QString& section, const QString& identity, const QStringList& dictionary);

} // namespace dictionary
