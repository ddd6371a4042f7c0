#include "station/waveform.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(Waveform, SineFollowsTheStandardOne)
{
    for (int i = -3000; i <= 3000; ++i) {
        const double turns = i * 0.00171;
        EXPECT_NEAR(station::SineOfTurns(turns), std::sin(2 * M_PI * turns), 1e-11) << turns;
    }
}

TEST(Waveform, DecayFollowsTheStandardExponential)
{
    for (int i = 0; i <= 2000; ++i) {
        const double x = i * 0.01;
        EXPECT_NEAR(station::DecayAfter(x) / std::exp(-x), 1.0, 1e-11) << x;
    }
}
