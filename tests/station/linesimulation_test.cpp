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

// A second of the fault, compared before it and in its last period.
void ExpectSequenceNetworks(const LineModel& model, const FaultState& fault, double turns)
{
    Course course = FaultAt(0.0213, fault);
    course.turnsAtStart = turns;
    const double rate = model.frequency * period;
    const size_t samples = static_cast<size_t>(model.frequency) * period;
    const LineWaves waves = Simulate(model, course, rate, samples);
    const std::string name = NameOf(fault.kind).toStdString() + " at " + std::to_string(model.fraction) + " by " +
                             std::to_string(fault.resistance);
    ExpectSteadyState(waves, SteadyState(model, std::nullopt), 0, turns, name + " before");
    ExpectSteadyState(waves, SteadyState(model, fault), samples - period, turns, name + " during");
}

class EveryKind : public testing::TestWithParam<FaultKind>
{};

} // namespace

TEST_P(EveryKind, AgreesWithTheSequenceNetworks)
{
    for (const double fraction : {0.03, 0.5, 0.97})
        for (const double resistance : {0.0, 5.0, 20.0}) {
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

TEST(LineSimulation, CurrentsOfTheBusAddUpToZero)
{
    Course course = FaultAt(0.05, {FaultKind::BCG, 1.0});
    course.actions.push_back({0.1, station::BreakerOrder{Terminal::Local, false}});
    course.actions.push_back({0.3, station::BreakerOrder{Terminal::Local, true}});
    const LineWaves waves = Simulate(UsualModel(), course, 10000, 4000);
    for (size_t i = 0; i < waves.line.size(); ++i)
        for (size_t phase = 0; phase < 3; ++phase)
            ASSERT_NEAR(waves.line[i][phase] + waves.infeed[i][phase] + waves.healthy[i][phase], 0, 20)
                << i << ' ' << phase;
}
