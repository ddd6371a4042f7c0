// The options that name the recorder: the ini file, its sections, and the log of loading them.
#pragma once

#include "zucmtr/host/devicechoice.h"

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

struct ChoiceOptions
{
    std::string ini;
    std::string defaults;
    std::string device;
};

/// What differs between commands: what is used where the option is not given.
struct ChoiceTexts
{
    std::string ini;
    std::string device;
};

/// Adds --ini, --defaults and --device to a subcommand and returns them; options must live as long as it.
std::vector<CLI::Option*> AddChoiceOptions(CLI::App& command, ChoiceOptions& options,
                                           const ChoiceTexts& texts);

/// Adds --lines to a subcommand that looks for faults; path must live as long as it.
void AddLinesOption(CLI::App& command, std::string& path);

/// How a recording or record to be looked at is read: its recorder, unless it is plain, and the data of its
/// lines.
struct ReadingOptions
{
    ChoiceOptions choice;
    std::string lines;
    std::string encoding; // of records
    bool plain = false;   // without ini file
};

/// Adds --encoding to a subcommand that reads COMTRADE records; encoding must live as long as it.
void AddEncodingOption(CLI::App& command, std::string& encoding);

/// The encoding of a record's texts by the option; empty for a recording, whose ini file says it.
QString EncodingOf(const std::string& encoding, const QString& file);

/// Adds --plain, with its help, the options of the choice, --lines and --encoding to a subcommand; options
/// must live as long as it.
void AddReadingOptions(CLI::App& command, ReadingOptions& options, const std::string& plainText);

/// The choice that the options make; the rest has to be completed.
DeviceChoice ChoiceOf(const ChoiceOptions& options);

struct DeviceOptions : ChoiceOptions
{
    std::string log;
    bool hasLog = false; // --log is given
};

/// The same for the recorder of recordings that are to be converted, with --log.
void AddDeviceOptions(CLI::App& command, DeviceOptions& options);

/// The log, if one is named, must be a file that can be written to. Throws ConfigurationError.
void CheckLog(const DeviceOptions& options);
