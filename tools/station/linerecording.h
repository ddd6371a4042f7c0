// Recordings of the line model, with what is true of them.
//
// A scenario (linescenario.h) becomes a course of events (linecourse.h), which is simulated
// (linesimulation.h); the waves and the discrete signals (linesignals.h) are stored as the recorder does, and
// the truth beside them (linetruth.h). The same scenario gives the same bytes on every platform.
#pragma once

#include "recorderfile/recorderfile.h"
#include "station/linescenario.h"
#include "station/linesignals.h"

#include <vector>

namespace station {

// The recording of a scenario that has been played.
recorderfile::Recording MakeLineRecording(const LineScenario& scenario, const LineOutcome& outcome,
                                          const std::vector<SignalHistory>& histories);

// Trigger of the recording (microseconds since 1970-01-01 00:00:00 UTC), and from its first sample.
int64_t TriggerOf(const LineScenario& scenario);
int64_t TimeToTrigger(const LineScenario& scenario);

// Seconds from UTC of the scenario's zone.
int ZoneSecondsOf(const LineScenario& scenario);

// The recording and its truth: STEM.ZU, its continuations (STEM.Z01 ...) and STEM.truth.json, which is last.
std::vector<recorderfile::NamedFile> MakeLineFiles(const LineScenario& scenario);

} // namespace station
