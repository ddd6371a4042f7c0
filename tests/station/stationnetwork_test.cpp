#include "stationchannels.h"

#include <cmath>
#include <cstdlib>

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;
using station::Fault;
using station::MakeRecording;
using station::StartKind;
using station::StationOptions;

namespace {

constexpr size_t period = 48;    // samples at 2400 Hz
constexpr size_t trigger = 1200; // half a second

double Value(const AnalogChannel& channel, size_t index)
{
    return double{channel.primary} * double{channel.secondary} * double{channel.scale} *
               channel.samples.at(index) +
           double{channel.offset};
}

double Rms(const AnalogChannel& channel, size_t start)
{
    double sum = 0;
    for (size_t i = start; i < start + period; ++i)
        sum += Value(channel, i) * Value(channel, i);
    return std::sqrt(sum / static_cast<double>(period));
}

double Mean(const AnalogChannel& channel, size_t start)
{
    double sum = 0;
    for (size_t i = start; i < start + period; ++i)
        sum += Value(channel, i);
    return sum / static_cast<double>(period);
}

// Amplitude of a harmonic over one period.
double Harmonic(const AnalogChannel& channel, size_t start, int order)
{
    double real = 0;
    double imaginary = 0;
    for (size_t i = 0; i < period; ++i) {
        const double angle = 2 * M_PI * order * static_cast<double>(i) / static_cast<double>(period);
        real += Value(channel, start + i) * std::cos(angle);
        imaginary += Value(channel, start + i) * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / static_cast<double>(period);
}

bool StateAt(const DiscreteChannel& channel, size_t sample)
{
    const double time = static_cast<double>(sample) * 1e6 / 2400;
    bool state = false;
    for (const recorderfile::Change& change : channel.changes)
        if (change.time <= time)
            state = (change.value != 0) != (channel.inverted != 0);
    return state;
}

} // namespace

TEST(StationNetwork, VoltagesAreNominalBeforeTheTrigger)
{
    const Recording recording = FirstSegment(Fault::ThreePhase);
    for (const char* phase : {"Ua", "Ub", "Uc"}) {
        const double nominal = 110000 / std::sqrt(3.0);
        EXPECT_NEAR(Rms(Find<AnalogChannel>(recording, line + phase), 480), nominal, nominal * 0.01);
        const QString busbar = QStringLiteral("ТН 1СШ-110:");
        EXPECT_NEAR(Rms(Find<AnalogChannel>(recording, busbar + phase), 480), nominal / 1000, nominal / 1e5);
        const QString farLine = QStringLiteral("ВЛ-220 Северная:");
        EXPECT_NEAR(Rms(Find<AnalogChannel>(recording, farLine + phase), 480), 2 * nominal, nominal * 0.02);
    }
    EXPECT_LT(Rms(Find<AnalogChannel>(recording, line + "3U0"), 480), 100);
}

TEST(StationNetwork, LoadCurrentIsHalfTheRatedOneBeforeTheTrigger)
{
    const Recording recording = FirstSegment(Fault::ThreePhase);
    for (const char* phase : {"Ia", "Ib", "Ic"})
        EXPECT_NEAR(Rms(Find<AnalogChannel>(recording, line + phase), 480), 300, 3);
}

TEST(StationNetwork, PhaseBLagsPhaseAByAThirdOfAPeriodAndPhaseCLeads)
{
    const Recording recording = FirstSegment(Fault::None);
    for (const char quantity : {'U', 'I'}) {
        const auto a = Find<AnalogChannel>(recording, line + quantity + 'a');
        const auto b = Find<AnalogChannel>(recording, line + quantity + 'b');
        const auto c = Find<AnalogChannel>(recording, line + quantity + 'c');
        const double tolerance = Rms(a, 0) * 0.03;
        for (size_t i = period; i < 2 * period; ++i) {
            EXPECT_NEAR(Value(b, i + period / 3), Value(a, i), tolerance);
            EXPECT_NEAR(Value(c, i - period / 3), Value(a, i), tolerance);
        }
    }
}

TEST(StationNetwork, FaultRaisesTheCurrentsAndLowersTheVoltagesOfItsPhases)
{
    const Fault faults[] = {Fault::None, Fault::SinglePhase, Fault::TwoPhase, Fault::ThreePhase};
    const bool faulted[4][3] = {
        {false, false, false}, {true, false, false}, {false, true, true}, {true, true, true}};
    for (size_t kind = 0; kind < 4; ++kind) {
        const Recording recording = FirstSegment(faults[kind]);
        for (size_t phase = 0; phase < 3; ++phase) {
            const QChar letter = "abc"[phase];
            const auto current = Find<AnalogChannel>(recording, line + 'I' + letter);
            const auto voltage = Find<AnalogChannel>(recording, line + 'U' + letter);
            const double rise = Rms(current, trigger + period) / Rms(current, 480);
            const double dip = Rms(voltage, trigger + period) / Rms(voltage, 480);
            if (faulted[kind][phase]) {
                EXPECT_GT(rise, 10) << kind << phase;
                EXPECT_LT(dip, 0.7) << kind << phase;
            } else {
                EXPECT_NEAR(rise, 1, 0.02) << kind << phase;
                EXPECT_NEAR(dip, 1, 0.01) << kind << phase;
            }
        }
    }
}

TEST(StationNetwork, OnlyEarthFaultsHaveZeroSequence)
{
    const auto zeroCurrent = [](Fault fault) {
        return Rms(Find<AnalogChannel>(FirstSegment(fault), line + "3I0"), trigger + period);
    };
    EXPECT_GT(zeroCurrent(Fault::SinglePhase), 3000);
    EXPECT_LT(zeroCurrent(Fault::TwoPhase), 50);
    EXPECT_LT(zeroCurrent(Fault::ThreePhase), 50);
}

TEST(StationNetwork, CurrentDoesNotJumpAtTheTrigger)
{
    const Recording recording = FirstSegment(Fault::ThreePhase);
    for (const char* phase : {"Ia", "Ib", "Ic"}) {
        const auto current = Find<AnalogChannel>(recording, line + phase);
        // In one sample a fault current of 5657 A peak changes by 740 A at most, its DC component by 50 A.
        EXPECT_LT(std::fabs(Value(current, trigger) - Value(current, trigger - 1)), 100) << phase;
        EXPECT_LT(std::fabs(Value(current, trigger + 1) - Value(current, trigger)), 900) << phase;
    }
}

TEST(StationNetwork, DirectPartDecaysWithFiftyMilliseconds)
{
    const auto current = Find<AnalogChannel>(FirstSegment(Fault::SinglePhase), line + "Ia");
    double before = Mean(current, trigger);
    EXPECT_GT(before, 3000);
    for (size_t cycle = 1; cycle < 4; ++cycle) {
        const double now = Mean(current, trigger + cycle * period);
        EXPECT_NEAR(now / before, std::exp(-0.02 / 0.05), 0.01) << cycle;
        before = now;
    }
}

TEST(StationNetwork, CurrentFlowsExactlyWhileTheBreakerIsClosed)
{
    for (const Fault fault : {Fault::SinglePhase, Fault::TwoPhase, Fault::ThreePhase}) {
        const Recording recording = FirstSegment(fault);
        const auto closed = Find<DiscreteChannel>(recording, line + "Выключатель включен");
        const auto opened = Find<DiscreteChannel>(recording, line + "Выключатель отключен");
        size_t openSamples = 0;
        for (const char* phase : {"Ia", "Ib", "Ic"}) {
            const auto current = Find<AnalogChannel>(recording, line + phase);
            for (size_t i = period; i + period < current.samples.size(); ++i) {
                ASSERT_NE(StateAt(closed, i), StateAt(opened, i)) << i;
                const bool stillOpen = !StateAt(closed, i - period) && !StateAt(closed, i + 1);
                const bool stillClosed = StateAt(closed, i) && StateAt(closed, i + period);
                if (stillOpen) {
                    ++openSamples;
                    ASSERT_LE(std::abs(current.samples[i]), 2) << phase << i;
                } else if (stillClosed) {
                    ASSERT_GT(Rms(current, i), 250) << phase << i;
                }
            }
        }
        EXPECT_GT(openSamples, 3u * 1200u) << "dead time of half a second";
    }
}

TEST(StationNetwork, ProtectionActsInItsOrder)
{
    for (uint32_t seed = 1; seed <= 10; ++seed) {
        StationOptions options;
        options.seed = seed;
        const Recording recording = MakeRecording(options, StartKind::ZeroSequence).front();
        const auto changes = [&](const char* signal) {
            return Find<DiscreteChannel>(recording, line + signal).changes;
        };
        const auto start = changes("Пуск защит");
        const auto trip = changes("Откл. от защит");
        const auto closed = changes("Выключатель включен");
        const auto reclosing = changes("АПВ");
        ASSERT_EQ(start.size(), 3u);
        ASSERT_EQ(trip.size(), 3u);
        ASSERT_EQ(closed.size(), 3u);
        ASSERT_EQ(reclosing.size(), 3u);
        EXPECT_EQ(start[0].value, 0);
        EXPECT_EQ(closed[0].value, 1);
        EXPECT_GT(start[1].time, 500000u);
        EXPECT_GT(trip[1].time, start[1].time);
        EXPECT_GT(closed[1].time, trip[1].time);
        EXPECT_GE(closed[1].time, 580000u);
        EXPECT_LE(closed[1].time, 620000u);
        EXPECT_EQ(reclosing[1].time, closed[1].time + 500000u);
        EXPECT_EQ(closed[2].time, reclosing[1].time + 60000u);
    }
}

TEST(StationNetwork, QuietSignalsHaveOneRecord)
{
    const auto quiet = Find<DiscreteChannel>(FirstSegment(Fault::SinglePhase), line + "Ручной пуск");
    ASSERT_EQ(quiet.changes.size(), 1u);
    EXPECT_EQ(quiet.changes[0].time, 0u);
    EXPECT_EQ(quiet.changes[0].value, 0);
    for (const auto& channel :
         ChannelsOf<DiscreteChannel>(FirstSegment(Fault::SinglePhase, StartKind::External)))
        EXPECT_EQ(channel.changes.size(), 1u) << channel.name.toStdString();
}

TEST(StationNetwork, FrequencyStartShowsTheFrequencyAtThePickUpValue)
{
    const auto frequency = Find<AnalogChannel>(FirstSegment(Fault::SinglePhase, StartKind::Frequency),
                                               QStringLiteral("Частота 1СШ-110:Fa"));
    EXPECT_NEAR(Value(frequency, 0), 50, 0.002);
    EXPECT_NEAR(Value(frequency, trigger), 49.9, 0.002);
    EXPECT_NEAR(Value(frequency, 4799), 49.25, 0.002);
}

TEST(StationNetwork, HarmonicStartShowsTheFifthHarmonic)
{
    const auto current =
        Find<AnalogChannel>(FirstSegment(Fault::SinglePhase, StartKind::Harmonic), line + "Ia");
    const double fundamental = 300 * std::sqrt(2.0);
    EXPECT_NEAR(Harmonic(current, 480, 5), 0, 2);
    EXPECT_NEAR(Harmonic(current, trigger, 5), 0.2 * fundamental, 2);
    EXPECT_NEAR(Harmonic(current, trigger, 1), fundamental, 2);
}
