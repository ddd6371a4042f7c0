// Shifts of a third of a period, and the RMS value and angle of one channel.
#include "support/handmadefile.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Value
{
    QString module = QStringLiteral("before");
    QString angle = QStringLiteral("before");
};

Value RmsOf(HandmadeFile& file, AnChannelData& channel, unsigned int index = 0)
{
    Value value;
    file.CalcRMS(index, &channel, value.module, value.angle);
    return value;
}

// One period of count codes, all low but for the peak at position.
std::vector<qint16> PeakAt(size_t position, size_t count = 48)
{
    std::vector<qint16> codes(count, 0);
    codes[position] = 100;
    return codes;
}

} // namespace

struct Shifts
{
    quint32 period, third, twoThirds;
};

class PowerShifts : public testing::TestWithParam<Shifts>
{};

TEST_P(PowerShifts, AreWholeSamples)
{
    const HandmadeFile file(GetParam().period);
    EXPECT_EQ(file.ShiftOneThird, GetParam().third);
    EXPECT_EQ(file.ShiftTwoThirds, GetParam().twoThirds);
}

INSTANTIATE_TEST_SUITE_P(ForPeriods, PowerShifts,
                         testing::Values(Shifts{0, 0, 0}, Shifts{1, 0, 1}, Shifts{2, 1, 1}, Shifts{3, 1, 2},
                                         Shifts{48, 16, 32}, Shifts{49, 16, 33}, Shifts{50, 17, 33},
                                         Shifts{51, 17, 34}, Shifts{200, 67, 133}));

struct Peak
{
    size_t position;
    const char* angle;
};

class PowerAngle : public testing::TestWithParam<Peak>
{};

TEST_P(PowerAngle, ComesFromThePositionOfThePeak)
{
    HandmadeFile file(48);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", PeakAt(GetParam().position));
    EXPECT_EQ(RmsOf(file, channel).angle, GetParam().angle);
}

// Halves, as of positions 11, 13 and 47, are rounded up.
INSTANTIATE_TEST_SUITE_P(Of48Samples, PowerAngle,
                         testing::Values(Peak{0, " 90"}, Peak{2, " 75"}, Peak{4, " 60"}, Peak{8, " 30"},
                                         Peak{11, "  8"}, Peak{12, "360"}, Peak{13, "353"}, Peak{16, "330"},
                                         Peak{24, "270"}, Peak{36, "180"}, Peak{46, "105"}, Peak{47, " 98"}));

TEST(PowerRms, SineWithItsPeakAtAQuarterHasAngle360AndWithItsPeakAtTheStart90)
{
    std::vector<qint16> sine;
    for (int i = 0; i < 96; ++i)
        sine.push_back(static_cast<qint16>(std::lround(10000 * std::sin(2 * M_PI * i / 48))));
    HandmadeFile file(48);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", sine);
    EXPECT_EQ(RmsOf(file, channel, 0).angle, "360");
    EXPECT_EQ(RmsOf(file, channel, 12).angle, " 90");
}

TEST(PowerRms, FirstOfEqualPeaksCounts)
{
    std::vector<qint16> codes = PeakAt(4);
    codes[8] = 100;
    HandmadeFile file(48);
    EXPECT_EQ(RmsOf(file, file.Add("Q1", "Ia", "A", codes)).angle, " 60");
}

TEST(PowerRms, PeakOfNegativeCodesIsTheLargestOfThem)
{
    std::vector<qint16> codes(48, -9);
    codes[8] = -3;
    HandmadeFile file(48);
    EXPECT_EQ(RmsOf(file, file.Add("Q1", "Ia", "A", codes)).angle, " 30");
}

TEST(PowerRms, WindowStartsAtTheIndexAndIsOnePeriodLong)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {9, 9, 1, 7, 1, 7, 30, 30});
    const Value value = RmsOf(file, channel, 2);
    EXPECT_EQ(value.module, "5.00"); // of 1, 7, 1, 7
    EXPECT_EQ(value.angle, "360");
}

TEST(PowerRms, OffsetIsAddedOnceToTheScaledRmsOfTheCodes)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {100, -100, 100, -100});
    channel.CoefA = 2.0F;
    channel.CoefB = -30.0F;
    EXPECT_EQ(RmsOf(file, channel).module, "170.00");
}

TEST(PowerRms, LargestSquaresAreExact)
{
    HandmadeFile file(4);
    EXPECT_EQ(RmsOf(file, file.Add("Q1", "Ia", "A", {-32768, -32768, -32768, -32768})).module, "32768.00");
}

TEST(PowerRms, CoefficientsAreWidenedBeforeTheProduct)
{
    HandmadeFile file(2);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {32767, 32767});
    channel.CoefA = 1000.1F; // 1000.09997558..., and 32767 times that does not fit into 24 bits
    channel.CoefB = 1.0F;
    EXPECT_EQ(RmsOf(file, channel).module, "32770276.90");
}

struct UnitCase
{
    const char* unit;
    const char* module; // of 10000
};

class PowerBaseUnit : public testing::TestWithParam<UnitCase>
{};

TEST_P(PowerBaseUnit, AloneIsDividedByAThousand)
{
    HandmadeFile file(4);
    const std::vector<qint16> codes(4, 10000);
    EXPECT_EQ(RmsOf(file, file.Add("Q1", "Ia", QString::fromUtf8(GetParam().unit), codes)).module,
              GetParam().module);
}

INSTANTIATE_TEST_SUITE_P(OfUnits, PowerBaseUnit,
                         testing::Values(UnitCase{"В", "10.00"}, UnitCase{"А", "10.00"},
                                         UnitCase{"V", "10000.00"}, UnitCase{"A", "10000.00"},
                                         UnitCase{"кВ", "10000.00"}, UnitCase{"кА", "10000.00"},
                                         UnitCase{"мВ", "10000.00"}, UnitCase{"в", "10000.00"},
                                         UnitCase{" В", "10000.00"}, UnitCase{"", "10000.00"}));

TEST(PowerRms, KilovoltsAreShownAsTheyAre)
{
    HandmadeFile file(4);
    EXPECT_EQ(RmsOf(file, file.Add("Q1", "Ua", "кВ", {10, 10, 10, 10})).module, "10.00");
}

TEST(PowerRms, WindowThatEndsWithTheSamplesHasAValue)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {0, 0, 5, 5, 5, 5});
    EXPECT_EQ(RmsOf(file, channel, 2).module, "5.00");
}

TEST(PowerRms, WindowBeyondTheSamplesHasNoValue)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {5, 5, 5, 5, 5, 5});
    for (const unsigned int index : {3U, 6U, 1000U, 0xFFFFFFFCU, 0xFFFFFFFFU}) {
        const Value value = RmsOf(file, channel, index);
        EXPECT_EQ(value.module, "--") << index;
        EXPECT_EQ(value.angle, "--") << index;
    }
}

TEST(PowerRms, PeriodOfNoSamplesHasNoValue)
{
    HandmadeFile file(0);
    const Value value = RmsOf(file, file.Add("Q1", "Ia", "A", {5, 5}));
    EXPECT_EQ(value.module, "--");
    EXPECT_EQ(value.angle, "--");
}

TEST(PowerRms, ChannelWithoutSamplesHasNoValue)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", {});
    channel.m_HeaderAn.points = 8;
    EXPECT_EQ(RmsOf(file, channel).module, "--");
}
