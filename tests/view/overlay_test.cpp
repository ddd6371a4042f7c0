#include "view/overlay.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

// A second of 1000 samples, the trigger 0.1 s after the first one; clock is that of the trigger, s of the
// day.
analysis::Oscillogram Made(qint64 clock, const char* unit = "V", qint64 samples = 1000)
{
    constexpr qint64 second = 1000000000;
    analysis::Oscillogram oscillogram;
    comtrade::Configuration& config = oscillogram.config;
    config.rates = {{1000, samples}};
    config.start.date = config.trigger.date = QDate(2024, 1, 31);
    config.trigger.nanoseconds = clock * second;
    config.start.nanoseconds = config.trigger.nanoseconds - second / 10;
    config.analog.resize(1);
    config.analog[0].unit = QString::fromUtf8(unit);
    oscillogram.analog.resize(1);
    for (qint64 i = 0; i < samples; ++i)
        oscillogram.analog[0].Add(0);
    oscillogram.total = samples;
    oscillogram.axis = analysis::TimeAxis::FromRates(config);
    return oscillogram;
}

TEST(Overlay, IsApartFromThreeLengthsOfTheLongerRecordOn)
{
    using view::Alignment;
    const analysis::Oscillogram first = Made(100);
    // 999 ms long: between the ends there are 3.001 s, of which three lengths are 2.997.
    EXPECT_TRUE(view::Overlay(first, Made(104), Alignment::Time).IsApart());
    EXPECT_TRUE(view::Overlay(first, Made(96), Alignment::Time).IsApart());
    EXPECT_FALSE(view::Overlay(first, Made(103), Alignment::Time).IsApart());
    EXPECT_FALSE(view::Overlay(first, Made(97), Alignment::Time).IsApart());
    EXPECT_FALSE(view::Overlay(first, Made(104, "V", 1100), Alignment::Time).IsApart());
    EXPECT_NEAR(view::Overlay(first, Made(104), Alignment::Time).gap, 3.001, 1e-9);
}

TEST(Overlay, OfTriggersIsNeverApartByTheClocks)
{
    const view::Overlay overlay(Made(100), Made(80000), view::Alignment::Trigger);
    EXPECT_FALSE(overlay.IsApart());
    EXPECT_EQ(overlay.between, 79900);
}

TEST(Overlay, GivesThePageTheUnitsOfBothRecords)
{
    const analysis::Oscillogram first = Made(100, "\u043a\u0412"); // kV in Cyrillic letters
    const analysis::Oscillogram second = Made(101, "V");
    const view::Overlay overlay(first, second, view::Alignment::Time);
    const QJsonObject json = view::OverlayJson(overlay, first, second);
    EXPECT_EQ(json.value(QStringLiteral("between")).toDouble(), 1000);
    EXPECT_EQ(json.value(QStringLiteral("align")).toString(), QStringLiteral("time"));
    EXPECT_EQ(json.value(QStringLiteral("units")).toObject(),
              (QJsonObject{{QString::fromUtf8("\u043a\u0412"), QJsonArray{QStringLiteral("U"), 1000}},
                           {QStringLiteral("V"), QJsonArray{QStringLiteral("U"), 1}}}));
}

} // namespace
