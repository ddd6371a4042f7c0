#include "zucmtr/commands/watchcommand.h"

#include "text/texts.h"
#include "zucmtr/commands/watchconf.h"
#include "zucmtr/commands/watchoptions.h"
#include "zucmtr/run/workers.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/helpformat.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/watch/commandwords.h"
#include "zucmtr/watch/service.h"
#include "zucmtr/watch/watch.h"
#include "zucmtr/watch/watchevents.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>
#include <QMap>

#include <map>
#include <memory>
#include <unistd.h>

namespace {

constexpr std::chrono::hours LongestCommandPause{1}; // between two attempts

std::chrono::milliseconds Milliseconds(double seconds)
{
    return std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000));
}

void CheckDirectories(const RecorderOptions& options)
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

QString StateOf(const RecorderOptions& options)
{
    return options.state.empty() ? FromUtf8(options.out) + QStringLiteral("/.zucmtr-watch")
                                 : FromUtf8(options.state);
}

bool IsOtherFile(const std::string& path)
{
    const QFileInfo info(FromUtf8(path));
    return info.exists() && !info.isDir();
}

bool Mirrors(const RecorderOptions& options)
{
    return options.recursive && !options.flat;
}

// A directory that is missing or cannot be written to may be a file system that is not mounted yet.
WorkOrder CheckedOrder(const RecorderOptions& options)
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

CommandOrder CommandOrderOf(const RecorderOptions& options, const QString& recorder, bool once)
{
    CommandOrder order;
    if (options.command.empty())
        return order;
    order.words = CommandWords(FromUtf8(options.command));
    CheckProgram(order.words.first());
    order.limit = Milliseconds(options.commandTime);
    order.retries = options.commandRetries;
    order.firstPause = Milliseconds(options.retryAfter);
    order.longestPause = LongestCommandPause;
    order.once = once;
    order.recorder = recorder;
    return order;
}

WatchOrder WatchOrderOf(const RecorderOptions& options, const Worker& worker, bool once)
{
    WatchOrder order;
    order.directories = FromUtf8(options.directories);
    order.out = FromUtf8(options.out);
    order.archive = FromUtf8(options.work.archive);
    order.recursive = options.recursive;
    order.mirror = Mirrors(options);
    if (!options.work.archive.empty())
        order.excluded << FromUtf8(options.work.archive);
    order.once = once;
    order.quiet = std::chrono::milliseconds(worker.WaitTime());
    order.rescan = Milliseconds(options.rescan);
    order.retryAfter = Milliseconds(options.retryAfter);
    order.attempts = once ? 1 : options.attempts;
    order.retryGivenUp = once || options.retryGivenUp;
    order.reportsSummary = options.work.events;
    return order;
}

// The ini file is in one of the directories, unless it is named.
DeviceChoice Chosen(const RecorderOptions& options)
{
    DeviceChoice choice = ChoiceOf(options.device);
    std::vector<Recording> directories;
    directories.reserve(options.directories.size());
    for (const std::string& directory : options.directories)
        directories.push_back({FromUtf8(directory) + QStringLiteral("/*"), QString(), QString()});
    CompleteChoice(choice, directories);
    return choice;
}

// None without a catalogue.
std::unique_ptr<JournalCopy> CopyOf(const RecorderOptions& options, const QString& recorder)
{
    if (options.work.catalogue.empty())
        return nullptr;
    const auto absolute = [](const QString& path) {
        return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    };
    return std::make_unique<JournalCopy>(
        FromUtf8(options.work.catalogue),
        journalcopier::Name{absolute(StateOf(options)), absolute(FromUtf8(options.out)), recorder, getpid()},
        Milliseconds(options.retryAfter));
}

// The events go to the file of --log as well, as text: each line opens it anew, so that it may be moved away
// at any time.
void UseLog(const RecorderOptions& options, Host& host)
{
    watchevents::Output output = watchevents::Used();
    if (options.device.hasLog)
        output.log = [&host](const QString& line) { host.AddToLog(line); };
    watchevents::Use(output);
}

// name: of the recorder; empty: that of its section.
int Begin(const RecorderOptions& options, const QString& name, bool once)
{
    CheckDirectories(options);
    const DeviceChoice choice = Chosen(options);
    const QString recorder = name.isEmpty() ? choice.device : name;
    const CommandOrder command = CommandOrderOf(options, recorder, once);
    CheckLog(options.device);
    WorkOrder order = CheckedOrder(options);
    AddSummary(order, options.work, !command.words.isEmpty(), choice.ini);
    LimitMemory(options.maxMemory);
    // Before the journal, whose lock they must not share.
    const std::unique_ptr<archive::Scribes> scribes = ScribesOf(options.work, choice, 1);
    order.keeper = scribes.get();
    const std::unique_ptr<JournalCopy> copy = CopyOf(options, recorder);
    WatchJournal journal(StateOf(options));
    Host host(FromUtf8(options.device.log));
    const std::vector<std::unique_ptr<Worker>> workers = MakeWorkers(host, choice, order, 1, true);
    Worker& worker = *workers.front();
    WatchOrder watchOrder = WatchOrderOf(options, worker, once);
    watchOrder.recorder = recorder;
    watchOrder.command = command;
    watchOrder.copy = copy.get();
    if (watchevents::Used().form == watchevents::Form::Text)
        watchevents::Name(recorder);
    UseLog(options, host);
    const bool good = Watch(watchOrder, worker, journal).Run();
    watchevents::Use(
        {watchevents::Used().form, watchevents::Used().recorder, {}}); // the log goes with the host
    return good || !once ? ExitDone : ExitFailed;
}

