// The line integrated in time, against the sequence networks and against what circuits do.
#include "linemodels.h"

#include <gtest/gtest.h>

using station::Complex;
using station::Course;
using station::FaultKind;
using station::FaultState;
using station::LineModel;
using station::LinePhasors;
using station::LineWaves;
using station::PhasePhasors;
using station::PhaseValues;
using station::Terminal;

namespace {

constexpr size_t period = 200; // samples, at every frequency

// 0.1 % and 0.1 degrees of the magnitude; what is small is compared with the largest phase.
void ExpectPhasors(const std::vector<PhaseValues>& values, const PhasePhasors& expected, size_t first,
                   double turns, const std::string& what)
{
    double largest = 0;
    for (const Complex& phasor : expected)
        largest = std::max(largest, std::abs(phasor));
    for (size_t phase = 0; phase < 3; ++phase) {
        const Complex found = PhasorOf(values, phase, first, period, turns);
        const double magnitude = std::abs(expected[phase]);
        EXPECT_NEAR(std::abs(found), magnitude, 0.001 * std::max(magnitude, 0.1 * largest)) << what << phase;
        if (magnitude > 0.02 * largest) {
            EXPECT_NEAR(std::arg(found / expected[phase]) * 180 / M_PI, 0, 0.1) << what << phase;
        }
    }
}

void ExpectSteadyState(const LineWaves& waves, const LinePhasors& expected, size_t first, double turns,
                       const std::string& what)
{
    ExpectPhasors(waves.bus, expected.bus, first, turns, what + " bus ");
    ExpectPhasors(waves.line, expected.line, first, turns, what + " line ");
    ExpectPhasors(waves.infeed, expected.infeed, first, turns, what + " infeed ");
    ExpectPhasors(waves.healthy, expected.healthy, first, turns, what + " healthy ");
}

// The fault for 0.6 s, compared before it and in its last period, when the direct component has decayed.
void ExpectSequenceNetworks(const LineModel& model, const FaultState& fault, double turns)
{
    Course course = FaultAt(0.0213, fault);
    course.turnsAtStart = turns;
    const double rate = model.frequency * period;
    const size_t samples = 30 * period;
    const LineWaves waves = Simulate(model, course, rate, samples);
    const std::string name = NameOf(fault.kind).toStdString() + " at " + std::to_string(model.fraction) +
                             " by " + std::to_string(fault.resistance);
    ExpectSteadyState(waves, SteadyState(model, std::nullopt), 0, turns, name + " before");
    ExpectSteadyState(waves, SteadyState(model, fault), samples - period, turns, name + " during");
}

class EveryKind : public testing::TestWithParam<FaultKind>
{};

} // namespace

TEST_P(EveryKind, AgreesWithTheSequenceNetworks)
{
    for (const double fraction : {0.03, 0.5, 0.97})
        for (const double resistance : {0.0, 20.0}) {
            LineModel model = UsualModel();
            model.fraction = fraction;
            ExpectSequenceNetworks(model, {GetParam(), resistance}, 0.13);
        }
}

TEST_P(EveryKind, AgreesWithTheSequenceNetworksWithLittleAndMuchInfeed)
{
    for (const double remote : {0.2, 8.0}) {
        LineModel model = UsualModel();
        model.remote = {Complex(3, 19) * remote, Complex(4, 26) * remote};
        model.lineLoad = {-60, 20};
        ExpectSequenceNetworks(model, {GetParam(), 8.0}, 0.0);
    }
}

TEST_P(EveryKind, AgreesWithTheSequenceNetworksAtOtherFrequencies)
{
    for (const double frequency : {47.0, 53.0}) {
        LineModel model = UsualModel();
        model.frequency = frequency;
        ExpectSequenceNetworks(model, {GetParam(), 2.0}, 0.7);
    }
}

INSTANTIATE_TEST_SUITE_P(LineSimulation, EveryKind, testing::ValuesIn(station::AllFaultKinds()),
                         [](const auto& kind) { return station::NameOf(kind.param).toStdString(); });

namespace {

constexpr double rate = 10000;

// BC to ground at 0.05 s; the poles here open after 0.1 s.
LineWaves OpenedFault()
{
    Course course = FaultAt(0.05, {FaultKind::BCG, 1.0});
    course.actions.push_back({0.1, station::BreakerOrder{Terminal::Local, false}});
    return Simulate(UsualModel(), course, rate, 3000);
}

} // namespace

TEST(LineSimulation, CurrentsOfTheBusAddUpToZero)
{
    Course course = FaultAt(0.05, {FaultKind::BCG, 1.0});
    course.actions.push_back({0.1, station::BreakerOrder{Terminal::Local, false}});
    course.actions.push_back({0.3, station::BreakerOrder{Terminal::Local, true}});
    const LineWaves waves = Simulate(UsualModel(), course, rate, 4000);
    for (size_t i = 0; i < waves.line.size(); ++i)
        for (size_t phase = 0; phase < 3; ++phase)
            ASSERT_NEAR(waves.line[i][phase] + waves.infeed[i][phase] + waves.healthy[i][phase], 0, 0.001)
                << i << ' ' << phase;
}

