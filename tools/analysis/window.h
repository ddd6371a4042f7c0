// Phasors of a circuit in windows of its waves, all turned to one reference.
#pragma once

#include "analysis/faultkind.h"
#include "analysis/signals.h"

#include <map>

namespace analysis {

/// The waves of a circuit; the voltages may be those of another one.
struct CircuitWaves
{
    std::array<const Wave*, Phases> currents = {};
    std::array<const Wave*, Phases> voltages = {};
    bool hasVoltages = false;
    const Line* line = nullptr; ///< what is known of it; null: nothing
};

/// Measures phasors at one frequency. The angles of all of them are those at sample 0 of a phasor that turns
/// with that frequency, so that those of a steady wave are the same everywhere.
class Meter
{
public:
    /// samplesPerPeriod: rate / frequency.
    explicit Meter(double samplesPerPeriod);

    double Period() const { return period; }

    /// Samples of the usual window: one period.
    size_t Window() const { return window; }

    /// Of length samples from `first` on. NaN if one is missing or outside the wave. A window of less than a
    /// period measures the fundamental and a direct component alone.
    Phasor Of(const Wave& wave, size_t first, size_t length) const;
    CircuitState Of(const CircuitWaves& waves, size_t first, size_t length) const;

    /// The second harmonic in a window, RMS.
    double SecondHarmonic(const Wave& wave, size_t first) const;

private:
    const Fourier& Filter(size_t length) const;
    Phasor TurnOf(size_t first, size_t length) const;

    double period;
    size_t window;
    std::vector<Phasor> secondTurns; // of the samples of the usual window
    mutable std::map<size_t, Fourier> filters;
};

} // namespace analysis
