// Floating point: the one way to integers, and the comparison of two values.
#pragma once

#include <cmath>
#include <limits>
#include <type_traits>

namespace zu {

/// Integer part of value, truncated towards zero. NaN gives 0, a value out of range the nearest limit of Int.
template <class Int>
Int ToInteger(double value)
{
    static_assert(std::is_integral_v<Int>, "ToInteger makes integers");
    // 2^digits is exact in a double, also where the largest Int itself is not.
    const double above = std::ldexp(1.0, std::numeric_limits<Int>::digits);
    const double lowest = std::is_signed_v<Int> ? -above : 0.0;
    if (std::isnan(value))
        return 0;
    if (value >= above)
        return std::numeric_limits<Int>::max();
    if (value <= lowest)
        return std::numeric_limits<Int>::min();
    return static_cast<Int>(value);
}

/// |a - b| below the epsilon of its type, 2^-23 or 2^-52, computed in that type; false for a NaN.
template <class Float>
bool IsFloatEqual(Float a, Float b)
{
    return std::fabs(a - b) < std::numeric_limits<Float>::epsilon();
}

} // namespace zu
