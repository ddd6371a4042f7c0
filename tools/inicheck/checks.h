// The parts of the check. Each adds what it finds.
#pragma once

#include "inicheck/finding.h"
#include "inicheck/inilines.h"

#include <QString>
#include <QStringList>

namespace inicheck {

/// Lines that the reader drops or takes otherwise than they look, sections and keys that are there twice.
void CheckLines(const IniLines& ini, Findings& findings);

/// The parameters of a section. `defaults` is the section that stands in for absent keys; of the defaults
/// themselves it is their own name.
void CheckParameters(const IniLines& ini, const QString& section, const QString& defaults,
                     Findings& findings);

/// The texts of the station and the recorder that go into the configuration of each record; of those that a
/// device lacks, those of the defaults.
void CheckIdentity(const IniLines& ini, const QString& section, const QString& defaults, Findings& findings);

/// The sorting dictionary and the bays of a section.
void CheckDictionary(const IniLines& ini, const QString& section, Findings& findings);

/// The bays alone.
void CheckBays(const IniLines& ini, const QString& section, Findings& findings);

/// Which signals of a section's dictionary the recording lacks, and which of its channels the dictionary does
/// not know.
void CheckRecording(const IniLines& ini, const QString& section, const QString& recording,
                    Findings& findings);

/// Whether a key is one of the dictionary's: a maximum or a numbered entry.
bool IsDictionaryKey(const QString& key);

/// A text that goes into the configuration of a record: a comma, a line end, a "%" with a digit. `what` names
/// it in the finding.
void CheckRecordText(int line, const QString& what, const QString& text, Findings& findings);

} // namespace inicheck
