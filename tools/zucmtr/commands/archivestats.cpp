#include "zucmtr/commands/archivestats.h"

#include "catalogue/find.h"
#include "catalogue/foundcolumns.h"
#include "catalogue/statistics.h"
#include "info/values.h"
#include "text/columns.h"
#include "text/texts.h"
#include "zucmtr/archive/foundtable.h"
#include "zucmtr/archive/wantedtext.h"
#include "zucmtr/commands/catalogueoptions.h"
#include "zucmtr/commands/wantedoptions.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QDateTime>
#include <QJsonArray>

#include <cmath>

namespace {

constexpr size_t CircuitLimit = 20; // lines that people can take in
constexpr qint64 SlowestLimit = 5;

struct StatsOptions
{
    WantedOptions wanted;
    std::string catalogue;
    std::string directory;
    std::string silent = "30d";
    std::vector<std::string> only;
    bool json = false;
};

// The parts of the output: what each has for programs, as keys of one object, and for people.
struct Part
{
    QJsonObject object;
    QString title;
    QStringList lines;
};

struct Work
{
    catalogue::Catalogue& catalogue;
    catalogue::Wanted wanted;
    qint64 silentSince;
};

QString DateText(const QString& iso)
{
    return iso.left(10);
}

Part OverviewPart(const Work& work)
{
    const catalogue::Overview overview = catalogue::OverviewOf(work.catalogue, work.wanted);
    const qint64 gone = catalogue::GoneCount(work.catalogue, work.wanted);
    Part part;
    part.object = {{"recordings", overview.recordings},
                   {"records", overview.records},
                   {"unread", overview.unread},
                   {"gone", gone},
                   {"bytes", overview.bytes},
                   {"first", overview.first},
                   {"last", overview.last}};
    for (const char* key : {"first", "last"}) {
        if (part.object[QLatin1String(key)].toString().isEmpty())
            part.object[QLatin1String(key)] = QJsonValue::Null;
    }
    part.lines << Tr("archive", "Recordings: %1, records: %2; unreadable: %3, gone: %4")
                      .arg(overview.recordings)
                      .arg(overview.records)
                      .arg(overview.unread)
                      .arg(gone);
    part.lines << Tr("archive", "In all %1").arg(info::BytesCell(overview.bytes).text);
    if (!overview.first.isEmpty())
        part.lines << Tr("archive", "Triggered from %1 to %2")
                          .arg(DateText(overview.first), DateText(overview.last));
    return part;
}

Part CountsPart(const Work& work, catalogue::By by, const char* key, const char* name, const QString& title)
{
    const std::vector<catalogue::FaultCount> counts = catalogue::FaultCounts(work.catalogue, work.wanted, by);
    QJsonArray list;
    std::vector<QStringList> rows;
    for (const catalogue::FaultCount& count : counts) {
        list << QJsonObject{{QLatin1String(name), count.of}, {"faults", count.count}};
        if (by != catalogue::By::Circuit || rows.size() < CircuitLimit)
            rows.push_back({count.of, QString::number(count.count)});
    }
    Part part;
    part.object[QLatin1String(key)] = list;
    part.title = title;
    part.lines = text::Aligned(rows, {false, true});
    if (rows.size() < counts.size())
        part.lines << Tr("archive", "  and %1 more").arg(counts.size() - rows.size());
    return part;
}

Part MonthsPart(const Work& work)
{
    return CountsPart(work, catalogue::By::Month, "months", "month", Tr("archive", "Faults by month"));
}

Part KindsPart(const Work& work)
{
    return CountsPart(work, catalogue::By::Kind, "kinds", "kind", Tr("archive", "Faults by kind"));
}

Part CircuitsPart(const Work& work)
{
    return CountsPart(work, catalogue::By::Circuit, "circuits", "circuit",
                      Tr("archive", "Faults by circuit"));
}

Part SlowestPart(const Work& work)
{
    catalogue::Wanted wanted = work.wanted;
    wanted.kinds = archive::KindsOf(QStringLiteral("any"));
    wanted.sort = catalogue::Sort::Slowest;
    wanted.limit = SlowestLimit;
    archive::FoundTable table;
    QJsonArray list;
    catalogue::Find(work.catalogue, wanted, [&](const sql::Row& row) {
        const QString path = work.catalogue.Absolute(row.Text(catalogue::FoundPlace("path")));
        list << catalogue::FoundObject(row, path);
        table.Add(row, archive::ShownPath(path));
    });
    Part part;
    part.object["slowest"] = list;
    part.title = Tr("archive", "Slowest clearings");
    if (table.Count() > 0)
        part.lines = table.Lines(OutputColumns());
    return part;
}

Part SilentPart(const Work& work)
{
    QJsonArray list;
    std::vector<QStringList> rows;
    for (const catalogue::Recorder& one :
         catalogue::RecordersOf(work.catalogue, work.wanted, work.silentSince)) {
        list << QJsonObject{{"station", one.station}, {"recorder", one.name}, {"last", one.last}};
        rows.push_back({one.station, one.name, DateText(one.last)});
    }
    Part part;
    part.object["silent"] = list;
    part.title = Tr("archive", "Recorders without a recording since %1")
                     .arg(QDateTime::fromMSecsSinceEpoch(work.silentSince / 1000)
                              .toString(QStringLiteral("yyyy-MM-dd")));
    part.lines = text::Aligned(rows, {false, false, false});
    return part;
}

Part DuplicatesPart(const Work& work)
{
    const catalogue::Duplicates duplicates = catalogue::DuplicatesOf(work.catalogue, work.wanted);
    Part part;
    part.object["duplicates"] = QJsonObject{{"entries", duplicates.entries}, {"bytes", duplicates.bytes}};
    part.lines << Tr("archive", "Superfluous copies: %1, %2")
                      .arg(duplicates.entries)
                      .arg(info::BytesCell(duplicates.bytes).text);
    return part;
}

struct PartWord
{
    const char* word;
    Part (*make)(const Work& work);
};

const PartWord PartWords[] = {
    {"overview", OverviewPart},     {"months", MonthsPart},   {"kinds", KindsPart},
    {"circuits", CircuitsPart},     {"slowest", SlowestPart}, {"silent", SilentPart},
    {"duplicates", DuplicatesPart},
};

void PrintForPeople(const std::vector<Part>& parts)
{
    bool isFirst = true;
    for (const Part& part : parts) {
        if (!isFirst)
            PrintLine(QString());
        isFirst = false;
        if (!part.title.isEmpty())
            PrintLine(part.title + QLatin1Char(':') +
                      (part.lines.isEmpty() ? QLatin1Char(' ') + Tr("archive", "none") : QString()));
        for (const QString& line : part.lines)
            PrintLine(line);
    }
}

int RunStats(const StatsOptions& options)
{
    catalogue::Wanted wanted = WantedOf(options.wanted);
    qint64 silentSince = 0;
    try {
        silentSince = QDateTime::currentMSecsSinceEpoch() * 1000 -
                      static_cast<qint64>(std::llround(archive::AgeOf(FromUtf8(options.silent)) * 1000000));
    } catch (const archive::WantedTextError& error) {
        throw ConfigurationError(QLatin1String("--silent: ") + error.Message());
    }
    const auto catalogue = OpenForReading(options.catalogue, options.directory, wanted);
    const Work work{*catalogue, wanted, silentSince};
    std::vector<Part> parts;
    QJsonObject all;
    for (const PartWord& one : PartWords) {
        if (!options.only.empty() &&
            std::find(options.only.begin(), options.only.end(), one.word) == options.only.end())
            continue;
        parts.push_back(one.make(work));
        const QJsonObject& object = parts.back().object;
        for (auto key = object.begin(); key != object.end(); ++key)
            all[key.key()] = key.value();
    }
    if (options.json)
        PrintJson(all);
    else
        PrintForPeople(parts);
    return ExitDone;
}

} // namespace

