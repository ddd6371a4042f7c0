#include "analysis/signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using analysis::Oscillogram;
using analysis::Signals;

constexpr double Pi = 3.14159265358979323846;
constexpr double Amplitude = 10000;

double ValueAt(double seconds)
{
    return Amplitude * std::cos(2 * Pi * 50 * seconds + 0.5);
}

// A channel that measures ValueAt, sampled `skew` microseconds after each sample's time.
Oscillogram Sampled(std::vector<comtrade::SampleRate> rates, qint64 count, double skew = 0)
{
    Oscillogram made;
    made.config.rates = std::move(rates);
    made.config.lineFrequency = 50;
    made.config.start.date = made.config.trigger.date = QDate(2024, 1, 31);
    made.config.analog.resize(1);
    made.config.analog[0].a = 1;
    made.config.analog[0].skew = skew;
    made.axis = analysis::TimeAxis::FromRates(made.config);
    made.analog.resize(1);
    for (qint64 i = 0; i < count; ++i)
        made.analog[0].Add(ValueAt(made.axis.TimeOf(i) + skew * 1e-6));
    return made;
}

Oscillogram Stamped(const std::vector<double>& seconds)
{
    Oscillogram made = Sampled({{1000, 1}}, 0);
    made.config.rates = {{0, static_cast<qint64>(seconds.size())}};
    made.axis = analysis::TimeAxis::FromStamps(made.config, seconds);
    for (const double second : seconds)
        made.analog[0].Add(ValueAt(second));
    return made;
}

// The largest error in parts of the amplitude.
double WorstError(const Signals& signals)
{
    const analysis::Wave& wave = signals.Of(0);
    EXPECT_EQ(wave.size(), signals.Count());
    double worst = 0;
    for (size_t i = 0; i < wave.size(); ++i) {
        const double error = std::abs(wave[i] - ValueAt(signals.TimeOf(static_cast<double>(i)))) / Amplitude;
        worst = std::isnan(error) ? 1 : std::max(worst, error);
    }
    return worst;
}

TEST(Signals, OfOneRateAreTheSamplesThemselves)
{
    const Oscillogram sampled = Sampled({{2400, 500}}, 500);
    const Signals signals(sampled);
    ASSERT_EQ(signals.Count(), 500u);
    EXPECT_EQ(signals.Rate(), 2400);
    for (size_t i = 0; i < 500; ++i)
        EXPECT_EQ(signals.Of(0)[i], sampled.analog[0].At(i));
}

TEST(Signals, OfSeveralRatesFollowTheWaveAtTheHighestRate)
{
    const std::vector<std::vector<comtrade::SampleRate>> cases = {
        {{2400, 480}, {600, 600}},
        {{600, 120}, {2400, 600}},
        {{1000, 100}, {2400, 700}},
        {{600, 60}, {2000, 460}, {1000, 560}},
        {{1200, 100}, {20000, 1100}, {600, 1200}},
    };
    for (const auto& rates : cases) {
        SCOPED_TRACE(rates[0].hertz);
        const Oscillogram sampled = Sampled(rates, rates.back().lastSample);
        EXPECT_LT(WorstError(Signals(sampled)), 2e-4);
    }
}

TEST(Signals, OfAPieceOfFewSamplesFollowTheWaveLessWell)
{
    const Oscillogram sampled = Sampled({{2400, 20}, {600, 24}, {2400, 200}}, 200);
    EXPECT_LT(WorstError(Signals(sampled)), 1e-3);
}

TEST(Signals, SamplesOnTheGridKeepTheirValues)
{
    const Oscillogram sampled = Sampled({{2400, 240}, {1200, 480}}, 480);
    const Signals signals(sampled);
    for (size_t i = 0; i < 240; ++i)
        EXPECT_EQ(signals.Of(0)[i], sampled.analog[0].At(i));
    for (size_t i = 240; i < 480; ++i)
        EXPECT_EQ(signals.Of(0)[239 + 2 * (i - 239)], sampled.analog[0].At(i));
}

TEST(Signals, WithStampsAtUnequalStepsFollowTheWave)
{
    std::vector<double> seconds;
    for (int i = 0; i < 400; ++i) // steps from 0.3 to 0.7 ms
        seconds.push_back(0.0005 * i + 0.0001 * std::sin(i * 1.7));
    const Oscillogram stamped = Stamped(seconds);
    EXPECT_LT(WorstError(Signals(stamped)), 1e-4);
}

TEST(Signals, WithAStampThatIsHeldFollowTheOtherSamples)
{
    std::vector<double> seconds;
    for (int i = 0; i < 100; ++i)
        seconds.push_back(0.0005 * (i == 50 ? 49 : i));
    const Oscillogram stamped = Stamped(seconds);
    EXPECT_LT(WorstError(Signals(stamped)), 2e-3);
}

TEST(Signals, AreMissingBesideAMissingSampleAlone)
{
    Oscillogram sampled = Sampled({{1200, 240}, {2400, 300}}, 0);
    for (qint64 i = 0; i < 300; ++i)
        sampled.analog[0].Add(i == 100 ? std::nan("") : ValueAt(sampled.axis.TimeOf(i)));
    const Signals signals(sampled);
    const analysis::Wave& wave = signals.Of(0);
    for (size_t i = 0; i < wave.size(); ++i) {
        if (i >= 199 && i <= 201)
            EXPECT_TRUE(std::isnan(wave[i])) << i;
        else
            EXPECT_NEAR(wave[i], ValueAt(signals.TimeOf(static_cast<double>(i))), 3e-3 * Amplitude) << i;
    }
}

TEST(Signals, SkewIsTakenOutByInterpolation)
{
    for (const double skew : {100.0, -100.0}) {
        const Oscillogram skewed = Sampled({{2400, 480}}, 480, skew);
        const Signals signals(skewed);
        const analysis::Wave& wave = signals.Of(0);
        EXPECT_TRUE(std::isnan(skew > 0 ? wave.front() : wave.back()));
        for (size_t i = 1; i + 1 < wave.size(); ++i)
            EXPECT_NEAR(wave[i], ValueAt(signals.TimeOf(static_cast<double>(i))), 2e-4 * Amplitude) << i;
    }
}

TEST(Signals, SkewOfMoreThanAStepIsIgnored)
{
    for (const double skew : {500.0, 1e300, std::nan("")}) {
        Oscillogram sampled = Sampled({{2400, 48}}, 48);
        sampled.config.analog[0].skew = skew;
        EXPECT_EQ(Signals(sampled).Of(0)[10], sampled.analog[0].At(10));
    }
}

TEST(Signals, OfHostileRatesEnd)
{
    const Oscillogram sampled = Sampled({{1e300, 10}, {1e-300, 20}}, 20);
    EXPECT_LE(Signals(sampled).Of(0).size(), 80u);
}

} // namespace
