// zucmtr watch: recordings that are there, that come, that grow; restarts, kills and failures.
#include "watchstation.h"

#include <QDir>
#include <QRegularExpression>
#include <QSysInfo>

#include <sys/file.h>

using recorderfile::Encode;

TEST(Watch, ConvertsWhatIsThereAndWhatArrives)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Start();
    ASSERT_TRUE(station.Waits("converted", 1));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("found"), (QStringList{"in/a.ZU", "in/b.ZU"}));
    EXPECT_EQ(station.Events("converted"), (QStringList{"in/a.ZU", "in/b.ZU"}));
    EXPECT_EQ(station.Events("converted", "record"), (QStringList{ShortRecordName(0), ShortRecordName(10)}));
    EXPECT_EQ(station.Events("stopped", "reason"), QStringList{"SIGTERM"});
    EXPECT_EQ(station.Records().size(), 2);
}

// With many scans of the directory, and with none while it grows.
TEST(Watch, RecordingThatGrowsIsTakenWhenItIsQuiet)
{
    constexpr int quiet = 500; // no pause of a busy machine is this long
    for (const char* rescan : {"0.05", "3600"}) {
        Station station(quiet);
        const QByteArray whole = Encode(ShortRecording(0));
        station.Start({}, "0.01", rescan);
        ASSERT_TRUE(station.Waits("started", 1));
        // Bytes arrive for twice the quiet time, with shorter gaps than it.
        const auto begin = std::chrono::steady_clock::now();
        int size = 0;
        ASSERT_TRUE(WaitFor([&] {
            size = std::min(size + 1, int(whole.size()) - 1);
            station.Write("in/a.ZU", whole.left(size));
            return std::chrono::steady_clock::now() - begin > std::chrono::milliseconds(2 * quiet);
        }));
        EXPECT_EQ(station.Events("converting"), QStringList()) << rescan;
        station.Write("in/a.ZU", whole);
        ASSERT_TRUE(station.Waits("converted", 1));
        EXPECT_EQ(station.End(), 0);
        EXPECT_EQ(station.Events("failed"), QStringList()) << rescan;
    }
}

TEST(Watch, RestartConvertsNothingTwiceAndForgetsNothing)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    const Finished second = station.Once();
    EXPECT_EQ(second.code, 0) << second.err;
    EXPECT_EQ(Station::EventsIn(second.out, "converted"), QStringList{"in/b.ZU"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converting"), QStringList());
}

TEST(Watch, RecordThatIsThereWithoutANoteInTheJournalIsPresent)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted", "status"), QStringList{"converted"});
    ASSERT_TRUE(QFile::remove(station.Path("out/.zucmtr-watch")));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted", "status"), QStringList{"present"});
}

TEST(Watch, RecordingThatIsContinuedLaterIsConvertedAgain)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    station.Write("in/a.Z01", Encode(ShortRecording(0)));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}

TEST(Watch, KilledAtAnyMomentItGoesOnWhereItWas)
{
    Station station;
    constexpr int count = 12;
    for (int i = 0; i < count; ++i)
        station.Write(QString("in/%1.ZU").arg(i, 2, 10, QChar('0')), Encode(ShortRecording(10 * i)));
    constexpr int kills = 4;
    for (int i = 1; i <= kills; ++i) {
        const int before = station.Events("converting").size();
        station.Start();
        ASSERT_TRUE(station.Waits("converting", before + 1));
        station.End(SIGKILL);
    }
    const Finished last = station.Once();
    EXPECT_EQ(last.code, 0) << last.err;
    EXPECT_EQ(station.Names("out").filter(".zucmtr-watch"), QStringList{".zucmtr-watch"});
    EXPECT_EQ(station.Records().size(), count);
    // Each kill repeats the current recording and no other.
    EXPECT_LE(station.Events("converting").size() + Station::EventsIn(last.out, "converting").size(),
              count + kills);
    EXPECT_EQ(station.Count("converted"), count);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converting"), QStringList());
}

namespace {

QByteArray TextOf(const Station& station)
{
    const QByteArray begin = station.Journal("SELECT fingerprint || ' ' || file FROM recordings")[0].toUtf8();
    return "zucmtr watch 1\nB " + begin + "\nC " + begin + " record\n";
}

} // namespace

