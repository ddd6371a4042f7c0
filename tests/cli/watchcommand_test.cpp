// zucmtr watch --exec: what the command gets, and what becomes of one that fails, hangs, or is cut off.
#include "watchstation.h"

#include <QDir>
#include <QJsonArray>
#include <QRegularExpression>

#include <csignal>
#include <sys/stat.h>

using recorderfile::Encode;

namespace {

// A station with a script "hook" that is run after each record.
class HookStation : public Station
{
public:
    explicit HookStation(const QByteArray& script) { Hook(script); }

    void Hook(const QByteArray& script) const
    {
        Write("hook", "#!/bin/sh\n" + script);
        EXPECT_EQ(chmod(Path("hook").toLocal8Bit().constData(), 0700), 0);
    }

    QStringList Lines(const QString& file) const
    {
        if (!QFile::exists(Path(file)))
            return {};
        QStringList lines = QString::fromUtf8(ReadBytes(Path(file))).split('\n');
        lines.removeAll(QString());
        return lines;
    }

    void Recordings(int count) const
    {
        for (int i = 0; i < count; ++i)
            Write(QString("in/%1.ZU").arg(i), Encode(ShortRecording(10 * i)));
    }

    bool IsThere(const QString& file) const { return QFile::exists(Path(file)); }
};

const QStringList Exec = {"--exec", "./hook"};

// The number that the script has written to the file.
int ProcessIn(const HookStation& station, const QString& file)
{
    return station.Lines(file).value(0).toInt();
}

bool IsRunning(int process)
{
    return kill(process, 0) == 0;
}

} // namespace

TEST(WatchCommand, GetsTheReportOfTheRecordAndWhatHappened)
{
    const HookStation station("cat > input; env > variables");
    station.Recordings(1);
    const Finished run = station.Once(Exec);
    EXPECT_EQ(run.code, 0) << run.err;
    const QJsonObject input = QJsonDocument::fromJson(ReadBytes(station.Path("input"))).object();
    EXPECT_EQ(input["file"].toString(), "in/0.ZU");
    EXPECT_EQ(input["status"].toString(), "converted");
    EXPECT_EQ(input["record"].toString(), ShortRecordName(0));
    EXPECT_EQ(input["files"].toArray().size(), 4);
    EXPECT_TRUE(input["summary"].toObject().contains("fault"));
    const QStringList variables = station.Lines("variables");
    const QString record = station.Path("out/" + ShortRecordName(0));
    for (const char* line :
         {"ZUCMTR_RECORDER=Vostochnaya", "ZUCMTR_STATUS=converted", "ZUCMTR_SOURCE=kept", "ZUCMTR_ATTEMPT=1"})
        EXPECT_TRUE(variables.contains(line)) << line;
    EXPECT_TRUE(variables.contains("ZUCMTR_RECORDING=" + station.Path("in/0.ZU")));
    EXPECT_TRUE(variables.contains("ZUCMTR_RECORD=" + record + ".cfg"));
    EXPECT_TRUE(variables.contains("ZUCMTR_FILES=" + record + ".cfg"));
    EXPECT_TRUE(variables.contains(record + ".dat")); // the second line of the value
    EXPECT_EQ(variables.filter(QRegularExpression("^ZUCMTR_STATION=.")).size(), 1);
    EXPECT_EQ(variables.filter(QRegularExpression("^ZUCMTR_TRIGGER=20..-..-..T")).size(), 1);
    // What is for the command is no part of the event.
    EXPECT_FALSE(run.out.contains("\"summary\""));
    EXPECT_EQ(Station::EventsIn(run.out, "commandDone"), QStringList{"in/0.ZU"});
    EXPECT_EQ(station.Journal("SELECT count(*) FROM commands"), QStringList{"0"});
}

TEST(WatchCommand, ArgumentsReachItAsTheyAre)
{
    const HookStation station("printf '%s\\n' \"$@\" > arguments");
    station.Recordings(1);
    EXPECT_EQ(station.Once({"--exec", "./hook 'a  b' $HOME *"}).code, 0);
    EXPECT_EQ(station.Lines("arguments"), (QStringList{"a  b", "$HOME", "*"}));
}

