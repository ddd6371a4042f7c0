// Which phases of a circuit a short circuit has, and whether it is one at all.
#pragma once

#include "analysis/fault.h"
#include "analysis/threephase.h"

namespace analysis {

/// Phasors of a circuit, in volts and amperes.
struct CircuitState
{
    PhasePhasors voltages = {};
    PhasePhasors currents = {};
    bool hasVoltages = false;
};

struct Change
{
    CircuitState before; ///< as it would have gone on: the same angle reference as `during`
    CircuitState during;
    double noise = 0;          ///< of the currents, A RMS
    double secondHarmonic = 0; ///< of the phase with the largest current, in parts of its fundamental
    /// of that phase's voltage, in parts of its change
    double voltageSecondHarmonic = 0;
    double usualVoltage = 0; ///< of the positive sequence when the record starts, V RMS; 0: not known
};

/// The kind by the superimposed currents. Without negative sequence it has all three phases; where two phases
/// changed alike, the third one alone is faulted; otherwise the angle from the positive to the negative
/// sequence names the pair: 60 degrees for A-B, 180 for B-C, 300 for C-A. The zero sequence says whether
/// earth takes part (A. Prasad et al., "Fault classification schemes", JESIT 5, 2018, section 2).
FaultKind KindOf(const Change& change);

/// The phases that take part: bits 1, 2 and 4 for a, b and c.
unsigned PhasesOf(FaultKind kind);

/// Whether the change is a short circuit, and no load, switching, inrush or a fault far away.
bool IsShortCircuit(const Change& change);

/// Whether an unbalanced change ahead that is too small for IsShortCircuit comes from a fault nevertheless,
/// behind a resistance or near the other end: if it breaks a voltage down, or if its distance is on the line.
/// Without data of the line (null) it may as well be far away.
bool MayBeShortCircuit(const Change& change, const Line* line);

/// Whether a balanced change ahead may be a short circuit behind a resistance as well as a load that the
/// source feels. What follows decides.
bool IsSuspect(const Change& change);

/// Whether the phases that change carry nothing any more: a breaker opened.
bool IsSwitchedOff(const Change& change);

/// Whether the fault that `start` shows is still there: a phase that takes part in it carries current, and
/// not that of before.
bool GoesOn(const Change& start, const CircuitState& now);

/// The angle of the superimposed voltage over the superimposed current: that of the source behind the
/// recorder, turned by 180 degrees, for a fault ahead; that of what lies ahead for one behind.
Direction DirectionOf(const Change& change);

/// Size of the superimposed currents, A RMS: the root of the sum of squares.
double SizeOf(const Change& change);

} // namespace analysis
