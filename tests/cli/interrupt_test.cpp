// Ctrl-C, and the progress bar on a terminal. Both need processes that the test sets up itself.
#include "child.h"
#include "program.h"
#include "terminal.h"

#include "zucmtr/terminal/progress.h"

#include <QDir>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using recorderfile::Encode;

// A pipe that holds one page.
class SmallPipe
{
public:
    SmallPipe()
    {
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            std::abort();
        fcntl(ends[1], F_SETPIPE_SZ, 4096);
    }
    ~SmallPipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    SmallPipe(const SmallPipe&) = delete;
    SmallPipe& operator=(const SmallPipe&) = delete;

    int In() const { return ends[1]; }

    int Waiting() const
    {
        int count = 0;
        ioctl(ends[0], FIONREAD, &count);
        return count;
    }

    QByteArray Take() const
    {
        QByteArray bytes(Waiting(), '\0');
        bytes.truncate(bytes.isEmpty() ? 0
                                       : static_cast<int>(
                                             read(ends[0], bytes.data(), static_cast<size_t>(bytes.size()))));
        return bytes;
    }

private:
    std::array<int, 2> ends{};
};

// Writes this many recordings and returns their names.
QStringList Recordings(const Workplace& place, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names << QString::asprintf("%03d.ZU", i);
        recorderfile::Recording recording = ShortRecording();
        recording.startTime += static_cast<uint32_t>(i);
        recording.trigTime += static_cast<uint32_t>(i);
        place.Write(names.last(), Encode(recording));
    }
    return names;
}

} // namespace

// The output is not read, so that the program is blocked while the signals arrive.
TEST(Interrupt, FirstEndsAfterTheCurrentRecordings)
{
    const Workplace place;
    const SmallPipe output;
    const SmallPipe error;
    const QStringList names = Recordings(place, 300);
    Child child(place.Path(), QStringList{"convert", "--out", "out", "--quiet", "--json"} + names,
                output.In(), error.In());
    ASSERT_TRUE(WaitFor([&] { return output.Waiting() > 0; }));
    child.Send(SIGINT);
    QByteArray text;
    ASSERT_TRUE(WaitFor([&] {
        text += output.Take();
        return child.HasEnded();
    }));
    text += output.Take();
    EXPECT_EQ(child.Code(), 130);
    // What was started is whole and reported; the rest was not started.
    const int reported = text.count("\"status\":\"converted\"");
    EXPECT_EQ(reported, text.count('\n'));
    EXPECT_EQ(place.Names("out").size(), 4 * reported);
    EXPECT_GT(reported, 0);
    EXPECT_LT(reported, names.size());
}

TEST(Interrupt, TerminationIsTheSameWithItsOwnCode)
{
    const Workplace place;
    const SmallPipe output;
    Child child(place.Path(), QStringList{"convert", "-q", "--json", "--out", "out"} + Recordings(place, 300),
                output.In(), output.In());
    ASSERT_TRUE(WaitFor([&] { return output.Waiting() > 0; }));
    child.Send(SIGTERM);
    ASSERT_TRUE(WaitFor([&] {
        output.Take();
        return child.HasEnded();
    }));
    EXPECT_EQ(child.Code(), 143);
}

TEST(Interrupt, SecondEndsAtOnce)
{
    const Workplace place;
    const SmallPipe output;
    Child child(place.Path(), QStringList{"convert", "--json", "--out", "out"} + Recordings(place, 60),
                output.In(), output.In());
    // The program is blocked in a write, and one signal does not end it.
    ASSERT_TRUE(WaitFor([&] { return output.Waiting() > 3000; }));
    ASSERT_TRUE(WaitFor([&] {
        child.Send(SIGINT);
        return child.HasEnded();
    }));
    EXPECT_EQ(child.Code(), 130);
}

