// Verified conversions: the full disk, the library's own deletion, --remove-source and --archive.
#include "program.h"

#include "station/station.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

using recorderfile::Encode;

QByteArray Short(int minutes = 0)
{
    return Encode(ShortRecording(minutes));
}

// A recording whose record is larger than 16 KB in every form.
QByteArray Long()
{
    station::StationOptions options;
    options.seconds = 0.5;
    return Encode(station::MakeRecording(options, station::StartKind::PositiveSequence).front());
}

// Runs zucmtr convert with files of 8 KB at most, as on a disk that is nearly full.
Finished OnAFullDisk(const Workplace& place, const QString& arguments)
{
    return RunShell(place.Path(), "trap '' XFSZ; ulimit -f 16; exec zucmtr convert --out out " + arguments);
}

const QMap<QString, QString> Deleting = {{"Удалять исходные", "1"}};

} // namespace

TEST(FullDisk, RecordCutInSilenceIsAFailureAndTheRecordingStays)
{
    const Workplace place;
    place.Write("a.ZU", Long());
    EXPECT_EQ(OnAFullDisk(place, "--no-verify a.ZU").code, 0); // the library does not notice
    for (const QString& options :
         {QString(), QStringLiteral("--remove-source"), QStringLiteral("-j2 --archive .")}) {
        const Workplace fresh;
        fresh.Write("a.ZU", Long());
        const Finished run = OnAFullDisk(fresh, options + " a.ZU");
        EXPECT_EQ(run.code, 1) << options;
        EXPECT_EQ(run.out, QString());
        EXPECT_TRUE(
            run.err.contains("zucmtr: a.ZU: not converted: the record that was written is not right: 'out/"))
            << run.err;
        EXPECT_TRUE(run.err.contains(".dat")) << run.err;
        EXPECT_EQ(fresh.Names("out"), QStringList());
        EXPECT_EQ(ReadBytes(fresh.Path("a.ZU")), Long());
    }
}

// The library writes in blocks larger than the room that is left, so that there is still room for a small
// file.
TEST(FullDisk, WithRoomForASmallFileIsFullForALargeRecord)
{
    for (const QMap<QString, QString>& keys :
         {QMap<QString, QString>(), QMap<QString, QString>{{"Тип Comtrade BIN", "1"}}}) {
        const Workplace place(keys);
        recorderfile::Recording recording;
        recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(30000, 1)});
        place.Write("a.ZU", Encode(recording));
        const QString out = QDir(place.Path("out")).canonicalPath();
        const Finished run =
            RunProgram(place.Path(), {"convert", "--out", "out", "a.ZU"},
                       {{"LD_PRELOAD", FULL_DISK_LIBRARY}, {"FULL_DISK", out}, {"FULL_DISK_ROOM", "71680"}});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.err, "zucmtr: a.ZU: not converted: no room left on the disk of out; free some\n");
        EXPECT_EQ(place.Names("out"), QStringList());
    }
}

TEST(FullDisk, OtherFormsFailToo)
{
    for (const QMap<QString, QString>& keys :
         {QMap<QString, QString>{{"Тип Comtrade BIN", "1"}},
          QMap<QString, QString>{{"Тип Comtrade CFF", "1"}},
          QMap<QString, QString>{{"Тип Comtrade CFF", "1"}, {"Тип Comtrade BIN", "1"}},
          QMap<QString, QString>{{"Тип Comtrade 1999", "1"}}}) {
        const Workplace place(keys);
        place.Write("a.ZU", Long());
        EXPECT_EQ(OnAFullDisk(place, "--remove-source a.ZU").code, 1);
        EXPECT_EQ(ReadBytes(place.Path("a.ZU")), Long());
    }
}

