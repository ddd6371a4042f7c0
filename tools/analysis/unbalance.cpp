#include "analysis/unbalance.h"

#include <cmath>
#include <limits>

namespace analysis {

Unbalance UnbalanceOf(const Components& components)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const double positive = std::abs(components.positive);
    if (positive == 0)
        return {none, none};
    return {std::abs(components.negative) / positive, std::abs(components.zero) / positive};
}

} // namespace analysis
