// The report's four lines of extreme values.
#include "support/handmadefile.h"

#include "support/files.h"

#include <gtest/gtest.h>

namespace {

using Codes = std::vector<qint16>;

// The lines in the order of the report: largest and smallest current, largest and smallest voltage.
QStringList LinesOf(const std::vector<ZuFileFormat*>& files, const QString& circuit = "Q1")
{
    std::vector<ZuFileFormat*> segments = files;
    QString maxI;
    QString minI;
    QString maxU;
    QString minU;
    files.front()->FindExtremeRMS(circuit, &segments, maxI, minI, maxU, minU);
    return {maxI, minI, maxU, minU};
}

QStringList LinesOf(HandmadeFile& file, const QString& circuit = "Q1")
{
    return LinesOf(std::vector<ZuFileFormat*>{&file}, circuit);
}

const QString NoMaxI("макс_I = -- А");
const QString NoMaxU("макс_U = -- В");

} // namespace

TEST(PowerExtremes, CircuitWithoutChannelsHasMaximumLinesOnly)
{
    HandmadeFile file(4);
    file.Add("Q2", "Ia", "А", Codes(4, 1));
    EXPECT_EQ(LinesOf(file), (QStringList{NoMaxI, NoMaxI, NoMaxU, NoMaxU}));
}

TEST(PowerExtremes, CurrentsAndVoltagesStandApart)
{
    HandmadeFile file(4);
    file.Add("Q1", "Ia", "А", {5, 5, 5, 5, 2, 2, 2, 2});
    file.Add("Q1", "Ua", "В", {70, 70, 70, 70, 90, 90, 90, 90});
    EXPECT_EQ(LinesOf(file),
              (QStringList{"макс_I = 5.00 А", "мин_I = 2.00 А", "макс_U = 90.00 В", "мин_U = 70.00 В"}));
}

TEST(PowerExtremes, AreTakenOverAllChannelsOfTheKind)
{
    HandmadeFile file(4);
    file.Add("Q1", "Ia", "А", Codes(4, 5));
    file.Add("Q1", "Ib", "А", Codes(4, 2));
    file.Add("Q1", "Ic", "А", Codes(4, 7));
    EXPECT_EQ(LinesOf(file), (QStringList{"макс_I = 7.00 А", "мин_I = 2.00 А", NoMaxU, NoMaxU}));
}

TEST(PowerExtremes, ChannelsOfOtherCircuitsAndKindsDoNotCount)
{
    HandmadeFile file(4);
    file.Add("Q2", "Ia", "А", Codes(4, 900));
    file.Add("q1", "Ia", "А", Codes(4, 900));
    file.Add("Q1", "3I0", "А", Codes(4, 900));
    file.Add("Q1", "Ia", "Гц", Codes(4, 900));
    file.Add("Q1", "Ib", "А", Codes(4, 5));
    EXPECT_EQ(LinesOf(file), (QStringList{"макс_I = 5.00 А", "мин_I = 5.00 А", NoMaxU, NoMaxU}));
}

TEST(PowerExtremes, EmptyCircuitFindsChannelsWithoutOne)
{
    HandmadeFile file(4);
    file.Add("", "Ia", "А", Codes(4, 5));
    EXPECT_EQ(LinesOf(file, "")[0], "макс_I = 5.00 А");
}

struct Scaled
{
    qint16 code;
    float factor;
    const char* text; // of the currents' maximum, after "макс_I = "
};

class PowerExtremeUnit : public testing::TestWithParam<Scaled>
{};

