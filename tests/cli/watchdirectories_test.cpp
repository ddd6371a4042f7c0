// zucmtr watch: what is in the directories besides recordings, and files that cannot be checked.
#include "watchstation.h"

#include <QDir>

#include <fcntl.h>
#include <sys/stat.h>

using recorderfile::Encode;

namespace {

const QString PartOfKilledRun = "archive/b.ZU.part";

int ModeOf(const Station& station, const QString& name)
{
    struct stat status = {};
    EXPECT_EQ(stat(station.Path(name).toLocal8Bit().constData(), &status), 0);
    return static_cast<int>(status.st_mode & 07777);
}

// Writes to a file as 'cp -p' does when the new content has the same time.
void WriteWithItsTime(const Station& station, const QString& name, const QByteArray& bytes)
{
    const QByteArray path = station.Path(name).toLocal8Bit();
    struct stat before = {};
    ASSERT_EQ(stat(path.constData(), &before), 0);
    ASSERT_EQ(before.st_size, bytes.size());
    station.Write(name, bytes);
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, path.constData(), times, 0), 0);
}

// The bad file is left out of the record, with a note; neither its time nor its size shows that it was
// mended.
void ExpectContinuationTakenWhenItIsMended(const Station& station)
{
    const QByteArray good = Encode(ShortRecording(0));
    station.Write("in/a.Z01", QByteArray(good.size(), 'x'));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
    WriteWithItsTime(station, "in/a.Z01", good);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
}

} // namespace

TEST(WatchDirectories, ContinuationWithoutFirstFileIsReportedOnceInEachRun)
{
    Station station;
    station.Write("in/a.Z01", Encode(ShortRecording(0)));
    station.Write("in/sub/b.z02", Encode(ShortRecording(0)));
    for (int run = 0; run < 2; ++run) {
        const Finished once = station.Once({"--recursive"});
        EXPECT_EQ(once.code, 0) << once.err;
        EXPECT_EQ(Station::EventsIn(once.out, "orphan"), (QStringList{"in/a.Z01", "in/sub/b.z02"}));
        EXPECT_EQ(Station::EventsIn(once.out, "orphan", "first"), (QStringList{"in/a.ZU", "in/sub/b.zu"}));
    }
    station.Start();
    ASSERT_TRUE(station.Waits("orphan", 1));
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("orphan"), QStringList{"in/a.Z01"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "orphan"), QStringList());
}

TEST(WatchDirectories, ContinuationThatComesAfterItsRecordingWasPutAwayIsReported)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Start({"--remove-source"});
    ASSERT_TRUE(station.Waits("converted", 1));
    station.Write("in/a.Z01", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("orphan", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("orphan"), QStringList{"in/a.Z01"});
}

TEST(WatchDirectories, FilesThatAKilledRunHasLeftAreRecovered)
{
    const Station station;
    station.MakeDirectory("archive");
    station.Write("in/.a.ZU.zucmtr-ABC123", Encode(ShortRecording(0)));
    station.Write(PartOfKilledRun, "part");
    ASSERT_EQ(chmod(station.Path(PartOfKilledRun).toUtf8().constData(), S_ISVTX | S_IRUSR), 0);
    station.MakeDirectory("out/.zucmtr-abcDEF");
    const Finished run = station.Once({"--archive", "archive"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Station::EventsIn(run.out, "converted"), QStringList{"in/a.ZU"});
    const QStringList lines = run.out.split('\n').filter("\"leftovers\"");
    ASSERT_EQ(lines.size(), 1);
    const QJsonObject event = QJsonDocument::fromJson(lines[0].toUtf8()).object();
    EXPECT_EQ(event["back"].toVariant().toStringList(), QStringList{"in/a.ZU"});
    EXPECT_EQ(event["removed"].toVariant().toStringList(), QStringList{PartOfKilledRun});
    EXPECT_EQ(event["notes"].toVariant().toStringList(), QStringList());
    EXPECT_EQ(station.Names("archive"), QStringList{"a.ZU"});
    EXPECT_FALSE(QFile::exists(station.Path("out/.zucmtr-abcDEF")));
}

TEST(WatchDirectories, ManyNamesThatAreNotUtf8AreOneEvent)
{
    const Station station;
    constexpr int count = 50;
    const QByteArray in = station.Path("in").toUtf8();
    QList<QByteArray> paths;
    for (int number = 0; number < count; ++number)
        paths << in + "/\377" + QByteArray::number(number) + ".ZU";
    for (const QByteArray& path : paths)
        close(open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    const Finished run = station.Once();
    for (const QByteArray& path : paths)
        unlink(path.constData()); // which Qt could not
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "unreadable", "count"), QStringList{QString::number(count)});
    const QStringList lines = run.out.split('\n').filter("\"unreadable\"");
    EXPECT_EQ(
        QJsonDocument::fromJson(lines[0].toUtf8()).object()["examples"].toVariant().toStringList().size(), 2);
}

TEST(WatchDirectories, DirectoriesThatTheSystemDoesNotWatchAreOneEventAndScanned)
{
    Station station;
    for (const char* name : {"a", "b", "c"})
        station.MakeDirectory(QString("in/%1").arg(name));
    setenv("LD_PRELOAD", WATCH_FAULTS_LIBRARY, 1);
    setenv("NO_WATCHES", "1", 1);
    station.Start({"--recursive"});
    unsetenv("LD_PRELOAD");
    unsetenv("NO_WATCHES");
    ASSERT_TRUE(station.Waits("unwatched", 1));
    station.Write("in/b/a.ZU", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("unwatched", "count"), QStringList{"4"});
}