TEST(Deletion, OfTheLibraryIsRefusedTogetherWithTheVerification)
{
    const Workplace place(Deleting);
    place.Write("a.ZU", Short());
    const Finished run = place.Convert({"a.ZU"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(
        run.err,
        QStringLiteral("zucmtr: 'ZuDrv.ini' has 'Удалять исходные = 1' in force for [Vostochnaya]: the "
                       "recordings would be deleted before their records are verified. Set the key to 0 and "
                       "give --remove-source, which deletes each recording after its record is verified; or "
                       "give --trust-writer to delete them unseen\n"));
    EXPECT_EQ(place.Names("out"), QStringList());
    EXPECT_EQ(ReadBytes(place.Path("a.ZU")), Short());
}

TEST(Deletion, OfATrustedWriterIsDone)
{
    const Workplace place(Deleting);
    place.Write("a.ZU", Short());
    const Finished run = place.Convert({"--trust-writer", "--json", "a.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    const QJsonObject object = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_FALSE(object["verified"].toBool(true));
    EXPECT_EQ(object["notes"].toArray().last().toString(),
              QStringLiteral("the record was read, but could not be compared: the recording is deleted"));
    EXPECT_FALSE(QFile::exists(place.Path("a.ZU")));
}

TEST(Deletion, WithoutVerificationIsAsBefore)
{
    const Workplace place(Deleting);
    place.Write("a.ZU", Short());
    EXPECT_EQ(place.Convert({"--no-verify", "a.ZU"}).code, 0);
    EXPECT_FALSE(QFile::exists(place.Path("a.ZU")));
}

TEST(RemoveSource, TakesTheFilesOfTheChainAndNoOthers)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    place.Write("a.Z01", Short());
    place.Write("a.txt", "text");
    const Finished run = place.Convert({"--remove-source", "a.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.txt"}));
    EXPECT_EQ(place.Names("out").size(), 4);
}

TEST(RemoveSource, LeavesARecordingOfWhichAFileIsNotInTheRecord)
{
    for (const char* left : {"a.Z02", "a.Z03"}) { // a bad one ends the chain, and so does a gap
        const Workplace place;
        place.Write("a.ZU", Short());
        place.Write("a.Z01", Short());
        place.Write(left, "broken");
        const Finished run = place.Convert({"--remove-source", "a.ZU"});
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_TRUE(
            run.out.endsWith("the recording is kept, as '" + QString(left) + "' is not in the record\n"))
            << run.out;
        EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.Z01", left, "a.ZU"}));
        EXPECT_EQ(place.Names("out").size(), 4);
    }
}

TEST(RemoveSource, NeedsTheVerification)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    for (const QStringList& options :
         {QStringList{"--remove-source", "--no-verify"}, QStringList{"--archive", "out", "--no-verify"},
          QStringList{"--remove-source", "--trust-writer"}}) {
        const Finished run = place.Convert(options + QStringList{"a.ZU"});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err, "zucmtr: --remove-source and --archive need a verified record; leave " +
                               options.last() + " out\n");
    }
    EXPECT_EQ(place.Convert({"--remove-source", "--archive", "out", "a.ZU"}).code, 2);
    EXPECT_EQ(ReadBytes(place.Path("a.ZU")), Short());
}

TEST(RemoveSource, RecordThatIsThereAlreadyIsTakenForItsRecording)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    ASSERT_EQ(place.Convert({"a.ZU"}).code, 0);
    const Finished run = place.Convert({"--remove-source", "a.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "a.ZU -> " + ShortRecordName() + "; it was there already\n");
    EXPECT_FALSE(QFile::exists(place.Path("a.ZU")));
}

TEST(RemoveSource, RecordOfAnotherRecordingIsNeverReplaced)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    recorderfile::Recording other = ShortRecording();
    std::get<recorderfile::AnalogChannel>(other.sections[0]).samples[1] = 5;
    place.Write("b.ZU", Encode(other));
    const Finished run = place.Convert({"-j2", "--remove-source", "a.ZU", "b.ZU"});
    EXPECT_EQ(run.code, 1);
    const QString record = "out/" + ShortRecordName();
    EXPECT_EQ(Untimed(run.err),
              "zucmtr: b.ZU: not converted: '" + record +
                  ".cfg' is there already and is not the record of this recording ('" + record +
                  ".dat' has other samples than the recording); move it away, choose another directory by "
                  "--out, or replace it by --replace\n" +
                  Summary(2, "1 converted and verified, 1 failed"));
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "b.ZU"}));
}

TEST(Archive, KeepsTheDirectoriesBelow)
{
    const Workplace place;
    place.MakeDirectory("in/2024");
    place.MakeDirectory("in/done");
    place.Write("in/2024/a.ZU", Short());
    place.Write("in/2024/a.Z01", Short());
    place.Write("in/b.ZU", Short(10));
    const QStringList arguments = {"-r", "in", "--archive", "in/done"};
    EXPECT_EQ(place.Convert(arguments).code, 0);
    EXPECT_EQ(place.Names("in/done"), QStringList{"b.ZU"});
    EXPECT_EQ(place.Names("in/done/2024"), (QStringList{"a.Z01", "a.ZU"}));
    EXPECT_EQ(ReadBytes(place.Path("in/done/2024/a.ZU")), Short());
    EXPECT_EQ(place.Names("in"), QStringList());
    const Finished again = place.Convert(arguments); // what is archived is not found again
    EXPECT_EQ(again.code, 0);
    EXPECT_EQ(again.out, QString());
}