TEST_P(PowerExtremeUnit, FitsTheValue)
{
    HandmadeFile file(4);
    file.Add("Q1", "Ia", "А", Codes(4, GetParam().code)).CoefA = GetParam().factor;
    EXPECT_EQ(LinesOf(file)[0], QStringLiteral("макс_I = ") + QString::fromUtf8(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(OfCurrents, PowerExtremeUnit,
                         testing::Values(Scaled{0, 1.0F, "0.00 мА"}, Scaled{1500, 1.0F, "1.50 кА"},
                                         Scaled{1999, 0.5F, "999.50 А"}, Scaled{1000, 1.0F, "1.00 кА"},
                                         Scaled{1, 1.0F, "1.00 А"}, Scaled{1, 0.5F, "500.00 мА"},
                                         Scaled{1, -0.5F, "-500.00 мА"}, Scaled{1500, -1.0F, "-1.50 кА"},
                                         Scaled{7, -1.0F, "-7.00 А"}, Scaled{32767, 100.0F, "3276.70 кА"}));

TEST(PowerExtremes, MaximumAndMinimumHaveUnitsOfTheirOwn)
{
    HandmadeFile file(4);
    file.Add("Q1", "Ua", "В", {0, 0, 0, 0, 2500, 2500, 2500, 2500});
    EXPECT_EQ(LinesOf(file)[2], "макс_U = 2.50 кВ");
    EXPECT_EQ(LinesOf(file)[3], "мин_U = 0.00 мВ");
}

TEST(PowerExtremes, KilovoltsAreShownAsIfInVolts)
{
    HandmadeFile file(4);
    file.Add("Q1", "Ua", "кВ", Codes(4, 110));
    EXPECT_EQ(LinesOf(file)[2], "макс_U = 110.00 В");
}

TEST(PowerExtremes, ScaleOfAChannelIsTakenBackToOne)
{
    HandmadeFile file(4);
    AnChannelData& channel = file.Add("Q1", "Ia", "A", Codes(4, 5));
    channel.ExtremeScale = 3.0F;
    EXPECT_EQ(LinesOf(file)[0], "макс_I = 5.00 А");
    EXPECT_EQ(channel.ExtremeScale, 1.0F);
}

TEST(PowerExtremes, ChannelShorterThanAPeriodCountsWithZeros)
{
    HandmadeFile file(4);
    file.Add("Q1", "Ia", "А", Codes(3, 5));
    EXPECT_EQ(LinesOf(file)[0], "макс_I = 0.00 мА");
    EXPECT_EQ(LinesOf(file)[1], "мин_I = 0.00 мА");

    file.Add("Q1", "Ib", "А", Codes(4, 5));
    EXPECT_EQ(LinesOf(file)[0], "макс_I = 5.00 А");
    EXPECT_EQ(LinesOf(file)[1], "мин_I = 0.00 мА");
}

TEST(PowerExtremes, PeriodOfNoSamplesLeavesZeros)
{
    HandmadeFile file(0);
    file.Add("Q1", "Ia", "А", Codes(4, 5));
    EXPECT_EQ(LinesOf(file)[0], "макс_I = 0.00 мА");
}

TEST(PowerExtremes, LargerPeakOfALaterSegmentIsNotShown)
{
    HandmadeFile first(4);
    first.Add("Q1", "Ia", "А", Codes(8, 5));
    first.Add("Q1", "Ua", "В", Codes(8, 50));
    HandmadeFile second(4);
    second.Add("Q1", "Ia", "А", Codes(8, 900));
    second.Add("Q1", "Ua", "В", Codes(8, 1));
    EXPECT_EQ(LinesOf({&first, &second}),
              (QStringList{"макс_I = 5.00 А", "мин_I = 5.00 А", "макс_U = 50.00 В", "мин_U = 50.00 В"}));
}

TEST(PowerExtremes, LaterSegmentsAreSearchedWithTheCarry)
{
    HandmadeFile first(4);
    first.Add("Q1", "Ia", "А", {5, 5, 5, 5, 1, 1, 1});
    HandmadeFile second(4);
    AnChannelData& later = second.Add("Q1", "Ia", "А", {3, 999, 999, 999, 4, 4, 4, 4});
    LinesOf({&first, &second});
    EXPECT_EQ(later.ExtremeMin, 1.7320508F); // of 1, 1, 1, 3
    EXPECT_EQ(later.ExtremeMax, 4.0F);
}

TEST(PowerExtremes, LaterSegmentsAreSearchedWithThePeriodOfTheFirst)
{
    HandmadeFile first(4);
    first.Add("Q1", "Ua", "В", Codes(4, 5));
    HandmadeFile second(2);
    AnChannelData& later = second.Add("Q1", "Ua", "В", {1, 1, 7, 7});
    LinesOf({&first, &second});
    EXPECT_EQ(later.ExtremeMax, 5.0F); // of all four
}

TEST(PowerExtremes, SegmentWithoutTheChannelIsPassedOver)
{
    HandmadeFile first(4);
    first.Add("Q2", "Ia", "А", Codes(4, 1));
    first.Add("Q1", "Ia", "А", Codes(4, 5));
    HandmadeFile second(4);
    second.Add("Q2", "Ia", "А", Codes(4, 1));
    EXPECT_EQ(LinesOf({&first, &second})[0], "макс_I = 5.00 А");
}

TEST(PowerExtremes, ShortFirstSegmentLeavesTheLaterOnesUnsearched)
{
    HandmadeFile first(4);
    first.Add("Q1", "Ia", "А", Codes(3, 5));
    HandmadeFile second(4);
    AnChannelData& later = second.Add("Q1", "Ia", "А", Codes(4, 7));
    EXPECT_EQ(LinesOf({&first, &second})[0], "макс_I = 0.00 мА");
    EXPECT_EQ(later.ExtremeMax, 0.0F);
}

TEST(PowerExtremes, LaterSegmentShorterThanAPeriodChangesNothing)
{
    HandmadeFile first(4);
    first.Add("Q1", "Ia", "А", Codes(4, 5));
    first.Add("Q1", "Ua", "В", Codes(4, 6));
    HandmadeFile second(4);
    second.Add("Q1", "Ia", "А", Codes(3, 900));
    AnChannelData& later = second.Add("Q1", "Ua", "В", Codes(3, 900));
    EXPECT_EQ(LinesOf({&first, &second}),
              (QStringList{"макс_I = 5.00 А", "мин_I = 5.00 А", "макс_U = 6.00 В", "мин_U = 6.00 В"}));
    EXPECT_EQ(later.ExtremeMax, 0.0F);
}
