// The short circuit in a record: where, which phases, since when, until when, how far away.
#pragma once

#include "analysis/circuits.h"
#include "analysis/linedata.h"
#include "analysis/phasor.h"
#include "analysis/signals.h"

#include <optional>
#include <vector>

namespace analysis {

/// The phases that take part, and whether earth does.
enum class FaultKind { AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC, ABCG };

/// "AG" to "ABCG".
const char* NameOf(FaultKind kind);

enum class Direction { Unknown, Forward, Reverse }; ///< seen from the recorder: forward is into the circuit

/// The word of the JSON output: "unknown", "forward", "reverse".
const char* NameOf(Direction direction);

enum class DistanceMethod { Reactance, Takagi, ModifiedTakagi };

/// The word of the JSON output: "reactance", "takagi", "modifiedTakagi".
const char* NameOf(DistanceMethod method);

struct Distance
{
    DistanceMethod method = DistanceMethod::Reactance;
    double percent = 0;    ///< of the length of the line
    double km = 0;         ///< from the recorder
    double resistance = 0; ///< of the fault, ohms; NaN where the method gives none
};

/// What the distance can be, where the methods cannot know better.
struct DistanceRange
{
    double fromPercent = 0;
    double toPercent = 0;
};

/// What a distance needs and the record or lines.ini lacks.
enum class Lack { None, LineData, Voltages, TooShort };

/// A stretch of the fault with the same phases.
struct FaultPart
{
    FaultKind kind = FaultKind::AG;
    bool afterReclosing = false;    ///< the line was dead before it
    double onset = 0;               ///< seconds from the trigger
    std::optional<double> clearing; ///< likewise; none if the record ends first
    std::vector<Distance> distances;
    std::optional<size_t> best; ///< of the distances
    std::optional<DistanceRange> range;
    Lack lack = Lack::None; ///< why there is no distance
};

/// A channel's phasors: RMS in volts or amperes, angles against the positive-sequence voltage before the
/// fault (its current where there is no voltage). NaN where there is none.
struct ChannelPhasors
{
    size_t channel = 0; ///< place in the configuration
    Phasor before;
    Phasor during;
    Phasor after;
};

struct Fault
{
    size_t circuit = 0; ///< place among the circuits
    Direction direction = Direction::Unknown;
    std::vector<FaultPart> parts; ///< at least one; a reclosing onto the fault begins a new one
    std::vector<ChannelPhasors> phasors;

    double Onset() const { return parts.front().onset; }
    const FaultPart& Last() const; ///< of the parts before a reclosing
    const std::optional<double>& Clearing() const { return Last().clearing; }
    FaultKind Kind() const { return Last().kind; }
    const FaultPart&
    Located() const; ///< the part whose distance counts: the longest that has one, else Last()
};

struct Findings
{
    std::optional<Fault> fault;
    double frequency = 0;                ///< before the fault, Hz; the nominal one if it cannot be measured
    bool hasWaves = true;                ///< there are currents to look at
    std::vector<ChannelPhasors> phasors; ///< where there is no fault: of all waves, at the trigger
};

/// Which phasors the findings have: for those who show them, or for those who only want to know about the
/// faulted circuit (none without a fault).
enum class WantedPhasors { AllWaves, FaultedCircuit };

/// Looks for a short circuit. The circuits are those of the record.
Findings FindFault(const Signals& signals, const std::vector<Circuit>& circuits, const Lines& lines,
                   WantedPhasors phasors = WantedPhasors::AllWaves);

} // namespace analysis