void AddArchiveStats(CLI::App& archive, Action& chosen)
{
    CLI::App* command = archive.add_subcommand(
        "stats",
        HelpText("archive", "Count what is in the catalogue: faults, slow clearings, silent recorders"));
    const auto options = std::make_shared<StatsOptions>();
    std::vector<std::string> words;
    for (const PartWord& part : PartWords)
        words.emplace_back(part.word);
    AddPlaceOptions(*command, options->wanted);
    AddValue(
        *command, "--silent", options->silent, "DURATION",
        HelpText(
            "archive",
            "List recorders without a recording for so long: 12h, 30d (the default), 4w, 1y; the time and "
            "the circuit do not matter for that"));
    AddValue(
        *command, "--only", options->only, "NAME",
        HelpText("archive",
                 "Only this part: overview, months, kinds, circuits, slowest, silent, duplicates; may be "
                 "repeated"))
        ->allow_extra_args(false)
        ->check(values::OneOf(words));
    command->add_flag("--json", options->json, HelpText("archive", "One JSON object, for programs"));
    AddCatalogueOption(*command, options->catalogue);
    AddValue(
        *command, "DIR", options->directory, "",
        HelpText("archive",
                 "The directory with the catalogue, or one below it: then what is below that is counted. "
                 "Default: the current one"));
    command->footer(HelpText("archive",
                             "A fault is counted once, if its recording and its record are both there.\n"
                             "\n"
                             "Exit code: 0 done; 1 the catalogue cannot be read; 2 wrong usage.\n"
                             "\n"
                             "Examples:\n"
                             "  zucmtr archive stats --since 2024 --until 2024\n"
                             "  zucmtr archive stats --only silent --silent 90d"));
    command->callback([options, &chosen] {
        chosen = [options] { return WithCatalogue([&options] { return RunStats(*options); }); };
    });
}
