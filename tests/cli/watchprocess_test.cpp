// zucmtr watch: recordings that crash the program, or the process that converts one of them.
#include "watchstation.h"

#include <QDir>

#include <csignal>
#include <cstdlib>
#include <sys/stat.h>

using recorderfile::Encode;

namespace {

// The process that opens a file of this name is ended by the signal.
QMap<QString, QString> Fault(const QString& file, int signal)
{
    return {{"LD_PRELOAD", WATCH_FAULTS_LIBRARY}, {"END_AT", file}, {"END_BY", QString::number(signal)}};
}

// Ends the program twice; from then on it uses a separate process for the recording.
void EndTwice(const Station& station, const QMap<QString, QString>& fault)
{
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(station.Once({}, fault).code, -1);
}

} // namespace

// The power may have failed as often, or somebody may have ended the program.
TEST(WatchProcess, RecordingWithWhichTheProgramWasEndedComesLastAndIsConverted)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(station.Once().code, 0);
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    for (const char* times : {"1", "2", "3", "100"}) {
        station.Journal("DELETE FROM recordings WHERE file LIKE '%/b.ZU'");
        station.Journal(QByteArray("UPDATE recordings SET state = 'begun', unended = ") + times);
        EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), (QStringList{"in/b.ZU", "in/a.ZU"}));
    }
}

// A separate process takes the crash.
TEST(WatchProcess, RecordingThatEndsTheProgramIsFoundAndGivenUp)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    const QMap<QString, QString> fault = Fault("a.ZU", SIGSEGV);
    EndTwice(station, fault);
    for (int run = 0; run < 2; ++run) {
        const Finished last = station.Once({}, fault);
        EXPECT_EQ(last.code, 1);
        EXPECT_EQ(Station::EventsIn(last.out, "failed", "reason"), QStringList{"neverEnded"});
        EXPECT_EQ(
            Station::EventsIn(last.out, "failed", "error"),
            QStringList{"not converted: the program does not survive it (signal 11); send the recording to "
                        "the maintainers"});
    }
    EXPECT_EQ(station.Records(), QStringList{ShortRecordName(10) + ".cfg"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}

// It is no failure, and nothing is given up.
TEST(WatchProcess, RecordingThatGoesAwayDuringTheAttemptIsForgotten)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    const Finished run = station.Once({}, {{"LD_PRELOAD", WATCH_FAULTS_LIBRARY}, {"GONE_AT", "a.ZU"}});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Station::EventsIn(run.out, "converting"), (QStringList{"in/a.ZU", "in/b.ZU"}));
    EXPECT_EQ(Station::EventsIn(run.out, "failed"), QStringList());
    EXPECT_EQ(Station::EventsIn(run.out, "converted"), QStringList{"in/b.ZU"});
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}

// Everything that the other process found out is passed back: here that a bad file is not in the record,
// which is made again when that file is touched.
TEST(WatchProcess, FileThatTheOtherProcessLeftOutIsRemembered)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/a.Z01", "junk");
    EXPECT_EQ(station.Once().code, 0);
    station.Journal("UPDATE recordings SET state = 'begun', unended = 3");
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "found"), QStringList());
    EXPECT_EQ(chmod(station.Path("in/a.Z01").toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
}

// Not only when the service restarts, or works in the same directory again.
TEST(WatchProcess, UnfinishedRecordOfAProcessThatCameDownIsRemovedAtOnce)
{
    const Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    const QMap<QString, QString> fault = Fault(ShortRecordName(0) + ".dat", SIGSEGV); // while it is compared
    EndTwice(station, fault);
    const QDir out(station.Path("out"));
    const QDir::Filters hidden = QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
    EXPECT_EQ(out.entryList(hidden).size(), 1); // of the program itself
    EXPECT_EQ(Station::EventsIn(station.Once({}, fault).out, "failed", "reason"), QStringList{"neverEnded"});
    EXPECT_EQ(out.entryList(hidden), QStringList());
}

// The process is ended by an operator, or by a system short of memory: that is not an attempt.
TEST(WatchProcess, RecordingWhoseProcessIsKilledIsConvertedWhenThatIsOver)
{
    for (const int signal : {SIGKILL, SIGHUP}) {
        const Station station;
        station.Write("in/a.ZU", Encode(ShortRecording(0)));
        const QMap<QString, QString> fault = Fault("a.ZU", signal);
        EndTwice(station, fault);
        const Finished killed = station.Once({}, fault);
        EXPECT_EQ(killed.code, 1);
        EXPECT_EQ(Station::EventsIn(killed.out, "failed", "reason"), QStringList{"processKilled"});
        EXPECT_EQ(Station::EventsIn(killed.out, "failed", "error"),
                  QStringList{QString("not converted: the process that worked on it was ended from outside "
                                      "(signal %1); if the system lacked memory, its log has a line on that")
                                  .arg(signal)});
        EXPECT_EQ(station.Count("given up"), 0);
        EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/a.ZU"});
    }
}

// Counted across restarts, separately from the attempts.
TEST(WatchProcess, RecordingWhoseProcessIsKilledSixteenTimesIsGivenUp)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    const QMap<QString, QString> fault = Fault("a.ZU", SIGKILL);
    EndTwice(station, fault);
    for (auto one = fault.begin(); one != fault.end(); ++one)
        setenv(one.key().toLocal8Bit().constData(), one.value().toLocal8Bit().constData(), 1);
    for (const int times : {4, 16}) {
        station.Start({"--attempts", "1"});
        ASSERT_TRUE(station.Waits("failed", times));
        EXPECT_EQ(station.End(), 0);
    }
    for (auto one = fault.begin(); one != fault.end(); ++one)
        unsetenv(one.key().toLocal8Bit().constData());
    const QStringList attempts = station.Events("failed", "attempt");
    EXPECT_EQ(attempts.size(), 16);
    EXPECT_EQ(attempts.last(), "16");
    const QStringList pauses = station.Events("failed", "retrySeconds");
    EXPECT_EQ(pauses.count("0.01"), 15);
    EXPECT_EQ(pauses.last(), QString());
    station.Start();
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("converted"), QStringList{"in/b.ZU"});
}
