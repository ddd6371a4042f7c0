// The entries of a section's dictionary as the library takes them.
#pragma once

#include "inicheck/initext.h"
#include "inicheck/numberedkeys.h"
#include "inicheck/parameters.h"

#include <optional>

namespace inicheck {

struct Signal
{
    const Entry* entry;
    QString name;      // as in the recording
    QString equipment; // left of the colon
    QString signal;    // right of it; empty without a colon
    QStringList fields;
    std::optional<Parameters> parameters; // of an entry that is sorted
};

/// Fields of a value, trimmed; at least one.
QStringList FieldsOf(const QString& value);

/// The entries of the family with a value, by rising number. An entry without a name is among them.
std::vector<Signal> SignalsOf(const Section& section, const Family& family);

} // namespace inicheck
