#include "forms/comtradetext.h"
#include "forms/everynth.h"
#include "forms/madestream.h"
#include "forms/resampling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using forms::EveryNth;
using forms::Resampling;

namespace {

constexpr double Pi = 3.14159265358979323846;

using Signal = std::function<double(double)>; // over s from the first sample

comtrade::Configuration AtRate(double hertz, qint64 samples)
{
    comtrade::Configuration config = MadeConfiguration(1, 1, samples);
    config.rates = {{hertz, samples}};
    return config;
}

// What a signal sampled at one rate is at another one.
comtrade::Block Resampled(const Signal& signal, double from, qint64 samples, double to,
                          size_t blockSize = 1000)
{
    MadeStream source(AtRate(from, samples), blockSize);
    for (qint64 i = 0; i < samples; ++i)
        source.Add({signal(static_cast<double>(i) / from)}, {0}, i);
    Resampling resampling(source, to);
    comtrade::Block block = AllOf(resampling);
    EXPECT_EQ(static_cast<qint64>(block.count), resampling.Config().SampleCount());
    return block;
}

// The greatest difference from a signal, apart from `edge` s at both ends.
double ErrorOf(const comtrade::Block& block, double rate, const Signal& signal, double edge)
{
    double worst = 0;
    const double end = static_cast<double>(block.count - 1) / rate;
    for (size_t i = 0; i < block.count; ++i) {
        const double time = static_cast<double>(i) / rate;
        if (time >= edge && time <= end - edge)
            worst = std::max(worst, std::fabs(block.analog[i] - signal(time)));
    }
    return worst;
}

Signal Sine(double hertz, double phase = 0)
{
    return [=](double time) { return std::sin(2 * Pi * hertz * time + phase); };
}

Signal Sum(const Signal& a, const Signal& b)
{
    return [=](double time) { return a(time) + b(time); };
}

const Signal Nothing = [](double) { return 0.0; };

constexpr double AllowedError = 1.2e-4; // of a filter with 80 dB

} // namespace

class ResamplingTo : public testing::TestWithParam<double>
{};

TEST_P(ResamplingTo, KeepsASineWithItsPhase)
{
    const double rate = GetParam();
    const comtrade::Block block = Resampled(Sine(50, 0.3), 4000, 8000, rate);
    EXPECT_LT(ErrorOf(block, rate, Sine(50, 0.3), 26 / std::min(rate, 4000.0)), AllowedError);
    // At the ends the continued signal is another one, but near.
    EXPECT_LT(ErrorOf(block, rate, Sine(50, 0.3), 0), 0.1);
}

TEST_P(ResamplingTo, KeepsAConstantExactly)
{
    const comtrade::Block block = Resampled([](double) { return 12345.0; }, 4000, 2000, GetParam());
    for (size_t i = 0; i < block.count; ++i)
        ASSERT_EQ(block.analog[i], 12345) << i;
}

TEST_P(ResamplingTo, KeepsASlopeUpToTheEnds)
{
    constexpr double step = 0.075; // between samples of the source
    const Signal slope = [](double time) { return 100 - step * 4000 * time; };
    EXPECT_LT(ErrorOf(Resampled(slope, 4000, 2000, GetParam()), GetParam(), slope, 0), step / 1000);
}

TEST_P(ResamplingTo, EndsWithTheRecord)
{
    const double rate = GetParam();
    const comtrade::Block block = Resampled(Nothing, 4000, 2001, rate); // 0.5 s
    EXPECT_EQ(static_cast<qint64>(block.count), static_cast<qint64>(std::floor(0.5 * rate + 1e-6)) + 1);
}

TEST_P(ResamplingTo, DoesNotDependOnTheBlocks)
{
    const comtrade::Block one = Resampled(Sine(90), 4000, 900, GetParam(), 1);
    const comtrade::Block other = Resampled(Sine(90), 4000, 900, GetParam(), 333);
    EXPECT_EQ(one.analog, other.analog);
    EXPECT_EQ(one.times, other.times);
}

INSTANTIATE_TEST_SUITE_P(Rates, ResamplingTo,
                         testing::Values(400, 1000, 1200, 1199.7, 3999, 4096, 10000, 48000));

TEST(Resampling, AttenuatesWhatWouldBeAliased)
{
    for (const double hertz : {500.0, 600.0, 1050.0, 1900.0}) {
        const comtrade::Block block = Resampled(Sum(Sine(50), Sine(hertz)), 4000, 8000, 1000);
        EXPECT_LT(ErrorOf(block, 1000, Sine(50), 0.026), AllowedError) << hertz;
    }
}

