// The three kinds of numbered keys of a sorting dictionary, and what their entries need.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/inilines.h"

#include <QStringList>

#include <vector>

namespace inicheck {

/// A parameter of an entry and what it may be.
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

/// The entries of a kind that the converter reads; the others become findings.
std::vector<const IniLine*> ReadEntries(const IniLines& ini, const QString& section, const EntryKind& kind,
                                        Findings& findings);

/// A finding about a line, which begins with its key.
Finding AboutEntry(const IniLine& line, Severity severity, const char* reason, const QString& text);

} // namespace inicheck
