// The parts of a check. Each adds its findings to the end of the list.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/initext.h"

namespace inicheck {

/// Lines, headings and characters, whatever they mean.
void CheckLines(const IniText& text, Findings& findings);

/// How a section is used.
struct Use
{
    bool asDefaults = false;
    bool asDevice = false;
};

/// Keys that nobody asks for.
void CheckKeyNames(const Section& section, Use use, Findings& findings);

/// Values of the device's keys in a section of defaults.
void CheckDefaults(const Section& section, Findings& findings);

/// Values of the device's keys in a device's section over those of its defaults.
void CheckDevice(const Section& section, const Section& defaults, Findings& findings);

/// The sorting dictionary and the bays of a device's section.
void CheckDictionary(const Section& section, Findings& findings);

/// Names and texts that cannot be written as they are. `inName` tells that the text becomes a field of the
/// CFG file or of the output's name.
void CheckText(const Section& section, const Entry& entry, const QString& text, bool inName,
               Findings& findings);

} // namespace inicheck
