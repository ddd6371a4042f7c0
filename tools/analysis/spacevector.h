// Three voltages as one wave that turns.
#pragma once

#include "analysis/frequency.h"

namespace analysis {

/// Three waves as one complex one, whose part that turns forwards is the positive sequence (E. Clarke,
/// "Circuit Analysis of AC Power Systems", 1943, alpha and beta components); a single wave as it is.
class SpaceVector
{
public:
    /// Of samples first to end - 1.
    SpaceVector(const FrequencySource& source, size_t first, size_t end);

    size_t Count() const { return real.size(); }

    /// Phasors of samples first to end - 1 as Fourier::Track gives them, with angles against sample `first`.
    std::vector<Phasor> Track(const Fourier& filter, size_t first, size_t end) const;

private:
    Wave real;
    Wave imaginary; // empty for a single wave
};

} // namespace analysis
