#include "analysis/superimposed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

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

TEST(Superimposed, WaveShorterThanAPeriodHasNone)
{
    for (const size_t count : {0u, 1u, 49u}) {
        const analysis::Wave wave = analysis::Superimposed(analysis::Wave(count, 1.0), 48);
        EXPECT_TRUE(std::all_of(wave.begin(), wave.end(), [](double value) { return std::isnan(value); }));
        EXPECT_EQ(wave.size(), count);
    }
    EXPECT_EQ(analysis::Superimposed(analysis::Wave(50, 1.0), 48)[49], 0);
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

// What sorting all sizes gives.
double SortedNoise(const analysis::Wave& wave)
{
    std::vector<double> sizes;
    for (const double value : wave)
        if (!std::isnan(value))
            sizes.push_back(std::abs(value));
    std::sort(sizes.begin(), sizes.end());
    return 1.4826 * sizes[sizes.size() / 2];
}

TEST(Noise, IsThatOfTheSortedSizesToTheLastBit)
{
    std::mt19937 random(5);
    std::normal_distribution<double> normal(0, 3);
    for (const size_t count : {1u, 2u, 255u, 256u, 257u, 999u, 5000u, 30011u}) {
        const std::vector<std::function<double(size_t)>> courses = {
            [&](size_t) { return normal(random); },
            [&](size_t) { return std::round(normal(random)); }, // many are the same
            [&](size_t) { return 0.1; },
            [&](size_t i) { return -static_cast<double>(i); },
            [&](size_t i) { return i % 64 == 0 ? 1e6 : normal(random); }, // against the samples of them
            [&](size_t i) { return i % 3 == 1 ? None : std::exp(normal(random) * 20); },
            [&](size_t i) { return i % 5 == 1 ? std::numeric_limits<double>::infinity() : normal(random); }};
        for (size_t course = 0; course < courses.size(); ++course) {
            analysis::Wave wave;
            for (size_t i = 0; i < count; ++i)
                wave.push_back(courses[course](i));
            EXPECT_EQ(analysis::NoiseOf(wave, 0, wave.size()), SortedNoise(wave)) << count << ' ' << course;
        }
    }
}

TEST(Noise, LesserIsThatOfAPartOrOfAll)
{
    std::mt19937 random(7);
    std::normal_distribution<double> normal(0, 3);
    for (const double ratio : {0.0, 0.1, 0.9, 1.0, 1.1, 30.0}) {
        for (const size_t part : {0u, 40u, 200u, 999u, 2000u}) {
            analysis::Wave wave;
            for (size_t i = 0; i < 1000; ++i)
                wave.push_back(i % 50 == 3 ? None : normal(random) * (i < 200 ? 1 : ratio));
            EXPECT_EQ(analysis::LesserNoise(wave, 0, part),
                      std::min(analysis::NoiseOf(wave, 0, part), analysis::NoiseOf(wave, 0, 1000)))
                << ratio << ' ' << part;
        }
    }
    EXPECT_EQ(analysis::LesserNoise(analysis::Wave(100, None), 0, 50), 0);
    EXPECT_EQ(analysis::LesserNoise(analysis::Wave(100, 2.0), 0, 50), 1.4826 * 2);
}

TEST(Largest, IsOfTheValuesThatAreThereWhereverItStands)
{
    for (size_t count = 1; count < 12; ++count) {
        for (size_t place = 0; place < count; ++place) {
            analysis::Wave wave(count, 1.0);
            wave[0] = None;
            wave[place] = -7;
            EXPECT_EQ(analysis::LargestOf(wave, 0, 99), 7) << count << ' ' << place;
            EXPECT_EQ(analysis::LargestOf(wave, place + 1, count), place + 1 < count ? 1 : 0);
        }
    }
    EXPECT_EQ(analysis::LargestOf(analysis::Wave(9, None), 0, 9), 0);
}

} // namespace
