// zucmtr convert without --ini, --defaults, --device and --out.
#include "program.h"

#include <gtest/gtest.h>

namespace {

Finished Convert(const TestDirectory& place, const QStringList& arguments)
{
    return RunProgram(place.Path(), QStringList{"convert"} + arguments);
}

QByteArray Short(int minutes = 0)
{
    return recorderfile::Encode(ShortRecording(minutes));
}

void ExpectRefused(const Finished& run, const QString& error)
{
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, QLatin1String("zucmtr: ") + error);
}

} // namespace

TEST(Choice, FileNameAloneIsEnough)
{
    const TestDirectory place;
    place.Write("ZuDrv.ini", PlainIni());
    place.Write("rec.ZU", Short());
    const Finished run = Convert(place, {"rec.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "rec.ZU -> " + ShortRecordName() + "\n");
    EXPECT_EQ(place.Names().filter(ShortRecordName()).size(), 4); // in the current directory
}

TEST(Choice, IniBesideTheRecordingComesBeforeThatOfTheCurrentDirectory)
{
    const TestDirectory place;
    place.MakeDirectory("in");
    place.Write("ZuDrv.ini", "no ini file at all");
    place.Write("in/ZuDrv.ini", PlainIni());
    place.Write("in/rec.ZU", Short());
    EXPECT_EQ(Convert(place, {"in/rec.ZU"}).code, 0);
}

TEST(Choice, IniAboveTheRecordingsOfADirectoryIsFound)
{
    const TestDirectory place;
    place.MakeDirectory("station/2024/01");
    place.Write("station/ZuDrv.ini", PlainIni());
    place.Write("station/2024/01/rec.ZU", Short());
    place.Write("station/2024/rec.ZU", Short(1));
    EXPECT_EQ(Convert(place, {"-r", "station"}).code, 0);
}

TEST(Choice, MissingIniIsReportedWithTheDirectoriesSearched)
{
    const TestDirectory place;
    place.MakeDirectory("in");
    place.Write("in/rec.ZU", Short());
    ExpectRefused(
        Convert(place, {"in/rec.ZU"}),
        "there is no ZuDrv.ini in 'in' or in the current directory; name the recorders' ini file by --ini, "
        "or have 'zucmtr dictionary --complete' make one\n");
}

TEST(Choice, DifferentIniFilesAreListed)
{
    const TestDirectory place;
    for (const char* directory : {"a", "b"}) {
        place.MakeDirectory(directory);
        place.Write(QLatin1String(directory) + "/ZuDrv.ini", PlainIni());
        place.Write(QLatin1String(directory) + "/rec.ZU", Short());
    }
    ExpectRefused(
        Convert(place, {"a/rec.ZU", "b/rec.ZU"}),
        "the recordings have different ini files; convert them one directory after the other, or name "
        "one file by --ini:\n  'a/ZuDrv.ini' for 'a/rec.ZU'\n  'b/ZuDrv.ini' for 'b/rec.ZU'\n");
    EXPECT_EQ(Convert(place, {"--ini", "a/ZuDrv.ini", "a/rec.ZU", "b/rec.ZU"}).code, 0);
}

TEST(Choice, SeveralRecordersAreListed)
{
    const TestDirectory place;
    place.Write("ZuDrv.ini", PlainIni() + "[Западная]\n");
    place.Write("rec.ZU", Short());
    ExpectRefused(Convert(place, {"rec.ZU"}),
                  "'ZuDrv.ini' describes 2 recorders; name the section of the one by "
                  "--device: it has [Vostochnaya], [Западная]\n");
    EXPECT_EQ(Convert(place, {"--device", "Западная", "rec.ZU"}).code, 0);
}

TEST(Choice, DefaultsByAnotherNameHaveToBeNamed)
{
    const TestDirectory place;
    place.Write("ZuDrv.ini", PlainIni().replace("[Default]", "[Общие]"));
    place.Write("rec.ZU", Short());
    ExpectRefused(Convert(place, {"rec.ZU"}),
                  "'ZuDrv.ini' has no section [Default]; name the section with the "
                  "defaults by --defaults: it has [Общие], [Vostochnaya]\n");
    EXPECT_EQ(Convert(place, {"--defaults", "Общие", "rec.ZU"}).code, 0);
}

TEST(Choice, OneSectionIsBoth)
{
    const TestDirectory place;
    QByteArray ini = PlainIni();
    ini.truncate(ini.indexOf("[Vostochnaya]"));
    place.Write("ZuDrv.ini", ini);
    place.Write("rec.ZU", Short());
    EXPECT_EQ(Convert(place, {"rec.ZU"}).code, 0);
}

TEST(Choice, FileWithoutSectionsIsNoIniFile)
{
    const TestDirectory place;
    place.Write("ZuDrv.ini", "text\n");
    place.Write("rec.ZU", Short());
    ExpectRefused(Convert(place, {"rec.ZU"}),
                  "'ZuDrv.ini' has no section at all; is it the recorders' ini file?\n");
}
