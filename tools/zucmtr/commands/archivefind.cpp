#include "zucmtr/commands/archivefind.h"

#include "catalogue/find.h"
#include "catalogue/foundcolumns.h"
#include "text/csv.h"
#include "text/texts.h"
#include "zucmtr/archive/foundtable.h"
#include "zucmtr/commands/catalogueoptions.h"
#include "zucmtr/commands/wantedoptions.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

namespace {

constexpr int64_t TableLimit = 100; // rows that people can take in

struct FindOptions
{
    WantedOptions wanted;
    std::string catalogue;
    std::string directory;
    std::string sort = "newest";
    bool reverse = false;
    std::optional<int64_t> limit;
    bool json = false;
    bool csv = false;
    bool paths = false;
    bool null = false;
};

struct SortWord
{
    const char* word;
    catalogue::Sort sort;
};

const SortWord SortWords[] = {
    {"newest", catalogue::Sort::Newest},     {"oldest", catalogue::Sort::Oldest},
    {"slowest", catalogue::Sort::Slowest},   {"current", catalogue::Sort::Current},
    {"distance", catalogue::Sort::Distance}, {"size", catalogue::Sort::Size},
    {"station", catalogue::Sort::Station},   {"circuit", catalogue::Sort::Circuit},
    {"path", catalogue::Sort::Path},
};

catalogue::Sort SortOf(const std::string& word)
{
    return std::find_if(std::begin(SortWords), std::end(SortWords),
                        [&](const SortWord& one) { return word == one.word; })
        ->sort;
}

QByteArray CsvHeads()
{
    QByteArrayList heads;
    for (const catalogue::FoundColumn& column : catalogue::FoundColumns())
        heads << column.name;
    return heads.join(',') + "\r\n";
}

QByteArray CsvLine(const sql::Row& row, const QString& path)
{
    QByteArrayList fields;
    for (int i = 0; i < row.Columns(); ++i)
        fields << text::CsvField(i == catalogue::FoundPlace("path") ? path : row.Text(i));
    return fields.join(',') + "\r\n";
}

// What is printed of an entry at once; nothing if it goes into a table.
void Print(const FindOptions& options, const sql::Row& row, const QString& path)
{
    if (options.json)
        PrintJson(catalogue::FoundObject(row, path));
    else if (options.csv)
        PrintBytes(CsvLine(row, path));
    else if (options.null)
        PrintBytes(archive::ShownPath(path).toUtf8() + '\0');
    else
        PrintLine(archive::ShownPath(path));
}

// The text in the catalogue may start with the path of then.
QString UnreadLine(const sql::Row& row, const QString& path)
{
    return archive::WrongLine(path, row.Text(catalogue::FoundPlace("path")),
                              row.Text(catalogue::FoundPlace("error")));
}

void PrintTable(const archive::FoundTable& table)
{
    for (const QString& line : table.Lines(OutputColumns()))
        PrintLine(line);
}

int RunFind(const FindOptions& options)
{
    const bool isTable = !options.json && !options.csv && !options.paths && !options.null;
    catalogue::Wanted wanted = WantedOf(options.wanted);
    wanted.sort = SortOf(options.sort);
    wanted.isReverse = options.reverse;
    const int64_t limit = options.limit.value_or(isTable ? TableLimit : 0);
    if (limit > 0)
        wanted.limit = limit + (options.limit ? 0 : 1); // one more shows that there are more
    const auto catalogue = OpenForReading(options.catalogue, options.directory, wanted);
    archive::FoundTable table;
    int64_t count = 0;
    if (options.csv)
        PrintBytes(CsvHeads());
    catalogue::Find(*catalogue, wanted, [&](const sql::Row& row) {
        const QString path = catalogue->Absolute(row.Text(catalogue::FoundPlace("path")));
        ++count;
        if (!isTable)
            Print(options, row, path);
        else if (options.wanted.unread && (limit == 0 || count <= limit))
            PrintLine(UnreadLine(row, path));
        else if (limit == 0 || count <= limit)
            table.Add(row, archive::ShownPath(path));
    });
    if (table.Count() > 0)
        PrintTable(table);
    if (isTable && limit > 0 && count > limit)
        Complain(Tr("archive", "there are more than these %1; --limit 0 shows all").arg(limit));
    if (isTable && count == 0 && OutputColumns() > 0) // a pipe sees the exit code alone, as that of grep
        Complain(Tr("archive", "nothing was found"));
    return count > 0 ? ExitDone : ExitFailed;
}

// As with grep: 1 says that nothing was found, so that failures have the other code.
int Guarded(const FindOptions& options)
{
    try {
        return RunFind(options);
    } catch (const ConfigurationError&) {
        throw;
    } catch (const text::Error& error) {
        throw ConfigurationError(error.Message());
    }
}

void AddOutputOptions(CLI::App& command, FindOptions& options)
{
    std::vector<std::string> words;
    for (const SortWord& word : SortWords)
        words.emplace_back(word.word);
    AddValue(
        command, "--sort", options.sort, "COLUMN",
        HelpText("archive",
                 "What comes first: newest (the default), oldest, slowest (the fault that took longest to be "
                 "cleared), current (the greatest), distance (the nearest), size (the largest), station, "
                 "circuit, path"))
        ->check(values::OneOf(words));
    command.add_flag("--reverse", options.reverse, HelpText("archive", "The other way round"));
    AddValue(command, "--limit", options.limit, "N",
             HelpText("archive", "So many at most; 0 for all. Default: 100 in a table, else all"))
        ->transform(values::WholeNumber(0, 1000000000));
    auto* json = command.add_flag("--json", options.json,
                                  HelpText("archive", "One JSON object per entry, for programs"));
    auto* csv =
        command.add_flag("--csv", options.csv, HelpText("archive", "CSV (RFC 4180), one line per entry"));
    auto* paths =
        command.add_flag("--paths", options.paths, HelpText("archive", "Paths alone, one per line"));
    auto* null =
        command.add_flag("-0,--null", options.null,
                         HelpText("archive", "Paths alone, each ended by a zero byte, for xargs -0"));
    csv->excludes(json);
    paths->excludes(json)->excludes(csv);
    null->excludes(json)->excludes(csv);
}

} // namespace

void AddArchiveFind(CLI::App& archive, Action& chosen)
{
    CLI::App* command =
        archive.add_subcommand("find", HelpText("archive", "Find recordings and records in the catalogue"));
    const auto options = std::make_shared<FindOptions>();
    AddPlaceOptions(*command, options->wanted);
    AddFaultOptions(*command, options->wanted);
    AddOutputOptions(*command, *options);
    AddCatalogueOption(*command, options->catalogue);
    AddValue(
        *command, "DIR", options->directory, "",
        HelpText("archive",
                 "The directory with the catalogue, or one below it: then what is below that is searched. "
                 "Default: the current one"));
    command->footer(HelpText(
        "archive",
        "All that is given has to be true of an entry. Without conditions all entries are shown.\n"
        "\n"
        "Exit code: 0 something was found; 1 nothing was found; 2 wrong usage, or the catalogue cannot be "
        "read.\n"
        "\n"
        "Examples:\n"
        "  zucmtr archive find --circuit Vostochnaya --kind single --since 2024-03 --longer-than 80ms\n"
        "  zucmtr archive find --kind any --sort slowest --limit 3\n"
        "  zucmtr archive find --changed CBFP --since 30d -0 | xargs -0 zucmtr events"));
    command->callback([options, &chosen] { chosen = [options] { return Guarded(*options); }; });
}
