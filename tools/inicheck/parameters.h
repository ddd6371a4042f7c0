// The parameter string of a dictionary entry.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace inicheck {

/// What the library takes out of a good parameter string; all but kilovolts are rows of its tables.
struct Parameters
{
    unsigned int voltageLevel = 0;
    unsigned int equipmentGroup = 0;
    unsigned int signalGroup = 0; // of analog entries
};

/// The library's own reading. Empty if it refuses the string.
std::optional<Parameters> Read(const QString& text, bool analog);

/// What is wrong with a string that the library refuses: each fault with the nearest that would be right.
QStringList FaultsOf(const QString& text, bool analog);

/// Words that nobody asks for, in any string.
QStringList UnknownWords(const QString& text, bool analog);

} // namespace inicheck
