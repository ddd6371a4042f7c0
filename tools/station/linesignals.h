// What the discrete signals of a recording of the line model show.
#pragma once

#include "station/linecourse.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace station {

// A discrete signal: its state at the first sample, and the moments (microseconds from there, all different,
// ascending) at which it changes.
struct SignalHistory
{
    DiscreteSignal signal;
    bool atStart;
    std::vector<int64_t> toggles;
};

// The histories of all signals, in the order of the recorder, up to the end of the recording.
std::vector<SignalHistory> HistoriesOf(const LineScenario& scenario, const LineOutcome& outcome);

} // namespace station
