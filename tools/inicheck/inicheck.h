// Explains an ini file: everything in it that the converter ignores, takes from the defaults, drops or
// refuses. Keys, ranges and codes are the converter's own tables.
//
//     inicheck::Question question{"ZuDrv.ini", "Default", {"Vostochnaya"}, {}};
//     for (const inicheck::Finding& finding : inicheck::Check(question)) ...
#pragma once

#include "inicheck/finding.h"

#include <QStringList>

namespace inicheck {

struct Question
{
    QString ini;            // path
    QString defaults;       // section
    QStringList devices;    // sections; may hold the defaults' one
    QStringList recordings; // first files, to compare with the dictionary of the devices
};

/// All findings by line. Throws text::Error if the ini file cannot be read.
Findings Check(const Question& question);

/// What in the two sections makes records that no program opens, whatever the recording: texts that are in
/// force for the device. Throws like Check.
Findings SpoilsRecords(const QString& ini, const QString& defaults, const QString& device);

/// What of it affects every record: a comma in the name of the object or of the source. Throws like Check.
Findings SpoilsEveryRecord(const QString& ini, const QString& defaults, const QString& device);

} // namespace inicheck
