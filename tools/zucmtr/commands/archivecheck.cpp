#include "zucmtr/commands/archivecheck.h"

#include "sql/address.h"
#include "text/texts.h"
#include "zucmtr/archive/check.h"
#include "zucmtr/archive/foundtable.h"
#include "zucmtr/commands/catalogueoptions.h"
#include "zucmtr/host/recordinglist.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QJsonObject>

#include <memory>

namespace {

struct ArchiveCheckOptions
{
    std::string catalogue;
    bool isFast = false;
    bool json = false;
    bool quiet = false;
    std::string directory;
};

archive::CheckOrder OrderOf(const ArchiveCheckOptions& options)
{
    archive::CheckOrder order;
    order.catalogue = CatalogueToRead(options.catalogue, options.directory);
    order.isFast = options.isFast;
    if (!options.directory.empty())
        order.below = Normalised(FromUtf8(options.directory));
    order.searched = order.below;
    if (options.directory.empty() && options.catalogue.empty())
        order.searched = QFileInfo(order.catalogue).absolutePath();
    return order;
}

void Report(const archive::CheckFinding& finding, const ArchiveCheckOptions& options)
{
    if (options.json)
        PrintJson(
            {{"file", finding.path}, {"reason", QLatin1String(finding.reason)}, {"text", finding.text}});
    else if (finding.path.isEmpty())
        PrintLine(Tr("archive check", "the catalogue is damaged: %1").arg(finding.text));
    else
        PrintLine(archive::WrongLine(finding.path, finding.path, finding.text));
}

void Report(const archive::CheckCounts& counts, const ArchiveCheckOptions& options)
{
    if (options.json) {
        PrintJson({{"entries", counts.entries},
                   {"gone", counts.gone},
                   {"files", counts.files},
                   {"bytes", counts.bytes},
                   {"hashed", !options.isFast},
                   {"findings", counts.findings}});
        return;
    }
    if (options.quiet)
        return;
    const QString what = Tr("archive check", "%1 entries with %2 files, %3 gone")
                             .arg(counts.entries)
                             .arg(counts.files)
                             .arg(counts.gone);
    Complain(counts.findings == 0 ? Tr("archive check", "%1: all is as the catalogue says").arg(what)
                                  : Tr("archive check", "%1; findings: %2").arg(what).arg(counts.findings));
}

int RunArchiveCheck(const ArchiveCheckOptions& options)
{
    interrupt::Install();
    const archive::CheckOrder order = OrderOf(options);
    std::unique_ptr<Progress> progress;
    const archive::Checking checking{[&](const archive::CheckFinding& finding) {
                                         if (progress)
                                             progress->Hide();
                                         Report(finding, options);
                                     },
                                     [&](size_t done, size_t total) {
                                         if (!progress)
                                             progress = std::make_unique<Progress>(total, !options.quiet);
                                         progress->Show(done);
                                     },
                                     [] { return interrupt::Came(); }};
    const archive::CheckCounts counts = archive::Check(order, checking);
    progress.reset();
    if (interrupt::Came())
        return interrupt::ExitCode();
    Report(counts, options);
    return counts.findings == 0 ? ExitDone : ExitFailed;
}

} // namespace

void AddArchiveCheck(CLI::App& archive, Action& chosen)
{
    CLI::App* command = archive.add_subcommand(
        "check", HelpText("archive check", "Hold the catalogue against the files, and against itself"));
    const auto options = std::make_shared<ArchiveCheckOptions>();
    AddCatalogueOption(*command, options->catalogue);
    command->add_flag("--fast", options->isFast,
                      HelpText("archive check", "Compare names, sizes and times of the files alone, without "
                                                "reading them for their SHA-256"));
    command->add_flag(
        "--json", options->json,
        HelpText("archive check",
                 "One JSON object per finding, and one with the totals at the end, for programs"));
    command->add_flag("-q,--quiet", options->quiet, HelpText("archive check", "Report findings only"));
    AddValue(*command, "DIR", options->directory, "",
             HelpText("archive check",
                      "The directory with the catalogue, or one below it: then only what is below that is "
                      "checked. Default: all of the catalogue in the current one or above"));
    command->footer(HelpText(
        "archive check",
        "Checked are the pieces of each entry: they are there, with size, time and SHA-256; what is marked "
        "as gone\n"
        "is gone; each recording and record has an entry; and the database agrees with itself. Nothing is "
        "changed.\n"
        "'zucmtr archive update' brings the catalogue up to date with what is new, changed, moved or gone.\n"
        "\n"
        "Exit code: 0 all is as the catalogue says; 1 something is not, or the catalogue cannot be read; 2 "
        "wrong usage.\n"
        "\n"
        "Example:\n"
        "  zucmtr archive check --fast recordings"));
    command->callback([options, &chosen] {
        chosen = [options] { return WithCatalogue([&options] { return RunArchiveCheck(*options); }); };
    });
}
