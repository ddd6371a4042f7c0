#include "station/drawing.h"

#include <gtest/gtest.h>

#include <cmath>

using station::Drawing;

TEST(Drawing, NoiseHasMeanZeroAndDeviationOne)
{
    Drawing draw(5);
    double sum = 0;
    double squares = 0;
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) {
        const double noise = draw.Noise();
        sum += noise;
        squares += noise * noise;
    }
    EXPECT_NEAR(sum / count, 0, 0.03);
    EXPECT_NEAR(std::sqrt(squares / count), 1, 0.03);
}

TEST(Drawing, LogarithmicValuesHaveTheirMedianAtTheGeometricMean)
{
    Drawing draw(6);
    int low = 0;
    for (int i = 0; i < 2000; ++i) {
        const double value = draw.Logarithmic(1, 100);
        EXPECT_GE(value, 1);
        EXPECT_LE(value, 100);
        low += value < 10;
    }
    EXPECT_NEAR(low, 1000, 100);
}

TEST(Drawing, RangesAreKept)
{
    Drawing draw(7);
    for (int i = 0; i < 1000; ++i) {
        const int number = draw.Below(3);
        EXPECT_GE(number, 0);
        EXPECT_LT(number, 3);
        const double value = draw.Between(-2, 5);
        EXPECT_GE(value, -2);
        EXPECT_LT(value, 5);
    }
}
