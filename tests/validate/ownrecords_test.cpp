// The records of the conversions in tests/conversions, held against the standard: what is wrong with them is
// what their settings or recordings force.
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFileInfo>

#include <map>
#include <set>

namespace {

QStringList Records()
{
    QStringList records;
    QDirIterator files(QStringLiteral(ZUCMTR_CONVERSIONS), {"*.cfg", "*.cff"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        if (files.next().contains("/expected/"))
            records << files.filePath();
    return records;
}

QString FolderOf(const QString& record)
{
    return record.section("/expected/", 0, 0).section('/', -1);
}

using Words = std::set<std::string>;

// What is more than a note, by the folder of the conversion.
std::map<std::string, Words> ForcedWarnings()
{
    return {{"cff_ascii_replaces_its_pieces", {"notUtf8"}},         // CP1251
            {"dictionary_and_bays_2013_ascii_cp1251", {"notUtf8"}}, // CP1251
            {"recordings_share_a_device", {"notAscii"}},            // Russian names in revision 1999
            {"odd_names_and_percent_signs", {"notAscii"}},          // the same
            {"one_segment_1999_ascii", {"samplesOutsideLimits"}}};  // -32768 where the recorder says 32767
}

} // namespace

TEST(OwnRecords, HaveNoErrorAndTheWarningsThatAreForced)
{
    std::map<std::string, Words> warnings;
    ASSERT_GE(Records().size(), 15);
    for (const QString& record : Records())
        for (const comtrade::Finding& finding : validate::Validate(record)) {
            const std::string folder = FolderOf(record).toStdString();
            // A station with a % and a digit takes the place of the revision year.
            const bool isForced =
                folder == "odd_names_and_percent_signs" && finding.reason == std::string("revisionUnknown");
            if (finding.severity == Severity::Error)
                EXPECT_TRUE(isForced) << record.toStdString() << ": " << finding.text.toStdString();
            else if (finding.severity == Severity::Warning)
                warnings[folder].insert(finding.reason);
        }
    EXPECT_EQ(warnings, ForcedWarnings());
}

TEST(OwnRecords, HaveNoNotesButThoseOfLineEndsAndTheTrigger)
{
    Words notes;
    for (const QString& record : Records())
        for (const comtrade::Finding& finding : validate::Validate(record))
            if (finding.severity == Severity::Note)
                notes.insert(finding.reason);
    EXPECT_EQ(notes, (Words{"lineEnds", "triggerOutside"}));
}
