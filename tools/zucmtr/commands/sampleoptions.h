// The options of the sample station: how they are given, and what may be combined.
#pragma once

#include "station/station.h"

#include <string>

namespace CLI {
class App;
}

/// The options as the parser sets them.
struct SampleOptions
{
    station::StationOptions station;
    std::string codePage = "cp866";
    std::string fault = "single";
    bool compressed = false;
    bool plain = false;
};

/// Describes the options of the station to the parser, with their ranges. `options` must outlive the parsing.
void AddStationOptions(CLI::App& command, SampleOptions& options);

/// The station that the options describe. Throws ConfigurationError for values that do not fit together: too
/// many channels, segments that last too long, more samples than a sample station may have.
station::StationOptions CheckedStation(const SampleOptions& options);
