// The options of the sample station: how they are given, and what may be combined.
#pragma once

#include "station/station.h"
#include "zucmtr/commands/linesampleoptions.h"

#include <string>

namespace CLI {
class App;
}

/// The options as the parser sets them.
struct SampleOptions
{
    station::StationOptions station;
    double seconds = 0; // not given: as long as usual
    std::string codePage = "cp866";
    std::string fault = "single";
    bool compressed = false;
    bool plain = false;
    LineSampleOptions line;
};

/// Describes the options of the station to the parser, with their ranges. `options` must outlive the parsing.
void AddStationOptions(CLI::App& command, SampleOptions& options);

/// Whether the recordings are to be of a line with known data, not of the station. Throws ConfigurationError
/// for options that do not go together with that.
bool IsLineSample(const SampleOptions& options);

/// The recordings of the line. Throws ConfigurationError for values that do not fit together.
LineSample CheckedLineSample(const SampleOptions& options);

/// The station that the options describe. Throws ConfigurationError for values that do not fit together: too
/// many channels, segments that last too long, more samples than a sample station may have.
station::StationOptions CheckedStation(const SampleOptions& options);
