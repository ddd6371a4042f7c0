// The options that say which entries of a catalogue are wanted.
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/wanted.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

struct WantedOptions
{
    std::string since;
    std::string until;
    std::vector<std::string> stations;
    std::vector<std::string> recorders;
    std::vector<std::string> circuits;
    std::string kinds;
    std::string phases;
    std::string minCurrent;
    std::string longerThan;
    std::string distance;
    std::string text;
    std::vector<std::string> changed;
    bool uncleared = false;
    bool recordings = false;
    bool records = false;
    bool unread = false;
    bool gone = false;
};

/// Adds those that say when and where to a subcommand; options must live as long as it.
void AddPlaceOptions(CLI::App& command, WantedOptions& options);

/// Adds the others.
void AddFaultOptions(CLI::App& command, WantedOptions& options);

/// Throws ConfigurationError.
catalogue::Wanted WantedOf(const WantedOptions& options);

/// Opens the catalogue for reading: the one of the address, or else that of the directory or the nearest one
/// above it; an empty directory is the current one. If the directory is given and is not the catalogue's own,
/// only what is below it is wanted. Throws ConfigurationError if there is none, and text::Error.
std::unique_ptr<catalogue::Catalogue> OpenForReading(const std::string& address, const std::string& directory,
                                                     catalogue::Wanted& wanted);
