#include "forms/values.h"

#include "forms/madestream.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(Values, AreCodesWithTheirCoefficients)
{
    comtrade::Configuration config = MadeConfiguration(2, 1, 2);
    config.analog[0].a = 0.1;
    config.analog[0].b = -1;
    MadeStream source(config);
    source.Add({3, Missing}, {1});
    source.Add({Missing, 7}, {0});
    forms::Values values(source);
    const comtrade::Block block = AllOf(values);
    EXPECT_EQ(values.Config().analog[0].a, 1);
    EXPECT_EQ(values.Config().analog[0].b, 0);
    EXPECT_EQ(block.analog[0], 0.1 * 3 - 1);
    EXPECT_TRUE(std::isnan(block.analog[1]));
    EXPECT_TRUE(std::isnan(block.analog[2]));
    EXPECT_EQ(block.analog[3], 7);
    EXPECT_EQ(block.states, (std::vector<quint8>{1, 0}));
    EXPECT_EQ(block.numbers, (std::vector<quint32>{1, 2}));
}

TEST(Values, HaveTheirTimesByTheRates)
{
    comtrade::Configuration config = MadeConfiguration(0, 1, 5);
    config.rates = {{1200, 3}, {100, 5}};
    MadeStream source(config);
    for (quint8 i = 0; i < 5; ++i)
        source.Add({}, {i}, 77);
    forms::Values values(source);
    EXPECT_EQ(AllOf(values).times, (std::vector<qint64>{-2000000, -1166667, -333333, 9666667, 19666667}));
    EXPECT_EQ(values.Config().StampSeconds(), 1e-9);
}

TEST(Values, HaveTheirTimesByTheStampsWhereThereIsNoRate)
{
    comtrade::Configuration config = MadeConfiguration(0, 0, 3);
    config.rates = {{0, 3}};
    config.timeMultiplier = 10;
    MadeStream source(config);
    for (const qint64 stamp : {qint64{0}, comtrade::Block::NoTime, qint64{200}})
        source.Add({}, {}, stamp);
    forms::Values values(source);
    EXPECT_EQ(AllOf(values).times, (std::vector<qint64>{-2000000, comtrade::Block::NoTime, 0}));
}