// Its lines that are not whole count as none, wherever it was cut off.
TEST(Watch, JournalOfLinesIsTakenOver)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    const QByteArray whole = TextOf(station);
    const int all = whole.size();
    const int firstEnd = whole.indexOf('\n');
    const int lastLine = whole.lastIndexOf('\n', all - 2) + 1;
    for (const int size :
         {6, firstEnd, firstEnd + 20, lastLine, lastLine + 1, lastLine + 30, lastLine + 60, all - 1, all}) {
        station.Write("out/.zucmtr-watch", whole.left(size));
        const QStringList expected = size < all ? QStringList{"in/a.ZU"} : QStringList();
        EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), expected) << size;
        EXPECT_EQ(station.Count("converted"), 1) << size;
        EXPECT_EQ(Station::EventsIn(station.Once().out, "converting"), QStringList()) << size;
        EXPECT_EQ(station.Names("out").filter(".zucmtr-watch"), QStringList{".zucmtr-watch"}) << size;
    }
}

TEST(Watch, JournalOfLinesThatAnEarlierVersionWorksWithIsRefused)
{
    const Station station;
    station.Write("journal", "zucmtr watch 1\n");
    const int file = open(station.Path("journal").toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(flock(file, LOCK_EX), 0);
    const Finished run = station.Once({"--state", "journal"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err,
              "zucmtr: --state: another 'zucmtr watch' works with 'journal'; end it, or give another "
              "file\n");
    close(file);
    EXPECT_EQ(station.Once({"--state", "journal"}).code, 0);
}

// Or all recordings would be converted again without a word.
TEST(Watch, DamagedJournalIsRefused)
{
    const Station station;
    for (int i = 0; i < 40; ++i)
        station.Write(QString("in/%1.ZU").arg(i), "junk");
    EXPECT_EQ(station.Once().code, 1);
    const QByteArray whole = ReadBytes(station.Path("out/.zucmtr-watch"));
    const int all = static_cast<int>(whole.size());
    for (const int size : {10, 100, 4000, 4096, 6000, all - 4096, all - 2000}) {
        station.Write("out/.zucmtr-watch", whole.left(size));
        const Finished run = station.Once();
        EXPECT_EQ(run.code, 2) << size;
        EXPECT_TRUE(run.err.startsWith("zucmtr: --state: 'out/.zucmtr-watch' is damaged (")) << run.err;
        EXPECT_TRUE(run.err.endsWith("); put a copy of it in its place, or move it away: then all recordings "
                                     "that are there are converted again\n"))
            << run.err;
        EXPECT_EQ(ReadBytes(station.Path("out/.zucmtr-watch")), whole.left(size));
    }
}

TEST(Watch, JournalOfANewerVersionIsRefused)
{
    const Station station;
    EXPECT_EQ(station.Once().code, 0);
    station.Journal("PRAGMA user_version=3");
    const Finished run = station.Once();
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "zucmtr: --state: 'out/.zucmtr-watch' was made by a newer version of the program; install "
              "that, or give another file\n");
}

// The queries of docs/watch.md.
TEST(Watch, JournalCanBeReadWhileTheServiceRuns)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Start();
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.Journal("SELECT record FROM recordings WHERE state = 'converted'"),
              QStringList{ShortRecordName(0)});
    EXPECT_EQ(station.Journal("SELECT process FROM holder"),
              QStringList{QString::number(station.Running().Process())});
    EXPECT_EQ(station.End(), 0);
}

// Or a power failure could leave a journal that speaks of a record that never came to the disk.
TEST(Watch, RecordIsOnTheDiskBeforeTheJournalSaysSo)
{
    const Station station;
    station.MakeDirectory("state");
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    const Finished run =
        RunProgram(station.Path(), {"watch", "--once", "--out", "out", "--state", "state/journal", "in"},
                   {{"LD_PRELOAD", SYNC_LOG_LIBRARY}, {"SYNC_LOG", station.Path("synced")}});
    EXPECT_EQ(run.code, 0) << run.err;
    const QString journal = station.Path("state/journal");
    // The pieces are on the disk before they have their final names, which the directory gives them.
    const QString record = station.Path("out/.zucmtr-/" + ShortRecordName(0));
    QString synced = QString::fromUtf8(ReadBytes(station.Path("synced")));
    synced.replace(QRegularExpression("/\\.zucmtr-\\w{6}/"), "/.zucmtr-/");
    const QString undo = journal + "-journal\n";
    const QString start = undo + station.Path("state\n") + undo + journal + '\n' + station.Path("state\n");
    const QString change = undo + station.Path("state\n") + undo + journal + '\n' + undo;
    EXPECT_EQ(synced.split('\n'), (start + change +
                                   QStringList{record + ".cfg", record + ".dat", record + ".hdr",
                                               record + ".inf", station.Path("out")}
                                       .join('\n') +
                                   '\n' + change)
                                      .split('\n'));
}

