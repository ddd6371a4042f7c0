// How far three phases are from a balanced system.
#pragma once

#include "analysis/phasor.h"

namespace analysis {

/// Ratios of the magnitudes of the sequences (IEC 61000-4-30: u2 and u0, there in percent): 0 for a balanced
/// system. NaN without positive sequence.
struct Unbalance
{
    double negative = 0; ///< negative by positive sequence
    double zero = 0;     ///< zero by positive sequence
};

Unbalance UnbalanceOf(const Components& components);

} // namespace analysis
