// Phasors of three phases, at a moment or for each sample.
#pragma once

#include "analysis/circuits.h"
#include "analysis/phasor.h"

#include <array>
#include <vector>

namespace analysis {

using PhasePhasors = std::array<Phasor, Phases>; ///< a, b, c

/// One phasor for each sample and phase; all of one length.
using PhaseTracks = std::array<std::vector<Phasor>, Phases>;

inline PhasePhasors At(const PhaseTracks& tracks, size_t sample)
{
    return {tracks[PhaseA][sample], tracks[PhaseB][sample], tracks[PhaseC][sample]};
}

inline Components ComponentsOf(const PhasePhasors& phases)
{
    return ComponentsOf(phases[PhaseA], phases[PhaseB], phases[PhaseC]);
}

/// Phase-to-phase phasors AB, BC, CA of phase-to-earth ones.
inline PhasePhasors PhaseToPhase(const PhasePhasors& phases)
{
    return {phases[PhaseA] - phases[PhaseB], phases[PhaseB] - phases[PhaseC],
            phases[PhaseC] - phases[PhaseA]};
}

/// A quantity against time: of the phasors of each sample.
template <typename Function>
auto Track(const PhaseTracks& tracks, Function function)
{
    std::vector<decltype(function(At(tracks, 0)))> result;
    result.reserve(tracks[PhaseA].size());
    for (size_t i = 0; i < tracks[PhaseA].size(); ++i)
        result.push_back(function(At(tracks, i)));
    return result;
}

/// The same of voltages and currents; both must come from filters of the same frequency.
template <typename Function>
auto Track(const PhaseTracks& voltages, const PhaseTracks& currents, Function function)
{
    std::vector<decltype(function(At(voltages, 0), At(currents, 0)))> result;
    result.reserve(voltages[PhaseA].size());
    for (size_t i = 0; i < voltages[PhaseA].size(); ++i)
        result.push_back(function(At(voltages, i), At(currents, i)));
    return result;
}

} // namespace analysis
