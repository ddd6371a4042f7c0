// Kinds of fault, and the sequence networks against the connections that the textbooks give for each kind.
#include "linemodels.h"

#include <gtest/gtest.h>

using station::Complex;
using station::FaultKind;
using station::LineModel;
using station::LinePhasors;
using station::SequenceImpedance;

namespace {

Complex Parallel(Complex one, Complex other)
{
    return one * other / (one + other);
}

// The impedances seen from the fault at 50 Hz, and the voltage there before it.
struct Thevenin
{
    Complex positive;
    Complex zero;
    Complex voltage;
};

Thevenin TheveninOf(const LineModel& model)
{
    const auto seen = [&](Complex infeed, Complex healthy, Complex line, Complex remote) {
        return Parallel(Parallel(infeed, healthy) + line * model.fraction,
                        remote + line * (1 - model.fraction));
    };
    const SequenceImpedance line = LineImpedance(model.line, 1);
    return {seen(model.infeed.positive, model.healthy.positive, line.positive, model.remote.positive),
            seen(model.infeed.zero, model.healthy.zero, line.zero, model.remote.zero),
            model.voltage - model.lineLoad * line.positive * model.fraction};
}

// Currents into the fault: from both ends.
station::PhasePhasors FaultCurrents(FaultKind kind, double resistance)
{
    const LinePhasors phasors = SteadyState(UsualModel(), station::FaultState{kind, resistance});
    station::PhasePhasors sum;
    for (size_t phase = 0; phase < 3; ++phase)
        sum[phase] = phasors.line[phase] + phasors.remote[phase];
    return sum;
}

void ExpectNear(Complex found, Complex expected)
{
    EXPECT_NEAR(std::abs(found - expected), 0, 1e-3 * std::abs(expected) + 1e-6)
        << found << " instead of " << expected;
}

} // namespace

TEST(LineFault, NamesAreReadInUpperAndLowerCase)
{
    EXPECT_EQ(station::FaultKindNamed("bcg"), FaultKind::BCG);
    EXPECT_EQ(station::FaultKindNamed("ABC"), FaultKind::ABC);
    EXPECT_FALSE(station::FaultKindNamed("ACB"));
    EXPECT_EQ(station::AllFaultKinds().size(), 10u);
    for (const FaultKind kind : station::AllFaultKinds())
        EXPECT_EQ(station::FaultKindNamed(NameOf(kind)), kind);
}

TEST(LineFault, EvolvesByPhasesAndGroundThatJoin)
{
    EXPECT_TRUE(station::Evolves(FaultKind::AG, FaultKind::ABG));
    EXPECT_TRUE(station::Evolves(FaultKind::AB, FaultKind::ABG));
    EXPECT_TRUE(station::Evolves(FaultKind::ABG, FaultKind::ABC));
    EXPECT_TRUE(station::Evolves(FaultKind::BC, FaultKind::ABC));
    EXPECT_FALSE(station::Evolves(FaultKind::AG, FaultKind::BG));
    EXPECT_FALSE(station::Evolves(FaultKind::AG, FaultKind::AB)) << "the ground does not leave";
    EXPECT_FALSE(station::Evolves(FaultKind::AG, FaultKind::AG));
    EXPECT_FALSE(station::Evolves(FaultKind::ABC, FaultKind::ABG));
}

TEST(LineFault, SinglePhaseFaultHasTheNetworksInSeries)
{
    const Thevenin source = TheveninOf(UsualModel());
    const Complex expected = 3.0 * source.voltage / (2.0 * source.positive + source.zero + 3.0 * 4.0);
    const station::PhasePhasors current = FaultCurrents(FaultKind::AG, 4);
    ExpectNear(current[0], expected);
    EXPECT_NEAR(std::abs(current[1]), 0, 1e-6);
    EXPECT_NEAR(std::abs(current[2]), 0, 1e-6);
}

TEST(LineFault, TwoPhaseFaultHasPositiveAndNegativeNetworkInParallel)
{
    const Thevenin source = TheveninOf(UsualModel());
    const Complex positive = source.voltage / (2.0 * source.positive + 4.0);
    const station::PhasePhasors current = FaultCurrents(FaultKind::BC, 4);
    ExpectNear(current[1], Complex(0, -std::sqrt(3.0)) * positive);
    ExpectNear(current[2], -current[1]);
    EXPECT_NEAR(std::abs(current[0]), 0, 1e-6);
}

TEST(LineFault, TwoPhaseGroundFaultHasAllNetworksInParallel)
{
    const Thevenin source = TheveninOf(UsualModel());
    const double arc = 0.4;
    const Complex zero = source.zero + arc + 3.0 * 4.0;
    const Complex positive = source.voltage / (source.positive + arc + Parallel(source.positive + arc, zero));
    const Complex residual =
        -3.0 * positive * (source.positive + arc) / (source.positive + arc + zero); // of the phases b and c
    const station::PhasePhasors current = FaultCurrents(FaultKind::BCG, 4);
    ExpectNear(current[1] + current[2], residual);
    EXPECT_NEAR(std::abs(current[0]), 0, 1e-6);
}

TEST(LineFault, ThreePhaseFaultHasThePositiveNetworkAlone)
{
    const Thevenin source = TheveninOf(UsualModel());
    const station::PhasePhasors current = FaultCurrents(FaultKind::ABC, 4);
    ExpectNear(current[0], source.voltage / (source.positive + 4.0));
    ExpectNear(current[1], current[0] * std::polar(1.0, -2 * M_PI / 3));
    ExpectNear(current[2], current[0] * std::polar(1.0, 2 * M_PI / 3));
}

TEST(LineFault, PhasesOfOneKindAreThoseOfAnotherTurned)
{
    const station::PhasePhasors a = FaultCurrents(FaultKind::AG, 1);
    const station::PhasePhasors b = FaultCurrents(FaultKind::BG, 1);
    ExpectNear(b[1], a[0] * std::polar(1.0, -2 * M_PI / 3));
}
