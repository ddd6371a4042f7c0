#include "writers/shortnumber.h"

#include <gtest/gtest.h>

#include <QString>

#include <cstring>
#include <limits>
#include <random>

static QString Expected(float value)
{
    return QString().setNum(static_cast<double>(value), 'g', 8);
}

TEST(Digits8, AreThoseOfQt)
{
    for (const float value : {0.0F, -0.0F, 1.0F, 2097152.25F, 2097151.75F, 1e-7F, 1e20F, -110.0F / 3.0F,
                              std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN(),
                              -std::numeric_limits<float>::min(), std::numeric_limits<float>::denorm_min()}) {
        EXPECT_EQ(QString(zu::Digits8(value).Text()), Expected(value));
        EXPECT_EQ(QString(zu::Digits8(value).Text()), Expected(value)) << "from memory";
    }
}

TEST(Digits8, AreThoseOfQtForManyValuesInTurn)
{
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        const auto bits = static_cast<uint32_t>(i % 2 == 0 ? random() : random() % 100 * 0x800000U);
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        ASSERT_EQ(QString(zu::Digits8(value).Text()), Expected(value)) << bits;
    }
}
