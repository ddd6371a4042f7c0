#include "zucmtr/commands/convertcommand.h"

#include "catalogue/catalogue.h"
#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/formoptions.h"
#include "zucmtr/commands/workoptions.h"
#include "zucmtr/host/host.h"
#include "zucmtr/host/recordinglist.h"
#include "zucmtr/run/batch.h"
#include "zucmtr/run/batchreport.h"
#include "zucmtr/run/leftovers.h"
#include "zucmtr/run/workers.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include "explain/file.h"

#include <CLI/CLI.hpp>

#include <QDir>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <malloc.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

struct ConvertOptions
{
    DeviceOptions device;
    std::string out = ".";
    std::string layout;
    bool makeOut = false;
    bool recursive = false;
    bool flat = false;
    unsigned int jobs = 1; // 0: one per processor
    bool failFast = false;
    bool dryRun = false;
    WorkOptions work;
    FormOptions form;
    bool again = false;
    bool replace = false;
    bool salvage = false;
    bool sync = false;
    bool noSync = false;
    bool trustWriter = false;
    bool quiet = false;
    bool json = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

RecordLayout LayoutOf(const ConvertOptions& options)
{
    try {
        return options.layout.empty() ? RecordLayout() : RecordLayout(FromUtf8(options.layout));
    } catch (const ConfigurationError& error) {
        throw UsageError(error.Message(), QStringLiteral("zucmtr convert"));
    }
}

// Throws ConfigurationError before anything is touched.
void CheckCombination(const ConvertOptions& options)
{
    LayoutOf(options);
    if (PutsAway(options.work) && options.trustWriter)
        throw ConfigurationError(
            Tr("convert", "--remove-source and --archive need a verified record; leave --trust-writer out"));
    if (options.salvage && options.trustWriter)
        throw ConfigurationError(
            Tr("convert", "--salvage needs a verified record; leave --trust-writer out"));
    if (PutsAway(options.work) && options.noSync)
        throw ConfigurationError(
            Tr("convert",
               "--remove-source and --archive need a record that is on the disk; leave --no-sync out"));
}

QString OutDirectory(const ConvertOptions& options)
{
    QString out = FromUtf8(options.out);
    if (options.makeOut && options.dryRun)
        return out;
    if (options.makeOut)
        MakeDirectory(QStringLiteral("--out"), out);
    return CheckedDirectory(QStringLiteral("--out"), out);
}

bool Mirrors(const ConvertOptions& options)
{
    return options.recursive && !options.flat && options.layout.empty();
}

WorkOrder OrderOf(const ConvertOptions& options)
{
    WorkOrder order = OrderOf(options.work, OutDirectory(options));
    order.dryRun = options.dryRun;
    order.trustWriter = options.trustWriter;
    order.sync = options.sync || PutsAway(options.work);
    order.again = options.again;
    order.replace = options.replace;
    order.salvage = options.salvage;
    order.form = FormOf(options.form);
    order.layout = LayoutOf(options);
    order.mirror = Mirrors(options);
    return order;
}

size_t WorkerCount(const ConvertOptions& options, size_t recordings)
{
    const unsigned int processors = std::max(1U, std::thread::hardware_concurrency());
    const size_t wanted = options.jobs == 0 ? processors : options.jobs;
    return std::max<size_t>(1, std::min(wanted, recordings));
}

// By default each thread reserves address space for its allocations, more than a small --max-memory leaves.
void ShareAllocations(uint64_t maxMemory)
{
    constexpr uint64_t plenty = uint64_t{2} << 30;
    if (maxMemory != 0 && maxMemory < plenty)
        mallopt(M_ARENA_MAX, 1);
}

ReportForm FormOf(const ConvertOptions& options)
{
    if (options.json)
        return ReportForm::Json;
    return options.quiet ? ReportForm::Quiet : ReportForm::Lines;
}

void ReportNotStarted(size_t recordings)
{
    if (recordings > 0)
        Complain(Tr("convert", "the run ends here, since there is no room left on the disk: recordings not "
                               "started: %1; make room, then give the same command again")
                     .arg(recordings));
}

int Convert(const ConvertOptions& options, const RecordingList& list,
            std::vector<std::unique_ptr<Worker>>& workers)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const auto lost = static_cast<size_t>(std::count_if(
        list.refusals.begin(), list.refusals.end(), [](const Refusal& refusal) { return refusal.failed; }));
    const bool compares = !options.work.noVerify && !options.trustWriter;
    BatchReport report(FormOf(options), compares, FormOf(options.form).IsGiven(),
                       options.layout.empty() ? QString() : QDir::cleanPath(FromUtf8(options.out)),
                       list.recordings.size() + lost);
    for (const Refusal& refusal : list.refusals)
        report.Add(refusal);
    Progress progress(list.recordings.size(), !options.quiet && list.recordings.size() > 1);
    interrupt::Install();
    Batch batch(workers, list.recordings, options.failFast);
    if (!options.failFast || lost == 0)
        batch.Run(
            [&](const BatchItem& item) {
                progress.Hide();
                report.Add(item);
            },
            [&](size_t done) { progress.Show(done); });
    progress.Hide();
    ReportNotStarted(batch.NotStartedForRoom());
    if (!options.dryRun)
        ReportOrphans(list);
    if (!options.quiet)
        report.Summarise(std::chrono::duration<double>(Clock::now() - start).count());
    if (interrupt::Came())
        return interrupt::ExitCode();
    if (report.Failed() > 0)
        return ExitFailed;
    return report.Salvaged() > 0 ? ExitLoss : ExitDone;
}

