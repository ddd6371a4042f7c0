#include "view/pagedata.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

TEST(PageData, TimeCountsFromTheFirstSampleHeld)
{
    comtrade::Configuration config;
    config.rates = {{1000, 100}, {500, 200}};
    config.start.date = config.trigger.date = QDate(2024, 1, 31);
    const analysis::TimeAxis axis = analysis::TimeAxis::FromRates(config);
    const QJsonArray pieces = view::TimeJson(axis, 90, 50).value(QStringLiteral("pieces")).toArray();
    ASSERT_EQ(pieces.size(), 2);
    EXPECT_EQ(pieces[0].toArray()[0].toDouble(), 0);
    EXPECT_NEAR(pieces[0].toArray()[1].toDouble(), 90, 1e-9);
    EXPECT_EQ(pieces[1].toArray()[0].toDouble(), 10);
    EXPECT_NEAR(pieces[1].toArray()[1].toDouble(), 101, 1e-9);
    EXPECT_DOUBLE_EQ(pieces[1].toArray()[2].toDouble(), 2);
    EXPECT_EQ(pieces[1].toArray()[3].toDouble(), 500);
    EXPECT_EQ(view::TimeJson(axis, 120, 10).value(QStringLiteral("pieces")).toArray().size(), 1);
}

} // namespace
