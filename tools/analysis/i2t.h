// The heat that a current leaves.
#pragma once

#include "analysis/signals.h"

namespace analysis {

/// The integral of i^2 from a sample on, in A^2 s (IEC 60909-0, Joule integral), by the trapezoidal rule: for
/// each sample what has come up to it. 0 at sample `from`, NaN before it, and from a missing value on, as
/// nobody knows what flowed.
Wave JouleIntegral(const Wave& current, double rate, size_t from);

} // namespace analysis