// What may be a recording: the ini file is searched for beside these.
std::vector<Recording> Convertible(const std::vector<Recording>& recordings)
{
    std::vector<Recording> convertible;
    std::copy_if(
        recordings.begin(), recordings.end(), std::back_inserter(convertible),
        [](const Recording& recording) { return explain::NotConvertible(recording.path).isEmpty(); });
    return convertible;
}

// Reports for each recording why it is none; no ini file is searched for.
int RefuseAll(const ConvertOptions& options, RecordingList list)
{
    for (const Recording& recording : list.recordings)
        list.refusals.push_back(
            {recording.path, Tr("convert", "not converted: %1").arg(explain::NotConvertible(recording.path)),
             true, explain::WordOf(recording.path, reason::NotARecording)});
    list.recordings.clear();
    std::vector<std::unique_ptr<Worker>> none;
    return Convert(options, list, none);
}

// Throws ConfigurationError if the catalogue cannot be used now, before anything is converted.
void CheckCatalogue(const ConvertOptions& options)
{
    if (options.work.catalogue.empty() || options.dryRun)
        return;
    try {
        catalogue::Catalogue(FromUtf8(options.work.catalogue)).KnownAt({});
    } catch (const text::Error& error) {
        throw ConfigurationError(Tr("convert", "nothing is converted: %1").arg(error.Message()));
    }
}

int RunConvert(const ConvertOptions& options)
{
    CheckCombination(options);
    QStringList excluded;
    if (!options.work.archive.empty())
        excluded << FromUtf8(options.work.archive);
    if (!options.dryRun)
        ClearLeftovers(FromUtf8(options.files), options.recursive, FromUtf8(options.out),
                       FromUtf8(options.work.archive));
    const RecordingList list = CollectRecordings(FromUtf8(options.files), options.recursive, excluded);
    const std::vector<Recording> convertible = Convertible(list.recordings);
    DeviceChoice choice = ChoiceOf(options.device);
    if (convertible.empty() && choice.ini.isEmpty())
        return RefuseAll(options, list);
    CompleteChoice(choice, convertible);
    CheckLog(options.device);
    WorkOrder order = OrderOf(options);
    AddSummary(order, options.work, options.json, choice.ini);
    ShareAllocations(options.maxMemory);
    LimitMemory(options.maxMemory);
    const size_t count = WorkerCount(options, list.recordings.size());
    CheckCatalogue(options);
    const auto scribes = options.dryRun ? nullptr : ScribesOf(options.work, choice, count);
    order.keeper = scribes.get();

    Host host(FromUtf8(options.device.log));
    std::vector<std::unique_ptr<Worker>> workers = MakeWorkers(host, choice, order, count, !options.quiet);
    return Convert(options, list, workers);
}

void AddOutputOptions(CLI::App& command, ConvertOptions& options)
{
    AddValue(
        command, "--out", options.out, "DIR",
        HelpText("convert", "Existing directory for the COMTRADE files. Default: the current directory"));
    command.add_flag("--make-out", options.makeOut,
                     HelpText("convert", "Make the directory of --out if it is not there"));
}

