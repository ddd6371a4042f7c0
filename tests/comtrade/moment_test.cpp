#include "comtrade/moment.h"

#include <gtest/gtest.h>

namespace {

comtrade::Configuration Triggered(const QDate& date, qint64 nanoseconds, const char* timeCode)
{
    comtrade::Configuration config;
    config.trigger.date = date;
    config.trigger.nanoseconds = nanoseconds;
    config.timeCode = QString::fromUtf8(timeCode);
    return config;
}

constexpr qint64 Second = 1000000000;

TEST(DistanceOfTriggers, CountsToTheNanosecondOverMidnight)
{
    const auto first = Triggered(QDate(2024, 2, 28), 86400 * Second - 250, "0");
    const auto second = Triggered(QDate(2024, 3, 1), 500, "0");
    EXPECT_DOUBLE_EQ(comtrade::DistanceOfTriggers(first, second).seconds, 86400 + 750e-9);
    EXPECT_DOUBLE_EQ(comtrade::DistanceOfTriggers(second, first).seconds, -86400 - 750e-9);
}

TEST(DistanceOfTriggers, IsInUtcWhereBothZonesAreKnown)
{
    const QDate day(2024, 1, 31);
    const auto moscow = Triggered(day, 12 * 3600 * Second, "+3");
    const auto delhi = Triggered(day, 14 * 3600 * Second + 1800 * Second, "+5h30");
    const auto newfoundland = Triggered(day, 5 * 3600 * Second, "-3h30");
    EXPECT_TRUE(comtrade::DistanceOfTriggers(moscow, delhi).inUtc);
    EXPECT_EQ(comtrade::DistanceOfTriggers(moscow, delhi).seconds, 0);
    EXPECT_EQ(comtrade::DistanceOfTriggers(moscow, newfoundland).seconds, -1800);
    EXPECT_EQ(comtrade::DistanceOfTriggers(newfoundland, moscow).seconds, 1800);
}

TEST(DistanceOfTriggers, IsThatOfTheClocksWhereAZoneIsNotKnown)
{
    const QDate day(2024, 1, 31);
    const auto known = Triggered(day, 12 * 3600 * Second, "+3");
    for (const char* code : {"", "x"}) {
        const auto unknown = Triggered(day, 12 * 3600 * Second + 7, code);
        EXPECT_FALSE(comtrade::DistanceOfTriggers(known, unknown).inUtc);
        EXPECT_EQ(comtrade::DistanceOfTriggers(known, unknown).seconds, 7e-9);
        EXPECT_EQ(comtrade::DistanceOfTriggers(unknown, known).seconds, -7e-9);
    }
}

TEST(NanosecondsBetween, AreLimitedForDatesThatAreTypingMistakes)
{
    const auto first = Triggered(QDate(1, 1, 1), 0, "").trigger;
    const auto last = Triggered(QDate(9999, 1, 1), 0, "").trigger;
    EXPECT_EQ(comtrade::NanosecondsBetween(first, last), qint64{100000} * 86400 * Second);
    EXPECT_EQ(comtrade::NanosecondsBetween(last, first), qint64{-100000} * 86400 * Second);
}

} // namespace
