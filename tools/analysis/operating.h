// What protection and breaker did, and how long they took.
#pragma once

#include "analysis/events.h"
#include "analysis/fault.h"

#include <optional>

namespace analysis {

/// Durations in seconds. Start, trip, breaker and clearing count from `from`.
struct Operating
{
    std::optional<double> from; ///< the onset of the fault or, without one, the first start; from the trigger
    bool isFromOnset = false;
    QString circuit;                ///< whose signals these are; empty: of the whole record
    std::optional<double> start;    ///< the first start of a protection
    std::optional<double> trip;     ///< the first trip
    std::optional<double> breaker;  ///< the first contact of a breaker that says it is not closed any more
    std::optional<double> clearing; ///< the fault current ends, for the first time if it comes back
    std::optional<double> deadTime; ///< from the breaker's opening to its closing again
    /// Whether the breaker stays closed then and there is no new fault; none: it was not reclosed.
    std::optional<bool> reclosed;
};

/// Of the faulted circuit; where that has no start, trip or breaker among the events, and where there is no
/// fault, of the whole record.
Operating OperatingOf(const std::vector<Event>& events, const comtrade::Configuration& config,
                      const std::vector<Circuit>& circuits, const std::optional<Fault>& fault);

} // namespace analysis
