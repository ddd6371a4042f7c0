// Currents and voltages from the sequence networks (J. L. Blackburn, "Symmetrical Components for Power
// Systems Engineering", 1993, chapter 4).
#include "analysis/distance.h"
#include "analysis/faultkind.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using analysis::FaultKind;
using analysis::Phasor;

constexpr double Pi = 3.14159265358979323846;
constexpr double Voltage = 63500;

Phasor Polar(double size, double degrees)
{
    return std::polar(size, degrees * Pi / 180);
}

analysis::PhasePhasors Phases(Phasor zero, Phasor positive, Phasor negative)
{
    const Phasor turn = Polar(1, 120);
    return {zero + positive + negative, zero + turn * turn * positive + turn * negative,
            zero + turn * positive + turn * turn * negative};
}

// a to b to c, as a fault of phase a becomes one of phase b.
analysis::PhasePhasors Rotated(const analysis::PhasePhasors& set, int times)
{
    analysis::PhasePhasors result = set;
    for (int i = 0; i < times; ++i) // what phase a had, b has 120 degrees later
        result = {result[2] * Polar(1, -120), result[0] * Polar(1, -120), result[1] * Polar(1, -120)};
    return result;
}

// A line from one source, 40 % to the fault; no load, no other end.
struct Network
{
    analysis::Line line;
    Phasor source1 = {0.5, 6};
    Phasor source0 = {0.8, 9};
    double part = 0.4;
    double resistance = 3;

    Network()
    {
        line.length = 50;
        line.r1 = 0.12;
        line.x1 = 0.4;
        line.r0 = 0.3;
        line.x0 = 1.3;
    }

    Phasor Line1() const { return Phasor(line.r1, line.x1) * line.length * part; }
    Phasor Line0() const { return Phasor(line.r0, line.x0) * line.length * part; }

    // The currents of the sequences at the fault, in terms of phase a.
    analysis::Components Currents(FaultKind base) const
    {
        const Phasor z1 = source1 + Line1();
        const Phasor z0 = source0 + Line0();
        if (base == FaultKind::AG) {
            const Phasor current = Voltage / (2.0 * z1 + z0 + 3.0 * resistance);
            return {current, current, current};
        }
        if (base == FaultKind::BC) {
            const Phasor current = Voltage / (2.0 * z1 + resistance);
            return {0, current, -current};
        }
        if (base == FaultKind::BCG) { // the resistance is that to earth
            const Phasor earth = z0 + 3.0 * resistance;
            const Phasor positive = Voltage / (z1 + z1 * earth / (z1 + earth));
            return {-positive * z1 / (z1 + earth), positive, -positive * earth / (z1 + earth)};
        }
        return {0, Voltage / (z1 + resistance), 0};
    }

    analysis::Change Change(FaultKind base, int rotated) const
    {
        const analysis::Components currents = Currents(base);
        analysis::Change change;
        change.before.hasVoltages = change.during.hasVoltages = true;
        change.before.voltages = Phases(0, Voltage, 0);
        change.during.currents =
            Rotated(Phases(currents.zero, currents.positive, currents.negative), rotated);
        change.during.voltages =
            Rotated(Phases(-source0 * currents.zero, Voltage - source1 * currents.positive,
                           -source1 * currents.negative),
                    rotated);
        return change;
    }
};

struct KindCase
{
    FaultKind base;
    int rotated;
    FaultKind kind;
};

class Kinds : public testing::TestWithParam<KindCase>
{};

TEST_P(Kinds, AreTheSequenceNetworksOnes)
{
    const analysis::Change change = Network().Change(GetParam().base, GetParam().rotated);
    EXPECT_TRUE(analysis::IsShortCircuit(change));
    EXPECT_STREQ(NameOf(analysis::KindOf(change)), NameOf(GetParam().kind));
    EXPECT_EQ(analysis::DirectionOf(change), analysis::Direction::Forward);
}

TEST_P(Kinds, HaveTheDistanceByEachMethod)
{
    const Network network;
    const analysis::Change change = network.Change(GetParam().base, GetParam().rotated);
    const auto distances = DistancesOf(GetParam().kind, change, network.line, {});
    ASSERT_GE(distances.size(), 2u);
    for (const analysis::Distance& distance : distances) {
        if (distance.method ==
            analysis::DistanceMethod::Reactance) // blind to the current from the other end alone
            EXPECT_NEAR(distance.percent, 40, 0.6) << NameOf(distance.method);
        else
            EXPECT_NEAR(distance.percent, 40, 1e-6) << NameOf(distance.method);
        EXPECT_NEAR(distance.km, distance.percent / 2, 1e-9);
    }
}

