#include "forms/comtradetext.h"

#include <gtest/gtest.h>

namespace {

TEST(ComtradeText, NumbersAreTheShortestThatReadTheSame)
{
    EXPECT_EQ(forms::NumberText(0.1), "0.1");
    EXPECT_EQ(forms::NumberText(-3), "-3");
    EXPECT_EQ(forms::NumberText(1e-7), "1e-07");
    EXPECT_EQ(forms::NumberText(-0.0), "0");
    EXPECT_EQ(forms::NumberText(0.0625244200).toDouble(), 0.0625244200);
}

} // namespace
