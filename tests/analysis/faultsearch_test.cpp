// Waves of one circuit with what the search has to find, or must not.
#include "analysis/faultsearch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using analysis::FaultKind;
using analysis::Phasor;

constexpr double Pi = 3.14159265358979323846;
constexpr double Period = 40; // samples
constexpr double Voltage = 63500;

Phasor Polar(double size, double degrees)
{
    return std::polar(size, degrees * Pi / 180);
}

// RMS phasors of three phases at a sample.
using Course = std::function<analysis::PhasePhasors(size_t sample)>;

analysis::PhasePhasors Balanced(Phasor a)
{
    return {a, a * Polar(1, -120), a * Polar(1, 120)};
}

class Record
{
public:
    Record(size_t count, const Course& voltages, const Course& currents)
        : meter(Period), values(2 * analysis::Phases, analysis::Wave(count))
    {
        for (size_t phase = 0; phase < analysis::Phases; ++phase) {
            for (size_t i = 0; i < count; ++i) {
                const Phasor turn = std::polar(std::sqrt(2.0), 2 * Pi * static_cast<double>(i) / Period);
                values[phase][i] = (currents(i)[phase] * turn).real();
                values[analysis::Phases + phase][i] = (voltages(i)[phase] * turn).real();
            }
            waves.currents[phase] = &values[phase];
            waves.voltages[phase] = &values[analysis::Phases + phase];
        }
        waves.hasVoltages = true;
    }

    std::optional<analysis::Occurrence> Found() const { return analysis::FaultSearch(waves, meter).Next(0); }

private:
    analysis::Meter meter;
    std::vector<analysis::Wave> values;
    analysis::CircuitWaves waves;
};

// One value up to sample 400, another up to `until`, then a third.
Course Steps(Phasor before, Phasor during, size_t until, Phasor after)
{
    return [=](size_t i) { return Balanced(i < 400 ? before : i < until ? during : after); };
}

// 20 ohms between source and other end: looks like a load.
Record BehindAResistance(size_t until, Phasor after)
{
    return {1200, Steps(Voltage, Polar(0.955 * Voltage, -8), until, Voltage),
            Steps(Polar(280, 165), Polar(650, -25), until, after)};
}

TEST(FaultSearch, FindsABalancedFaultBehindAResistanceByTheBreakerThatEndsIt)
{
    const auto found = BehindAResistance(600, 0).Found();
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->onset, 399.5, 0.6);
    ASSERT_TRUE(found->clearing);
    EXPECT_NEAR(*found->clearing, 600, 1);
    EXPECT_EQ(found->kinds.front().second, FaultKind::ABC);
}

TEST(FaultSearch, TakesALoadThatStaysOrGoesBackForNone)
{
    EXPECT_FALSE(BehindAResistance(1200, 0).Found());
    EXPECT_FALSE(BehindAResistance(600, Polar(280, 165)).Found());
}

TEST(FaultSearch, TakesAPowerSwingForNone)
{
    const auto swing = [](size_t i) { // degrees, half a second each way
        return i < 400 ? 0 : 35 * (1 - std::cos(2 * Pi * static_cast<double>(i - 400) / 1000));
    };
    const Record record(
        1400, [](size_t) { return Balanced(Voltage); },
        [&](size_t i) { return Balanced((1.0 - Polar(1, -5 - swing(i))) * Voltage / Phasor(3, 25)); });
    EXPECT_FALSE(record.Found());
}

TEST(FaultSearch, KnowsTheClearingOfARecordThatEndsSoonAfterIt)
{
    const Course voltages = Steps(Voltage, Polar(0.6 * Voltage, -5), 600, Voltage);
    const Course currents = Steps(Polar(200, -20), Polar(3000, -75), 600, 0);
    const auto found = Record(608, voltages, currents).Found();
    ASSERT_TRUE(found);
    ASSERT_TRUE(found->clearing);
    EXPECT_NEAR(*found->clearing, 600, 1);
    const auto open = Record(600, voltages, currents).Found();
    ASSERT_TRUE(open);
    EXPECT_FALSE(open->clearing);
}

TEST(FaultSearch, TakesTheOnsetFromTheVoltagesWhereTheCurrentHidesAtFirst)
{
    const auto found = Record(900, Steps(Voltage, Polar(0.6 * Voltage, -5), 900, 0), [](size_t i) {
                           const double growth =
                               std::min(1.0, std::pow((static_cast<double>(i) - 399) / 20, 2));
                           return Balanced(i < 400 ? Phasor(200) : 200.0 + growth * Polar(3000, -75));
                       }).Found();
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->onset, 399.5, 0.1);
    EXPECT_GT(found->firstBad, 400u);
}

TEST(FaultSearch, SeesAPhaseJoinWhoseLoadTurnsRound)
{
    const auto currents = [](size_t i) -> analysis::PhasePhasors {
        const auto load = Balanced(Polar(450, 160));
        const auto fault = Balanced(Polar(220, 25));
        if (i < 400)
            return load;
        return i < 520 ? analysis::PhasePhasors{load[0], load[1] + Polar(900, 170), load[2] - Polar(900, 170)}
                       : fault;
    };
    const auto voltages = [](size_t i) -> analysis::PhasePhasors {
        auto set = Balanced(Voltage);
        if (i >= 400 && i < 520)
            return {set[0], set[1] * 0.6, set[2] * 0.6};
        return i < 400 ? set : Balanced(0.8 * Voltage);
    };
    const auto found = Record(900, voltages, currents).Found();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->kinds.back().second, FaultKind::ABC);
}

} // namespace