// Nothing is left among the temporary files, where the recording's record was: see main.cpp.
TEST(Interrupt, ViewEndsAfterTheCurrentFile)
{
    const Workplace place;
    const SmallPipe page;
    const SmallPipe output;
    place.Write("a.ZU", Encode(ShortRecording()));
    fcntl(page.In(), F_SETFD, 0);
    Child child(place.Path(),
                {"view", "a.ZU", "-o", QStringLiteral("/dev/fd/%1").arg(page.In()), "--svg", "a.svg"},
                output.In(), output.In());
    ASSERT_TRUE(WaitFor([&] { return page.Waiting() > 0; }));
    child.Send(SIGINT);
    QByteArray text;
    ASSERT_TRUE(WaitFor([&] {
        text += page.Take();
        return child.HasEnded();
    }));
    EXPECT_EQ(child.Code(), 130);
    EXPECT_TRUE((text + page.Take()).endsWith("</html>\n"));
    EXPECT_EQ(place.Names(), (QStringList{"ZuDrv.ini", "a.ZU"}));
}

// As in "zucmtr events *.ZU | head", with a pipe whose reader is gone from the start.
TEST(ClosedOutput, EndsEveryCommandWithoutAWordAndLeavesNothing)
{
    const Workplace place;
    place.MakeDirectory("tmp");
    for (const char* name : {"a.ZU", "b.ZU"})
        place.Write(name, Encode(ShortRecording(name[0] - 'a')));
    for (const char* command :
         {"--help", "check ZuDrv.ini", "info a.ZU", "events a.ZU b.ZU", "events --json a.ZU b.ZU",
          "events --csv a.ZU b.ZU", "view -o - a.ZU", "view --svg - a.ZU", "export --form csv -o - a.ZU",
          "dictionary a.ZU", "validate a.ZU", "convert --json --out out a.ZU"}) {
        const Finished run = RunShell(
            place.Path(),
            QString(
                "mkfifo p && exec 3<>p 4>p 3<&- && rm p && export TMPDIR=$PWD/tmp && zucmtr %1 >&4; echo $?")
                .arg(command));
        EXPECT_EQ(run.out, "141\n") << command;
        EXPECT_EQ(run.err, "") << command;
        EXPECT_TRUE(QDir(place.Path("tmp")).isEmpty()) << command;
    }
}

TEST(Progress, BarIsShownOnATerminalAndRemovedAtTheEnd)
{
    const Workplace place;
    const Finished run = RunOnTerminal(
        place.Path(), QStringList{"convert", "--out", "out"} + Recordings(place, 20), {{"TERM", "xterm"}});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.err.contains("/20")) << run.err;
    EXPECT_TRUE(run.err.contains("\r\033[Kzucmtr: 20 recordings: 20 converted and verified; ")) << run.err;
}

TEST(Progress, TextHasRateAndRemainingTime)
{
    EXPECT_EQ(ProgressText(0, 8, 0.1, 80), QStringLiteral("[........................] 0/8"));
    EXPECT_EQ(ProgressText(2, 8, 1e-7, 80), QStringLiteral("[######..................] 2/8"));
    EXPECT_EQ(ProgressText(2, 8, 1, 80),
              QStringLiteral("[######..................] 2/8  2.0 a second, 0:03 left"));
    EXPECT_EQ(ProgressText(1000, 4000, 10, 80),
              QStringLiteral("[######..................] 1000/4000  100 a second, 0:30 left"));
    EXPECT_EQ(ProgressText(2, 8, 1, 31), QStringLiteral("[######..................] 2/8"));
}

TEST(Progress, DurationsAreMinutesOrHours)
{
    EXPECT_EQ(DurationText(0), QStringLiteral("0:00"));
    EXPECT_EQ(DurationText(59.6), QStringLiteral("1:00"));
    EXPECT_EQ(DurationText(3599), QStringLiteral("59:59"));
    EXPECT_EQ(DurationText(3725), QStringLiteral("1:02:05"));
}
