#include "zucmtr/commands/archiveupdate.h"

#include "text/texts.h"
#include "zucmtr/archive/foundtable.h"
#include "zucmtr/archive/update.h"
#include "zucmtr/commands/catalogueoptions.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/host/recordinglist.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <thread>

namespace {

struct UpdateOptions
{
    std::string catalogue;
    ReadingOptions reading;
    unsigned int jobs = 0; // one per processor
    bool json = false;
    bool quiet = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> directories;
};

// Absolute, each in one spelling.
QStringList DirectoriesOf(const UpdateOptions& options)
{
    QStringList directories;
    for (const QString& path : FromUtf8(options.directories)) {
        if (!QFileInfo(path).isDir())
            throw ConfigurationError(Tr("archive", "'%1' is no directory").arg(path));
        directories << Normalised(path);
    }
    directories.removeDuplicates();
    return directories;
}

void Report(const archive::UpdateCounts& counts, const UpdateOptions& options)
{
    if (options.json)
        PrintJson({{"unchanged", counts.unchanged},
                   {"read", counts.read},
                   {"moved", counts.moved},
                   {"gone", counts.gone},
                   {"unread", counts.unread}});
    else if (!options.quiet)
        PrintLine(Tr("archive", "%1 read (%2 unreadable), %3 moved, %4 gone, %5 unchanged")
                      .arg(counts.read)
                      .arg(counts.unread)
                      .arg(counts.moved)
                      .arg(counts.gone)
                      .arg(counts.unchanged));
}

QStringList ComplaintText(const archive::Complaint& complaint)
{
    if (!complaint.path.isEmpty())
        return archive::WrongLine(complaint.path, complaint.path, complaint.text).split(QLatin1Char('\n'));
    return complaint.text.split(QLatin1Char('\n')) +
           QStringList{Tr("archive", "until that is put right, the recordings beside it are catalogued "
                                     "without it; the next update reads them again. With --device, update "
                                     "that directory alone")};
}

// A mistake in what the user has chosen shows here, not at each recording.
void CheckChoice(DeviceChoice choice)
{
    if (!choice.ini.isEmpty())
        CompleteChoice(choice, {});
}

int RunUpdate(const UpdateOptions& options)
{
    interrupt::Install();
    interrupt::InstallForClosedPipe();
    LimitMemory(options.maxMemory);
    const QStringList directories = DirectoriesOf(options);
    archive::UpdateOrder order;
    order.catalogue = CatalogueOf(options.catalogue, directories.first());
    order.directories = directories;
    order.reading = {ChoiceOf(options.reading.choice), options.reading.plain,
                     FromUtf8(options.reading.lines)};
    CheckChoice(order.reading.choice);
    order.processes = options.jobs == 0 ? std::max(std::thread::hardware_concurrency(), 1u) : options.jobs;
    bool isWhole = true;
    std::unique_ptr<Progress> progress;
    const archive::Progressing progressing{[&](size_t done, size_t total) {
                                               if (!progress)
                                                   progress =
                                                       std::make_unique<Progress>(total, !options.quiet);
                                               progress->Show(done);
                                           },
                                           [] { return interrupt::Came(); },
                                           [&](const archive::Complaint& complaint) {
                                               isWhole = isWhole && complaint.isCatalogued;
                                               if (progress)
                                                   progress->Hide();
                                               Complain(ComplaintText(complaint));
                                           }};
    const archive::UpdateCounts counts = archive::Update(order, progressing);
    progress.reset();
    Report(counts, options);
    if (interrupt::Came())
        return interrupt::ExitCode();
    return isWhole ? ExitDone : ExitFailed;
}

} // namespace

void AddArchiveUpdate(CLI::App& archive, Action& chosen)
{
    CLI::App* command = archive.add_subcommand(
        "update", HelpText("archive", "Write what is new, changed, moved or gone into the catalogue"));
    const auto options = std::make_shared<UpdateOptions>();
    AddCatalogueOption(*command, options->catalogue);
    AddReadingOptions(*command, options->reading,
                      HelpText("archive", "Take no ini file: circuits and names as in the recordings"));
    AddValue(
        *command, "-j,--jobs", options->jobs, "N",
        HelpText("archive", "Recordings that are read at the same time; 0: one per processor (the default)"))
        ->transform(values::WholeNumber(0, 256));
    command->add_flag("--json", options->json,
                      HelpText("archive", "One JSON object at the end, for programs"));
    command->add_flag("--quiet", options->quiet, HelpText("archive", "Report failures only"));
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(*command, "DIR", options->directories,
                HelpText("archive",
                         "Directories whose recordings (.ZU) and records (.cfg, .cff) are catalogued, with "
                         "those below them"));
    command->footer(HelpText("archive",
                             "Exit code: 0 the catalogue is up to date, what cannot be read included; 1 a "
                             "directory could not be read; 2 wrong usage.\n"
                             "\n"
                             "Example:\n"
                             "  zucmtr archive update recordings"));
    command->callback([options, &chosen] {
        chosen = [options] { return WithCatalogue([&options] { return RunUpdate(*options); }); };
    });
}
