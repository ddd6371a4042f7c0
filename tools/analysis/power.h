// Power from phasors of voltage and current: that of the fundamental, as IEEE 1459 keeps it apart.
//
// Currents count into the circuit, as the recorder measures them, so that positive active power flows from
// the busbar into the circuit and positive reactive power is that of an inductive load.
#pragma once

#include "analysis/threephase.h"

namespace analysis {

struct Power
{
    double active = 0;   ///< P, W
    double reactive = 0; ///< Q, var

    /// S, VA: the root of P^2 + Q^2; of three phases this is the vector apparent power of IEEE 1459, which is
    /// less than the sum of those of the phases where the phases differ.
    double Apparent() const;

    /// P / S, from -1 to 1, negative where power flows out of the circuit; NaN without power.
    double Factor() const;
};

/// Of one phase: the real and imaginary part of the voltage times the conjugate current (IEEE 1459-2010,
/// fundamental active and reactive power).
Power PowerOf(Phasor voltage, Phasor current);

/// Of three phases: the sum of theirs, from phase-to-earth voltages.
Power PowerOf(const PhasePhasors& voltages, const PhasePhasors& currents);

} // namespace analysis
