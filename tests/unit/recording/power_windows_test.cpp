// Extreme values of one channel: its classification, its windows and the carry between segments.
#include "support/handmadefile.h"

#include "support/files.h"

#include <gtest/gtest.h>

namespace {

using Codes = std::vector<qint16>;

// Three windows of 4 samples with the RMS values 5, 1 and 9.
const Codes ThreeWindows{5, 5, 5, 5, 1, -1, 1, -1, 9, 9, 9, 9};

struct Class
{
    const char* signal;
    const char* unit;
    bool result, voltage, current;
};

class PowerClass : public testing::TestWithParam<Class>
{};

} // namespace

TEST_P(PowerClass, ComesFromSignalAndUnit)
{
    HandmadeFile file(4);
    AnChannelData& channel =
        file.Add("Q1", QString::fromUtf8(GetParam().signal), QString::fromUtf8(GetParam().unit), {1});
    channel.ExtremeScale = 7.0F;
    EXPECT_EQ(channel.DoExtremeParam(), GetParam().result);
    EXPECT_EQ(channel.IsVoltage, GetParam().voltage);
    EXPECT_EQ(channel.IsCurrent, GetParam().current);
    EXPECT_EQ(channel.ExtremeScale, GetParam().result ? 1.0F : 7.0F);
}

INSTANTIATE_TEST_SUITE_P(
    OfChannels, PowerClass,
    testing::Values(Class{"Ua", "V", true, true, false}, Class{"Ua", "В", true, true, false},
                    Class{"U", "кВ", true, true, false}, Class{"3U0", "В", false, false, false},
                    Class{"Ia", "A", true, false, true}, Class{"Ia", "А", true, false, true},
                    Class{"I", "кА", true, false, true}, Class{"Ia", "kA", true, false, true},
                    Class{"Ua", "А", true, false, false}, Class{"Ia", "В", true, false, false},
                    Class{"Ua", "v", true, false, false}, Class{"Ia", "Вт", true, false, false},
                    Class{"Ua", "", false, false, false}, Class{"Ua", "ккВ", false, false, false},
                    Class{"", "В", false, false, false}, Class{"ua", "В", false, false, false},
                    Class{"F", "Гц", false, false, false}, Class{"Іa", "А", false, false, false}));

TEST(PowerClassification, NeedsSamples)
{
    HandmadeFile file(4);
    AnChannelData& empty = file.Add("Q1", "Ua", "В", {});
    EXPECT_FALSE(empty.DoExtremeParam());
    empty.m_HeaderAn.points = 4;
    EXPECT_FALSE(empty.DoExtremeParam());
    EXPECT_FALSE(empty.IsVoltage);
}

TEST(PowerClassification, NeverClearsAFlag)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ua", "В", {1});
    EXPECT_TRUE(channel.DoExtremeParam());
    channel.Unit = "Гц";
    EXPECT_TRUE(channel.DoExtremeParam());
    EXPECT_TRUE(channel.IsVoltage);
}

TEST(PowerWindow, FullWindowGivesItsScaledRms)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9, 3, -3, 3, -3});
    channel.CoefA = 2.0F;
    channel.CoefB = 0.5F;
    float value = 0;
    double sum = 0.0;
    unsigned int count = 0;
    EXPECT_TRUE(channel.CalcExtremeRMS(1, 4, value, sum, count));
    EXPECT_EQ(value, 6.5F);
    EXPECT_EQ(sum, 0.0);
    EXPECT_EQ(count, 0U);
}

TEST(PowerWindow, CarryIsFinishedByTheNextSegment)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5, 5});
    float value = 0;
    double sum = 2.0; // 1, -1
    unsigned int count = 2;
    EXPECT_TRUE(channel.CalcExtremeRMS(0, 4, value, sum, count));
    EXPECT_EQ(value, 3.6055512F); // of 1, -1, 5, 5: the root of 13
    EXPECT_EQ(sum, 0.0);
    EXPECT_EQ(count, 0U);
}

TEST(PowerWindow, ThatDoesNotFitOpensACarry)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9, 9, 1, 2, 3});
    float value = 7;
    double sum = 100.0;
    unsigned int count = 0;
    EXPECT_FALSE(channel.CalcExtremeRMS(2, 4, value, sum, count));
    EXPECT_EQ(sum, 14.0); // what was in it goes
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(value, 7.0F);
}

TEST(PowerWindow, BeyondTheSamplesClearsTheSum)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9, 9});
    float value = 7;
    double sum = 100.0;
    unsigned int count = 0;
    EXPECT_FALSE(channel.CalcExtremeRMS(2, 4, value, sum, count));
    EXPECT_EQ(sum, 0.0);
    EXPECT_EQ(count, 0U);
}

TEST(PowerWindow, CarryThatStaysOpenIsLeftAlone)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9});
    float value = 7;
    double sum = 100.0;
    unsigned int count = 2;
    EXPECT_FALSE(channel.CalcExtremeRMS(0, 4, value, sum, count));
    EXPECT_EQ(sum, 100.0);
    EXPECT_EQ(count, 2U);
}

