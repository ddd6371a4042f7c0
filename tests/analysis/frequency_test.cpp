#include "analysis/frequency.h"

#include "waves.h"

#include <gtest/gtest.h>

namespace {

constexpr double Rate = 2400;
constexpr double Nominal = 50;

TEST(Frequency, OfAShortOrDeadStretchIsNone)
{
    const auto phases = waves::Steady().ThreePhases(480);
    EXPECT_TRUE(std::isnan(analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal, 100, 171)));
    EXPECT_NEAR(analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal, 100, 172), 50, 1e-6);
    const analysis::Wave dead(480, 0);
    EXPECT_TRUE(std::isnan(analysis::FrequencyOf({&dead}, Rate, Nominal, 0, 480)));
}

TEST(Frequency, FarFromTheNominalOneIsNone)
{
    const auto phases = waves::Steady{Rate, 62, {{1, 1, 0}}}.ThreePhases(480);
    EXPECT_TRUE(std::isnan(analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal, 0, 480)));
    EXPECT_TRUE(std::isnan(analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal).hertz.back()));
}

TEST(Frequency, OfAnUnbalancedSystemWithADirectComponentIsExact)
{
    waves::Steady steady{Rate, 48.7, {{1, 100, 0.2}, {0, 30, 0}}};
    auto phases = steady.ThreePhases(240);
    for (double& value : phases[1])
        value *= 0.3;
    EXPECT_NEAR(analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal, 0, 240), 48.7, 1e-5);
}

TEST(Frequency, StandsNoiseOfOnePercent)
{
    auto phases = waves::Steady{Rate, 49.8, {{1, 1, 0.2}}}.ThreePhases(480);
    unsigned int state = 1;
    for (analysis::Wave& wave : phases)
        for (double& value : wave) {
            state = state * 1664525u + 1013904223u;
            value += 0.02 * (static_cast<double>(state) / 4294967296.0 - 0.5);
        }
    EXPECT_NEAR(analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal, 0, 480), 49.8, 0.005);
}

TEST(Frequency, ThatChangesIsFollowedWithItsRate)
{
    constexpr double slope = 1.5; // Hz/s
    std::array<analysis::Wave, analysis::Phases> phases;
    for (size_t phase = 0; phase < phases.size(); ++phase) {
        for (int i = 0; i < 2400; ++i) {
            const double t = i / Rate;
            const double turns = 49 * t + slope / 2 * t * t - static_cast<double>(phase) / 3;
            phases[phase].push_back(std::cos(2 * waves::Pi * turns));
        }
    }
    const auto track = analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal);
    for (size_t i = 288; i < 2400; i += 11) { // the last two periods stand for their middle
        const double middle = (static_cast<double>(i) - 48) / Rate;
        EXPECT_NEAR(track.hertz[i], 49 + slope * middle, 0.002) << i;
        EXPECT_NEAR(track.change[i], slope, 0.05) << i;
    }
    EXPECT_TRUE(std::isnan(track.hertz[94]));
    EXPECT_TRUE(std::isnan(track.change[280]));
}

TEST(Frequency, OfEachSampleHasTheFilterOfItsOwnTime)
{
    analysis::Wave wave;
    double turns = 0;
    for (int i = 0; i < 4800; ++i) {
        turns += (i < 2400 ? 50 : 47.3) / Rate;
        wave.push_back(std::cos(2 * waves::Pi * turns) + 0.1 * std::cos(2 * waves::Pi * 5 * turns));
    }
    const analysis::Wave hertz = analysis::FrequencyOf({&wave}, Rate, Nominal).hertz;
    for (size_t i = 192; i < 2400; ++i)
        EXPECT_NEAR(hertz[i], 50, 0.005) << i;
    for (size_t i = 2400 + 384; i < 4800; ++i)
        EXPECT_NEAR(hertz[i], 47.3, 0.005) << i;
}

TEST(Frequency, IsMissingWhereTheVoltageIsGoneOrHasNoSample)
{
    auto phases = waves::Steady().ThreePhases(1200);
    for (analysis::Wave& wave : phases)
        std::fill(wave.begin() + 600, wave.end(), 0);
    phases[1][300] = std::nan("");
    const analysis::Wave hertz = analysis::FrequencyOf(waves::SourceOf(phases), Rate, Nominal).hertz;
    EXPECT_NEAR(hertz[299], 50, 1e-6);
    for (size_t i = 300; i < 300 + 96; ++i)
        EXPECT_TRUE(std::isnan(hertz[i])) << i;
    EXPECT_NEAR(hertz[599], 50, 1e-6);
    for (size_t i = 600 + 48; i < 1200; ++i)
        EXPECT_TRUE(std::isnan(hertz[i])) << i;
}

} // namespace
