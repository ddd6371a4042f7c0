// The options that name the recorder: the ini file, its sections, and the log of loading them.
#pragma once

#include "zucmtr/host/devicechoice.h"

#include <string>

namespace CLI {
class App;
}

struct DeviceOptions
{
    std::string ini;
    std::string defaults;
    std::string device;
    std::string log;
    bool hasLog = false; // --log is given
};

/// Adds --ini, --defaults, --device and --log to a subcommand; options must live as long as it.
void AddDeviceOptions(CLI::App& command, DeviceOptions& options);

/// What the options name; the rest is to be completed.
DeviceChoice ChoiceOf(const DeviceOptions& options);

/// The log, if one is named, must be a file that can be written to. Throws ConfigurationError.
void CheckLog(const DeviceOptions& options);
