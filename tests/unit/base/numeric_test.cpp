// The only conversion from floating point to integers, and the comparison of floats.
#include "base/numeric.h"

#include <gtest/gtest.h>

#include <cstdint>

using zu::ToInteger;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

template <class Int>
class ToIntegerOf : public testing::Test
{};

using Integers = testing::Types<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, int64_t, uint64_t>;
TYPED_TEST_SUITE(ToIntegerOf, Integers, );

} // namespace

TYPED_TEST(ToIntegerOf, TruncatesTowardsZero)
{
    EXPECT_EQ(ToInteger<TypeParam>(0.0), TypeParam(0));
    EXPECT_EQ(ToInteger<TypeParam>(-0.0), TypeParam(0));
    EXPECT_EQ(ToInteger<TypeParam>(0.999), TypeParam(0));
    EXPECT_EQ(ToInteger<TypeParam>(-0.999), TypeParam(0));
    EXPECT_EQ(ToInteger<TypeParam>(1.0), TypeParam(1));
    EXPECT_EQ(ToInteger<TypeParam>(100.999), TypeParam(100));
}

TYPED_TEST(ToIntegerOf, NotANumberIsZero)
{
    EXPECT_EQ(ToInteger<TypeParam>(std::numeric_limits<double>::quiet_NaN()), TypeParam(0));
    EXPECT_EQ(ToInteger<TypeParam>(-std::numeric_limits<double>::quiet_NaN()), TypeParam(0));
}

TYPED_TEST(ToIntegerOf, TooLargeIsTheLargest)
{
    constexpr TypeParam most = std::numeric_limits<TypeParam>::max();
    const double above = std::ldexp(1.0, std::numeric_limits<TypeParam>::digits);
    for (const double value : {above, std::nextafter(above, infinity), 1e300, infinity})
        EXPECT_EQ(ToInteger<TypeParam>(value), most) << value;
}

TYPED_TEST(ToIntegerOf, TooSmallIsTheSmallest)
{
    constexpr TypeParam least = std::numeric_limits<TypeParam>::min();
    const double lowest = static_cast<double>(least);
    for (const double value : {lowest, std::nextafter(lowest, -infinity), lowest - 1, -1e300, -infinity})
        EXPECT_EQ(ToInteger<TypeParam>(value), least) << value;
}

TYPED_TEST(ToIntegerOf, LargestValueThatFitsIsExact)
{
    const double above = std::ldexp(1.0, std::numeric_limits<TypeParam>::digits);
    const double below = std::nextafter(above, 0.0);
    EXPECT_EQ(ToInteger<TypeParam>(below), static_cast<TypeParam>(std::trunc(below)));
}

TEST(ToIntegerAtTheLimits, KeepsEveryValueThatFits)
{
    EXPECT_EQ(ToInteger<uint32_t>(4294967295.0), 0xFFFFFFFFu);
    EXPECT_EQ(ToInteger<uint32_t>(4294967294.9), 0xFFFFFFFEu);
    EXPECT_EQ(ToInteger<int32_t>(2147483647.0), 2147483647);
    EXPECT_EQ(ToInteger<int32_t>(-2147483647.9), -2147483647);
    EXPECT_EQ(ToInteger<int32_t>(-2147483648.0), -2147483647 - 1);
    EXPECT_EQ(ToInteger<int32_t>(-2147483648.9), -2147483647 - 1);
    EXPECT_EQ(ToInteger<int64_t>(-9007199254740993.0), -9007199254740992);
    EXPECT_EQ(ToInteger<int64_t>(0x1.fffffffffffffp62), 0x7FFFFFFFFFFFFC00);
    EXPECT_EQ(ToInteger<uint64_t>(0x1.fffffffffffffp63), 0xFFFFFFFFFFFFF800u);
    EXPECT_EQ(ToInteger<int64_t>(-0x1p63), std::numeric_limits<int64_t>::min());
}

TEST(FloatComparison, LimitOf32BitsIsStrict)
{
    EXPECT_TRUE(zu::IsFloatEqual(0.0F, std::nextafter(0x1p-23F, 0.0F)));
    EXPECT_FALSE(zu::IsFloatEqual(0.0F, 0x1p-23F));
    EXPECT_FALSE(zu::IsFloatEqual(0x1p-23F, 0.0F));
    EXPECT_TRUE(zu::IsFloatEqual(2400.0F, 2400.0F));
}

TEST(FloatComparison, LimitOf64BitsIsStrict)
{
    EXPECT_TRUE(zu::IsFloatEqual(0.0, std::nextafter(0x1p-52, 0.0)));
    EXPECT_FALSE(zu::IsFloatEqual(0.0, 0x1p-52));
    EXPECT_FALSE(zu::IsFloatEqual(0x1p-52, 0.0));
}

TEST(FloatComparison, NothingEqualsANan)
{
    const float nan32 = std::numeric_limits<float>::quiet_NaN();
    const double nan64 = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(zu::IsFloatEqual(nan32, nan32));
    EXPECT_FALSE(zu::IsFloatEqual(nan64, nan64));
    EXPECT_FALSE(zu::IsFloatEqual(1.0F, nan32));
}
