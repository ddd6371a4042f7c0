// How far away a short circuit is, from the voltages and currents at one end of the line.
//
// A fault at the part m of a line lets the loop voltage V = m D + R If: D is what the loop's currents would
// make drop along the whole line, R the resistance of the fault, and If its current, which comes from both
// ends. The methods differ in what they take for the angle of If (S. Das, S. Santoso, A. Gaikwad, M. Patel,
// "Impedance-based fault location in transmission networks: theory and application", IEEE Access 2, 2014):
// the loop current (reactance), the superimposed current (T. Takagi et al., IEEE Trans. PAS-101, 1982), or
// the zero or negative sequence (modified Takagi), which has no load in it.
#pragma once

#include "analysis/faultkind.h"

namespace analysis {

/// Zero-sequence current of the parallel line, A; 0 where there is none.
struct Coupled
{
    Phasor zeroCurrent;
};

/// The distances by each method that the kind allows. The voltages must be there.
std::vector<Distance> DistancesOf(FaultKind kind, const Change& change, const Line& line,
                                  const Coupled& parallel);

/// How far the distance by one method reaches if the angle of the fault's current is wrong by a few degrees,
/// as it is where the sources' and the line's impedances have different angles.
DistanceRange RangeOf(FaultKind kind, const Change& change, const Line& line, const Coupled& parallel,
                      DistanceMethod method);

} // namespace analysis
