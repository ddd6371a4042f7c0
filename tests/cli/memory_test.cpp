// The bound on the program's memory.
#include "program.h"

#include "recorderfile/compress.h"

#include <gtest/gtest.h>

using namespace recorderfile;

namespace {

// A file of 140 KB whose samples would take 2 GB.
QByteArray CopyBomb()
{
    constexpr uint16_t BlockSamples = 65535;
    AnalogChannel channel;
    channel.name = QStringLiteral("Q1:Ia");
    channel.points = 1000000000;
    channel.compressed = 1;
    channel.rawData = CompressedArea(2000000000, BlockSamples, std::vector<int16_t>(BlockSamples, 1))
                          .Raw(QByteArray(8000, '\0'))
                          .Bytes();
    Recording recording;
    return Encode(recording.Add(channel));
}

TEST(MaxMemory, ARecordingThatNeedsMoreFailsWithTheAllocationText)
{
    const Workplace place;
    place.Write(QStringLiteral("bomb.ZU"), CopyBomb());
    const Finished run =
        place.Convert({QStringLiteral("--max-memory"), QStringLiteral("1G"), QStringLiteral("bomb.ZU")});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral(
        "bomb.ZU: not converted: an analog channel cannot be read: there is not enough memory; "
        "give more by --max-memory, or convert fewer recordings at once")))
        << run.err;
}

TEST(MaxMemory, TooLittleIsWrongUsage)
{
    const Workplace place;
    place.Write(QStringLiteral("rec.ZU"), Encode(ShortRecording()));
    const Finished run =
        place.Convert({QStringLiteral("--max-memory"), QStringLiteral("1M"), QStringLiteral("rec.ZU")});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("give 128M or more"))) << run.err;
}

TEST(MaxMemory, ZeroIsNoLimit)
{
    const Workplace place;
    place.Write(QStringLiteral("rec.ZU"), Encode(ShortRecording()));
    EXPECT_EQ(
        place.Convert({QStringLiteral("--max-memory"), QStringLiteral("0"), QStringLiteral("rec.ZU")}).code,
        0);
}

TEST(Memory, ThatIsMissingInAThreadEndsTheRunAndLosesNothing)
{
    const Workplace place;
    for (int number = 0; number < 4; ++number)
        place.Write(QStringLiteral("%1.ZU").arg(number), Encode(ShortRecording(number)));
    const QStringList arguments = {"convert", "--out", "out", "--remove-source", "-j2", "."};
    for (const char* from : {"1", "10", "30"}) {
        const Finished run = RunProgram(place.Path(), arguments,
                                        {{"LD_PRELOAD", NO_MEMORY_LIBRARY}, {"NO_MEMORY_FROM", from}});
        EXPECT_EQ(run.code, 1) << from << run.err;
        EXPECT_TRUE(run.err.endsWith("zucmtr: out of memory; work on fewer or shorter recordings\n"))
            << run.err;
    }
    EXPECT_EQ(RunProgram(place.Path(), arguments).code, 0);
    EXPECT_EQ(place.Names(), QStringList{"ZuDrv.ini"});
    EXPECT_EQ(place.Names("out").size(), 4 * 4);
}

TEST(MaxMemory, SmallestIsEnoughForSeveralSmallRecordingsAtOnce)
{
    const Workplace place;
    place.Write(QStringLiteral("a.ZU"), Encode(ShortRecording(0)));
    place.Write(QStringLiteral("b.ZU"), Encode(ShortRecording(1)));
    const Finished run =
        place.Convert({QStringLiteral("--max-memory"), QStringLiteral("128M"), QStringLiteral("-j2"),
                       QStringLiteral("a.ZU"), QStringLiteral("b.ZU")});
    EXPECT_EQ(run.code, 0) << run.err;
}

} // namespace