TEST_P(Kinds, AreSeenBehindTheRecorderWhereTheCurrentComesFromTheLine)
{
    analysis::Change change = Network().Change(GetParam().base, GetParam().rotated);
    for (Phasor& current : change.during.currents)
        current = -current;
    EXPECT_EQ(analysis::DirectionOf(change), analysis::Direction::Reverse);
}

INSTANTIATE_TEST_SUITE_P(
    Ten, Kinds,
    testing::Values(KindCase{FaultKind::AG, 0, FaultKind::AG}, KindCase{FaultKind::AG, 1, FaultKind::BG},
                    KindCase{FaultKind::AG, 2, FaultKind::CG}, KindCase{FaultKind::BC, 0, FaultKind::BC},
                    KindCase{FaultKind::BC, 1, FaultKind::CA}, KindCase{FaultKind::BC, 2, FaultKind::AB},
                    KindCase{FaultKind::BCG, 0, FaultKind::BCG}, KindCase{FaultKind::BCG, 1, FaultKind::CAG},
                    KindCase{FaultKind::BCG, 2, FaultKind::ABG},
                    KindCase{FaultKind::ABC, 0, FaultKind::ABC}));

analysis::Change Balanced(Phasor before, Phasor during, double voltagePart)
{
    analysis::Change change;
    change.before.hasVoltages = change.during.hasVoltages = true;
    change.before.voltages = Phases(0, Voltage, 0);
    change.before.currents = Phases(0, before, 0);
    change.during.voltages = Phases(0, Voltage * voltagePart, 0);
    change.during.currents = Phases(0, during, 0);
    return change;
}

TEST(Kind, OfAWindowWithAMissingValueIsSomeKind)
{
    analysis::Change change = Network().Change(FaultKind::AG, 0);
    change.during.currents[analysis::PhaseB] = std::nan("");
    const std::string name = NameOf(KindOf(change));
    EXPECT_TRUE(name == "ABG" || name == "AB" || name == "AG") << name;
    EXPECT_FALSE(IsShortCircuit(change));
}

TEST(ShortCircuit, IsNotALoadThatGrowsOrGoes)
{
    EXPECT_FALSE(IsShortCircuit(Balanced(Polar(100, -20), Polar(600, -25), 0.97)));
    EXPECT_FALSE(IsShortCircuit(Balanced(0, Polar(500, -25), 0.98)));
    EXPECT_FALSE(IsShortCircuit(Balanced(Polar(500, -25), 0, 1.02)));
    EXPECT_FALSE(IsShortCircuit(Balanced(Polar(500, -25), Polar(500, 155), 0.99)));
}

TEST(ShortCircuit, IsABalancedChangeThatBreaksTheVoltageDown)
{
    EXPECT_TRUE(IsShortCircuit(Balanced(Polar(300, -20), Polar(2500, -70), 0.8)));
    EXPECT_TRUE(IsShortCircuit(Balanced(Polar(300, -20), Polar(2800, -20), 0.96))); // behind 20 ohms
}

TEST(ShortCircuit, IsNotTheInrushOfATransformer)
{
    analysis::Change change = Network().Change(FaultKind::AG, 0);
    change.during.voltages = change.before.voltages;
    EXPECT_TRUE(IsShortCircuit(change));
    change.secondHarmonic = 0.3;
    EXPECT_FALSE(IsShortCircuit(change));
}

TEST(ShortCircuit, IsNotAnOpenedPhase)
{
    analysis::Change change = Balanced(Polar(500, -20), Polar(500, -20), 1);
    change.during.currents[analysis::PhaseB] = 0;
    EXPECT_FALSE(IsShortCircuit(change));
}

// A line that is closed again lowers the voltage that its opening had raised.
TEST(ShortCircuit, IsNotALoadThatBringsARaisedVoltageDown)
{
    analysis::Change change = Balanced(0, Polar(420, -32), 0.885);
    EXPECT_TRUE(IsShortCircuit(change));
    change.usualVoltage = Voltage / 1.13;
    EXPECT_FALSE(IsShortCircuit(change));
}

