// zucmtr watch: trouble that no recording causes: directories and journals that come and go.
#include "watchstation.h"

#include <QDir>

#include <array>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>

using recorderfile::Encode;

namespace {

QString Said(const Station& station)
{
    QString said;
    for (const QString& line : QString::fromUtf8(ReadBytes(station.Path("events"))).split('\n')) {
        if (line.startsWith("zucmtr: "))
            said += line + '\n';
    }
    return said;
}

// A recording comes while a directory is away, and is converted when it is back.
void ExpectWaiting(Station& station, const QString& directory, const QString& reason, const QString& said)
{
    station.Rename(directory, "elsewhere");
    ASSERT_TRUE(station.Waits("trouble", 1));
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("found", 1));
    station.Rename("elsewhere", directory);
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("trouble", "reason"), QStringList{reason});
    EXPECT_EQ(station.Events("recovered", "reason"), QStringList{reason});
    EXPECT_EQ(station.Events("converting"), QStringList{"in/a.ZU"});
    EXPECT_EQ(station.Events("failed"), QStringList());
    EXPECT_EQ(Said(station), said);
}

// With a fault of WATCH_FAULTS_LIBRARY for what the path names, as long as the file "marker" is there.
void StartWithFault(Station& station, const QByteArray& fault, const QString& path,
                    const QStringList& more = {})
{
    setenv("LD_PRELOAD", WATCH_FAULTS_LIBRARY, 1);
    setenv(fault.constData(), path.toLocal8Bit().constData(), 1);
    setenv((fault + "_WHILE").constData(), station.Path("marker").toLocal8Bit().constData(), 1);
    station.Start(QStringList{"--attempts", "1", "--state", "journal"} + more);
    for (const QByteArray& name : {QByteArray("LD_PRELOAD"), fault, fault + "_WHILE"})
        unsetenv(name.constData());
}

// There is room again when the file "marker" is removed.
void StartOnFullDisk(Station& station)
{
    station.Write("marker", "");
    StartWithFault(station, "FULL", station.Path("out/"));
}

// Its disk is full when the first recording comes.
void StartWithFullJournal(Station& station)
{
    StartWithFault(station, "FULL", station.Path("journal"));
    ASSERT_TRUE(station.Waits("started", 1));
    station.Write("marker", "");
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("trouble", 1));
}

// A socket like the service manager's.
class Manager
{
public:
    explicit Manager(const QString& path) : file(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const QByteArray name = path.toLocal8Bit();
        EXPECT_LT(name.size(), static_cast<int>(sizeof address.sun_path));
        std::copy(name.begin(), name.end(), std::begin(address.sun_path));
        EXPECT_EQ(bind(file, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        setenv("NOTIFY_SOCKET", name.constData(), 1);
    }
    ~Manager()
    {
        unsetenv("NOTIFY_SOCKET");
        close(file);
    }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;

    bool Hears(const QString& message)
    {
        return WaitFor([&] {
            std::array<char, 1024> bytes{};
            const ssize_t size = recv(file, bytes.data(), bytes.size(), MSG_DONTWAIT);
            return size > 0 && QString::fromUtf8(bytes.data(), static_cast<int>(size)) == message;
        });
    }

private:
    int file;
};

} // namespace

TEST(WatchTrouble, OutputDirectoryThatDisappearsIsWaitedFor)
{
    Station station;
    station.Start({"--state", "journal", "--attempts", "1"});
    ASSERT_TRUE(station.Waits("started", 1));
    ExpectWaiting(station, "out", "outputUnusable",
                  "zucmtr: --out: 'out' cannot be written to: No such file or directory; the work goes on "
                  "once that is put right\n");
}

TEST(WatchTrouble, ArchiveThatDisappearsIsWaitedFor)
{
    Station station;
    station.MakeDirectory("archive");
    station.Start({"--archive", "archive", "--attempts", "1"});
    ASSERT_TRUE(station.Waits("started", 1));
    ExpectWaiting(station, "archive", "archiveUnusable",
                  "zucmtr: --archive: 'archive' cannot be written to: No such file or directory; the work "
                  "goes on once that is put right\n");
}

TEST(WatchTrouble, JournalWhoseDirectoryDisappearsIsWaitedForAndMadeAgain)
{
    Station station;
    station.MakeDirectory("state");
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Start({"--state", "state/journal"});
    ASSERT_TRUE(station.Waits("converted", 1));
    station.Rename("state",
                   "away"); // in one step: the journal would be made again in a directory that is there
    ASSERT_TRUE(QDir(station.Path("away")).removeRecursively());
    ASSERT_TRUE(station.Waits("trouble", 1));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("found", 2));
    EXPECT_EQ(station.Events("converting"),
              QStringList{"in/a.ZU"}); // what cannot be remembered is not started
    station.MakeDirectory("state");
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("trouble", "reason"), QStringList{"journalNotWritten"});
    EXPECT_EQ(Station::EventsIn(station.Once({"--state", "state/journal"}).out, "found"), QStringList());
    EXPECT_EQ(station.Names("state"), QStringList{"journal"});
}

