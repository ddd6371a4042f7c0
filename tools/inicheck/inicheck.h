// Explains in words what the library makes of an ini file: what it refuses, takes from the defaults or drops.
// The rules are the library's own tables and parsers.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/initext.h"

#include <QStringList>

namespace inicheck {

/// The sections in use; both must be in the file. A file with one section has it as both.
struct Choice
{
    QString defaults;
    QStringList devices;
};

/// All findings, sorted by line.
Findings Check(const IniText& text, const Choice& choice);

/// A recording's channels, by name.
struct Channels
{
    QString file;
    QStringList analog;
    QStringList discrete;
};

/// What the recording lacks of the device's dictionary, and what the dictionary lacks of the recording.
Findings CheckRecording(const IniText& text, const QString& device, const Channels& channels);

} // namespace inicheck