TEST(Watch, OtherFileIsNotTakenForAJournal)
{
    const Station station;
    station.Write("other.db", QByteArray());
    station.Journal("CREATE TABLE bookmarks (name TEXT)", "other.db");
    for (const QString& file : {QStringLiteral("ZuDrv.ini"), QStringLiteral("other.db")}) {
        const QByteArray bytes = ReadBytes(station.Path(file));
        const Finished run = station.Once({"--state", file});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err,
                  QString("zucmtr: --state: '%1' is another kind of file; give one that 'zucmtr watch' "
                          "has made, or one that does not exist yet\n")
                      .arg(file));
        EXPECT_EQ(ReadBytes(station.Path(file)), bytes);
    }
}

// For example on a machine that starts before its network.
TEST(Watch, RecordingsOfAFileSystemThatComesLateAreRemembered)
{
    Station station;
    for (int i = 0; i < 3; ++i)
        station.Write(QString("in/%1.ZU").arg(i), Encode(ShortRecording(10 * i)));
    EXPECT_EQ(station.Once().code, 0);
    station.Rename("in", "elsewhere");
    station.MakeDirectory("in");
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
    EXPECT_TRUE(QDir().rmdir(station.Path("in")));
    station.Rename("elsewhere", "in");
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
}

TEST(Watch, RecordingsThatAreGoneAreDroppedFromTheJournal)
{
    Station station;
    for (int i = 0; i < 5; ++i)
        station.Write(QString("in/%1.ZU").arg(i), Encode(ShortRecording(10 * i)));
    EXPECT_EQ(station.Once().code, 0);
    EXPECT_EQ(station.Count("converted"), 5);
    for (int i = 0; i < 4; ++i)
        QFile::remove(station.Path(QString("in/%1.ZU").arg(i)));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
    EXPECT_EQ(station.Journal("SELECT file FROM recordings"), QStringList{station.Path("in/4.ZU")});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
}

TEST(Watch, DirectoryThatDisappearsIsReportedAndFoundAgain)
{
    Station station;
    station.Start({"--ini", "ZuDrv.ini"});
    ASSERT_TRUE(station.Waits("started", 1));
    station.Rename("in", "elsewhere");
    ASSERT_TRUE(station.Waits("unreadable", 1));
    EXPECT_EQ(station.Events("unreadable", "path"), QStringList{"in"});
    station.Write("elsewhere/a.ZU", Encode(ShortRecording(0)));
    station.Rename("elsewhere", "in");
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("unreadable").size(), 1);
}

TEST(Watch, NameThatIsNotUtf8IsReportedAndFails)
{
    const Station station;
    const QByteArray path = station.Path("in").toUtf8() + "/\377.ZU";
    close(open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    const Finished run = station.Once();
    EXPECT_EQ(run.code, 1);
    unlink(path.constData()); // which Qt could not
    EXPECT_EQ(Station::EventsIn(run.out, "unreadable", "path"), QStringList{QStringLiteral("in/\uFFFD.ZU")});
}

TEST(Watch, RecordOfAnotherRecordingKeepsItsPlace)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    recorderfile::Recording other = ShortRecording(0);
    std::get<recorderfile::AnalogChannel>(other.sections[0]).samples[1] = 5;
    station.Write("in/b.ZU", Encode(other));
    const Finished run = station.Once();
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "failed", "reason"), QStringList{"otherRecordPresent"});
}