// A second process would convert everything again.
TEST(WatchTrouble, JournalThatIsRemovedIsMadeAgainBeforeARecordingIsStarted)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Start();
    ASSERT_TRUE(station.Waits("converted", 1));
    ASSERT_TRUE(QFile::remove(station.Path("out/.zucmtr-watch")));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.Once().code, 1); // still one at a time
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Count("converted"), 2);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
    EXPECT_EQ(station.Events("trouble"), QStringList());
}

TEST(WatchTrouble, JournalThatIsCutIsMadeAgain)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Start();
    ASSERT_TRUE(station.Waits("converted", 1));
    station.Write("out/.zucmtr-watch", QByteArray());
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
}

TEST(WatchTrouble, JournalThatAnotherProgramReadsForLongIsWaitedFor)
{
    Station station;
    station.Start({"--attempts", "1"});
    ASSERT_TRUE(station.Waits("started", 1));
    sql::Sqlite(station.Path("out/.zucmtr-watch")).Together([&] {
        station.Write("in/a.ZU", Encode(ShortRecording(0)));
        EXPECT_TRUE(station.Waits("trouble", 1));
    });
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(
        Said(station),
        "zucmtr: 'out/.zucmtr-watch' cannot be written: another program is at work with it; free the disk, "
        "or give this user the permission\n");
    EXPECT_EQ(station.Events("recovered", "reason"), QStringList{"journalNotWritten"});
    EXPECT_EQ(station.Count("converted"), 1);
}

// Where only the recording's row does not fit, a look at the journal shows nothing.
TEST(WatchTrouble, JournalWithoutRoomIsReportedOnceUntilItIsWritten)
{
    Station station;
    StartWithFullJournal(station);
    int found = 1;
    for (const char* name : {"b", "c", "d", "e"}) {
        station.Write(QString("in/%1.ZU").arg(name), Encode(ShortRecording(10 * (name[0] - 'a'))));
        ASSERT_TRUE(station.Waits("found", ++found));
    }
    EXPECT_EQ(station.Events("converting"), QStringList());
    ASSERT_TRUE(QFile::remove(station.Path("marker")));
    ASSERT_TRUE(station.Waits("converted", found));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("trouble", "reason"), QStringList{"journalNotWritten"});
    EXPECT_EQ(station.Events("recovered", "reason"), QStringList{"journalNotWritten"});
    EXPECT_EQ(station.Count("converted", "journal"), found);
}

TEST(WatchTrouble, SignalEndsItWellThoughTheJournalCannotBeWritten)
{
    Station station;
    StartWithFullJournal(station);
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(Said(station).count('\n'), 2); // the trouble, and that it is still on
    EXPECT_EQ(station.Events("stopped", "reason"), QStringList{"SIGTERM"});
    ASSERT_TRUE(QFile::remove(station.Path("marker")));
    EXPECT_EQ(station.Once({"--state", "journal"}).code, 0);
    EXPECT_EQ(station.Count("converted", "journal"), 1);
}

TEST(WatchTrouble, InputThatIsReadOnlyForAWhileIsWaitedForAndNoAttemptCounts)
{
    Station station;
    station.Write("marker", "");
    for (const char* name : {"a", "b"})
        station.Write(QString("in/%1.ZU").arg(name), Encode(ShortRecording(10 * (name[0] - 'a'))));
    StartWithFault(station, "READ_ONLY", "in", {"--remove-source"});
    ASSERT_TRUE(station.Waits("trouble", 1));
    ASSERT_TRUE(WaitFor([&] { return station.Count("withdrawn", "journal") >= 2; }));
    ASSERT_TRUE(QFile::remove(station.Path("marker")));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("trouble", "reason"), QStringList{"notPutAway"});
    EXPECT_EQ(station.Events("recovered", "reason"), QStringList{"notPutAway"});
    EXPECT_EQ(station.Events("failed"), QStringList());
    EXPECT_EQ(station.Names("in").filter(".ZU"), QStringList());
}

TEST(WatchTrouble, JournalOfAnotherInItsPlaceEndsTheProgram)
{
    Station station;
    station.Start();
    ASSERT_TRUE(station.Waits("started", 1));
    ASSERT_TRUE(QFile::remove(station.Path("out/.zucmtr-watch")));
    station.Write("elsewhere", "another");
    // The one that was removed may be there again already.
    ASSERT_EQ(std::rename(station.Path("elsewhere").toLocal8Bit().constData(),
                          station.Path("out/.zucmtr-watch").toLocal8Bit().constData()),
              0);
    ASSERT_TRUE(WaitFor([&] { return station.Running().HasEnded(); }));
    EXPECT_EQ(station.Running().Code(), 1);
    EXPECT_EQ(Said(station),
              "zucmtr: another file has taken the place of 'out/.zucmtr-watch'; start again\n");
    EXPECT_EQ(ReadBytes(station.Path("out/.zucmtr-watch")), "another");
}

