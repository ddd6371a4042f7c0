// The impedances that a distance protection sees.
#pragma once

#include "analysis/linedata.h"
#include "analysis/threephase.h"

namespace analysis {

enum Loop : size_t { LoopAG, LoopBG, LoopCG, LoopAB, LoopBC, LoopCA };

constexpr size_t Loops = 6;

/// Primary ohms; NaN for a loop without current.
using LoopImpedances = std::array<Phasor, Loops>;

/// The residual compensation k0 = (Z0 - Z1) / (3 Z1) of a line (G. Ziegler, "Numerical Distance Protection",
/// 4th ed., 3.1); 0 for a line without positive-sequence impedance.
Phasor ResidualFactor(const Line& line);

/// Ground loops: the voltage of a phase by its current plus k0 times the residual current Ia + Ib + Ic. Phase
/// loops: the difference of two voltages by that of the currents. Of a bolted fault, those of its phases show
/// the positive-sequence impedance to it (ibid.). With arc or fault resistance and infeed from the other end
/// they show it only roughly, and loops that do not take part show nothing of use.
LoopImpedances ImpedancesOf(const PhasePhasors& voltages, const PhasePhasors& currents,
                            Phasor residualFactor);

} // namespace analysis
