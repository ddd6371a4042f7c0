#include "analysis/power.h"

#include <cmath>
#include <limits>

namespace analysis {

double Power::Apparent() const
{
    return std::hypot(active, reactive);
}

double Power::Factor() const
{
    const double apparent = Apparent();
    return apparent == 0 ? std::numeric_limits<double>::quiet_NaN() : active / apparent;
}

Power PowerOf(Phasor voltage, Phasor current)
{
    const Phasor power = voltage * std::conj(current);
    return {power.real(), power.imag()};
}

Power PowerOf(const PhasePhasors& voltages, const PhasePhasors& currents)
{
    Power sum;
    for (size_t phase = 0; phase < Phases; ++phase) {
        const Power part = PowerOf(voltages[phase], currents[phase]);
        sum.active += part.active;
        sum.reactive += part.reactive;
    }
    return sum;
}

} // namespace analysis
