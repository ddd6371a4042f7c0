// A scenario as moments of one recording: what the simulation does, and what the discrete signals show.
#pragma once

#include "station/linescenario.h"
#include "station/linesimulation.h"

#include <QString>

#include <optional>
#include <vector>

namespace station {

// The moments of one operation of the protection and the breaker, seconds from the first sample.
struct Operation
{
    double onset; // of the fault that it clears, on the grid of the simulation
    double start;
    double trip;
    double opening; // the contacts separate, at the recorder's end
};

// The moments of a recording, seconds from the first sample.
struct LineCourse
{
    Course course;
    std::optional<Operation> first; // without a fault: none
    std::vector<double> partOnsets; // of the first fault, as many as it has parts
    std::optional<double> closing;  // the contacts close again, or an opened line is switched on
    std::optional<double> manualOpening;
    std::optional<Operation> second; // after reclosing onto the fault
    double end;                      // of the recording
};

LineCourse CourseOf(const LineScenario& scenario);

// The simulation's waves with what they mean for the fault.
struct LineOutcome
{
    LineCourse moments;
    LineWaves waves;
    size_t samples;
    // When the last pole of the recorder's end has interrupted, in the first and in the second operation: of
    // all poles, and of those in the fault. Missing if the recording ends before.
    std::optional<double> opened;
    std::optional<double> cleared;
    std::optional<double> openedAgain;
    std::optional<double> clearedAgain;
    bool saturated; // the line's current transformers differ by more than 2 % of the largest current
};

LineOutcome Play(const LineScenario& scenario);

} // namespace station
