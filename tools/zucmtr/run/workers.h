// The workers of a run, each with a device of its own.
#pragma once

#include "zucmtr/run/worker.h"

#include <memory>
#include <vector>

/// Loads the defaults, and the device once for each worker. Reports first what is wrong with them for every
/// recording; with `loud` also the notes of the first load. Throws ConfigurationError; also if the ini file
/// makes every record wrong, or if it has the library delete recordings while records are to be verified.
std::vector<std::unique_ptr<Worker>> MakeWorkers(Host& host, const DeviceChoice& choice,
                                                 const WorkOrder& order, size_t count, bool loud);
