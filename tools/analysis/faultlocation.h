// The distance of a stretch of a fault, from all windows within it.
#pragma once

#include "analysis/distance.h"
#include "analysis/window.h"

namespace analysis {

/// What a distance is computed from.
struct LocatedCircuit
{
    const CircuitWaves& waves;
    std::optional<CircuitWaves> parallel; ///< of the parallel line
    Line line;                            ///< its reactances at the frequency of the record
};

/// Samples of a fault with the same phases, and the state before it.
struct FaultStretch
{
    size_t from = 0;
    size_t to = 0; ///< the one after the last
    CircuitState before;
};

/// Fills in the distances of the part, their range, or what they lack. Each distance is the median of those
/// in the windows of the later half of the stretch, where the transients have decayed. Where the angle of the
/// fault's current, if it is wrong by a few degrees, or the noise moves it far, there is a range as well.
void Locate(FaultPart& part, const FaultStretch& stretch, const LocatedCircuit& circuit, const Meter& meter);

} // namespace analysis