TEST(Archive, NeverReplacesADifferentFile)
{
    const Workplace place;
    place.MakeDirectory("done");
    place.Write("a.ZU", Short());
    place.Write("a.Z01", Short());
    place.Write("done/a.Z01", "another");
    const Finished run = place.Convert({"a.ZU", "--archive", "done"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err,
              QStringLiteral("zucmtr: a.ZU: 'a.Z01' is not archived: a different file 'done/a.Z01' is "
                             "there; move one of them away\n"));
    EXPECT_EQ(place.Names("done"), QStringList{"a.Z01"});
    EXPECT_EQ(ReadBytes(place.Path("done/a.Z01")), QByteArray("another"));
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.Z01", "a.ZU"}));
}

TEST(Archive, SameFileThereStandsForTheRecording)
{
    const Workplace place;
    place.MakeDirectory("done");
    place.Write("a.ZU", Short());
    place.Write("done/a.ZU", Short());
    EXPECT_EQ(place.Convert({"a.ZU", "--archive", "done"}).code, 0);
    EXPECT_EQ(place.Names(), QStringList{"ZuDrv.ini"});
}

TEST(Archive, OwnDirectoryLosesNothing)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    const Finished run = place.Convert({"a.ZU", "--archive", "."});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err,
              QStringLiteral("zucmtr: a.ZU: 'a.ZU' is already in the archive; give another --archive\n"));
    EXPECT_EQ(ReadBytes(place.Path("a.ZU")), Short());
}

TEST(Archive, DirectoryHasToBeThere)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    const Finished run = place.Convert({"a.ZU", "--archive", "done"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              QStringLiteral("zucmtr: --archive: the directory 'done' does not exist; make it first: "
                             "mkdir -p done\n"));
}

TEST(Deletion, OfTheLibraryTakesNoOtherRecordsPlace)
{
    const Workplace place(Deleting);
    place.Write("a.ZU", Short());
    recorderfile::Recording other = ShortRecording();
    std::get<recorderfile::AnalogChannel>(other.sections[0]).samples[1] = 5;
    place.Write("b.ZU", Encode(other));
    for (const char* option : {"--trust-writer", "--no-verify"}) {
        const Finished run = place.Convert({option, "a.ZU", "b.ZU"});
        EXPECT_EQ(run.code, 1) << option;
        EXPECT_TRUE(
            run.err.contains("b.ZU: not converted: 'out/" + ShortRecordName() + ".cfg' is there already"))
            << run.err;
        EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "b.ZU"}));
        place.Write("a.ZU", Short());
    }
}

// It may be on a disk or a server that comes back.
TEST(RemoveSource, ContinuationThatIsALinkToNowhereIsWaitedFor)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    ASSERT_TRUE(QFile::link("away/a.Z01", place.Path("a.Z01")));
    const Finished run = place.Convert({"--json", "--remove-source", "a.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.out.contains("\"reason\":\"sourceUnreadable\"")) << run.out;
    EXPECT_TRUE(run.out.contains("'a.Z01' could not be read: No such file or directory")) << run.out;
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.Z01", "a.ZU"}));
    EXPECT_EQ(place.Names("out"), QStringList());
}

TEST(Archive, WithinTheInputIsKnownThroughALink)
{
    const Workplace place;
    place.Write("in/a.ZU", Short());
    place.MakeDirectory("in/old");
    ASSERT_TRUE(QFile::link("in", place.Path("link")));
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(place.Convert({"-r", "--archive", "in/old", "link"}).code, 0);
    EXPECT_EQ(place.Names("in/old"), QStringList{"a.ZU"});
    EXPECT_FALSE(QFile::exists(place.Path("in/old/old")));
}

TEST(Leftovers, DirectoryOfTheUsersIsNone)
{
    const Workplace place;
    place.Write("a.ZU", Short());
    place.Write("out/.zucmtr-backup/x", "kept");
    place.Write("out/.zucmtr-record/" + ShortRecordName() + ".cfg", "kept");
    place.Write("out/.zucmtr-Ab3xYz/" + ShortRecordName() + ".cfgtmp", "of a run that was killed");
    place.Write("out/.zucmtr-Ab3xYz/zucmtr-staging", "");
    EXPECT_EQ(place.Convert({"a.ZU"}).code, 0);
    EXPECT_EQ(ReadBytes(place.Path("out/.zucmtr-backup/x")), "kept");
    EXPECT_EQ(ReadBytes(place.Path("out/.zucmtr-record/" + ShortRecordName() + ".cfg")), "kept");
    EXPECT_FALSE(QFile::exists(place.Path("out/.zucmtr-Ab3xYz")));
}