TEST(WatchCommand, FailureIsTriedAgainAfterGrowingPausesAndStopsNoOther)
{
    HookStation station("echo $ZUCMTR_ATTEMPT >> attempts\n"
                        "case $ZUCMTR_RECORDING in */0.ZU) echo no mail; exit 3;; esac");
    station.Recordings(2);
    station.Start(Exec + QStringList{"--exec-retries", "2"});
    ASSERT_TRUE(station.Waits("commandFailed", 3));
    ASSERT_TRUE(station.Waits("commandDone", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("commandFailed"), (QStringList{"in/0.ZU", "in/0.ZU", "in/0.ZU"}));
    EXPECT_EQ(station.Events("commandFailed", "reason").first(), "commandFailed");
    EXPECT_EQ(station.Events("commandFailed", "error").first(), "the command ended with exit code 3");
    EXPECT_EQ(station.Events("commandFailed", "output").first(), "no mail\n");
    EXPECT_EQ(station.Events("commandFailed", "attempt"), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(station.Events("commandFailed", "retrySeconds"), (QStringList{"0.01", "0.02", QString()}));
    EXPECT_EQ(station.Events("commandDone"), QStringList{"in/1.ZU"});
    EXPECT_EQ(station.Count("converted"), 2);
    EXPECT_EQ(station.Journal("SELECT state || ' ' || failures FROM commands"), QStringList{"given up 3"});
}

TEST(WatchCommand, OneThatIsGivenUpIsRunAgainWhenAskedTo)
{
    HookStation station("exit 1");
    station.Recordings(1);
    station.Start(Exec + QStringList{"--exec-retries", "0"});
    ASSERT_TRUE(station.Waits("commandFailed", 1));
    EXPECT_EQ(station.End(), 0);
    station.Hook("exit 0");
    station.Start(Exec + QStringList{"--retry-given-up"});
    ASSERT_TRUE(station.Waits("commandDone", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("converting"), QStringList{"in/0.ZU"}); // the recording itself is done
}

TEST(WatchCommand, WithOnceEachIsTriedOnceAndTheNextRunTriesAgain)
{
    const HookStation station("exit 1");
    station.Recordings(2);
    const Finished run = station.Once(Exec);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "commandFailed"), (QStringList{"in/0.ZU", "in/1.ZU"}));
    station.Hook("exit 0");
    const Finished next = station.Once(Exec);
    EXPECT_EQ(next.code, 0);
    EXPECT_EQ(Station::EventsIn(next.out, "commandDone", "attempt"), (QStringList{"2", "2"}));
    EXPECT_EQ(Station::EventsIn(next.out, "converting"), QStringList());
}

// With its whole process group: here a process that ignores SIGTERM.
TEST(WatchCommand, IsEndedWithItsProcessGroupAtTheTimeLimit)
{
    const HookStation station("(trap '' TERM; echo $$ > shell; exec sleep 1000) & echo $! > child; wait");
    station.Recordings(1);
    const Finished run = station.Once(Exec + QStringList{"--exec-timeout", "0.3"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Station::EventsIn(run.out, "commandFailed", "reason"), QStringList{"commandTimeout"});
    EXPECT_EQ(Station::EventsIn(run.out, "commandFailed", "error"),
              QStringList{"the command took longer than 0.3 s and was ended; see --exec-timeout"});
    EXPECT_TRUE(WaitFor([&] { return !IsRunning(ProcessIn(station, "child")); }));
}

TEST(WatchCommand, ConversionsGoOnWhileItRuns)
{
    HookStation station("echo $$ > process; while ! [ -e in/done ]; do sleep 0.01; done");
    station.Recordings(3);
    station.Start(Exec);
    ASSERT_TRUE(station.Waits("converted", 3));
    ASSERT_TRUE(WaitFor([&] { return ProcessIn(station, "process") > 0; }));
    EXPECT_EQ(station.Events("commandDone"), QStringList());
    station.Write("in/done", "");
    ASSERT_TRUE(station.Waits("commandDone", 3));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("commandDone"), (QStringList{"in/0.ZU", "in/1.ZU", "in/2.ZU"}));
}

// That is no failure of the command: the next run has it run again.
TEST(WatchCommand, IsEndedWithTheServiceAndRunAgainByTheNext)
{
    for (const int signal : {SIGTERM, SIGKILL}) {
        HookStation station("sleep 1000 & echo $! > child; wait");
        station.Recordings(1);
        station.Start(Exec);
        ASSERT_TRUE(WaitFor([&] { return ProcessIn(station, "child") > 0; }));
        EXPECT_EQ(station.End(signal), signal == SIGTERM ? 0 : -1);
        EXPECT_TRUE(WaitFor([&] { return !IsRunning(ProcessIn(station, "child")); }));
        EXPECT_EQ(station.Events("commandFailed"), QStringList());
        station.Hook("exit 0");
        const Finished next = station.Once(Exec);
        EXPECT_EQ(next.code, 0);
        EXPECT_EQ(Station::EventsIn(next.out, "commandDone", "attempt"), QStringList{"1"});
        EXPECT_EQ(Station::EventsIn(next.out, "converting"), QStringList());
    }
}

// Killed between the record and its command, or while the command runs: at least once.
TEST(WatchCommand, NoneIsForgottenHoweverOftenTheServiceIsKilled)
{
    HookStation station("echo $ZUCMTR_RECORDING >> done");
    constexpr int count = 8;
    station.Recordings(count);
    for (int i = 1; i <= 4; ++i) {
        const int before = station.Events("converted").size();
        station.Start(Exec);
        ASSERT_TRUE(station.Waits("converted", before + 1));
        station.End(SIGKILL);
    }
    EXPECT_EQ(station.Once(Exec).code, 0);
    QStringList done = station.Lines("done");
    EXPECT_EQ(done.removeDuplicates() <= 4, true);
    EXPECT_EQ(done.size(), count);
}

TEST(WatchCommand, WritesAsMuchAsItLikes)
{
    const HookStation station("head -c 1000000 /dev/zero | tr '\\0' x; echo end; exit 1");
    station.Recordings(1);
    const Finished run = station.Once(Exec);
    const QString output = Station::EventsIn(run.out, "commandFailed", "output").value(0);
    EXPECT_EQ(output.size(), 2000);
    EXPECT_TRUE(output.endsWith("xend\n"));
}

TEST(WatchCommand, OneThatIsGoneLaterIsAFailure)
{
    HookStation station("exit 0");
    station.Start(Exec);
    ASSERT_TRUE(station.Waits("started", 1));
    ASSERT_TRUE(QFile::remove(station.Path("hook")));
    station.Recordings(1);
    ASSERT_TRUE(station.Waits("commandFailed", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("commandFailed", "reason").first(), "commandNotStarted");
    EXPECT_EQ(station.Events("commandFailed", "error").first(),
              "'./hook' could not be started: No such file or directory");
}

TEST(WatchCommand, OneThatCannotBeRunIsWrongUsage)
{
    const HookStation station("exit 0");
    const Finished missing = station.Once({"--exec", "./none"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.err, "zucmtr: --exec: there is no program './none'; check the path\n");
    const Finished unknown = station.Once({"--exec", "no-such-program a"});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_EQ(unknown.err,
              "zucmtr: --exec: there is no program 'no-such-program' in the directories of PATH; "
              "give its path\n");
    EXPECT_EQ(station.Once({"--exec", "./in"}).err,
              "zucmtr: --exec: './in' cannot be run; give an executable file, or make it one: chmod +x\n");
}

// One of an earlier version has no table for commands.
TEST(WatchCommand, JournalOfTheFirstVersionIsBroughtUpToDate)
{
    const HookStation station("exit 0");
    station.Recordings(1);
    EXPECT_EQ(station.Once().code, 0);
    station.Journal("DROP TABLE commands");
    station.Journal("PRAGMA user_version=1");
    station.Write("in/1.ZU", Encode(ShortRecording(10)));
    const Finished run = station.Once(Exec);
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Station::EventsIn(run.out, "converted"), QStringList{"in/1.ZU"});
    EXPECT_EQ(Station::EventsIn(run.out, "commandDone"), QStringList{"in/1.ZU"});
    EXPECT_EQ(station.Journal("PRAGMA user_version"), QStringList{"2"});
}