TEST(Resampling, PassesWhatIsBelowTheTransition)
{
    const comtrade::Block block = Resampled(Sine(400, 1), 4000, 8000, 1000);
    EXPECT_LT(ErrorOf(block, 1000, Sine(400, 1), 0.026), AllowedError);
}

TEST(Resampling, AddsNothingAboveTheBandOfTheSource)
{
    const comtrade::Block block = Resampled(Sine(390, 1), 1000, 4000, 4000);
    EXPECT_LT(ErrorOf(block, 4000, Sine(390, 1), 0.026), AllowedError);
}

TEST(Resampling, LeavesMissingWhatTheFilterReachesOfAMissingValue)
{
    MadeStream source(AtRate(4000, 2000), 100);
    for (int i = 0; i < 2000; ++i)
        source.Add({i == 1000 ? Missing : 1.0}, {0});
    Resampling resampling(source, 1000);
    const comtrade::Block block = AllOf(resampling);
    const int reach = forms::LowPass(4000, 1000).Reach();
    for (int i = 0; i < 500; ++i)
        EXPECT_EQ(std::isnan(block.analog[static_cast<size_t>(i)]),
                  4 * i - reach < 1000 && 1000 <= 4 * i + reach)
            << i;
}

TEST(Resampling, TakesStatesAtOrBeforeTheInstant)
{
    MadeStream source(AtRate(1000, 5));
    for (const quint8 state : std::vector<quint8>{0, 1, 0, 1, 1})
        source.Add({0}, {state});
    Resampling resampling(source, 2500);
    EXPECT_EQ(AllOf(resampling).states, (std::vector<quint8>{0, 0, 0, 1, 1, 0, 0, 0, 1, 1, 1}));
}

TEST(Resampling, HasTheNewRateAndTheTimesOfIt)
{
    comtrade::Configuration config = AtRate(1000, 4);
    config.analog[0].a = 0.25;
    config.analog[0].b = 3;
    config.analog[0].skew = 7;
    MadeStream source(config);
    for (int i = 0; i < 4; ++i)
        source.Add({1}, {0}, 500 + 1000 * i);
    Resampling resampling(source, 1500);
    const comtrade::Configuration& result = resampling.Config();
    ASSERT_EQ(result.rates.size(), 1);
    EXPECT_EQ(result.rates[0].hertz, 1500);
    EXPECT_EQ(result.rates[0].lastSample, 5);
    EXPECT_EQ(result.analog[0].a, 0.25);
    EXPECT_EQ(result.analog[0].b, 3);
    EXPECT_EQ(result.analog[0].skew, 7);
    EXPECT_EQ(result.dataType, comtrade::DataType::Float32);
    const comtrade::Block block = AllOf(resampling);
    EXPECT_EQ(block.times, (std::vector<qint64>{500, 1167, 1833, 2500, 3167}));
    EXPECT_EQ(block.numbers, (std::vector<quint32>{1, 2, 3, 4, 5}));
}

TEST(Resampling, EndsWhereTheDataEnd)
{
    for (const qint64 announced : {5, 10, 20}) {
        MadeStream source(AtRate(1000, announced));
        for (int i = 0; i < 10; ++i)
            source.Add({1}, {0});
        Resampling resampling(source, 500);
        EXPECT_EQ(AllOf(resampling).count, 5) << announced;
    }
}

TEST(Resampling, TakesEachRateOfTheSourceByItself)
{
    // 1 s at 2000 Hz, then 1 s at 500 Hz; the first sample of a rate comes one of its steps after the last.
    comtrade::Configuration config = AtRate(2000, 2001);
    config.rates = {{2000, 2001}, {500, 2501}};
    MadeStream source(config, 100);
    const Signal signal = Sine(50, 0.5);
    for (int i = 0; i <= 2000; ++i)
        source.Add({signal(i / 2000.0)}, {0});
    for (int i = 1; i <= 500; ++i)
        source.Add({signal(1 + i / 500.0)}, {1});
    Resampling resampling(source, 1000);
    const comtrade::Block block = AllOf(resampling);
    ASSERT_EQ(block.count, 2001);
    comtrade::Block first = block;
    first.count = 1001;
    EXPECT_LT(ErrorOf(first, 1000, signal, 0.026), AllowedError);
    comtrade::Block second = block;
    second.count = 1000;
    second.analog.erase(second.analog.begin(), second.analog.begin() + 1001);
    const Signal later = [&](double time) { return signal(time + 1.001); };
    EXPECT_LT(ErrorOf(second, 1000, later, 0.055), AllowedError);
    EXPECT_LT(ErrorOf(block, 1000, signal, 0), 0.2);
    EXPECT_EQ(block.states[1001], 0);
    EXPECT_EQ(block.states[1002], 1);
}

