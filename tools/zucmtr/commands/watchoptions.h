// The options of 'zucmtr watch': those of a recorder, which are also the keys of its .conf file, and those of
// the service with all its recorders.
#pragma once

#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/workoptions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

struct RecorderOptions
{
    DeviceOptions device;
    std::string out;
    std::string state;
    bool recursive = false;
    bool flat = false;
    WorkOptions work;
    double rescan = 30;     // s
    double retryAfter = 10; // s
    int attempts = 8;
    bool retryGivenUp = false;
    std::string command;     // --exec
    double commandTime = 60; // s
    int commandRetries = 5;
    uint64_t maxMemory = 0;
    std::vector<std::string> directories;
};

struct WatchOptions
{
    RecorderOptions recorder; // without --config
    bool once = false;
    std::string config;
    std::string logFormat = "json";
    std::string status;
    double statusEvery = 15; // s
};

/// Adds the options of a recorder to a subcommand, and the argument with its directories; options must live
/// as long as it. Whether --out and a directory are there has to be checked afterwards: CheckComplete.
void AddRecorderOptions(CLI::App& command, RecorderOptions& options);

/// What is missing of --out and the directories; empty if nothing is. Names are those of the command line.
QString MissingOption(const RecorderOptions& options);

/// Adds the options of the service; options must live as long as the subcommand.
void AddServiceOptions(CLI::App& command, WatchOptions& options);

/// Whether an option is one of the service, by its name without dashes.
bool IsServiceOption(const std::string& name);
