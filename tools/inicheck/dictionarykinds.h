// The three kinds of numbered keys of a sorting dictionary, and what their entries need.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/inilines.h"

#include <QStringList>

#include <vector>

namespace inicheck {

/// A parameter of an entry and its possible values.
struct EntryParameter
{
    const char* name;
    QStringList codes;
};

/// One kind of numbered key.
struct EntryKind
{
    const char* prefix;
    const char* maximum;                    ///< key of the highest number
    std::vector<EntryParameter> parameters; ///< that an entry needs
};

const EntryKind& AnalogEntries();
const EntryKind& DiscreteEntries();
const EntryKind& BayEntries();

/// The entries of a kind that the converter reads; there is a finding for each of the others.
std::vector<const IniLine*> ReadEntries(const IniLines& ini, const QString& section, const EntryKind& kind,
                                        Findings& findings);

/// A finding about a line; its text starts with the line's key.
Finding AboutEntry(const IniLine& line, Severity severity, const char* reason, const QString& text);

} // namespace inicheck
