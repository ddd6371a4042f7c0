// Where zucmtr convert puts records, and what it does with those already there.
#include "program.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using recorderfile::Encode;

// Recordings with the same name and different samples.
QByteArray Other(int16_t sample)
{
    recorderfile::Recording recording = ShortRecording();
    std::get<recorderfile::AnalogChannel>(recording.sections[0]).samples = {sample, 7, sample};
    return Encode(recording);
}

QByteArray DataOf(const Workplace& place, const QString& directory)
{
    return ReadBytes(place.Path(directory + "/" + ShortRecordName() + ".dat"));
}

// Two directories with a recording each, whose records have the same name.
void WriteTwins(const Workplace& place)
{
    place.MakeDirectory("in/2023/may");
    place.MakeDirectory("in/2024");
    place.Write("in/2023/may/a.ZU", Other(1));
    place.Write("in/2024/a.ZU", Other(2));
}

QStringList Synced(const Workplace& place, const QStringList& arguments)
{
    const QStringList whole = QStringList{"convert", "--out", "out"} + arguments;
    const Finished run = RunProgram(place.Path(), whole,
                                    {{"LD_PRELOAD", SYNC_LOG_LIBRARY}, {"SYNC_LOG", place.Path("synced")}});
    EXPECT_EQ(run.code, 0) << run.err;
    return QFile::exists(place.Path("synced")) ? ReadLines(place.Path("synced")) : QStringList();
}

} // namespace

