#include "analysis/timeaxis.h"

#include <gtest/gtest.h>

namespace {

comtrade::Configuration Made(std::vector<comtrade::SampleRate> rates, qint64 triggerNanoseconds)
{
    comtrade::Configuration config;
    config.rates = std::move(rates);
    config.lineFrequency = 50;
    config.start.date = config.trigger.date = QDate(2024, 1, 31);
    config.trigger.nanoseconds = triggerNanoseconds;
    return config;
}

TEST(TimeAxis, TriggerIsAtTheNearestSampleAsInTheReport)
{
    const analysis::TimeAxis axis = analysis::TimeAxis::FromRates(Made({{2400, 4800}}, 250'000'000));
    EXPECT_EQ(axis.TriggerSample(), 600);
    EXPECT_DOUBLE_EQ(axis.TimeOf(0), -0.25);
    EXPECT_NEAR(axis.TimeOf(600), 0, 1e-12);
}

TEST(TimeAxis, TriggerOfTheNextDayCountsOverMidnight)
{
    comtrade::Configuration config = Made({{1000, 9000}}, 500'000'000);
    config.start.nanoseconds = qint64(86399) * 1'000'000'000;
    config.trigger.date = QDate(2024, 2, 1);
    EXPECT_EQ(analysis::TimeAxis::FromRates(config).TriggerSample(), 1500);
}

TEST(TimeAxis, SecondRateStartsOneOfItsStepsAfterTheLastSample)
{
    const analysis::TimeAxis axis = analysis::TimeAxis::FromRates(Made({{1000, 100}, {500, 200}}, 0));
    EXPECT_NEAR(axis.TimeOf(99), 0.099, 1e-12);
    EXPECT_NEAR(axis.TimeOf(100), 0.101, 1e-12);
    EXPECT_NEAR(axis.TimeOf(199), 0.299, 1e-12);
    EXPECT_EQ(axis.SampleAt(0.1025, 200), 101);
    EXPECT_EQ(axis.SampleAt(99, 200), 199);
    EXPECT_EQ(axis.SampleAt(-99, 200), 0);
}

TEST(TimeAxis, TriggerInTheSecondRateIsFoundByItsTime)
{
    const analysis::TimeAxis axis =
        analysis::TimeAxis::FromRates(Made({{1000, 100}, {500, 300}}, 201'000'000));
    EXPECT_EQ(axis.TriggerSample(), 150);
}

TEST(TimeAxis, EachSampleLastsTheStepOfItsRate)
{
    const analysis::TimeAxis axis = analysis::TimeAxis::FromRates(Made({{1000, 100}, {500, 200}}, 0));
    EXPECT_DOUBLE_EQ(axis.Duration(0), 0);
    EXPECT_DOUBLE_EQ(axis.Duration(40), 0.04);
    EXPECT_DOUBLE_EQ(axis.Duration(200), 0.3);
    EXPECT_DOUBLE_EQ(axis.Duration(300), 0.5); // the last rate goes on
    const analysis::TimeAxis stamped = analysis::TimeAxis::FromStamps(Made({{0, 3}}, 0), {0.5, 0.7, 1.25});
    EXPECT_DOUBLE_EQ(stamped.Duration(3), 0.75);
    EXPECT_DOUBLE_EQ(analysis::TimeAxis::FromStamps(Made({{0, 0}}, 0), {}).Duration(0), 0);
}

TEST(TimeAxis, TriggerIsOutsideBeforeTheFirstAndAStepAfterTheLastSample)
{
    const auto hasTrigger = [](qint64 nanoseconds) {
        return analysis::TimeAxis::FromRates(Made({{1000, 100}}, nanoseconds)).HasTrigger(100);
    };
    EXPECT_FALSE(hasTrigger(-2000));
    EXPECT_TRUE(hasTrigger(0));
    EXPECT_TRUE(hasTrigger(100'000'000));
    EXPECT_FALSE(hasTrigger(100'002'000));
    EXPECT_TRUE(analysis::TimeAxis::FromStamps(Made({{0, 2}}, 20'000'000), {0, 0.01}).HasTrigger(2));
    EXPECT_FALSE(analysis::TimeAxis::FromStamps(Made({{0, 2}}, 20'002'000), {0, 0.01}).HasTrigger(2));
}

TEST(TimeAxis, MainsFrequencyIs50WhereTheConfigurationHasNone)
{
    comtrade::Configuration config = Made({{1000, 1}}, 0);
    config.lineFrequency = 60;
    EXPECT_EQ(analysis::MainsFrequency(config), 60);
    config.lineFrequency = 0;
    EXPECT_EQ(analysis::MainsFrequency(config), 50);
}

TEST(TimeAxis, StampsThatGoBackAreHeldAtTheLatestTime)
{
    const analysis::TimeAxis axis =
        analysis::TimeAxis::FromStamps(Made({{0, 4}}, 20'000'000), {0, 0.02, 0.01, 0.03});
    EXPECT_DOUBLE_EQ(axis.TimeOf(1), 0);
    EXPECT_DOUBLE_EQ(axis.TimeOf(2), 0);
    EXPECT_EQ(axis.TriggerSample(), 1);
}

TEST(TimeAxis, HostileNumbersGiveSomeSample)
{
    comtrade::Configuration config = Made({{1e300, 1}, {1e-300, 5}}, 1);
    config.trigger.date = QDate(9999, 1, 1);
    config.lineFrequency = 1e-300;
    const analysis::TimeAxis axis = analysis::TimeAxis::FromRates(config);
    EXPECT_GE(axis.TriggerSample(), 0);
    EXPECT_GE(axis.SampleAt(0, 5), 0);
    EXPECT_LT(axis.SampleAt(0, 5), 5);
}

} // namespace