void AddRunOptions(CLI::App& command, ConvertOptions& options)
{
    command.add_flag("-r,--recursive", options.recursive,
                     HelpText("convert",
                              "Search for recordings in the directories below the given ones, too; their "
                              "records go to directories of the same names below --out"));
    CLI::Option* flat = command.add_flag(
        "--flat", options.flat, HelpText("convert", "Put all records into the directory of --out itself"));
    AddValue(command, "--layout", options.layout, "PATTERN",
             HelpText("convert", "Directories below --out and names of the records, as "
                                 "{station}/{year}-{month}/{name}; the placeholders are listed below"))
        ->excludes(flat);
    AddValue(
        command, "-j,--jobs", options.jobs, "N",
        HelpText("convert", "Recordings to convert at once; 0: as many as there are processors. Default: 1"))
        ->transform(values::WholeNumber(0, 256));
    CLI::Option* goOn =
        command.add_flag("--continue")
            ->description(
                HelpText("convert", "Go on with the other recordings after one that failed (the default)"));
    command
        .add_flag("--fail-fast", options.failFast,
                  HelpText("convert", "Start no recording after one that failed"))
        ->excludes(goOn);
    command.add_flag(
        "--dry-run", options.dryRun,
        HelpText("convert",
                 "Read the recordings and report what would be converted into which records; write nothing"));
}

void AddSafetyOptions(CLI::App& command, ConvertOptions& options)
{
    AddWorkOptions(command, options.work);
    command.add_flag("--again", options.again,
                     HelpText("convert", "Convert even if the right record is there already"));
    command.add_flag("--replace", options.replace,
                     HelpText("convert", "Replace the record of another recording that has the same name"));
    command.add_flag("--salvage", options.salvage,
                     HelpText("convert", "Of a recording that is cut off or damaged, convert the channels "
                                         "that are whole and report the others; without it, it fails"));
    CLI::Option* sync = command.add_flag(
        "--sync", options.sync,
        HelpText("convert", "Report a record only when it is on the disk, so that a power failure leaves it "
                            "whole; the default with --remove-source and --archive"));
    command
        .add_flag("--no-sync", options.noSync,
                  HelpText("convert", "Leave it to the system when records reach the disk (the default)"))
        ->excludes(sync);
    command.add_flag("--trust-writer", options.trustWriter,
                     HelpText("convert", "Let the ini file have the library delete the recordings; their "
                                         "records are read back, but cannot be compared any more"));
}

void AddReportOptions(CLI::App& command, ConvertOptions& options)
{
    command.add_flag("-q,--quiet", options.quiet, HelpText("convert", "Report only failures and warnings"));
    command.add_flag("--json", options.json,
                     HelpText("convert", "Report each recording as one JSON object on standard output"));
}

std::string Footer()
{
    return HelpText(
        "convert",
        "A recording is a first file (.ZU or .zu) with its continuation files (.Z01 ... .Z0f) "
        "beside it; give the\n"
        "first file or the directory, the others are found. For each recording one line on "
        "standard output has\n"
        "the record's name and the notes on it; failures and the summary go to standard error.\n"
        "Ctrl-C ends after the current recordings, a second Ctrl-C at once.\n"
        "\n"
        "--form, --data, --revision and --encoding have precedence over the ini file. A CFF file is "
        "of revision 2013:\n"
        "one of --form and --revision decides the other unless both are given.\n"
        "\n"
        "--layout: what stands before a '/' are directories. {name} is the name that records have without "
        "it,\n"
        "{source} that of the recording's file, {folder} its directory below the given one; {station}, "
        "{device},\n"
        "{subject} are texts of the ini file; {year}, {month}, {day}, {hour}, {minute}, {second}, {date} and "
        "{time}\n"
        "are of the trigger.\n"
        "\n"
        "Exit code: 0 all recordings converted, 1 at least one failed, 2 wrong usage or "
        "configuration, 3 none\n"
        "failed, but at least one was salvaged in part (--salvage), 130 ended by Ctrl-C (143 by SIGTERM).\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station\n"
        "  zucmtr convert --out station/comtrade --make-out station/*.ZU\n"
        "  zucmtr convert --out station/comtrade --layout '{station}/{date}/{time} {source}' station/*.ZU");
}

} // namespace

void AddConvertCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("convert", HelpText("convert", "Convert recordings into COMTRADE records"));
    const auto options = std::make_shared<ConvertOptions>();
    AddDeviceOptions(*command, options->device);
    AddOutputOptions(*command, *options);
    AddFormOptions(*command, options->form);
    AddRunOptions(*command, *options);
    AddSafetyOptions(*command, *options);
    AddReportOptions(*command, *options);
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(*command, "FILE", options->files,
                HelpText("convert", "First files of the recordings, or directories with recordings"));
    command->footer(Footer());
    command->callback([options, &chosen] { chosen = [options] { return RunConvert(*options); }; });
}
