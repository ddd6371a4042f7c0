// Voltages and currents of the line model in the steady state, from the sequence networks.
//
// Superposition of the load and of the fault's currents: Clarke, Circuit Analysis of A-C Power Systems, vol.
// 1, 1943, with the connection of the networks written as the fault's conductances between phases, so that
// one formula serves all kinds. Nothing is integrated; what the simulation gives is compared with it.
#pragma once

#include "station/linefault.h"
#include "station/linemodel.h"

#include <array>
#include <optional>

namespace station {

using PhasePhasors = std::array<Complex, 3>; // of a, b and c, RMS

struct LinePhasors
{
    PhasePhasors bus;     // V to the ground
    PhasePhasors line;    // A, from the bus into the line
    PhasePhasors infeed;  // A, from the bus into the infeed
    PhasePhasors healthy; // A, from the bus into the healthy line
    PhasePhasors remote;  // A, from the remote source into the line
};

// Before the fault, or late in a fault that nothing clears.
LinePhasors SteadyState(const LineModel& model, const std::optional<FaultState>& fault);

} // namespace station
