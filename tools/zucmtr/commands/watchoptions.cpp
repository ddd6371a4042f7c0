#include "zucmtr/commands/watchoptions.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

void AddCommandOptions(CLI::App& command, RecorderOptions& options)
{
    AddValue(command, "--exec", options.command, "COMMAND",
             HelpText("watch",
                      "Run this after each record, for example to mail or copy it: a program with its "
                      "arguments, without a shell. It gets the summary on its standard input, as "
                      "'zucmtr convert --json' has it, and in variables"));
    AddValue(command, "--exec-timeout", options.commandTime, "SECONDS",
             HelpText("watch", "Seconds after which the command of --exec is ended, with all that it has "
                               "started. Default: 60"))
        ->check(values::Number(0.01, 86400));
    AddValue(
        command, "--exec-retries", options.commandRetries, "N",
        HelpText("watch", "How often a command that failed is run again, after growing pauses. Default: 5"))
        ->transform(values::WholeNumber(0, 1000));
}

void AddTimes(CLI::App& command, RecorderOptions& options)
{
    AddValue(command, "--rescan", options.rescan, "SECONDS",
             HelpText("watch", "Seconds after which the directories are scanned in any case, as "
                               "network file systems report nothing. Default: 30"))
        ->check(values::Number(0.01, 86400));
    AddValue(command, "--retry-after", options.retryAfter, "SECONDS",
             HelpText("watch", "Seconds after which a recording that failed is tried again; doubled "
                               "after each failure. Default: 10"))
        ->check(values::Number(0, 86400));
    AddValue(command, "--attempts", options.attempts, "N",
             HelpText("watch",
                      "How often a recording is tried before it is given up until it changes. Default: 8"))
        ->transform(values::WholeNumber(1, 1000));
}

} // namespace

void AddRecorderOptions(CLI::App& command, RecorderOptions& options)
{
    AddDeviceOptions(command, options.device);
    AddValue(command, "--out", options.out, "DIR",
             HelpText("watch", "Existing directory for the COMTRADE files; to be given, unless --config is"));
    AddWorkOptions(command, options.work);
    command.add_flag("-r,--recursive", options.recursive,
                     HelpText("watch", "Watch the directories below the given ones, too; their records go to "
                                       "directories of the same names below --out"));
    command.add_flag("--flat", options.flat,
                     HelpText("watch", "Put all records into the directory of --out itself"));
    AddValue(
        command, "--state", options.state, "FILE",
        HelpText("watch",
                 "File that remembers what is converted. Default: .zucmtr-watch in the directory of --out"));
    AddTimes(command, options);
    command.add_flag("--retry-given-up", options.retryGivenUp,
                     HelpText("watch", "Start by trying again those that were given up"));
    AddCommandOptions(command, options);
    AddMemoryOption(command, options.maxMemory);
    AddValue(command, "DIR", options.directories, "", HelpText("watch", "Directories of recordings"));
}

QString MissingOption(const RecorderOptions& options)
{
    if (options.out.empty())
        return QStringLiteral("--out");
    return options.directories.empty() ? QStringLiteral("DIR") : QString();
}

void AddServiceOptions(CLI::App& command, WatchOptions& options)
{
    command.add_flag("--once", options.once,
                     HelpText("watch", "Convert what is there and end, for example for cron"));
    AddValue(command, "--config", options.config, "DIR",
             HelpText("watch", "Watch for several recorders: each file NAME.conf in this directory has the "
                               "options of one, as 'out = DIR', and 'directory = DIR'. SIGHUP has them read "
                               "again"));
    AddValue(command, "--log-format", options.logFormat, "KIND",
             HelpText("watch",
                      "Form of the events: json, one object a line, or text, which the file of --log "
                      "gets as well. Default: json"))
        ->check(values::OneOf({"json", "text"}));
    AddValue(command, "--status", options.status, "FILE",
             HelpText("watch",
                      "File for monitoring that says how the recorders are doing, replaced again and "
                      "again: JSON, or for NAME.prom the text form of node_exporter"));
    AddValue(command, "--status-every", options.statusEvery, "SECONDS",
             HelpText("watch", "The file of --status is never older than this, unless the program hangs. "
                               "Default: 15"))
        ->check(values::Number(0.05, 3600));
}

bool IsServiceOption(const std::string& name)
{
    const std::vector<std::string> names = {"once", "config", "log-format", "status", "status-every", "help"};
    return std::find(names.begin(), names.end(), name) != names.end();
}
