#include "zucmtr/commands/archivepage.h"

#include "archivepage/archivepage.h"
#include "sql/address.h"
#include "text/texts.h"
#include "zucmtr/archive/entrypages.h"
#include "zucmtr/archive/foundtable.h"
#include "zucmtr/commands/catalogueoptions.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>
#include <memory>

namespace {

struct PageOptions
{
    std::string out;
    std::string catalogue;
    std::string directory = ".";
    std::string pages = "none";
    std::string title;
    std::string date;
    ReadingOptions reading;
    bool json = false;
    bool quiet = false;
    uint64_t maxMemory = 0;
};

QString AddressOf(const PageOptions& options)
{
    QString address = CatalogueOf(options.catalogue, FromUtf8(options.directory));
    if (!sql::IsServer(address) && !QFileInfo(address).isFile())
        throw ConfigurationError(
            Tr("archive", "there is no catalogue '%1'; 'zucmtr archive update DIR' makes one").arg(address));
    return address;
}

// What people call the archive: its directory, or the database.
QString TitleOf(const PageOptions& options, const QString& address)
{
    if (!options.title.empty())
        return FromUtf8(options.title);
    if (sql::IsServer(address))
        return QUrl(address).path().mid(1);
    return QFileInfo(address).absoluteDir().dirName();
}

archivepage::Settings SettingsOf(const PageOptions& options, const QString& address)
{
    archivepage::Settings settings;
    settings.title = TitleOf(options, address);
    if (!options.date.empty()) {
        settings.date = QDate::fromString(FromUtf8(options.date), Qt::ISODate);
        if (!settings.date.isValid())
            throw ConfigurationError(
                Tr("archive", "--as-of: '%1' is no date; give it as 2024-01-31").arg(FromUtf8(options.date)));
    }
    return settings;
}

archive::PageCounts MakePages(const PageOptions& options, catalogue::Catalogue& catalogue, const QString& out)
{
    std::vector<archivepage::Shown> entries = archivepage::EntriesToShow(catalogue, out);
    if (options.pages == "faults")
        entries.erase(std::remove_if(entries.begin(), entries.end(),
                                     [](const archivepage::Shown& entry) { return !entry.isFault; }),
                      entries.end());
    const archive::PageReading reading{
        {ChoiceOf(options.reading.choice), options.reading.plain, FromUtf8(options.reading.lines)},
        FromUtf8(options.reading.encoding)};
    std::unique_ptr<Progress> progress;
    const archive::Progressing progressing{
        [&](size_t done, size_t total) {
            if (!progress)
                progress = std::make_unique<Progress>(total, !options.quiet);
            progress->Show(done);
        },
        [] { return interrupt::Came(); },
        [&](const archive::Complaint& complaint) {
            if (progress)
                progress->Hide();
            Complain(archive::WrongLine(complaint.path, complaint.path, complaint.text));
        }};
    return archive::MakePages(entries, reading, progressing);
}

void Report(const PageOptions& options, const QString& out, const archivepage::Written& written,
            const archive::PageCounts& counts)
{
    if (options.json)
        PrintJson({{"page", QDir(out).filePath(QStringLiteral("index.html"))},
                   {"entries", written.entries},
                   {"faults", written.faults},
                   {"pages", written.pages},
                   {"made", counts.made},
                   {"failed", counts.failed}});
    else if (!options.quiet)
        PrintLine(archive::ShownPath(QDir(out).filePath(QStringLiteral("index.html"))));
}

int RunPage(const PageOptions& options)
{
    interrupt::Install();
    interrupt::InstallForClosedPipe();
    LimitMemory(options.maxMemory);
    const QString address = AddressOf(options);
    const archivepage::Settings settings = SettingsOf(options, address);
    const QString out = QDir::cleanPath(QFileInfo(FromUtf8(options.out)).absoluteFilePath());
    archivepage::Written written;
    archive::PageCounts counts;
    try {
        const auto catalogue = catalogue::Catalogue::ForReading(address);
        // First of all what is there already, as pages can take hours.
        written = archivepage::Write(*catalogue, out, settings);
        if (options.pages != "none")
            counts = MakePages(options, *catalogue, out);
        if (counts.made > 0)
            written = archivepage::Write(*catalogue, out, settings);
    } catch (const ConfigurationError&) {
        throw;
    } catch (const text::Error& error) {
        Complain(error.Message());
        return ExitFailed;
    }
    Report(options, out, written, counts);
    if (interrupt::Came())
        return interrupt::ExitCode();
    return counts.failed > 0 ? ExitFailed : ExitDone;
}

} // namespace

void AddArchivePage(CLI::App& archive, Action& chosen)
{
    CLI::App* command = archive.add_subcommand(
        "page",
        HelpText("archive",
                 "Show the catalogue in the browser: a directory for a disk, a share or a web server"));
    const auto options = std::make_shared<PageOptions>();
    AddValue(*command, "-o,--out", options->out, "DIR",
             HelpText("archive", "The directory; it is made, or brought up to date. Open index.html in it"))
        ->required();
    AddCatalogueOption(*command, options->catalogue);
    AddValue(*command, "--pages", options->pages, "WHICH",
             HelpText("archive",
                      "Make the page of 'zucmtr view' for entries that have none yet: none, faults or all. "
                      "Default: none"))
        ->check(values::OneOf({"none", "faults", "all"}));
    AddValue(*command, "--title", options->title, "TEXT",
             HelpText("archive", "Heading of the page. Default: the name of the archive's directory"));
    AddValue(*command, "--as-of", options->date, "DATE",
             HelpText("archive",
                      "The day to which the silence of recorders is counted, as 2024-01-31. Default: that of "
                      "the newest entry"));
    AddReadingOptions(*command, options->reading,
                      HelpText("archive", "Take no ini file: circuits and names as in the recordings"));
    command->add_flag("--json", options->json,
                      HelpText("archive", "One JSON object at the end, for programs"));
    command->add_flag("--quiet", options->quiet, HelpText("archive", "Report failures only"));
    AddMemoryOption(*command, options->maxMemory);
    AddValue(*command, "DIR", options->directory, "",
             HelpText("archive", "The directory whose catalogue is shown. Default: the current one"));
    command->footer(HelpText(
        "archive", "Exit code: 0 the directory is up to date; 1 it cannot be written, or an entry has no "
                   "page; 2 wrong usage.\n"
                   "\n"
                   "Example:\n"
                   "  zucmtr archive page -o page --pages faults recordings"));
    command->callback([options, &chosen] { chosen = [options] { return RunPage(*options); }; });
}
