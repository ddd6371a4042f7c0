#include "analysis/i2t.h"

#include <limits>

namespace analysis {

Wave JouleIntegral(const Wave& current, double rate, size_t from)
{
    Wave result(current.size(), std::numeric_limits<double>::quiet_NaN());
    double sum = 0;
    for (size_t i = from; i < current.size(); ++i) {
        if (i > from)
            sum += (current[i - 1] * current[i - 1] + current[i] * current[i]) / (2 * rate);
        result[i] = sum + 0 * current[i]; // NaN for a missing first one too
    }
    return result;
}

} // namespace analysis
