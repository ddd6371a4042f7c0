// The workers of a run, each with a device of its own.
#pragma once

#include "zucmtr/run/worker.h"

#include <memory>
#include <vector>

/// Loads the chosen sections once for each worker. Says first what is wrong with them for every recording.
/// With `loud` the notes of the first load are told. Throws ConfigurationError; also if no record could be
/// right by the ini file, or if it has the library delete recordings, where records are to be verified.
std::vector<std::unique_ptr<Worker>> MakeWorkers(Host& host, const DeviceChoice& choice,
                                                 const WorkOrder& order, size_t count, bool loud);