// One of the recorders of --config, in its process. Paths in its file start in the directory of the file.
int BeginIn(const QString& directory, const RecorderOptions& options, const QString& name, bool once)
{
    if (!QDir::setCurrent(directory))
        throw PassingTrouble(Tr("watch", "the directory '%1' cannot be entered").arg(directory));
    return Begin(options, name, once);
}

// Two recorders with one journal would each take the other for a second run of itself.
void RefuseSharedStates(const QString& directory, ServicePlan& plan,
                        const std::map<QString, RecorderOptions>& recorders)
{
    QMap<QString, QString> owners; // of a journal
    for (const auto& [name, options] : recorders) {
        const QString state = QDir::cleanPath(QDir(directory).absoluteFilePath(StateOf(options)));
        if (owners.contains(state))
            plan.mistakes[name] << QDir(directory).filePath(name + QStringLiteral(".conf: ")) +
                                       Tr("watch",
                                          "it has the state '%1', as '%2' has; give another 'state = FILE'")
                                           .arg(state, owners[state]);
        else
            owners[state] = name;
    }
}

ServicePlan PlanOf(const QString& directory, bool once)
{
    ServicePlan plan;
    std::map<QString, RecorderOptions> recorders;
    std::map<QString, QByteArray> settings;
    for (const conffile::File& file : conffile::FilesIn(directory)) {
        const ConfiguredRecorder recorder = ConfiguredBy(file);
        if (!recorder.mistakes.isEmpty()) {
            plan.mistakes[file.recorder] = recorder.mistakes;
            continue;
        }
        recorders[file.recorder] = recorder.options;
        settings[file.recorder] = file.bytes;
    }
    RefuseSharedStates(directory, plan, recorders);
    const QString place = QDir(directory).absolutePath();
    for (const auto& [name, options] : recorders) {
        if (!plan.mistakes.contains(name))
            plan.recorders.push_back({name, settings[name], [place, own = options, recorder = name, once] {
                                          return BeginIn(place, own, recorder, once);
                                      }});
    }
    return plan;
}

// The service is needed where its process is to be well while that of a recorder is not.
int RunService(const WatchOptions& options)
{
    ServiceOrder order;
    order.isNamed = !options.config.empty();
    order.ends = options.once || options.config.empty();
    order.status = FromUtf8(options.status);
    order.everySeconds = options.statusEvery;
    if (order.isNamed)
        return Service(order, [&] { return PlanOf(FromUtf8(options.config), options.once); }).Run();
    CheckDirectories(options.recorder);
    const DeviceChoice choice = Chosen(options.recorder);
    if (watchevents::Used().form == watchevents::Form::Text)
        watchevents::Name(choice.device);
    ServicePlan plan;
    plan.recorders.push_back({choice.device, QByteArray(),
                              [&options] { return Begin(options.recorder, QString(), options.once); }});
    return Service(order, [&plan] { return plan; }).Run();
}

// Which option of a recorder is given beside --config, where it belongs into the recorder's file.
void RefuseOptionsBesideConfig(const CLI::App& command)
{
    for (const CLI::Option* option : command.get_options()) {
        const QString name = FromUtf8(option->get_single_name());
        if (option->count() == 0 || IsServiceOption(option->get_single_name()))
            continue;
        throw UsageError(
            option->get_positional()
                ? Tr("watch", "with --config the directories of recordings belong into the .conf "
                              "files, as 'directory = DIR'")
                : Tr("watch", "with --config --%1 belongs into the .conf files, as '%1 = ...'").arg(name),
            QStringLiteral("zucmtr watch"));
    }
}

void CheckUsage(const CLI::App& command, const WatchOptions& options)
{
    if (!options.config.empty()) {
        RefuseOptionsBesideConfig(command);
        return;
    }
    const QString missing = MissingOption(options.recorder);
    if (!missing.isEmpty())
        throw UsageError(Tr("parser", "%1 is required").arg(ShownName(missing)),
                         QStringLiteral("zucmtr watch"));
}

int RunWatch(const CLI::App& command, const WatchOptions& options)
{
    CheckUsage(command, options);
    if (options.logFormat == "text")
        watchevents::Use({watchevents::Form::Text, QString(), {}});
    try {
        if (!options.config.empty() || !options.status.empty())
            return RunService(options);
        return Begin(options.recorder, QString(), options.once);
    } catch (const PassingTrouble& error) {
        Complain(error.Message());
        return ExitFailed;
    }
}

} // namespace

void AddWatchCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("watch", HelpText("watch", "Convert recordings as they arrive in directories"));
    const auto options = std::make_shared<WatchOptions>();
    AddServiceOptions(*command, *options);
    AddRecorderOptions(*command, options->recorder);
    command->footer(HelpText(
        "watch",
        "A recording counts as complete when none of its files has changed for the time that the ini file\n"
        "gives as 'Время ожидания'. Each event is one JSON object and line on standard output. What is\n"
        "converted is remembered on the disk, so that a restart neither converts twice nor forgets. SIGTERM\n"
        "and Ctrl-C end after the current recording.\n"
        "\n"
        "The command of --exec is split into words at blanks; '...', \"...\" and a backslash keep blanks in "
        "a\n"
        "word. Variables: ZUCMTR_RECORD, ZUCMTR_RECORDING, ZUCMTR_STATION, ZUCMTR_FAULT and others.\n"
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
    command->callback([options, command, &chosen] {
        chosen = [options, command] { return RunWatch(*command, *options); };
    });
}
