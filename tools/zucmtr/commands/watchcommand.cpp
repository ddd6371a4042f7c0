#include "zucmtr/commands/watchcommand.h"

#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/workoptions.h"
#include "zucmtr/run/workers.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/values.h"
#include "zucmtr/watch/watch.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <memory>
#include <string>
#include <vector>

namespace {

struct WatchOptions
{
    DeviceOptions device;
    std::string out;
    std::string state;
    bool recursive = false;
    bool flat = false;
    bool once = false;
    WorkOptions work;
    double rescan = 30;     // s
    double retryAfter = 10; // s
    int attempts = 8;
    bool retryGivenUp = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> directories;
};

std::chrono::milliseconds Milliseconds(double seconds)
{
    return std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000));
}

void CheckDirectories(const WatchOptions& options)
{
    for (const QString& directory : FromUtf8(options.directories)) {
        const QFileInfo info(directory);
        if (!info.exists())
            throw PassingTrouble(Tr("watch", "there is no directory '%1'; make it first: mkdir -p %2")
                                     .arg(directory, ShellWord(directory)));
        if (!info.isDir())
            throw ConfigurationError(
                Tr("watch", "'%1' is no directory; give the one in which recordings arrive").arg(directory));
    }
}

bool IsOtherFile(const std::string& path)
{
    const QFileInfo info(FromUtf8(path));
    return info.exists() && !info.isDir();
}

bool Mirrors(const WatchOptions& options)
{
    return options.recursive && !options.flat;
}

// A directory that is missing or cannot be written to may be a file system that is not mounted yet.
WorkOrder CheckedOrder(const WatchOptions& options)
{
    if (options.work.noVerify && PutsAway(options.work))
        OrderOf(options.work, QString()); // throws
    try {
        WorkOrder order =
            OrderOf(options.work, CheckedDirectory(QStringLiteral("--out"), FromUtf8(options.out)));
        order.mirror = Mirrors(options);
        order.sync = true; // the journal must not list a record that a power failure can destroy
        return order;
    } catch (const ConfigurationError& error) {
        if (IsOtherFile(options.out) || IsOtherFile(options.work.archive))
            throw;
        throw PassingTrouble(error.Lines().join(QLatin1Char('\n')));
    }
}

WatchOrder WatchOrderOf(const WatchOptions& options, const Worker& worker)
{
    WatchOrder order;
    order.directories = FromUtf8(options.directories);
    order.out = FromUtf8(options.out);
    order.archive = FromUtf8(options.work.archive);
    order.recursive = options.recursive;
    order.mirror = Mirrors(options);
    if (!options.work.archive.empty())
        order.excluded << FromUtf8(options.work.archive);
    order.once = options.once;
    order.quiet = std::chrono::milliseconds(worker.WaitTime());
    order.rescan = Milliseconds(options.rescan);
    order.retryAfter = Milliseconds(options.retryAfter);
    order.attempts = options.once ? 1 : options.attempts;
    order.retryGivenUp = options.once || options.retryGivenUp;
    return order;
}

// The ini file is in one of the directories, unless it is named.
DeviceChoice Chosen(const WatchOptions& options)
{
    DeviceChoice choice = ChoiceOf(options.device);
    std::vector<Recording> directories;
    for (const std::string& directory : options.directories)
        directories.push_back({FromUtf8(directory) + QStringLiteral("/*"), QString(), QString()});
    CompleteChoice(choice, directories);
    return choice;
}

int Begin(const WatchOptions& options)
{
    CheckDirectories(options);
    const DeviceChoice choice = Chosen(options);
    CheckLog(options.device);
    WorkOrder order = CheckedOrder(options);
    AddSummary(order, options.work, false, choice.ini);
    LimitMemory(options.maxMemory);
    // Before the journal, whose lock they must not share.
    const std::unique_ptr<archive::Scribes> scribes = ScribesOf(options.work, choice, 1);
    order.keeper = scribes.get();
    WatchJournal journal(options.state.empty() ? order.out + QStringLiteral("/.zucmtr-watch")
                                               : FromUtf8(options.state));
    Host host(FromUtf8(options.device.log));
    const std::vector<std::unique_ptr<Worker>> workers = MakeWorkers(host, choice, order, 1, true);
    Worker& worker = *workers.front();
    const bool good = Watch(WatchOrderOf(options, worker), worker, journal).Run();
    return good || !options.once ? ExitDone : ExitFailed;
}

int RunWatch(const WatchOptions& options)
{
    try {
        return Begin(options);
    } catch (const PassingTrouble& error) {
        Complain(error.Message());
        return ExitFailed;
    }
}

void AddWatchOptions(CLI::App& command, WatchOptions& options)
{
    command.add_flag("-r,--recursive", options.recursive,
                     HelpText("watch", "Watch the directories below the given ones, too; their records go to "
                                       "directories of the same names below --out"));
    command.add_flag("--flat", options.flat,
                     HelpText("watch", "Put all records into the directory of --out itself"));
    command.add_flag("--once", options.once,
                     HelpText("watch", "Convert what is there and end, for example for cron"));
    AddValue(
        command, "--state", options.state, "FILE",
        HelpText("watch",
                 "File that remembers what is converted. Default: .zucmtr-watch in the directory of --out"));
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
    command.add_flag("--retry-given-up", options.retryGivenUp,
                     HelpText("watch", "Start by trying again those that were given up"));
}

} // namespace

void AddWatchCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("watch", HelpText("watch", "Convert recordings as they arrive in directories"));
    const auto options = std::make_shared<WatchOptions>();
    AddDeviceOptions(*command, options->device);
    AddValue(*command, "--out", options->out, "DIR",
             HelpText("watch", "Existing directory for the COMTRADE files"))
        ->required();
    AddWorkOptions(*command, options->work);
    AddWatchOptions(*command, *options);
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(*command, "DIR", options->directories, HelpText("watch", "Directories of recordings"));
    command->footer(HelpText(
        "watch",
        "A recording counts as complete when none of its files has changed for the time that the ini file\n"
        "gives as 'Время ожидания'. Each event is one JSON object and line on standard output. What is\n"
        "converted is remembered on the disk, so that a restart neither converts twice nor forgets. SIGTERM\n"
        "and Ctrl-C end after the current recording.\n"
        "\n"
        "Exit code: 0 ended by a signal, or with --once all recordings converted; 1 a recording failed or a\n"
        "directory could not be read with --once, or the program could not start now: a directory is "
        "missing,\n"
        "the state cannot be written or another process has it; 2 wrong usage or configuration.\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station --force\n"
        "  mkdir -p station/comtrade\n"
        "  sed -i 's/^Время ожидания=.*/Время ожидания=200/' station/ZuDrv.ini\n"
        "  zucmtr watch --once --out station/comtrade station"));
    command->callback([options, &chosen] { chosen = [options] { return RunWatch(*options); }; });
}