// A network may not answer for a while: the missing answer must not turn a recording into another one.
TEST(WatchDirectories, FileThatCannotBeCheckedForAWhileIsNotConvertedTwice)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/a.Z01", Encode(ShortRecording(0)));
    setenv("LD_PRELOAD", WATCH_FAULTS_LIBRARY, 1);
    setenv("UNSEEN", "a.Z01", 1);
    setenv("UNSEEN_WHILE", station.Path("marker").toLocal8Bit().constData(), 1);
    station.Start();
    for (const char* name : {"LD_PRELOAD", "UNSEEN", "UNSEEN_WHILE"})
        unsetenv(name);
    ASSERT_TRUE(station.Waits("converted", 1));
    station.Write("marker", "");
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_TRUE(QFile::remove(station.Path("marker")));
    station.Write("in/c.ZU", Encode(ShortRecording(20)));
    ASSERT_TRUE(station.Waits("converted", 3));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("found"), (QStringList{"in/a.ZU", "in/b.ZU", "in/c.ZU"}));
    EXPECT_EQ(station.Events("converting"), (QStringList{"in/a.ZU", "in/b.ZU", "in/c.ZU"}));
}

TEST(WatchDirectories, RecordingThatWasGivenUpIsTriedAgainWhenItsPermissionsChange)
{
    Station station;
    station.Write("in/a.ZU", "junk");
    station.Write("in/a.Z01", "junk");
    station.Start({"--attempts", "2"});
    ASSERT_TRUE(station.Waits("failed", 2));
    station.Write("in/b.ZU", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.Events("failed", "attempt"), (QStringList{"1", "2"}));
    chmod(station.Path("in/a.Z01").toLocal8Bit().constData(),
          static_cast<mode_t>(ModeOf(station, "in/a.Z01") ^ S_IROTH));
    ASSERT_TRUE(station.Waits("failed", 4));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed", "attempt"), (QStringList{"1", "2", "1", "2"}));
    station.Start({"--attempts", "2"});
    station.Write("in/c.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed").size(), 4); // with the permissions with which it was given up
}

TEST(WatchDirectories, RecordingThatWasGivenUpForADirectoryInAContinuationsPlaceIsConvertedWhenThatIsGone)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.MakeDirectory("in/a.Z01");
    station.Start({"--attempts", "1"});
    ASSERT_TRUE(station.Waits("failed", 1));
    ASSERT_TRUE(QDir(station.Path("in")).rmdir("a.Z01"));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed").size(), 1);
}

TEST(WatchDirectories, ChangeOfPermissionsAloneDoesNotConvertAgain)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    chmod(station.Path("in/a.ZU").toLocal8Bit().constData(), 0600);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
}

TEST(WatchDirectories, ContinuationThatWasLeftOutIsTakenWhenItIsMendedWithTheSameTimeAndSize)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    ExpectContinuationTakenWhenItIsMended(station);
}

TEST(WatchDirectories, RecordsMirrorTheDirectoriesOfTheirRecordings)
{
    const Station station;
    recorderfile::Recording other = ShortRecording(0);
    std::get<recorderfile::AnalogChannel>(other.sections[0]).samples[1] = 5;
    station.Write("in/a.ZU", Encode(ShortRecording(10)));
    station.Write("in/2024/05/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/2024/06/a.ZU", Encode(other)); // its record has the same name
    station.Write("in/2024/07/readme.txt", "");
    station.Write("out/2024/07/.zucmtr-ABC123/a.cfg", "of a killed run");
    station.Write("out/2024/07/.zucmtr-ABC123/zucmtr-staging", "");
    const Finished run = station.Once({"-r"});
    EXPECT_EQ(run.code, 0) << run.out;
    EXPECT_EQ(Station::EventsIn(run.out, "converted", "directory"),
              (QStringList{"out/2024/05", "out/2024/06", "out"}));
    EXPECT_EQ(station.Records(), QStringList{ShortRecordName(10) + ".cfg"});
    for (const char* directory : {"out/2024/05", "out/2024/06"})
        EXPECT_EQ(station.Names(directory).filter(".cfg"), QStringList{ShortRecordName(0) + ".cfg"});
    EXPECT_EQ(QDir(station.Path("out/2024/07")).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
    EXPECT_EQ(Station::EventsIn(station.Once({"-r"}).out, "found"), QStringList());
}

TEST(WatchDirectories, WithFlatAllRecordsAreInTheOutputItself)
{
    const Station station;
    station.Write("in/2024/a.ZU", Encode(ShortRecording(0)));
    const Finished run = station.Once({"-r", "--flat"});
    EXPECT_EQ(run.code, 0) << run.out;
    EXPECT_EQ(station.Records(), QStringList{ShortRecordName(0) + ".cfg"});
}

// It does not delay recordings of other directories, and is tried for as long as it takes.
TEST(WatchDirectories, DirectoryBelowTheOutputThatCannotBeUsedConcernsItsRecordingsAlone)
{
    Station station;
    station.Write("in/sub/a.ZU", Encode(ShortRecording(0)));
    station.Write("out/sub", "a file");
    station.Start({"-r", "--attempts", "1"});
    ASSERT_TRUE(station.Waits("failed", 2));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_TRUE(QFile::remove(station.Path("out/sub")));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("trouble"), QStringList());
    EXPECT_EQ(station.Events("converted"), (QStringList{"in/b.ZU", "in/sub/a.ZU"}));
}
