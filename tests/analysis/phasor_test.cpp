#include "analysis/phasor.h"

#include "waves.h"

#include <gtest/gtest.h>

namespace {

using analysis::Fourier;
using analysis::Phasor;

constexpr double SamplesPerPeriod[] = {10.9, 12, 12.8, 20,   24.3,  31.99, 33.4, 47.02,
                                       47.5, 48, 52.8, 96.9, 200.4, 399.5, 400,  440.7};

waves::Steady At(double samplesPerPeriod, std::vector<waves::Part> parts)
{
    return {samplesPerPeriod * 50, 50, std::move(parts)};
}

TEST(Fourier, IsExactForTheFundamentalAtAnyNumberOfSamples)
{
    for (const double samples : SamplesPerPeriod) {
        const waves::Steady steady = At(samples, {{1, 7, 0.6}, {0, 3, 0}});
        const Fourier filter(samples);
        const analysis::Wave wave = steady.Samples(filter.Window());
        const Phasor truth = steady.PhasorAt(steady.parts[0], filter.Window() - 1);
        EXPECT_LT(std::abs(filter.Of(wave.data()) - truth) / 7, 2e-5) << samples;
    }
}

TEST(Fourier, SuppressesHarmonicsAtAnyNumberOfSamples)
{
    for (const double samples : SamplesPerPeriod) {
        const Fourier filter(samples);
        const int highest = waves::HighestOrder(At(samples, {}));
        const bool isFitted = filter.Window() <= 32 || samples == std::floor(samples);
        for (int order = 2; order <= highest; ++order) {
            const analysis::Wave wave = At(samples, {{order, 1, 0.9}}).Samples(filter.Window());
            const double most = isFitted ? 1e-12 : (order <= highest / 2 ? 2e-4 : 5e-3);
            EXPECT_LT(std::abs(filter.Of(wave.data())), most) << samples << ' ' << order;
        }
    }
}

TEST(Fourier, AnswersToAnImpulseWithinOnePeriodAndByNoMoreThanTheKernel)
{
    for (const double samples : {24.3, 48.0, 47.5, 400.0}) {
        const Fourier filter(samples);
        analysis::Wave wave(4 * filter.Window(), 0);
        const size_t at = 2 * filter.Window();
        wave[at] = 1;
        const std::vector<Phasor> track = filter.Track(wave);
        for (size_t i = filter.Window(); i < wave.size(); ++i) {
            const bool isInWindow = i >= at && i < at + filter.Window();
            EXPECT_LE(std::abs(track[i]), isInWindow ? 1.1 * std::sqrt(2.0) / samples : 1e-15)
                << samples << ' ' << i;
        }
    }
}

TEST(Fourier, GoesFromOneSteadyStateToAnotherWithinOnePeriod)
{
    const waves::Steady before = At(47.5, {{1, 1, 0}});
    const waves::Steady after = At(47.5, {{1, 5, 1.2}});
    analysis::Wave wave = before.Samples(300);
    const analysis::Wave faulted = after.Samples(300);
    std::copy(faulted.begin() + 150, faulted.end(), wave.begin() + 150);
    const std::vector<Phasor> track = Fourier(47.5).Track(wave);
    for (size_t i = 48; i < 150; ++i)
        EXPECT_LT(std::abs(track[i] - 1.0), 1e-4) << i;
    for (size_t i = 150 + 48; i < 300; ++i)
        EXPECT_LT(std::abs(track[i] - std::polar(5.0, 1.2)), 1e-4) << i;
}

TEST(Fourier, TrackIsThePhasorOfEachWindowAndDoesNotDrift)
{
    for (const double samples : {12.8, 47.98, 48.0, 400.0}) {
        const Fourier filter(samples);
        analysis::Wave wave = At(samples, {{1, 100, 0.3}, {5, 20, 1}}).Samples(20000);
        wave[700] = 1e9; // must leave nothing behind
        const std::vector<Phasor> track = filter.Track(wave);
        EXPECT_TRUE(std::isnan(track[filter.Window() - 2].real()));
        for (size_t i = filter.Window() - 1; i < wave.size(); i += 37) {
            const double turns = std::remainder(static_cast<double>(i) / samples, 1);
            const Phasor alone =
                filter.Of(&wave[i + 1 - filter.Window()]) * std::polar(1.0, -2 * waves::Pi * turns);
            EXPECT_LT(std::abs(track[i] - alone), i > 700 && i < 700 + 256 + 400 ? 1e-4 : 1e-8)
                << samples << ' ' << i;
        }
    }
}

TEST(Fourier, MissingSamplesAreMissingInTheirWindowsAlone)
{
    for (const double samples : {12.8, 48.0}) {
        const Fourier filter(samples);
        analysis::Wave wave = At(samples, {{1, 1, 0}}).Samples(400);
        wave[150] = std::nan("");
        const std::vector<Phasor> track = filter.Track(wave);
        for (size_t i = filter.Window() - 1; i < wave.size(); ++i)
            EXPECT_EQ(std::isnan(track[i].real()), i >= 150 && i < 150 + filter.Window()) << i;
        EXPECT_LT(std::abs(track[399] - 1.0), 1e-6);
    }
}

TEST(Fourier, TakesAnyHarmonicAndNoneThatTheRateCannotShow)
{
    const waves::Steady steady = At(47.5, {{1, 10, 0}, {7, 2, 0.4}});
    analysis::Model seventh;
    seventh.order = 7;
    const std::vector<Phasor> track = Fourier(47.5, 0, seventh).Track(steady.Samples(300));
    EXPECT_LT(std::abs(track[299] - std::polar(2.0, 0.4)), 1e-3);
    analysis::Model beyond;
    beyond.order = 24;
    EXPECT_TRUE(std::isnan(Fourier(47.5, 0, beyond).Of(steady.Samples(48).data()).real()));
}

TEST(Fourier, WithARampIgnoresADirectComponentThatFallsLinearly)
{
    analysis::Model model;
    model.degree = 1;
    model.harmonics = 5;
    analysis::Wave wave = At(48, {{1, 1, 0.2}}).Samples(60);
    for (size_t i = 0; i < wave.size(); ++i)
        wave[i] += 3 - 0.05 * static_cast<double>(i);
    const Fourier filter(48, 60, model);
    const Phasor truth = At(48, {}).PhasorAt({1, 1, 0.2}, 59);
    EXPECT_LT(std::abs(filter.Of(wave.data()) - truth), 1e-12);
}

TEST(Components, AreThoseOfBalancedSystems)
{
    const Phasor a = std::polar(1.0, 2 * waves::Pi / 3);
    const analysis::Components forward = analysis::ComponentsOf(3, 3.0 * a * a, 3.0 * a);
    EXPECT_LT(std::abs(forward.positive - 3.0) + std::abs(forward.negative) + std::abs(forward.zero), 1e-14);
    const analysis::Components mixed =
        analysis::ComponentsOf(1.0 + 2.0 + 4.0, a * a + 2.0 * a + 4.0, a + 2.0 * a * a + 4.0);
    EXPECT_LT(std::abs(mixed.positive - 1.0) + std::abs(mixed.negative - 2.0) + std::abs(mixed.zero - 4.0),
              1e-13);
}

} // namespace
