// The parts of the check. Each adds its findings.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/inilines.h"

#include <QString>

namespace inicheck {

/// Lines that the reader drops or does not read as they look, and sections and keys that are there twice.
void CheckLines(const IniLines& ini, Findings& findings);

/// The parameters of a section. `defaults` is the section that stands in for absent keys; when the defaults
/// themselves are checked, it is their own name.
void CheckParameters(const IniLines& ini, const QString& section, const QString& defaults,
                     Findings& findings);

/// The texts of the station and the recorder that go into the configuration of each record; those that a
/// device lacks are taken from the defaults.
void CheckIdentity(const IniLines& ini, const QString& section, const QString& defaults, Findings& findings);

/// The sorting dictionary and the bays of a section.
void CheckDictionary(const IniLines& ini, const QString& section, Findings& findings);

/// The bays alone.
void CheckBays(const IniLines& ini, const QString& section, Findings& findings);

/// Signals of a section's dictionary that are missing in the recording, and channels of the recording that
/// are missing in the dictionary.
void CheckRecording(const IniLines& ini, const QString& section, const QString& recording,
                    Findings& findings);

/// Whether a key belongs to the dictionary: a maximum or a numbered entry.
bool IsDictionaryKey(const QString& key);

/// A text that goes into the configuration of a record: reports a comma, a line end, a "%" with a digit.
/// `what` names the text in the finding.
void CheckRecordText(int line, const QString& what, const QString& text, Findings& findings);

} // namespace inicheck
