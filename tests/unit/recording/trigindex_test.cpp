// The sample index of the trigger, and invalid rates.
#include "support/loadedfile.h"

#include <gtest/gtest.h>

#include <limits>

using namespace recorderfile;

namespace {

// A recording that starts at second 1000000, with its rate checked and thus its period known.
unsigned int TrigIndex(float rate, int64_t seconds, int32_t startMicroseconds, int32_t trigMicroseconds)
{
    Recording recording;
    recording.startTime = 1000000;
    recording.startMicroseconds = startMicroseconds;
    recording.trigTime = static_cast<uint32_t>(1000000 + seconds);
    recording.trigMicroseconds = trigMicroseconds;
    recording.duration = 1;
    AnalogChannel channel{"Q1:Ia", "А", {1}};
    channel.rate = rate;
    LoadedFile file(recording.Add(channel));
    EXPECT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_TRUE(file->IsAnChRatesValid());
    return file->GetTrigIndex();
}

quint32 SamplesPerPeriod(float rate)
{
    AnalogChannel channel{"Q1:Ia", "А", {1}};
    channel.rate = rate;
    Recording recording;
    recording.duration = 1;
    LoadedFile file(recording.Add(channel));
    EXPECT_TRUE(file->IsAnChRatesValid());
    return file->SamplesPerPeriod;
}

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float largest = std::numeric_limits<float>::max();

} // namespace

TEST(TrigIndex, IsOnePeriodBeforeTheTrigger)
{
    EXPECT_EQ(TrigIndex(2400, 0, 0, 500000), 1200u - 48u);
    EXPECT_EQ(TrigIndex(2400, 1, 750000, 250000), 1200u - 48u);
    EXPECT_EQ(TrigIndex(2400, 10, 0, 0), 24000u - 48u);
    EXPECT_EQ(TrigIndex(1200, 1, 0, 1), 1200u - 24u);
}

TEST(TrigIndex, RoundsHalvesAwayFromZero)
{
    // At 1000 samples per second the period is 20 samples and half a sample 500 microseconds.
    EXPECT_EQ(TrigIndex(1000, 0, 0, 100499), 80u);
    EXPECT_EQ(TrigIndex(1000, 0, 0, 100500), 81u);
    EXPECT_EQ(TrigIndex(1000, 0, 0, 101500), 82u);
}

TEST(TrigIndex, IsZeroWhenTriggerPrecedesStart)
{
    EXPECT_EQ(TrigIndex(2400, -1, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(2400, -1, 0, 999999), 0u);
    EXPECT_EQ(TrigIndex(2400, -999999, 0, 0), 0u);
}

TEST(TrigIndex, IsZeroWhenTriggerPrecedesStartWithinOneSecond)
{
    EXPECT_EQ(TrigIndex(2400, 0, 500000, 499999), 0u);
    EXPECT_EQ(TrigIndex(2400, 0, 500000, 400000), 0u);
    EXPECT_EQ(TrigIndex(2400, 0, 999999, 0), 0u);
}

TEST(TrigIndex, IsZeroLessThanOnePeriodAfterTheStart)
{
    EXPECT_EQ(TrigIndex(2400, 0, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(2400, 0, 0, 19000), 0u);
    EXPECT_EQ(TrigIndex(2400, 0, 0, 19583), 0u) << "one sample less";
    EXPECT_EQ(TrigIndex(2400, 0, 0, 20000), 0u);
    EXPECT_EQ(TrigIndex(2400, 0, 0, 20417), 1u);
}

TEST(TrigIndex, KeepsTheLow32BitsOfALateTrigger)
{
    EXPECT_EQ(TrigIndex(2400, 1789570, 0, 0), 1789570ull * 2400 - 0x100000000ull - 48);
    // The low bits alone are below one period.
    EXPECT_EQ(TrigIndex(2048, 0x200000, 0, 0), 0u);
}

TEST(TrigIndex, UsesTheUsualRateWithoutAnalogChannels)
{
    LoadedFile file{Recording()};
    EXPECT_EQ(file->GetTrigIndex(), 1200u);
}

TEST(SamplesPerPeriod, RoundsHalvesAwayFromZero)
{
    EXPECT_EQ(SamplesPerPeriod(2400), 48u);
    EXPECT_EQ(SamplesPerPeriod(25), 1u);
    EXPECT_EQ(SamplesPerPeriod(24.9F), 0u);
    EXPECT_EQ(SamplesPerPeriod(1225), 25u);
    EXPECT_EQ(SamplesPerPeriod(0), 0u);
}

TEST(SamplesPerPeriod, RatesThatAreNoRatesGoToTheNearestLimit)
{
    EXPECT_EQ(SamplesPerPeriod(notANumber), 0u);
    EXPECT_EQ(SamplesPerPeriod(-2400), 0u);
    EXPECT_EQ(SamplesPerPeriod(-infinity), 0u);
    EXPECT_EQ(SamplesPerPeriod(-largest), 0u);
    EXPECT_EQ(SamplesPerPeriod(infinity), 0xFFFFFFFFu);
    EXPECT_EQ(SamplesPerPeriod(largest), 0xFFFFFFFFu);
    EXPECT_EQ(SamplesPerPeriod(0x1p31F * 50), 0x80000000u);
}

TEST(TrigIndex, RatesThatAreNoRatesGiveNoUndefinedIndex)
{
    EXPECT_EQ(TrigIndex(notANumber, 1, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(infinity, 1, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(infinity, 0, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(-infinity, 1, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(largest, 1, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(-largest, 1, 0, 0), 0u);
    EXPECT_EQ(TrigIndex(-2400, 1, 0, 0), static_cast<unsigned int>(-2400));
    EXPECT_EQ(TrigIndex(0, 1, 0, 0), 0u);
}