TEST(Places, RecursiveKeepsTheDirectoriesOfTheRecordings)
{
    const Workplace place;
    WriteTwins(place);
    const Finished run = place.Convert({"-r", "in"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Untimed(run.err), Summary(2, "2 converted and verified"));
    EXPECT_EQ(place.Names("out"), QStringList());
    EXPECT_TRUE(DataOf(place, "out/2023/may").startsWith("1,0,1,"));
    EXPECT_TRUE(DataOf(place, "out/2024").startsWith("1,0,2,"));
}

// The run before was killed at the last recording of the directory, which another process has put away.
TEST(Places, RecursiveClearsWhatIsLeftBesideRecordsOfADirectoryWithoutRecordings)
{
    const Workplace place;
    WriteTwins(place);
    place.MakeDirectory("in/empty");
    for (const char* directory : {"empty", "of others"})
        place.Write(QString("out/%1/.zucmtr-Ab3xYz/zucmtr-staging").arg(directory), "");
    place.Write("old/empty/c.ZU.part", "left");
    ASSERT_EQ(chmod(QFile::encodeName(place.Path("old/empty/c.ZU.part")).constData(), 0600 | S_ISVTX), 0);
    EXPECT_EQ(place.Convert({"-r", "--archive", "old", "in"}).code, 0);
    EXPECT_FALSE(QFile::exists(place.Path("out/empty/.zucmtr-Ab3xYz")));
    EXPECT_TRUE(QFile::exists(place.Path("out/of others/.zucmtr-Ab3xYz")));
    EXPECT_FALSE(QFile::exists(place.Path("old/empty/c.ZU.part")));
}

TEST(Places, FlatPutsAllRecordsIntoOneDirectoryAndLosesNone)
{
    const Workplace place;
    WriteTwins(place);
    const Finished run = place.Convert({"-r", "--flat", "-j2", "in"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.startsWith("zucmtr: in/2024/a.ZU: not converted: ")) << run.err;
    EXPECT_TRUE(run.err.contains("is not the record of this recording")) << run.err;
    EXPECT_TRUE(run.err.contains("or replace it by --replace")) << run.err;
    EXPECT_TRUE(run.err.contains("1 converted and verified, 1 failed")) << run.err;
    EXPECT_EQ(place.Names("out").size(), 4);
    EXPECT_TRUE(DataOf(place, "out").startsWith("1,0,1,"));
}

TEST(Places, FlatWithoutRecursiveIsHarmless)
{
    const Workplace place;
    place.Write("a.ZU", Other(1));
    EXPECT_EQ(place.Convert({"--flat", "a.ZU"}).code, 0);
    EXPECT_EQ(place.Names("out").size(), 4);
}

TEST(Places, ReplaceTakesTheNameFromAnotherRecording)
{
    const Workplace place;
    place.Write("a.ZU", Other(1));
    place.Write("b.ZU", Other(2));
    EXPECT_EQ(place.Convert({"a.ZU"}).code, 0);
    EXPECT_EQ(place.Convert({"b.ZU"}).code, 1);
    EXPECT_TRUE(DataOf(place, "out").startsWith("1,0,1,"));
    EXPECT_EQ(place.Convert({"--replace", "b.ZU"}).code, 0);
    EXPECT_TRUE(DataOf(place, "out").startsWith("1,0,2,"));
    const Finished both = place.Convert({"--replace", "a.ZU", "b.ZU"});
    EXPECT_EQ(both.code, 0);
    EXPECT_TRUE(
        both.err.startsWith("zucmtr: b.ZU: its record replaced that of a.ZU, which has the same name; "
                            "convert them into different directories\n"))
        << both.err;
}

TEST(Places, DryRunSaysWhichRecordsWouldHaveOneName)
{
    const Workplace place;
    WriteTwins(place);
    const Finished flat = place.Convert({"--dry-run", "-r", "--flat", "in"});
    EXPECT_EQ(Untimed(flat.err),
              "zucmtr: in/2024/a.ZU: its record would have the name of that of in/2023/may/a.ZU; unless both "
              "are the same recording, convert them into different directories\n" +
                  Summary(2, "2 to convert"));
    const Finished mirrored = place.Convert({"--dry-run", "-r", "in"});
    EXPECT_EQ(Untimed(mirrored.err), Summary(2, "2 to convert"));
    EXPECT_TRUE(mirrored.out.contains("in/2024/a.ZU -> out/2024/")) << mirrored.out;
}

TEST(Places, SecondRunFindsTheRecordsThere)
{
    const Workplace place;
    WriteTwins(place);
    EXPECT_EQ(place.Convert({"-r", "in"}).code, 0);
    place.Write("in/b.ZU", Encode(ShortRecording(10)));
    const Finished again = place.Convert({"-r", "in"});
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_EQ(Untimed(again.err), Summary(3, "1 converted and verified, 2 there already"));
}

TEST(Places, RecordThatGoesOnAfterTheRecordingIsKept)
{
    const Workplace place;
    place.Write("a.ZU", Other(1));
    place.Write("a.Z01", Other(1));
    ASSERT_EQ(place.Convert({"a.ZU"}).code, 0);
    const QByteArray data = DataOf(place, "out");
    ASSERT_TRUE(QFile::remove(place.Path("a.Z01")));
    const Finished run = place.Convert({"--json", "a.ZU"});
    EXPECT_EQ(run.code, 1);
    const QJsonObject object = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(object["reason"].toString(), "longerRecordPresent");
    EXPECT_EQ(object["error"].toString(),
              "not converted: 'out/" + ShortRecordName() +
                  ".cfg' is there already and is longer: it starts like this recording and goes on after its "
                  "end, so continuation files of the recording are missing; bring them back beside 'a.ZU', "
                  "or replace the record by this shorter one with --replace");
    EXPECT_EQ(DataOf(place, "out"), data);
    EXPECT_EQ(place.Convert({"--replace", "a.ZU"}).code, 0);
    EXPECT_NE(DataOf(place, "out"), data);
}

TEST(Places, AgainConvertsWhatIsThere)
{
    const Workplace place;
    place.Write("a.ZU", Other(1));
    const QString line = "a.ZU -> " + ShortRecordName();
    EXPECT_EQ(place.Convert({"a.ZU"}).out, line + "\n");
    EXPECT_EQ(place.Convert({"a.ZU"}).out, line + "; it was there already\n");
    EXPECT_EQ(place.Convert({"--again", "a.ZU"}).out, line + "\n");
}

TEST(Places, SyncHasTheRecordOnTheDisk)
{
    const Workplace place;
    place.Write("a.ZU", Other(1));
    EXPECT_EQ(Synced(place, {"a.ZU"}).filter("out/"), QStringList());
    const QStringList synced = Synced(place, {"--again", "--sync", "a.ZU"});
    for (const char* extension : {".cfg", ".dat", ".hdr", ".inf"})
        EXPECT_EQ(synced.filter(QLatin1String(extension)).size(), 1) << synced.join('\n');
    EXPECT_TRUE(synced.contains(QDir(place.Path("out")).canonicalPath())) << synced.join('\n');
}

// They may have been made by a run that was killed before it could write them to the disk.
TEST(Places, DirectoriesThatAreThereAreOnTheDiskBeforeRecordingsGo)
{
    const Workplace place;
    place.MakeDirectory("out/2023/may");
    place.MakeDirectory("done/2023/may");
    WriteTwins(place);
    const QStringList synced = Synced(place, {"-r", "in", "--archive", "done"});
    for (const char* directory : {"out", "out/2023", "done", "done/2023"})
        EXPECT_TRUE(synced.contains(QDir(place.Path(directory)).canonicalPath())) << directory;
}

TEST(Places, PuttingAwayNeedsRecordsOnTheDisk)
{
    const Workplace place;
    place.Write("a.ZU", Other(1));
    const Finished run = place.Convert({"--no-sync", "--remove-source", "a.ZU"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "zucmtr: --remove-source and --archive need a record that is on the disk; leave --no-sync "
              "out\n");
    EXPECT_EQ(place.Convert({"--sync", "--no-sync", "a.ZU"}).code, 2);
    EXPECT_EQ(place.Convert({"--no-sync", "a.ZU"}).code, 0);
}

TEST(Places, TwoRecordingsWithoutRoomEndTheRun)
{
    const Workplace place;
    for (int i = 0; i < 5; ++i)
        place.Write(QString("%1.ZU").arg(i), Encode(ShortRecording(i)));
    place.Write("0.ZU", "broken"); // shows nothing about the disk
    const QStringList arguments = {"convert", "--json", "--out", "out", "0.ZU",
                                   "1.ZU",    "2.ZU",   "3.ZU",  "4.ZU"};
    const Finished run = RunProgram(
        place.Path(), arguments,
        {{"LD_PRELOAD", FULL_DISK_LIBRARY}, {"FULL_DISK", QDir(place.Path("out")).canonicalPath()}});
    EXPECT_EQ(run.code, 1);
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3) << run.out;
    for (const QString& line : lines.mid(1)) {
        const QString error = QJsonDocument::fromJson(line.toUtf8()).object()["error"].toString();
        EXPECT_TRUE(error.contains("no room left on the disk of ")) << error;
    }
    EXPECT_EQ(
        Untimed(run.err),
        "zucmtr: the run ends here, since there is no room left on the disk: recordings not started: 2; make "
        "room, then give the same command again\n" +
            Summary(5, "3 failed, 2 not started"));
    EXPECT_EQ(QDir(place.Path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
}
