// Which channels and which moments the fault report shows, and how its lines are cut and filled.
#include "support/readyrecording.h"

#include <gtest/gtest.h>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::Recording;

constexpr char KnownQ1[] = "Кодировка Comtrade UTF8=1\n"
                           "nAnMax=1\n"
                           "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n";
constexpr char Bay[] = "nBayMax=1\nBAY01=Q1,Линия 1,W1\n";

// Lines of the report by their place in the text, from 0.
constexpr int Name = 11;
constexpr int Condition = 12;
constexpr int PhasesBefore = 16;
constexpr int SequencesBefore = 25;
constexpr int PhasesAt = 32;
constexpr int SequencesAt = 41;
constexpr int Extremes = 48;

QStringList Report(const Recording& recording, const QByteArray& deviceLines)
{
    TestStation station(deviceLines);
    if (!station.Convert(recorderfile::Encode(recording)))
        qFatal("the recording is not converted");
    return QString::fromUtf8(station.Output("hdr")).split('\n');
}

// A start of Q1 at the first sample.
Recording StartOfQ1()
{
    Recording recording;
    recording.comment = "Пуск ДП (a,b) Q1:x";
    recording.startMicroseconds = 0;
    recording.trigTime = recording.startTime;
    recording.trigMicroseconds = 0;
    return recording;
}

AnalogChannel Constant(const QString& name, const QString& unit, int16_t code, size_t samples = 96)
{
    return AnalogChannel{name, unit, std::vector<int16_t>(samples, code)};
}

// A channel whose code is the number of its period.
AnalogChannel Counting(const QString& name, int periods)
{
    AnalogChannel channel{name, "кА", {}};
    for (int i = 0; i < periods * 48; ++i)
        channel.samples.push_back(static_cast<int16_t>(i / 48));
    return channel;
}

// The report of a recording of 20 periods with the fault this many microseconds after the first sample.
QStringList WithFaultAt(int microseconds)
{
    Recording recording = StartOfQ1();
    recording.trigMicroseconds = microseconds;
    return Report(recording.Add(Counting("Q1:Ia", 20)), KnownQ1);
}

} // namespace

TEST(HdrName, IsTheCircuitWithoutADisplayText)
{
    const QStringList lines = Report(StartOfQ1().Add(Constant("Q1:Ia", "A", 1)), KnownQ1);
    EXPECT_EQ(lines[Name], "Наименование ЛЭП и/или оборудования №1: Q1");
    EXPECT_EQ(lines[Condition], "Условие пуска №1:                       Пуск по изменению ДС Q1:x");
}

TEST(HdrName, IsTheDisplayTextAlsoInsideTheCondition)
{
    const QStringList lines = Report(StartOfQ1().Add(Constant("Q1:Ia", "A", 1)), QByteArray(KnownQ1) + Bay);
    EXPECT_EQ(lines[Name], "Наименование ЛЭП и/или оборудования №1: Линия 1");
    EXPECT_EQ(lines[Condition], "Условие пуска №1:                       Пуск по изменению ДС Линия 1:x");
}

TEST(HdrCondition, IsReplacedEverywhereInTheLineLabelIncluded)
{
    Recording recording;
    recording.comment = "Пуск ДП (a,b) №1:x №1 n";
    const QStringList lines =
        Report(recording.Add(Constant("№1:Ia", "A", 1)), "Кодировка Comtrade UTF8=1\n"
                                                         "nAnMax=1\nA01=№1:Ia,V_L=110 E_G=L S_G=CT\n"
                                                         "nBayMax=1\nBAY01=№1,Линия 1,W1\n");
    EXPECT_EQ(lines[Condition],
              "Условие пуска Линия 1:                       Пуск по изменению ДС Линия 1:x Линия 1 n");
}

TEST(HdrCondition, IsReplacedCaseSensitively)
{
    Recording recording;
    recording.comment = "Пуск ДП (a,b) Q1:q1";
    const QStringList lines = Report(recording.Add(Constant("Q1:Ia", "A", 1)), QByteArray(KnownQ1) + Bay);
    EXPECT_EQ(lines[Condition], "Условие пуска №1:                       Пуск по изменению ДС Линия 1:q1");
}

