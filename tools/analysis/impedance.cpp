#include "analysis/impedance.h"

#include <limits>

namespace analysis {

namespace {

Phasor Ratio(Phasor voltage, Phasor current)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    return current == Phasor(0) ? Phasor(none, none) : voltage / current;
}

} // namespace

Phasor ResidualFactor(const Line& line)
{
    const Phasor positive(line.r1, line.x1);
    const Phasor zero(line.r0, line.x0);
    return positive == Phasor(0) ? Phasor(0) : (zero - positive) / (3.0 * positive);
}

LoopImpedances ImpedancesOf(const PhasePhasors& voltages, const PhasePhasors& currents, Phasor residualFactor)
{
    const Phasor compensation = residualFactor * (currents[PhaseA] + currents[PhaseB] + currents[PhaseC]);
    const PhasePhasors voltagesBetween = PhaseToPhase(voltages);
    const PhasePhasors currentsBetween = PhaseToPhase(currents);
    LoopImpedances impedances;
    for (size_t phase = 0; phase < Phases; ++phase) {
        impedances[LoopAG + phase] = Ratio(voltages[phase], currents[phase] + compensation);
        impedances[LoopAB + phase] = Ratio(voltagesBetween[phase], currentsBetween[phase]);
    }
    return impedances;
}

} // namespace analysis