TEST(Resampling, TakesLinesOfTheSameRateAsOne)
{
    comtrade::Configuration config = AtRate(2000, 2000);
    config.rates = {{2000, 900}, {2000, 2000}};
    MadeStream source(config, 100);
    for (int i = 0; i < 2000; ++i)
        source.Add({Sine(50)(i / 2000.0)}, {0});
    Resampling resampling(source, 1000);
    EXPECT_EQ(AllOf(resampling).analog, Resampled(Sine(50), 2000, 2000, 1000).analog);
}

TEST(Resampling, NeedsARate)
{
    MadeStream source(AtRate(0, 10));
    EXPECT_THROW(Resampling(source, 1000), forms::FormError);
}

TEST(Resampling, RefusesRatesThatAreTooLowOrTooHigh)
{
    MadeStream source(AtRate(4000, 1000));
    EXPECT_THROW(Resampling(source, 0.001), forms::FormError);
    MadeStream longer(AtRate(4000, 1000000));
    EXPECT_THROW(Resampling(longer, 1e9), forms::FormError);
}

TEST(Resampling, HoldsForShortRecords)
{
    for (const qint64 samples : {0, 1, 2, 7})
        for (const double rate : {250.0, 1000.0, 1700.0}) {
            const comtrade::Block block = Resampled([](double) { return 2.0; }, 1000, samples, rate);
            for (size_t i = 0; i < block.count; ++i)
                EXPECT_EQ(block.analog[i], 2) << samples << " samples, " << rate << " Hz";
        }
}

TEST(EveryNth, KeepsTheFirstSampleAndEveryNthAfterIt)
{
    MadeStream source(MadeConfiguration(1, 1, 8));
    for (quint8 i = 0; i < 8; ++i)
        source.Add({10.0 + i}, {quint8(i % 2)}, qint64{1000} * i);
    EveryNth every(source, 3);
    ASSERT_EQ(every.Config().rates.size(), 1);
    EXPECT_EQ(every.Config().rates[0].hertz, 1000.0 / 3);
    EXPECT_EQ(every.Config().rates[0].lastSample, 3);
    const comtrade::Block block = AllOf(every);
    EXPECT_EQ(block.analog, (std::vector<double>{10, 13, 16}));
    EXPECT_EQ(block.states, (std::vector<quint8>{0, 1, 0}));
    EXPECT_EQ(block.times, (std::vector<qint64>{0, 3000, 6000}));
    EXPECT_EQ(block.numbers, (std::vector<quint32>{1, 2, 3}));
}

TEST(EveryNth, KeepsTheTimesOfSeveralRatesAsStamps)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 6);
    config.rates = {{1000, 3}, {100, 6}};
    config.timeMultiplier = 5;
    MadeStream source(config);
    for (int i = 0; i < 6; ++i)
        source.Add({0.0 + i}, {});
    EveryNth every(source, 2);
    ASSERT_EQ(every.Config().rates.size(), 1);
    EXPECT_EQ(every.Config().rates[0].hertz, 0);
    EXPECT_EQ(every.Config().rates[0].lastSample, 3);
    EXPECT_EQ(every.Config().StampSeconds(), 1e-6);
    EXPECT_EQ(AllOf(every).times, (std::vector<qint64>{0, 2000, 22000}));
}

TEST(EveryNth, KeepsStampsWhereThereIsNoRate)
{
    comtrade::Configuration config = MadeConfiguration(1, 0, 4);
    config.rates = {{0, 4}};
    config.timeMultiplier = 5;
    MadeStream source(config);
    for (const qint64 stamp : {3, 5, 11, 12})
        source.Add({0}, {}, stamp);
    EveryNth every(source, 2);
    EXPECT_EQ(every.Config().rates[0].lastSample, 2);
    EXPECT_EQ(every.Config().timeMultiplier, 5);
    EXPECT_EQ(AllOf(every).times, (std::vector<qint64>{3, 11}));
}
