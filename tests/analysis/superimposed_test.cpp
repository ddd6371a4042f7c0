#include "analysis/superimposed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double None = std::numeric_limits<double>::quiet_NaN();

analysis::Wave Sine(size_t count, double period, double peak = 1)
{
    analysis::Wave wave(count);
    for (size_t i = 0; i < count; ++i)
        wave[i] = peak * std::sin(2 * Pi * static_cast<double>(i) / period + 0.3);
    return wave;
}

double Largest(const analysis::Wave& wave, size_t begin)
{
    double largest = 0;
    for (size_t i = begin; i < wave.size(); ++i)
        largest = std::max(largest, std::abs(wave[i]));
    return largest;
}

TEST(Superimposed, IsNothingForASteadyWaveOfAnyPeriod)
{
    for (const double period : {12.0, 13.37, 48.0, 47.3, 51.06, 400.0}) {
        const analysis::Wave wave = analysis::Superimposed(Sine(2000, period), period);
        EXPECT_TRUE(std::isnan(wave[static_cast<size_t>(period) - 1]));
        EXPECT_LT(Largest(wave, static_cast<size_t>(period) + 8), period < 40 ? 2e-3 : 1e-4) << period;
    }
}

TEST(Superimposed, HasTheChangeAndTheSampleWhereItStarts)
{
    analysis::Wave wave = Sine(400, 48);
    for (size_t i = 200; i < wave.size(); ++i)
        wave[i] += 0.5 * static_cast<double>(i - 199);
    const analysis::Wave differences = analysis::Superimposed(wave, 48);
    const auto departure = analysis::FirstBeyond(differences, 0.1, 48, differences.size());
    ASSERT_TRUE(departure);
    EXPECT_EQ(departure->sample, 200u);
    EXPECT_NEAR(departure->moment, 199, 1e-6); // the ramp starts there
}

TEST(Superimposed, DoesNotTakeASpikeForADeparture)
{
    analysis::Wave differences(100);
    differences[50] = 9;
    EXPECT_FALSE(analysis::FirstBeyond(differences, 1, 0, 100));
    differences[53] = 9;
    EXPECT_TRUE(analysis::FirstBeyond(differences, 1, 0, 100));
}

TEST(Superimposed, MissingValuesAreNoDepartureAndNoNoise)
{
    analysis::Wave wave = Sine(400, 48);
    wave[100] = None;
    const analysis::Wave differences = analysis::Superimposed(wave, 48);
    EXPECT_TRUE(std::isnan(differences[100]));
    EXPECT_TRUE(std::isnan(differences[148]));
    EXPECT_FALSE(analysis::FirstBeyond(differences, 0.1, 48, 400));
    EXPECT_EQ(analysis::NoiseOf(analysis::Wave(10, None), 0, 10), 0);
}

TEST(Noise, IsTheStandardDeviationOfItsLargerPartWhateverTheOutliers)
{
    analysis::Wave wave;
    for (int i = -100; i <= 100; ++i)
        wave.push_back(i); // the median of the sizes is 50
    wave.insert(wave.end(), 9, 1e9);
    EXPECT_NEAR(analysis::NoiseOf(wave, 0, wave.size()), 1.4826 * 52, 1.5);
}

} // namespace
