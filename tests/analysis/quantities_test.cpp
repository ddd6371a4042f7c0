#include "analysis/harmonics.h"
#include "analysis/i2t.h"
#include "analysis/impedance.h"
#include "analysis/power.h"
#include "analysis/rms.h"
#include "analysis/unbalance.h"

#include "waves.h"

#include <gtest/gtest.h>

namespace {

using analysis::PhasePhasors;
using analysis::Phasor;

waves::Steady At(double samplesPerPeriod, std::vector<waves::Part> parts)
{
    return {samplesPerPeriod * 50, 50, std::move(parts)};
}

TEST(Rms, HasFundamentalHarmonicsAndDirectComponentAtAnyNumberOfSamples)
{
    for (const double samples : {11.3, 12.0, 20.0, 31.5, 45.3, 48.0, 400.0, 425.5}) {
        const analysis::Wave wave = At(samples, {{1, 12, 0.3}, {0, 3, 0}, {3, 4, 1}}).Samples(1500);
        const analysis::Wave rms = analysis::Rms(samples).Track(wave);
        const analysis::Wave direct = analysis::Direct(samples).Track(wave);
        for (size_t i = 450; i < wave.size(); i += 13) {
            EXPECT_NEAR(rms[i], 13, 13 * 2e-4) << samples;
            EXPECT_NEAR(direct[i], 3, 13 * 2e-4) << samples;
        }
        EXPECT_TRUE(std::isnan(rms[static_cast<size_t>(samples) - 2]));
    }
}

TEST(Rms, OfASampleIsThatOfTheTrack)
{
    for (const double samples : {12.0, 47.5}) {
        const analysis::Rms rms(samples);
        const analysis::Wave wave = At(samples, {{1, 12, 0.3}, {2, 1, 0}}).Samples(100);
        EXPECT_NEAR(rms.Of(&wave[100 - rms.Window()]), rms.Track(wave)[99], 1e-12);
    }
}

TEST(Rms, IsMissingWhereASampleIs)
{
    for (const double samples : {12.0, 48.0}) {
        analysis::Wave wave = At(samples, {{1, 1, 0}}).Samples(300);
        wave[150] = std::nan("");
        const analysis::Rms rms(samples);
        const analysis::Wave track = rms.Track(wave);
        for (size_t i = rms.Window() - 1; i < wave.size(); ++i)
            EXPECT_EQ(std::isnan(track[i]), i >= 150 && i < 150 + rms.Window()) << i;
    }
}

TEST(Peak, IsTheLargestMagnitudeOfTheLastPeriod)
{
    const analysis::Peak peak(4);
    const analysis::Wave wave = {1, -5, 2, 3, 0, 1, -1, std::nan(""), 7, 1, 1, 1, 1};
    const analysis::Wave track = peak.Track(wave);
    const double expected[] = {-1, -1, -1, 5, 5, 3, 3, -1, -1, -1, -1, 7, 1}; // -1: missing
    for (size_t i = 0; i < wave.size(); ++i) {
        if (expected[i] < 0)
            EXPECT_TRUE(std::isnan(track[i])) << i;
        else
            EXPECT_EQ(track[i], expected[i]) << i;
    }
    EXPECT_EQ(peak.Of(&wave[1]), 5);
    EXPECT_TRUE(std::isnan(peak.Of(&wave[6])));
}

TEST(Harmonics, AreThoseThatTheWaveIsMadeOf)
{
    for (const double samples : {24.3, 48.0, 47.5, 400.0, 394.7}) {
        const waves::Steady steady =
            At(samples, {{1, 100, 0.3}, {0, -7, 0}, {2, 3, 1}, {5, 4, -2}, {11, 12, 0.5}});
        const analysis::Harmonics harmonics(samples);
        const analysis::Spectrum spectrum = harmonics.Of(steady.Samples(harmonics.Window()).data());
        EXPECT_EQ(harmonics.Highest(), waves::HighestOrder(steady));
        ASSERT_EQ(spectrum.harmonics.size(), static_cast<size_t>(harmonics.Highest()));
        EXPECT_NEAR(spectrum.direct, -7, 0.01);
        EXPECT_NEAR(spectrum.Thd(), 0.13, 1e-4); // 3, 4, 12: 13
        for (const waves::Part& part : steady.parts) {
            if (part.order > 0) {
                const Phasor truth = steady.PhasorAt(part, harmonics.Window() - 1);
                EXPECT_LT(std::abs(spectrum.harmonics[static_cast<size_t>(part.order) - 1] - truth), 0.01)
                    << part.order;
            }
        }
    }
}

TEST(Harmonics, OverSeveralPeriodsAreExactToo)
{
    const waves::Steady steady = At(47.5, {{1, 100, 0.3}, {23, 5, 1}});
    const analysis::Harmonics harmonics(47.5, 10);
    EXPECT_EQ(harmonics.Window(), 475u);
    EXPECT_NEAR(harmonics.Of(steady.Samples(475).data()).Thd(), 0.05, 1e-9);
}

TEST(Harmonics, OfNothingHaveNoDistortion)
{
    const analysis::Wave nothing(48, 0);
    EXPECT_TRUE(std::isnan(analysis::Harmonics(48).Of(nothing.data()).Thd()));
    const analysis::Wave missing(48, std::nan(""));
    EXPECT_TRUE(std::isnan(analysis::Harmonics(48).Of(missing.data()).Thd()));
}

TEST(Power, IsPositiveIntoAnInductiveLoad)
{
    const analysis::Power power =
        analysis::PowerOf(std::polar(100.0, 0.5), std::polar(5.0, 0.5 - std::acos(0.8)));
    EXPECT_NEAR(power.active, 400, 1e-10);
    EXPECT_NEAR(power.reactive, 300, 1e-10);
    EXPECT_NEAR(power.Apparent(), 500, 1e-10);
    EXPECT_NEAR(power.Factor(), 0.8, 1e-12);
    EXPECT_NEAR(analysis::PowerOf(100, -5).Factor(), -1, 1e-12);
    EXPECT_TRUE(std::isnan(analysis::PowerOf(100, 0).Factor()));
}

TEST(Power, OfThreePhasesIsTheirSum)
{
    const PhasePhasors voltages = {Phasor(100, 0), std::polar(100.0, -2.1), std::polar(90.0, 2.1)};
    const PhasePhasors currents = {Phasor(3, -4), Phasor(0), std::polar(2.0, 2.1)};
    const analysis::Power power = analysis::PowerOf(voltages, currents);
    EXPECT_NEAR(power.active, 300 + 180, 1e-10);
    EXPECT_NEAR(power.reactive, 400, 1e-10);
    const analysis::PhaseTracks tracks = {std::vector<Phasor>{1, 2}, {3, 4}, {5, std::nan("")}};
    const auto against = [](const PhasePhasors& u, const PhasePhasors& i) {
        return analysis::PowerOf(u, i).active;
    };
    EXPECT_EQ(analysis::Track(tracks, tracks, against)[0], 35);
    EXPECT_TRUE(std::isnan(analysis::Track(tracks, tracks, against)[1]));
}

TEST(PhaseToPhase, AreDifferencesInTheOrderOfTheLoops)
{
    const PhasePhasors between = analysis::PhaseToPhase({Phasor(10), Phasor(7), Phasor(1)});
    EXPECT_EQ(between, (PhasePhasors{Phasor(3), Phasor(6), Phasor(-9)}));
}

// A line with mutual coupling between its phases, of which the loops must see the positive-sequence
// impedance.
TEST(Impedance, OfEachLoopThatIsFaultedIsThePositiveSequenceOfTheLine)
{
    analysis::Line line;
    line.r1 = 0.1;
    line.x1 = 0.4;
    line.r0 = 0.35;
    line.x0 = 1.3;
    const Phasor z1(0.1, 0.4);
    const Phasor z0(0.35, 1.3);
    const PhasePhasors currents = {Phasor(900, -700), Phasor(-200, 340), Phasor(50, 80)};
    const analysis::Components flow = analysis::ComponentsOf(currents);
    PhasePhasors voltages; // a bolted fault of all phases at the end of one kilometre
    for (size_t phase = 0; phase < analysis::Phases; ++phase)
        voltages[phase] = z1 * currents[phase] + (z0 - z1) * flow.zero;
    const auto loops = analysis::ImpedancesOf(voltages, currents, analysis::ResidualFactor(line));
    for (const Phasor& loop : loops)
        EXPECT_LT(std::abs(loop - z1), 1e-12);
}

TEST(Impedance, WithoutCurrentIsNone)
{
    const auto loops = analysis::ImpedancesOf({1, 1, 1}, {0, 5, 5}, 0);
    EXPECT_TRUE(std::isnan(loops[analysis::LoopAG].real()));
    EXPECT_EQ(loops[analysis::LoopBG], Phasor(0.2));
    EXPECT_TRUE(std::isnan(loops[analysis::LoopBC].real()));
    EXPECT_EQ(analysis::ResidualFactor({}), Phasor(0));
}

TEST(Unbalance, IsTheRatioOfTheSequences)
{
    const analysis::Unbalance unbalance = analysis::UnbalanceOf({Phasor(0, 3), Phasor(50, 0), Phasor(-4, 0)});
    EXPECT_NEAR(unbalance.negative, 0.08, 1e-15);
    EXPECT_NEAR(unbalance.zero, 0.06, 1e-15);
    EXPECT_TRUE(std::isnan(analysis::UnbalanceOf({1, 0, 1}).negative));
}

TEST(JouleIntegral, OfASineIsItsRmsSquaredByTime)
{
    const analysis::Wave current = At(48, {{1, 1000, 0.3}}).Samples(4801);
    const analysis::Wave heat = analysis::JouleIntegral(current, 2400, 2400);
    EXPECT_TRUE(std::isnan(heat[2399]));
    EXPECT_EQ(heat[2400], 0);
    EXPECT_NEAR(heat[4800], 1e6, 1e-4);
}

TEST(JouleIntegral, IsUnknownFromAMissingSampleOn)
{
    const analysis::Wave heat = analysis::JouleIntegral({2, 2, std::nan(""), 2, 2}, 1, 0);
    EXPECT_EQ(heat[1], 4);
    for (size_t i = 2; i < heat.size(); ++i)
        EXPECT_TRUE(std::isnan(heat[i]));
}

} // namespace