TEST(PowerWindow, FullCarryIsRefused)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9, 9, 9, 9});
    float value = 7;
    double sum = 100.0;
    unsigned int count = 4;
    EXPECT_FALSE(channel.CalcExtremeRMS(0, 4, value, sum, count));
    EXPECT_EQ(sum, 100.0);
    EXPECT_EQ(count, 4U);
    EXPECT_EQ(value, 7.0F);
}

TEST(PowerWindow, ValueIsScaledInSinglePrecision)
{
    HandmadeFile file(2);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {32767, 32767});
    channel.CoefA = 1000.1F; // the product, 32770275.9, is rounded to a multiple of 2, and so is the sum
    channel.CoefB = 1.0F;
    float value = 0;
    double sum = 0.0;
    unsigned int count = 0;
    EXPECT_TRUE(channel.CalcExtremeRMS(0, 2, value, sum, count));
    EXPECT_EQ(value, 32770276.0F);
}

TEST(PowerWindow, WindowOfNoSamplesHasNoValue)
{
    HandmadeFile file(0);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9});
    double sum = 0.0;
    unsigned int count = 0;
    EXPECT_FALSE(channel.FindExtremeRMS(0, sum, count));
}

TEST(PowerExtremesOfChannel, AreThoseOfItsWindows)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", ThreeWindows);
    double sum = 0.0;
    unsigned int count = 0;
    EXPECT_TRUE(channel.FindExtremeRMS(4, sum, count));
    EXPECT_EQ(channel.ExtremeMin, 1.0F);
    EXPECT_EQ(channel.ExtremeMax, 9.0F);
    EXPECT_EQ(count, 0U);
}

TEST(PowerExtremesOfChannel, LastWindowThatDoesNotFitIsCarried)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5, 5, 5, 5, 100, 100});
    double sum = 0.0;
    unsigned int count = 0;
    EXPECT_TRUE(channel.FindExtremeRMS(4, sum, count));
    EXPECT_EQ(channel.ExtremeMax, 5.0F);
    EXPECT_EQ(sum, 20000.0);
    EXPECT_EQ(count, 2U);
}

TEST(PowerExtremesOfChannel, ShortChannelHasNone)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5, 5, 5});
    double sum = 0.0;
    unsigned int count = 0;
    EXPECT_FALSE(channel.FindExtremeRMS(4, sum, count));
    EXPECT_EQ(channel.ExtremeMin, 0.0F);
    EXPECT_EQ(channel.ExtremeMax, 0.0F);
    EXPECT_EQ(count, 3U);
}

TEST(PowerExtremesOfChannel, NeedSamples)
{
    HandmadeFile file(4);
    AnChannelData& empty = file.Add("Q1", "Ia", "A", {});
    double sum = 3.0;
    unsigned int count = 2;
    EXPECT_FALSE(empty.FindExtremeRMS(4, sum, count));
    empty.m_HeaderAn.points = 4;
    EXPECT_FALSE(empty.FindExtremeRMS(4, sum, count));
    EXPECT_EQ(sum, 3.0);
    EXPECT_EQ(count, 2U);
}

TEST(PowerExtremesOfChannel, SamplesBetweenACarriedWindowAndTheNextAreLeftOut)
{
    // The carry of 3 samples takes one; the next window still starts at 4.
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5, 999, 999, 999, 1, 1, 1, 1});
    double sum = 75.0; // 5, 5, 5
    unsigned int count = 3;
    EXPECT_TRUE(channel.FindExtremeRMS(4, sum, count));
    EXPECT_EQ(channel.ExtremeMin, 1.0F);
    EXPECT_EQ(channel.ExtremeMax, 5.0F);
}

TEST(PowerExtremesOfChannel, AreWidenedByThoseOfOthers)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5});
    AnChannelData& lower = file.Add("Q1", "Ib", "A", {5});
    AnChannelData& higher = file.Add("Q1", "Ic", "A", {5});
    channel.ExtremeMin = 3.0F;
    channel.ExtremeMax = 4.0F;
    lower.ExtremeMin = 1.0F;
    lower.ExtremeMax = 2.0F;
    higher.ExtremeMin = 8.0F;
    higher.ExtremeMax = 9.0F;
    std::vector<AnChannelData*> others{&lower, &higher};
    EXPECT_TRUE(channel.FindExtremeRMS(others));
    EXPECT_EQ(channel.ExtremeMin, 1.0F);
    EXPECT_EQ(channel.ExtremeMax, 9.0F);
}

TEST(PowerExtremesOfChannel, StayWithoutOthers)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5});
    channel.ExtremeMin = 3.0F;
    std::vector<AnChannelData*> none;
    EXPECT_TRUE(channel.FindExtremeRMS(none));
    EXPECT_EQ(channel.ExtremeMin, 3.0F);
}
