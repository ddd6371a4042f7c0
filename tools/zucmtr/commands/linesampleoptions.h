// The options of `zucmtr sample` for recordings of a fault on a line with known data, and for random ones.
#pragma once

#include "station/linescenario.h"
#include "station/samplearchive.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// The options as the parser sets them.
struct LineSampleOptions
{
    station::LineFaultOptions fault; // without the kinds
    std::string evolving;
    std::string reclose;
    std::string randomFaults; // seeds
    std::string randomQuiet;
    int archive = 0;                           // recordings
    std::vector<const CLI::Option*> ofLine;    // only with a fault on the line
    std::vector<const CLI::Option*> ofStation; // not with one
    std::vector<const CLI::Option*> notDrawn;  // not with what is drawn
};

/// The names of the kinds of fault on a line, AG to ABC.
std::vector<std::string> LineFaultNames();

/// Describes the options to the parser. Those of the station must be there already. `options` must outlive
/// the parsing.
void AddLineSampleOptions(CLI::App& command, LineSampleOptions& options);

/// Recordings to be made: one of a fault as given, one for each seed, or an archive.
struct LineSample
{
    enum class Kind { Fault, RandomFaults, RandomQuiet, Archive };

    Kind kind = Kind::Fault;
    station::LineFaultOptions fault;
    uint32_t firstSeed = 0;
    uint32_t lastSeed = 0;
    station::ArchiveOptions archive;
};

/// Whether the options ask for recordings of a line; `fault` is the value of --fault. Throws
/// ConfigurationError for options that do not go together with that.
bool IsLineSample(const LineSampleOptions& options, const std::string& fault);

/// What is to be made; `fault` has what --rate, --seconds, --seed, --plain and --code-page say. Throws
/// ConfigurationError for values that do not fit together.
LineSample CheckedLineSample(const LineSampleOptions& options, const std::string& fault);