TEST(HdrChannels, OfTheBaysSecondNameGiveValuesButNoExtremes)
{
    const QStringList lines = Report(StartOfQ1().Add(Constant("W1:Ia", "кА", 5)), QByteArray(KnownQ1) + Bay);
    EXPECT_EQ(lines[PhasesBefore + 4], "Ia:  модуль = 5.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 5.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[Extremes], "макс_I = -- А");
    EXPECT_EQ(lines[Extremes + 1], "макс_I = -- А");
}

TEST(HdrChannels, OfTheStartedCircuitGoBeforeThoseOfTheSecondName)
{
    const QStringList lines =
        Report(StartOfQ1().Add(Constant("W1:Ia", "кА", 5)).Add(Constant("Q1:Ia", "кА", 6)),
               QByteArray(KnownQ1) + Bay);
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 6.00 кА,     угол =  90 град.");
}

TEST(HdrChannels, OfTheSecondNameAreNotTakenFromABayWithoutOne)
{
    const QStringList lines = Report(StartOfQ1().Add(Constant("W1:Ia", "кА", 5)),
                                     QByteArray(KnownQ1) + "nBayMax=1\nBAY01=Q1,Линия 1\n");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = -- кА,       угол = -- град.");
}

TEST(HdrChannels, WithoutACircuitAreFoundIfThereIsNoBay)
{
    const QStringList lines = Report(StartOfQ1().Add(Constant(":Ia", "кА", 5)), KnownQ1);
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 5.00 кА,     угол =  90 град.");
}

TEST(HdrChannels, WithoutACircuitAreNotFoundBesideABay)
{
    const QStringList lines = Report(StartOfQ1().Add(Constant(":Ia", "кА", 5)), QByteArray(KnownQ1) + Bay);
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = -- кА,       угол = -- град.");
}

TEST(HdrChannels, MissingPhaseTakesItsRowAndTheSequences)
{
    const QStringList lines = Report(StartOfQ1()
                                         .Add(Constant("Q1:Ua", "кВ", 5))
                                         .Add(Constant("Q1:Uc", "кВ", 5))
                                         .Add(Constant("Q1:Ia", "кА", 3))
                                         .Add(Constant("Q1:Ib", "кА", 3))
                                         .Add(Constant("Q1:Ic", "кА", 3)),
                                     KnownQ1);
    EXPECT_EQ(lines[PhasesBefore], "Ua:  модуль = 5.00 кВ,     угол =  90 град.");
    EXPECT_EQ(lines[PhasesBefore + 1], "Ub:  модуль = -- кВ,       угол = -- град.");
    EXPECT_EQ(lines[SequencesBefore], "U1:  модуль = -- кВ,       угол = -- град.");
    EXPECT_EQ(lines[SequencesBefore + 2], "3U0: модуль = -- кВ,       угол = -- град.");
    EXPECT_EQ(lines[SequencesBefore + 5], "3I0: модуль = 9.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[SequencesAt], "U1:  модуль = -- кВ,       угол = -- град.");
    EXPECT_EQ(lines[SequencesAt + 3], "I1:  модуль = 3.00 кА,     угол =  90 град.");
}

TEST(HdrChannels, OfThePhaseTableAreNotTheSumOfThePhases)
{
    const QStringList lines =
        Report(StartOfQ1().Add(Constant("Q1:3U0", "кВ", 5)).Add(Constant("Q1:3I0", "кА", 6)), KnownQ1);
    EXPECT_EQ(lines[PhasesAt + 3], "3U0: модуль = 5.00 кВ,     угол =  90 град.");
    EXPECT_EQ(lines[PhasesAt + 7], "3I0: модуль = 6.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[SequencesAt + 2], "3U0: модуль = -- кВ,       угол = -- град.");
    EXPECT_EQ(lines[SequencesAt + 5], "3I0: модуль = -- кА,       угол = -- град.");
}

TEST(HdrChannels, PushedOutOfTheCfgFileHaveNoScale)
{
    const QStringList lines =
        Report(StartOfQ1().Add(Constant("Q1:Ia", "кА", 5)).Add(Constant("Q1:Ib", "кА", 5)),
               "Кодировка Comtrade UTF8=1\n"
               "nAnMax=2\n"
               "A01=Q1:Ia,V_L=110 E_G=L S_G=CT\n"
               "A02=Q1:Ia,V_L=110 E_G=L S_G=CT\n");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 5.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[PhasesAt + 5], "Ib:  модуль = 0.00 кА,     угол =  90 град.");
}

TEST(HdrMoments, AreOnePeriodAndElevenPeriodsBeforeTheFault)
{
    const QStringList lines = WithFaultAt(280000); // period 14
    EXPECT_EQ(lines[PhasesBefore + 4], "Ia:  модуль = 3.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 13.00 кА,    угол =  90 град.");
}

TEST(HdrMoments, OfAFaultInTheFirstPeriodAreTheFirstSample)
{
    const QStringList lines = WithFaultAt(19000);
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 0.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines.mid(PhasesBefore, 8), lines.mid(PhasesAt, 8));
    EXPECT_EQ(lines.mid(SequencesBefore, 6), lines.mid(SequencesAt, 6));
}

TEST(HdrMoments, OfAFaultInTheFirstElevenPeriodsStartWithTheFirstSample)
{
    const QStringList lines = WithFaultAt(200000); // period 10
    EXPECT_EQ(lines[PhasesBefore + 4], "Ia:  модуль = 0.00 кА,     угол =  90 град.");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = 9.00 кА,     угол =  90 град.");
}

TEST(HdrMoments, ExactlyTenPeriodsApartReachTheFirstSample)
{
    EXPECT_EQ(WithFaultAt(220000)[PhasesBefore + 4], "Ia:  модуль = 0.00 кА,     угол =  90 град.");
    EXPECT_EQ(WithFaultAt(240000)[PhasesBefore + 4], "Ia:  модуль = 1.00 кА,     угол =  90 град.");
}

TEST(HdrMoments, BeyondTheSamplesHaveNoValue)
{
    const QStringList lines = WithFaultAt(420000); // period 21 of 20
    EXPECT_EQ(lines[PhasesBefore + 4], "Ia:  модуль = 10.00 кА,    угол =  90 град.");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = -- кА,       угол = -- град.");
    EXPECT_EQ(WithFaultAt(400000)[PhasesAt + 4], "Ia:  модуль = 19.00 кА,    угол =  90 град.");
}

TEST(HdrMoments, FarBeyondTheSamplesHaveNoValue)
{
    Recording recording = StartOfQ1();
    recording.trigTime = 0xFFFFFFFF;
    const QStringList lines = Report(recording.Add(Constant("Q1:Ia", "кА", 5)), KnownQ1);
    EXPECT_EQ(lines[PhasesBefore + 4], "Ia:  модуль = -- кА,       угол = -- град.");
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = -- кА,       угол = -- град.");
}

TEST(HdrMoments, OfPeriodsWithoutSamplesHaveNoValue)
{
    Recording recording = StartOfQ1();
    AnalogChannel channel = Constant("Q1:Ia", "кА", 5);
    channel.rate = 20; // 0.4 samples a period
    recording.duration = 4800000;
    const QStringList lines = Report(recording.Add(channel), KnownQ1);
    EXPECT_EQ(lines[PhasesAt + 4], "Ia:  модуль = -- кА,       угол = -- град.");
}

struct Width
{
    float factor; // of the code 10000
    const char* row;
};

class HdrModuleColumn : public testing::TestWithParam<Width>
{};

TEST_P(HdrModuleColumn, IsCutAt22Characters)
{
    AnalogChannel channel = Constant("Q1:Ua", "V", 10000);
    channel.primary = GetParam().factor;
    EXPECT_EQ(Report(StartOfQ1().Add(channel), KnownQ1)[PhasesAt], QString::fromUtf8(GetParam().row));
}

// The Latin unit leaves the volts undivided, and the row says kV all the same.
INSTANTIATE_TEST_SUITE_P(OfWideValues, HdrModuleColumn,
                         testing::Values(Width{1, "Ua:  модуль = 10000.00 кВ, угол =  90 град."},
                                         Width{10, "Ua:  модуль = 100000.00 кВ,угол =  90 град."},
                                         Width{100, "Ua:  модуль = 1000000.00 кВугол =  90 град."},
                                         Width{1000, "Ua:  модуль = 10000000.00 кугол =  90 град."},
                                         Width{10000, "Ua:  модуль = 100000000.00 угол =  90 град."},
                                         Width{100000, "Ua:  модуль = 1000000000.00угол =  90 град."},
                                         Width{1000000, "Ua:  модуль = 10000000000.0угол =  90 град."}));
