// Symmetrical components of three channels.
#include "support/handmadefile.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Codes = std::vector<qint16>;

struct Sequences
{
    QString modules[3] = {"before", "before", "before"};
    QString angles[3] = {"before", "before", "before"};
};

Sequences SequencesOf(HandmadeFile& file, unsigned int index)
{
    Sequences sequences;
    file.CalcSeq(index, file.AnChannels.data(), sequences.modules, sequences.angles);
    return sequences;
}

// Two periods of 48 codes of a sine with this phase, degrees.
Codes Sine(double phase, double amplitude = 14142.1356)
{
    Codes codes;
    for (int i = 0; i < 96; ++i)
        codes.push_back(
            static_cast<qint16>(std::lround(amplitude * std::sin(2 * M_PI * i / 48 + phase * M_PI / 180))));
    return codes;
}

void AddPhases(HandmadeFile& file, const Codes& a, const Codes& b, const Codes& c, const QString& unit = "A")
{
    file.Add("Q1", "Ia", unit, a);
    file.Add("Q1", "Ib", unit, b);
    file.Add("Q1", "Ic", unit, c);
}

// Codes whose period k (of count samples) has the value 100 k throughout.
Codes Steps(quint32 count, quint32 periods)
{
    Codes codes;
    for (quint32 i = 0; i < count * periods; ++i)
        codes.push_back(static_cast<qint16>(100 * (i / count)));
    return codes;
}

} // namespace

TEST(PowerSequences, BalancedSystemIsPositive)
{
    HandmadeFile file(48);
    AddPhases(file, Sine(90), Sine(-30), Sine(210));
    const Sequences sequences = SequencesOf(file, 48);
    EXPECT_NEAR(sequences.modules[0].toDouble(), 10000, 0.5); // by the rounding of the codes
    EXPECT_LT(sequences.modules[1].toDouble(), 1.0);
    EXPECT_LT(sequences.modules[2].toDouble(), 1.5);
    EXPECT_EQ(sequences.angles[0], " 90");
}

TEST(PowerSequences, ReversedSystemIsNegative)
{
    HandmadeFile file(48);
    AddPhases(file, Sine(0), Sine(120), Sine(240));
    const Sequences sequences = SequencesOf(file, 48);
    EXPECT_LT(sequences.modules[0].toDouble(), 1.0);
    EXPECT_NEAR(sequences.modules[1].toDouble(), 10000, 0.5);
    EXPECT_LT(sequences.modules[2].toDouble(), 1.5);
    EXPECT_EQ(sequences.angles[1], "360");
}

TEST(PowerSequences, EqualPhasesAreThreefoldZeroSequence)
{
    HandmadeFile file(48);
    AddPhases(file, Sine(30), Sine(30), Sine(30));
    const Sequences sequences = SequencesOf(file, 48);
    EXPECT_EQ(sequences.modules[0], "0.00");
    EXPECT_EQ(sequences.modules[1], "0.00");
    EXPECT_NEAR(sequences.modules[2].toDouble(), 30000, 1.5);
    EXPECT_EQ(sequences.angles[2], " 30");
}

TEST(PowerSequences, ShiftsLookBackFromTheWindow)
{
    // One peak per phase: that of a at sample 0 of the window, that of b 2 and that of c 1 sample before it,
    // so that the positive sequence of a period of 3 has all three at once.
    HandmadeFile file(3);
    AddPhases(file, {0, 0, 0, 30, 0, 0}, {0, 30, 0, 0, 0, 0}, {0, 0, 30, 0, 0, 0});
    const Sequences sequences = SequencesOf(file, 3);
    EXPECT_EQ(sequences.modules[0], "17.32"); // 90 in one of three samples, by 3
    EXPECT_EQ(sequences.angles[0], " 90");
    EXPECT_EQ(sequences.modules[1], "8.16");  // 30 of c and of a in one sample each, none of b, by 3
    EXPECT_EQ(sequences.modules[2], "17.32"); // of a alone
}

struct Window
{
    unsigned int index;
    const char* zero; // of three channels with the value 100 k in period k
};

class PowerSequenceWindow : public testing::TestWithParam<Window>
{};

TEST_P(PowerSequenceWindow, StartsAtTheIndexButNotBeforeTheSecondPeriod)
{
    HandmadeFile file(48);
    const Codes codes = Steps(48, 4);
    AddPhases(file, codes, codes, codes);
    EXPECT_EQ(SequencesOf(file, GetParam().index).modules[2], GetParam().zero);
}

INSTANTIATE_TEST_SUITE_P(Of48Samples, PowerSequenceWindow,
                         testing::Values(Window{0, "300.00"}, Window{1, "300.00"}, Window{47, "300.00"},
                                         Window{48, "300.00"},
                                         Window{49, "309.23"}, // 47 of 300 and one of 600
                                         Window{96, "600.00"}, Window{144, "900.00"}, Window{145, "--"}));

TEST(PowerSequences, AreThirdOfTheSumButForTheZeroSequence)
{
    HandmadeFile file(3);
    AddPhases(file, Codes(6, 100), Codes(6, 20), Codes(6, 3));
    const Sequences sequences = SequencesOf(file, 3);
    EXPECT_EQ(sequences.modules[0], "41.00");
    EXPECT_EQ(sequences.modules[1], "41.00");
    EXPECT_EQ(sequences.modules[2], "123.00");
}

