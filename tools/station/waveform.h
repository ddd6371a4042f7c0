// Elementary functions of the sample station. They use only additions, multiplications and divisions, so that
// a station has the same bytes wherever it is built.
#pragma once

namespace station {

// The sine of an angle in turns: 0.25 gives 1. The error is below 1e-11.
double SineOfTurns(double turns);

// exp(-x) for x of 0 and above. The relative error is below 1e-11.
double DecayAfter(double x);

} // namespace station