TEST(LineSimulation, EachPoleInterruptsAtTheZeroOfItsCurrent)
{
    const LineWaves waves = OpenedFault();
    ASSERT_EQ(waves.interruptions.size(), 3u);
    for (const station::Interruption& interruption : waves.interruptions) {
        EXPECT_EQ(interruption.terminal, Terminal::Local);
        EXPECT_GT(interruption.time, 0.1);
        EXPECT_LT(interruption.time, 0.1 + 0.015);
        const auto after = static_cast<size_t>(std::ceil(interruption.time * rate + 1e-6));
        const auto value = [&](size_t sample) { return waves.line[sample][interruption.phase]; };
        for (size_t i = after; i < waves.line.size(); ++i)
            ASSERT_EQ(value(i), 0.0) << i;
        // The last sample before is no further from zero than the current moves in an interval and a step.
        EXPECT_NE(value(after - 1), 0.0);
        EXPECT_LT(std::fabs(value(after - 1)), 1.25 * std::fabs(value(after - 1) - value(after - 2)));
    }
    EXPECT_NE(waves.interruptions[0].time, waves.interruptions[2].time);
}

TEST(LineSimulation, NothingSwingsAfterAnInterruption)
{
    const LineWaves waves = OpenedFault();
    const double peak = std::sqrt(2.0) * UsualModel().voltage;
    for (size_t i = 1; i < waves.bus.size(); ++i)
        for (size_t phase = 0; phase < 3; ++phase)
            ASSERT_LT(std::fabs(waves.bus[i][phase]), 1.6 * peak) << i << ' ' << phase;
    // A quarter period later the voltage is a sinusoid again: equal to its negative half a period before.
    for (size_t i = 1400; i < waves.bus.size(); ++i)
        for (size_t phase = 0; phase < 3; ++phase)
            ASSERT_NEAR(waves.bus[i][phase], -waves.bus[i - 100][phase], 0.01 * peak) << i << ' ' << phase;
}

// Without another source and load the current of a three-phase fault decays with the time constant L/R of the
// loop.
TEST(LineSimulation, DirectComponentDecaysWithTheTimeConstantOfTheLoop)
{
    LineModel model = UsualModel();
    model.lineLoad = model.healthyLoad = 0;
    model.healthy = {{1e7, 1e7}, {1e7, 1e7}};
    Course course = FaultAt(0.02, {FaultKind::ABC, 0});
    course.turnsAtStart = 0.0; // the fault is at the zero of the voltage of phase a
    const LineWaves waves = Simulate(model, course, rate, 1600);
    const Complex loop = model.infeed.positive + LineImpedance(model.line, model.fraction).positive;
    const double constant = loop.imag() / (2 * M_PI * 50) / loop.real();
    const auto mean = [&](size_t first) {
        double sum = 0;
        for (size_t i = first; i < first + period; ++i)
            sum += waves.line[i][0];
        return sum / period;
    };
    EXPECT_GT(mean(210), 300);
    for (const size_t first : {400u, 600u, 900u}) {
        const double since = (static_cast<double>(first) - 210) / rate;
        EXPECT_NEAR(mean(first) / mean(210), std::exp(-since / constant), 0.002) << first;
    }
}

TEST(LineSimulation, LineThatIsClosedAgainCarriesItsLoad)
{
    Course course = FaultAt(0.03, {FaultKind::AG, 1.0});
    for (const Terminal terminal : {Terminal::Local, Terminal::Remote})
        course.actions.push_back({0.06, station::BreakerOrder{terminal, false}});
    course.actions.push_back({0.15, station::FaultChange{std::nullopt}});
    for (const Terminal terminal : {Terminal::Local, Terminal::Remote})
        course.actions.push_back({0.2, station::BreakerOrder{terminal, true}});
    const LineWaves waves = Simulate(UsualModel(), course, rate, 10000);
    ExpectSteadyState(waves, SteadyState(UsualModel(), std::nullopt), 9800, 0.0, "reclosed");
}

TEST(LineSimulation, StepsDivideTheIntervalOfTheSamples)
{
    for (const double samples : {600.0, 2400.0, 10000.0, 12000.0, 20000.0}) {
        const station::StepGrid grid(samples);
        EXPECT_LE(grid.Length(), 20e-6 * (1 + 1e-9)) << samples;
        EXPECT_NEAR(grid.Length() * grid.PerSample(), 1 / samples, 1e-15) << samples;
        EXPECT_GE(grid.Snap(0.1234), 0.1234 - 1e-9);
        EXPECT_LT(grid.Snap(0.1234), 0.1234 + grid.Length());
    }
}

TEST(LineSimulation, SaturatedTransformerPassesLessThanFlows)
{
    Course course = FaultAt(0.02, {FaultKind::AG, 0.0});
    const double amplitude =
        std::sqrt(2.0) * std::abs(SteadyState(UsualModel(), station::FaultState{FaultKind::AG, 0}).line[0]);
    const LineWaves ideal = Simulate(UsualModel(), course, rate, 1600);
    course.kneeFlux = 3 * amplitude / (2 * M_PI * 50);
    const LineWaves saturated = Simulate(UsualModel(), course, rate, 1600);
    EXPECT_EQ(ideal.largestDeviation, 0.0);
    EXPECT_GT(saturated.largestDeviation, 0.05 * saturated.largestCurrent);
    EXPECT_LT(saturated.largestDeviation, 0.6 * saturated.largestCurrent) << "mild";
    for (size_t i = 0; i < 200; ++i)
        ASSERT_NEAR(saturated.line[i][0], ideal.line[i][0], 0.02 * amplitude) << "the load is passed on";
}