TEST(PowerSequences, EveryChannelHasItsOwnCoefficients)
{
    HandmadeFile file(3);
    AddPhases(file, Codes(6, 1), Codes(6, 1), Codes(6, 1));
    file.AnChannels[0]->CoefA = 2.0F;
    file.AnChannels[1]->CoefA = 30.0F;
    file.AnChannels[2]->CoefA = 400.0F;
    file.AnChannels[2]->CoefB = 5000.0F;
    EXPECT_EQ(SequencesOf(file, 3).modules[2], "5432.00");
}

TEST(PowerSequences, SamplesAreScaledInSinglePrecision)
{
    HandmadeFile file(3);
    AddPhases(file, Codes(6, 32767), Codes(6, 0), Codes(6, 0));
    // 32767 x 1000.09997558... = 32770275.9 is rounded to a multiple of 2, and so is the sum with 1.
    file.AnChannels[0]->CoefA = 1000.1F;
    file.AnChannels[0]->CoefB = 1.0F;
    EXPECT_EQ(SequencesOf(file, 3).modules[2], "32770276.00");
}

TEST(PowerSequences, SumsAreTakenFromLeftToRight)
{
    HandmadeFile file(3);
    AddPhases(file, Codes(6, 1), Codes(6, 1), Codes(6, -1));
    file.AnChannels[1]->CoefA = std::ldexp(1.0F, 60); // swallows the 1 of phase a, and phase c takes it back
    file.AnChannels[2]->CoefA = std::ldexp(1.0F, 60);
    const Sequences sequences = SequencesOf(file, 3);
    for (const QString& module : sequences.modules)
        EXPECT_EQ(module, "0.00");
}

TEST(PowerSequences, PeakThatIsNotPositiveIsAtTheStart)
{
    HandmadeFile file(3);
    AddPhases(file, {-9, -9, -9, -9, -1, -9}, Codes(6, 0), Codes(6, 0));
    const Sequences sequences = SequencesOf(file, 3);
    EXPECT_EQ(sequences.angles[0], " 90");
    EXPECT_EQ(sequences.angles[1], " 90");
    EXPECT_EQ(sequences.angles[2], " 90");
}

TEST(PowerSequences, FirstOfEqualPeaksCounts)
{
    HandmadeFile file(4);
    AddPhases(file, {0, 0, 0, 0, 1, 5, 5, 1}, Codes(8, 0), Codes(8, 0));
    EXPECT_EQ(SequencesOf(file, 4).angles[2], "360");
}

TEST(PowerSequences, BaseUnitOfTheFirstChannelDecidesForAll)
{
    HandmadeFile first(3);
    AddPhases(first, Codes(6, 3000), Codes(6, 3000), Codes(6, 3000), "кВ");
    first.AnChannels[0]->Unit = "В";
    const Sequences divided = SequencesOf(first, 3);
    EXPECT_EQ(divided.modules[0], "3.00");
    EXPECT_EQ(divided.modules[1], "3.00");
    EXPECT_EQ(divided.modules[2], "9.00");

    HandmadeFile second(3);
    AddPhases(second, Codes(6, 3000), Codes(6, 3000), Codes(6, 3000), "В");
    second.AnChannels[0]->Unit = "V";
    EXPECT_EQ(SequencesOf(second, 3).modules[2], "9000.00");
}

TEST(PowerSequences, TwoWholePeriodsAreEnough)
{
    HandmadeFile file(3);
    AddPhases(file, Codes(6, 1), Codes(6, 1), Codes(6, 1));
    EXPECT_EQ(SequencesOf(file, 0).modules[2], "3.00");
    EXPECT_EQ(SequencesOf(file, 3).modules[2], "3.00");
    EXPECT_EQ(SequencesOf(file, 4).modules[2], "--");
}

TEST(PowerSequences, AnyPhaseWithoutTheTwoPeriodsTakesAllValues)
{
    for (size_t phase = 0; phase < 3; ++phase) {
        HandmadeFile file(3);
        AddPhases(file, Codes(6, 1), Codes(6, 1), Codes(6, 1));
        file.AnChannels[phase]->m_HeaderAn.points = 5;
        const Sequences sequences = SequencesOf(file, 3);
        for (size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(sequences.modules[i], "--");
            EXPECT_EQ(sequences.angles[i], "--");
        }
    }
}

TEST(PowerSequences, IndexFarBeyondTheSamplesHasNoValue)
{
    HandmadeFile file(3);
    AddPhases(file, Codes(6, 1), Codes(6, 1), Codes(6, 1));
    EXPECT_EQ(SequencesOf(file, 0xFFFFFFFFU).modules[0], "--");
}

TEST(PowerSequences, PeriodOfNoSamplesHasNoValue)
{
    HandmadeFile file(0);
    AddPhases(file, Codes(6, 1), Codes(6, 1), Codes(6, 1));
    const Sequences sequences = SequencesOf(file, 0);
    EXPECT_EQ(sequences.modules[2], "--");
    EXPECT_EQ(sequences.angles[2], "--");
}