TEST(ShortCircuit, IsNotAnInrushThatBreaksTheVoltageOfAWeakSourceDown)
{
    Network network;
    network.source1 = {1, 30};
    analysis::Change change = network.Change(FaultKind::BC, 0);
    change.secondHarmonic = 0.4;
    change.voltageSecondHarmonic = 0.02; // current transformers saturate
    EXPECT_TRUE(IsShortCircuit(change));
    change.voltageSecondHarmonic = 0.8;
    EXPECT_FALSE(IsShortCircuit(change));
}

TEST(ShortCircuit, IsFoundAgainstALoadThatFlowsTheOtherWay)
{
    Network network;
    network.resistance = 30;
    analysis::Change change = network.Change(FaultKind::AG, 0);
    const analysis::PhasePhasors load = Phases(0, -0.55 * change.during.currents[analysis::PhaseA], 0);
    for (size_t phase = 0; phase < load.size(); ++phase) {
        change.before.currents[phase] += load[phase];
        change.during.currents[phase] += load[phase];
    }
    EXPECT_LT(std::abs(change.during.currents[analysis::PhaseA]),
              std::abs(change.before.currents[analysis::PhaseA]));
    EXPECT_TRUE(IsShortCircuit(change));
}

TEST(ShortCircuit, ThatIsSmallIsOneOnlyIfItsDistanceIsOnTheLine)
{
    Network network;
    network.part = 5; // 250 km away
    const analysis::Change change = network.Change(FaultKind::AG, 0);
    EXPECT_FALSE(IsShortCircuit(change));
    EXPECT_FALSE(MayBeShortCircuit(change, nullptr));
    EXPECT_FALSE(MayBeShortCircuit(change, &network.line));
    analysis::Line longer = network.line;
    longer.length = 300;
    EXPECT_TRUE(MayBeShortCircuit(change, &longer));
}

TEST(SwitchedOff, IsWhatCarriesNothingInThePhasesThatChange)
{
    analysis::Change change = Balanced(Polar(500, -20), Polar(500, -20), 1);
    change.during.currents[analysis::PhaseB] = 0;
    EXPECT_TRUE(IsSwitchedOff(change));
    change.during.currents[analysis::PhaseA] = -change.before.currents[analysis::PhaseA];
    EXPECT_FALSE(IsSwitchedOff(change));
}

TEST(Distance, IsNotMovedByLoadOrTheOtherEndIfTheImpedancesHaveOneAngle)
{
    // The other end feeds the fault through the rest of the line and a source of the line's own angle; the
    // load shifts the voltage's angle. All impedances are multiples of the line's.
    Network network;
    const Phasor z1 = Phasor(network.line.r1, network.line.x1) * network.line.length;
    const Phasor near = 0.3 * z1;
    const Phasor far = 0.5 * z1;
    const Phasor sourceVoltage = Voltage;
    const Phasor otherVoltage = Polar(Voltage, -20);
    const Phasor load = (sourceVoltage - otherVoltage) / (near + z1 + far);
    const Phasor left = near + 0.4 * z1;
    const Phasor right = far + 0.6 * z1;
    const Phasor open = sourceVoltage - left * load; // the voltage at the place of the fault
    const Phasor fault = open / (left * right / (left + right) + 8.0);
    const Phasor share = fault * right / (left + right);
    analysis::Change change;
    change.before.hasVoltages = change.during.hasVoltages = true;
    change.before.currents = Phases(0, load, 0);
    change.before.voltages = Phases(0, sourceVoltage - near * load, 0);
    change.during.currents = Phases(0, load + share, 0);
    change.during.voltages = Phases(0, sourceVoltage - near * (load + share), 0);
    const auto distances = DistancesOf(FaultKind::ABC, change, network.line, {});
    ASSERT_EQ(distances.size(), 2u);
    EXPECT_GT(std::abs(distances[0].percent - 40), 2); // the reactance is misled
    EXPECT_NEAR(distances[1].percent, 40, 1e-6);
    EXPECT_NEAR(distances[1].resistance, 8 * std::abs(fault / share), 1e-6); // as seen from here
    const analysis::DistanceRange range =
        RangeOf(FaultKind::ABC, change, network.line, {}, analysis::DistanceMethod::Takagi);
    EXPECT_LT(range.fromPercent, 40);
    EXPECT_GT(range.toPercent, 40);
}

} // namespace