TEST(Watch, FailureIsTriedAgainThenGivenUpUntilTheFileChanges)
{
    Station station;
    station.Write("in/a.ZU", "junk");
    station.Start({"--attempts", "3"});
    ASSERT_TRUE(station.Waits("failed", 3));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.Events("failed", "attempt"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(station.Events("failed", "retrySeconds"), (QStringList{"0.01", "0.02", QString()}));
    EXPECT_EQ(station.End(SIGINT), 0);
    station.Start();
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    ASSERT_TRUE(station.Waits("converted", 2));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed").size(), 3);
}

TEST(Watch, AttemptsAreCountedOverARestart)
{
    Station station;
    station.Write("in/a.ZU", "junk");
    station.Start({"--attempts", "3"}, "3600");
    ASSERT_TRUE(station.Waits("failed", 1));
    EXPECT_EQ(station.End(), 0);
    station.Start({"--attempts", "3"});
    ASSERT_TRUE(station.Waits("failed", 3));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed", "attempt"), (QStringList{"1", "2", "3"}));
}

TEST(Watch, RecordingThatWasGivenUpIsTriedAgainWhenAskedTo)
{
    Station station;
    station.Write("in/a.ZU", "junk");
    EXPECT_EQ(station.Once().code, 1);
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    station.Start();
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed").size(), 0);
    station.Start({"--retry-given-up", "--attempts", "1"});
    ASSERT_TRUE(station.Waits("failed", 1));
    EXPECT_EQ(station.End(), 0);
}

TEST(Watch, OnceFailsIfARecordingDoesAndTriesItAgainTheNextTime)
{
    Station station;
    station.Write("in/a.ZU", "junk");
    EXPECT_EQ(station.Once().code, 1);
    EXPECT_EQ(station.Once().code, 1);
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
}

TEST(Watch, RecordingsArePutAwayAndTheJournalIsCleared)
{
    Station station;
    station.MakeDirectory("in/archive");
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/sub/b.ZU", Encode(ShortRecording(10)));
    EXPECT_EQ(station.Once({"--recursive", "--archive", "in/archive"}).code, 0);
    EXPECT_TRUE(QFile::exists(station.Path("in/archive/a.ZU")));
    EXPECT_TRUE(QFile::exists(station.Path("in/archive/sub/b.ZU")));
    EXPECT_EQ(station.Records(), QStringList{ShortRecordName(0) + ".cfg"});
    EXPECT_EQ(station.Names("out/sub").filter(".cfg"), QStringList{ShortRecordName(10) + ".cfg"});
    const Finished next = station.Once({"--recursive", "--archive", "in/archive"});
    EXPECT_EQ(Station::EventsIn(next.out, "found"), QStringList());
    EXPECT_EQ(station.Journal("SELECT file FROM recordings"), QStringList());
}

TEST(Watch, StateBelongsToOneProcess)
{
    Station station;
    station.Start();
    ASSERT_TRUE(station.Waits("started", 1));
    const Finished other = station.Once();
    EXPECT_EQ(other.code, 1); // it may have ended when the service manager starts this one again
    EXPECT_EQ(other.err, QString("zucmtr: --state: another 'zucmtr watch' works with 'out/.zucmtr-watch' "
                                 "(process %1 on %2); end it, or give another file\n")
                             .arg(station.Running().Process())
                             .arg(QSysInfo::machineHostName()));
    EXPECT_EQ(station.Once({"--state", "other"}).code, 0);
    EXPECT_EQ(station.End(), 0);
}

TEST(Watch, StateThatCannotBeWrittenEndsIt)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    const Finished run =
        RunShell(station.Path(), "trap '' XFSZ; ulimit -f 0; exec zucmtr watch --once --out out in");
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains("zucmtr: 'out/.zucmtr-watch' cannot be written: ")) << run.err;
    EXPECT_EQ(Station::EventsIn(run.out, "converting"),
              QStringList()); // what cannot be remembered is not started
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}

TEST(Watch, WhatMayBeThereAtTheNextStartIsNoWrongUsage)
{
    const Station station;
    const Finished missing = RunProgram(station.Path(), {"watch", "--out", "out", "none"});
    EXPECT_EQ(missing.code, 1);
    EXPECT_EQ(missing.err, "zucmtr: there is no directory 'none'; make it first: mkdir -p none\n");
    const Finished out = RunProgram(station.Path(), {"watch", "--out", "none", "in"});
    EXPECT_EQ(out.code, 1);
    EXPECT_EQ(out.err, "zucmtr: --out: the directory 'none' does not exist; make it first: mkdir -p none\n");
    const Finished archive = station.Once({"--archive", "none"});
    EXPECT_EQ(archive.code, 1);
    EXPECT_EQ(archive.err,
              "zucmtr: --archive: the directory 'none' does not exist; make it first: mkdir -p none\n");
    const Finished state = station.Once({"--state", "none/journal"});
    EXPECT_EQ(state.code, 1);
    EXPECT_EQ(
        state.err,
        "zucmtr: --state: 'none/journal' cannot be written: No such file or directory; give another file\n");
}

TEST(Watch, WrongUsageIsReported)
{
    const Station station;
    EXPECT_EQ(station.Once({"--no-verify", "--remove-source"}).code, 2);
    EXPECT_EQ(station.Once({"--no-verify", "--archive", "none"}).code, 2);
    EXPECT_EQ(station.Once({"--archive", "ZuDrv.ini"}).code, 2);
    EXPECT_EQ(RunProgram(station.Path(), {"watch", "--out", "ZuDrv.ini", "in"}).code, 2);
    EXPECT_EQ(RunProgram(station.Path(), {"watch", "--out", "out", "ZuDrv.ini"}).code, 2);
}

TEST(Watch, ExampleOfTheHelpWorks)
{
    const TestDirectory directory;
    const QString help = RunProgram(QString(), {"watch", "--help"}).out;
    const Finished run =
        RunShell(directory.Path(), "set -e\n" + help.section("Example, with the sample station:\n", 1));
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Station::EventsIn(run.out, "converted").size(), 8);
}
