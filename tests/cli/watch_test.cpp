// zucmtr watch: recordings that are there, that come, that grow; restarts, kills and failures.
#include "child.h"
#include "program.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

using recorderfile::Encode;

constexpr int QuietMilliseconds = 100;

// A place with the directory "in" and a watch that can be started, ended and started again. Its output is
// collected in a file.
class Station : public Workplace
{
public:
    Station() : Workplace({{"Время ожидания", QString::number(QuietMilliseconds)}})
    {
        MakeDirectory("in");
        output =
            open(Path("events").toLocal8Bit().constData(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }
    ~Station() { close(output); }
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    void Start(const QStringList& more = {})
    {
        child = std::make_unique<Child>(
            Path(),
            QStringList{"watch", "--out", "out", "--rescan", "0.05", "--retry-after", "0.01"} + more +
                QStringList{"in"},
            output, output);
    }

    // Ends it by the signal and gives its exit code.
    int End(int signal = SIGTERM)
    {
        child->Send(signal);
        return WaitFor([&] { return child->HasEnded(); }) ? child->Code() : -2;
    }

    Child& Running() { return *child; }

    Finished Once(const QStringList& more = {}) const
    {
        return RunProgram(Path(), QStringList{"watch", "--once", "--out", "out"} + more + QStringList{"in"});
    }

    // The values of a key in all events of a kind, in order.
    QStringList Events(const QString& kind, const QString& key = "file") const
    {
        return EventsIn(QString::fromUtf8(ReadBytes(Path("events"))), kind, key);
    }

    static QStringList EventsIn(const QString& text, const QString& kind, const QString& key = "file")
    {
        QStringList values;
        for (const QString& line : text.split('\n')) {
            const QJsonObject event = QJsonDocument::fromJson(line.toUtf8()).object();
            if (event["event"].toString() == kind)
                values << event[key].toVariant().toString();
        }
        return values;
    }

    bool Waits(const QString& kind, int count) const
    {
        return WaitFor([&] { return Events(kind).size() >= count; });
    }

    QStringList Records() const { return Names("out").filter(".cfg"); }

private:
    int output = -1;
    std::unique_ptr<Child> child;
};

} // namespace

TEST(Watch, ConvertsWhatIsThereAndWhatComes)
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

TEST(Watch, RecordingThatGrowsIsTakenWhenItIsQuiet)
{
    Station station;
    const QByteArray whole = Encode(ShortRecording(0));
    station.Start();
    ASSERT_TRUE(WaitFor([&] { return !station.Events("started", "event").isEmpty(); }));
    // Bytes come for five times the quiet time, never as far apart as it.
    const auto begin = std::chrono::steady_clock::now();
    int size = 0;
    ASSERT_TRUE(WaitFor([&] {
        size = std::min(size + 1, whole.size() - 1);
        station.Write("in/a.ZU", whole.left(size));
        return std::chrono::steady_clock::now() - begin > std::chrono::milliseconds(5 * QuietMilliseconds);
    }));
    EXPECT_EQ(station.Events("converting"), QStringList());
    station.Write("in/a.ZU", whole);
    ASSERT_TRUE(station.Waits("converted", 1));
    EXPECT_EQ(station.End(), 0);
    EXPECT_EQ(station.Events("failed"), QStringList());
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
    for (int kills = 1; kills <= 4; ++kills) {
        const int before = station.Events("converting").size();
        station.Start();
        ASSERT_TRUE(station.Waits("converting", before + 1));
        station.End(SIGKILL);
    }
    const int convertedBefore = station.Events("converted").size();
    const Finished last = station.Once();
    EXPECT_EQ(last.code, 0) << last.err;
    EXPECT_EQ(station.Records().size(), count);
    // At most the one at hand is converted again, after each kill.
    const int again = convertedBefore + Station::EventsIn(last.out, "converted").size() - count;
    EXPECT_GE(again, 0 - 4); // a conversion that was not told any more
    EXPECT_LE(again, 4);
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converting"), QStringList());
}

TEST(Watch, LineOfTheJournalThatWasCutOffIsPassedOver)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    station.Write("in/b.ZU", Encode(ShortRecording(10)));
    EXPECT_EQ(station.Once().code, 0);
    const QByteArray journal = ReadBytes(station.Path("out/.zucmtr-watch"));
    station.Write("out/.zucmtr-watch", journal.chopped(5));
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList{"in/b.ZU"});
    EXPECT_EQ(Station::EventsIn(station.Once().out, "converted"), QStringList());
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
    EXPECT_EQ(station.Records().size(), 2);
    const Finished next = station.Once({"--recursive", "--archive", "in/archive"});
    EXPECT_EQ(Station::EventsIn(next.out, "found"), QStringList());
    EXPECT_EQ(ReadBytes(station.Path("out/.zucmtr-watch")), QByteArray());
}

TEST(Watch, StateBelongsToOneProcess)
{
    Station station;
    station.Start();
    ASSERT_TRUE(WaitFor([&] { return !station.Events("started", "event").isEmpty(); }));
    const Finished other = station.Once();
    EXPECT_EQ(other.code, 2);
    EXPECT_TRUE(other.err.contains("another 'zucmtr watch' works with 'out/.zucmtr-watch'")) << other.err;
    EXPECT_EQ(station.Once({"--state", "other"}).code, 0);
    EXPECT_EQ(station.End(), 0);
}

TEST(Watch, StateThatCannotBeWrittenEndsIt)
{
    Station station;
    station.Write("in/a.ZU", Encode(ShortRecording(0)));
    const Finished run = station.Once({"--state", "/dev/full"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains("zucmtr: '/dev/full' cannot be written: ")) << run.err;
}

TEST(Watch, WrongUsageIsTold)
{
    const Station station;
    const Finished missing = RunProgram(station.Path(), {"watch", "--out", "out", "none"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_TRUE(missing.err.contains("'none' is no directory")) << missing.err;
    EXPECT_EQ(station.Once({"--no-verify", "--remove-source"}).code, 2);
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
