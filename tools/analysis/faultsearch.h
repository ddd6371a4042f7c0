// Looks for short circuits in the waves of one circuit.
#pragma once

#include "analysis/superimposed.h"
#include "analysis/window.h"

namespace analysis {

/// A short circuit as one circuit shows it, in samples.
struct Occurrence
{
    double onset = 0;
    size_t firstBad = 0; ///< the first sample that differs
    std::optional<double> clearing;
    size_t firstBreak = 0; ///< the first sample at which a phase is interrupted; the end if none is
    Change change;         ///< in the first whole window
    std::vector<std::pair<double, FaultKind>> kinds; ///< the kinds in their order, each with its onset
};

class FaultSearch
{
public:
    /// The meter must outlive the search, and so must the waves that are pointed to.
    FaultSearch(const CircuitWaves& waves_, const Meter& meter_);

    const CircuitWaves& Waves() const { return waves; }

    /// The first short circuit whose onset is at sample `from` or later.
    std::optional<Occurrence> Next(size_t from) const;

    /// What a sample changes, from the periods before it to the one after; none where a value is missing.
    std::optional<Change> ChangeAt(size_t sample) const;

    /// The short circuit that starts at about a sample, where that there is one is known from elsewhere.
    Occurrence FaultAt(size_t sample) const;

    /// Phasors before a sample, as they would have gone on; in one period or two.
    CircuitState Before(size_t sample) const;

    /// The noise of the currents, A RMS of a phasor.
    double Noise() const { return noise; }

private:
    std::optional<Departure> FirstDeparture(size_t from) const;
    Change At(const CircuitState& before, size_t first) const;
    std::optional<size_t> FirstFaulted(const CircuitState& before, size_t departure) const;
    Occurrence Starting(const Departure& departure, const CircuitState& before, size_t first) const;
    void Follow(Occurrence& found, size_t first) const;
    bool IsSudden(size_t sample) const;
    bool IsOpen(const Change& start, size_t end) const;
    void SetOnset(Occurrence& found, size_t from, size_t to) const;
    void SetOnsetByVoltages(Occurrence& found) const;
    size_t EndOf(const Change& start, size_t first) const;
    std::optional<size_t> Interruption(size_t phase, size_t from, size_t to) const;
    void FindClearing(Occurrence& found, size_t end) const;
    void FindClearingAtEnd(Occurrence& found) const;
    void FindKinds(Occurrence& found) const;
    bool HasJoined(const std::pair<size_t, FaultKind>& earlier, FaultKind kind, size_t at) const;
    double OnsetOfKind(FaultKind earlier, FaultKind later, size_t from, size_t to) const;

    const CircuitWaves waves;
    const Meter& meter;
    size_t count;
    std::array<Wave, Phases> differences;
    double limit = 0; // of the differences: more is no noise
    double noise = 0;
    double usualVoltage = 0; // of the positive sequence in the first period; 0 without voltages
};

} // namespace analysis
