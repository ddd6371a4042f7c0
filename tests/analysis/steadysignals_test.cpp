// The steady signals of IEC/IEEE 60255-118-1, made harder: another frequency than 50 Hz and a harmonic of 10
// % at once. bench/analysis has more of them, and prints the worst.
#include "analysis/frequency.h"

#include "waves.h"

#include <gtest/gtest.h>

namespace {

constexpr double Nominal = 50;

class SteadySignals : public testing::TestWithParam<double>
{
protected:
    // Calls check with each signal of the rate.
    template <typename Check>
    void ForEach(Check check) const
    {
        for (const double hertz : {45.0, 47.3, 50.0, 51.0, 55.0}) {
            waves::Steady steady{GetParam(), hertz, {}};
            for (const int order : {1, 2, 3, 4, 5, 7, 10, 13, 23, 25, 37, 50}) {
                if (order > waves::HighestOrder(steady))
                    continue;
                steady.parts = {{1, 100, 0.4}};
                if (order > 1)
                    steady.parts.push_back({order, 10, 1.1});
                SCOPED_TRACE(testing::Message() << hertz << " Hz, harmonic " << order);
                check(steady);
            }
        }
    }

    static double MostError(const waves::Steady& steady) { return steady.hertz == Nominal ? 0.001 : 0.01; }
};

TEST_P(SteadySignals, GiveFrequencyAndPhasorOfAStretch)
{
    ForEach([](const waves::Steady& steady) {
        const auto count = static_cast<size_t>(5 * steady.rate / Nominal);
        const auto phases = steady.ThreePhases(count);
        const double hertz = analysis::FrequencyOf(waves::SourceOf(phases), steady.rate, Nominal, 0, count);
        EXPECT_NEAR(hertz, steady.hertz, 0.0005);
        const analysis::Fourier filter(steady.rate / hertz);
        const analysis::Phasor measured = filter.Of(&phases[0][count - filter.Window()]);
        EXPECT_LT(std::abs(measured - steady.PhasorAt(steady.parts[0], count - 1)) / 100, MostError(steady));
    });
}

TEST_P(SteadySignals, GiveFrequencyAndPhasorOfASingleWave)
{
    ForEach([](const waves::Steady& steady) {
        const auto count = static_cast<size_t>(5 * steady.rate / Nominal);
        const analysis::Wave wave = steady.Samples(count);
        EXPECT_NEAR(analysis::FrequencyOf({&wave}, steady.rate, Nominal, 0, count), steady.hertz, 0.0005);
    });
}

TEST_P(SteadySignals, GiveFrequencyAndPhasorOfEachSample)
{
    ForEach([](const waves::Steady& steady) {
        const auto count = static_cast<size_t>(5 * steady.rate / Nominal);
        const auto phases = steady.ThreePhases(count);
        const auto track = analysis::FrequencyOf(waves::SourceOf(phases), steady.rate, Nominal);
        const auto phasors = analysis::TrackAt(phases[0], track.hertz, steady.rate, Nominal);
        for (auto i = static_cast<size_t>(3 * steady.rate / Nominal); i < count; i += 7) {
            EXPECT_NEAR(track.hertz[i], steady.hertz, 0.005);
            const double turns = std::remainder(Nominal * static_cast<double>(i) / steady.rate, 1);
            const analysis::Phasor truth =
                steady.PhasorAt(steady.parts[0], i) * std::polar(1.0, -2 * waves::Pi * turns);
            EXPECT_LT(std::abs(phasors[i] - truth) / 100, MostError(steady));
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Rates, SteadySignals, testing::Values(600, 1000, 1200, 2400, 10000, 20000));

} // namespace