TEST(WatchTrouble, RunWithOnceEndsAndTheNextOneGoesOn)
{
    Station station;
    station.MakeDirectory("archive");
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    const Finished run = station.Once({"--archive", "archive"}, {{"LD_PRELOAD", WATCH_FAULTS_LIBRARY},
                                                                 {"UNUSABLE", "archive"},
                                                                 {"UNUSABLE_WHILE", station.Path("in")}});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "trouble", "reason"), QStringList{"archiveUnusable"});
    EXPECT_EQ(Station::EventsIn(run.out, "converting"), QStringList());
    EXPECT_EQ(Station::EventsIn(run.out, "stopped", "reason"), QStringList{"trouble"});
    EXPECT_EQ(station.Once({"--archive", "archive"}).code, 0);
}

// It uses up neither the recordings nor the attempts, and new room is noticed.
TEST(WatchTrouble, FullDiskIsWaitedForAndNoAttemptCounts)
{
    Station station;
    for (const char* name : {"a", "b", "c"})
        station.Write(QString("in/%1.ZU").arg(name), Encode(ShortRecording(10 * (name[0] - 'a'))));
    StartOnFullDisk(station);
    ASSERT_TRUE(station.Waits("trouble", 1));
    ASSERT_TRUE(WaitFor([&] { return station.Count("withdrawn", "journal") >= 3; }));
    EXPECT_EQ(station.Events("converting"), QStringList{"in/a.ZU"}); // the probes are not reported
    ASSERT_TRUE(QFile::remove(station.Path("marker")));
    ASSERT_TRUE(station.Waits("converted", 3));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("trouble", "reason"), QStringList{"noRoom"});
    EXPECT_EQ(station.Events("trouble"), QStringList{"in/a.ZU"});
    EXPECT_EQ(station.Events("recovered", "reason"), QStringList{"noRoom"});
    EXPECT_EQ(station.Events("failed"), QStringList());
    EXPECT_EQ(Said(station).count('\n'), 1);
    EXPECT_EQ(Station::EventsIn(station.Once({"--state", "journal"}).out, "found"), QStringList());
}

// Otherwise the service would report it until the next recording comes, perhaps in a month.
TEST(WatchTrouble, FullDiskIsNoTroubleAnyMoreWhenTheRecordingThatMetItIsGone)
{
    Station station;
    Manager manager(station.Path("manager"));
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    StartOnFullDisk(station);
    ASSERT_TRUE(station.Waits("trouble", 1));
    EXPECT_TRUE(manager.Hears("STATUS=0 converted, 0 given up, 1 waiting"));
    ASSERT_TRUE(QFile::remove(station.Path("in/a.ZU")));
    ASSERT_TRUE(station.Waits("recovered", 1));
    EXPECT_TRUE(manager.Hears("STATUS=0 converted, 0 given up, 0 waiting"));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("trouble", 2)); // it is still full
    ASSERT_TRUE(QFile::remove(station.Path("marker")));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("recovered", "reason"), (QStringList{"noRoom", "noRoom"}));
}

TEST(WatchTrouble, RunWithOnceEndsAfterTwoRecordingsWithoutRoom)
{
    Station station;
    for (const char* name : {"a", "b", "c"})
        station.Write(QString("in/%1.ZU").arg(name), Encode(ShortRecording(10 * (name[0] - 'a'))));
    const Finished run = station.Once({"--state", "journal"}, {{"LD_PRELOAD", WATCH_FAULTS_LIBRARY},
                                                               {"FULL", station.Path("out/")},
                                                               {"FULL_WHILE", station.Path("in")}});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "failed"), (QStringList{"in/a.ZU", "in/b.ZU"}));
    EXPECT_EQ(Station::EventsIn(run.out, "stopped", "reason"), QStringList{"trouble"});
    EXPECT_EQ(Station::EventsIn(run.out, "stopped", "waiting"), QStringList{"1"});
    EXPECT_EQ(station.Once({"--state", "journal"}).code, 0);
    EXPECT_EQ(station.Records().size(), 3);
}

TEST(WatchTrouble, ServiceManagerIsNotified)
{
    Station station;
    Manager manager(station.Path("manager"));
    station.Start({"--state", "journal"});
    EXPECT_TRUE(manager.Hears("READY=1"));
    EXPECT_TRUE(manager.Hears("STATUS=0 converted, 0 given up, 0 waiting"));
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_TRUE(manager.Hears("STATUS=1 converted, 0 given up, 0 waiting"));
    station.Rename("out", "elsewhere");
    EXPECT_TRUE(manager.Hears("STATUS=--out: 'out' cannot be written to: No such file or directory; the work "
                              "goes on once that is put right"));
    station.Rename("elsewhere", "out");
    EXPECT_TRUE(manager.Hears("STATUS=1 converted, 0 given up, 0 waiting"));
    EXPECT_EQ(station.End(), 0);
    EXPECT_TRUE(manager.Hears("STOPPING=1"));
}
