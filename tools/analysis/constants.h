// Numbers that many calculations use.
#pragma once

#include <limits>

namespace analysis {

constexpr double Pi = 3.14159265358979323846;

/// What has no value.
constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

} // namespace analysis
