#include "zucmtr/commands/wantedoptions.h"

#include "sql/address.h"
#include "text/texts.h"
#include "zucmtr/archive/wantedtext.h"
#include "zucmtr/commands/catalogueoptions.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>

namespace {

// Given as often as wanted, with one value each: what follows is the directory.
void AddNames(CLI::App& command, const char* name, std::vector<std::string>& values, const std::string& help)
{
    AddValue(command, name, values, "NAME", help)->allow_extra_args(false);
}

// What a value means, or none without one. Its option is named in the message.
template <class Read>
auto Given(const char* option, const std::string& value, Read read)
    -> std::optional<decltype(read(QString()))>
{
    if (value.empty())
        return std::nullopt;
    try {
        return read(FromUtf8(value));
    } catch (const archive::WantedTextError& error) {
        throw ConfigurationError(QLatin1String(option) + QLatin1String(": ") + error.Message());
    }
}

// Kinds of fault that are in both, if both are given.
std::optional<QStringList> Both(const std::optional<QStringList>& one,
                                const std::optional<QStringList>& other)
{
    if (!one || !other)
        return one ? one : other;
    QStringList both;
    for (const QString& kind : *one) {
        if (other->contains(kind))
            both << kind;
    }
    return both;
}

// The file of the catalogue of the directory or of the nearest one above it.
QString CatalogueAbove(const QString& directory)
{
    QDir place(QFileInfo(directory).absoluteFilePath());
    do {
        const QString file = CatalogueIn(place.path());
        if (QFileInfo(file).isFile())
            return file;
    } while (place.cdUp());
    throw ConfigurationError(Tr("archive", "there is no catalogue (zucmtr-archive.db) in '%1' or above; make "
                                           "one with: zucmtr archive update %2")
                                 .arg(directory, ShellWord(directory)));
}

} // namespace

void AddPlaceOptions(CLI::App& command, WantedOptions& options)
{
    AddValue(
        command, "--since", options.since, "MOMENT",
        HelpText("archive",
                 "Triggered at this time or later: 2024, 2024-03, 2024-03-31 or 2024-03-31T12:00, on the "
                 "recorder's clock or with Z or +03:00; or 12h, 30d, 4w or 1y ago; or today"));
    AddValue(
        command, "--until", options.until, "MOMENT",
        HelpText("archive", "Triggered at this time or earlier; of a date, the whole day, month or year"));
    AddNames(
        command, "--station", options.stations,
        HelpText("archive",
                 "Of a station with this in its name, in capital or small letters; =NAME for the whole name. "
                 "May be repeated, as the next three"));
    AddNames(command, "--recorder", options.recorders,
             HelpText("archive", "Of a recorder with this in its name"));
    AddNames(command, "--circuit", options.circuits,
             HelpText("archive",
                      "With a fault on a circuit with this in its name, or started by it without a fault"));
    auto* recordings =
        command.add_flag("--recordings", options.recordings, HelpText("archive", "Recordings (.ZU) only"));
    command.add_flag("--records", options.records, HelpText("archive", "Records (.cfg, .cff) only"))
        ->excludes(recordings);
}

void AddFaultOptions(CLI::App& command, WantedOptions& options)
{
    AddNames(command, "--changed", options.changed,
             HelpText("archive", "A digital channel with this in its name changed its state"));
    AddValue(
        command, "--kind", options.kinds, "KIND",
        HelpText("archive",
                 "Kinds of fault: AG to ABCG, single, two, two-earth, three, earth, any or none; several "
                 "with commas between"))
        ->check(values::Offer(archive::KindWords()));
    AddValue(command, "--phases", options.phases, "PHASES",
             HelpText("archive", "A fault in which all these phases are: A, BC, ABC"));
    AddValue(command, "--min-current", options.minCurrent, "CURRENT",
             HelpText("archive", "A fault whose greatest RMS current is at least this: 12kA, 800A"));
    AddValue(command, "--longer-than", options.longerThan, "DURATION",
             HelpText("archive", "A fault that took longer to be cleared: 80ms, 0.5s"));
    command.add_flag("--uncleared", options.uncleared,
                     HelpText("archive", "A fault that lasts to the end of the recording"));
    AddValue(command, "--distance", options.distance, "DISTANCE",
             HelpText("archive", "A fault so far away: 20-30 (in km), 20-, 40-60%"));
    AddValue(
        command, "--text", options.text, "WORDS",
        HelpText("archive",
                 "Words, or their first letters, that are all among the names, the cause and the channels "
                 "that changed"));
    command.add_flag("--unread", options.unread, HelpText("archive", "What could not be read"));
    command.add_flag("--gone", options.gone, HelpText("archive", "What was there once, instead of what is"));
}

catalogue::Wanted WantedOf(const WantedOptions& options)
{
    catalogue::Wanted wanted;
    wanted.since = Given("--since", options.since,
                         [](const QString& text) { return archive::InstantOf(text, archive::End::First); });
    wanted.until = Given("--until", options.until,
                         [](const QString& text) { return archive::InstantOf(text, archive::End::Last); });
    wanted.stations = FromUtf8(options.stations);
    wanted.recorders = FromUtf8(options.recorders);
    wanted.circuits = FromUtf8(options.circuits);
    wanted.changed = FromUtf8(options.changed);
    wanted.kinds = Both(Given("--kind", options.kinds, archive::KindsOf),
                        Given("--phases", options.phases, archive::KindsWithPhases));
    wanted.minCurrent = Given("--min-current", options.minCurrent, archive::AmperesOf);
    wanted.longerThan = Given("--longer-than", options.longerThan, archive::SecondsOf);
    if (const auto distances = Given("--distance", options.distance, archive::DistancesOf)) {
        wanted.kilometres = distances->kilometres;
        wanted.percent = distances->percent;
    }
    wanted.text = FromUtf8(options.text);
    wanted.isUncleared = options.uncleared;
    wanted.isUnread = options.unread;
    wanted.isGone = options.gone;
    if (options.recordings || options.records)
        wanted.kind = QLatin1String(
            catalogue::NameOf(options.recordings ? catalogue::Kind::Recording : catalogue::Kind::Record));
    return wanted;
}

std::unique_ptr<catalogue::Catalogue> OpenForReading(const std::string& address, const std::string& directory,
                                                     catalogue::Wanted& wanted)
{
    const QString place = directory.empty() ? QStringLiteral(".") : FromUtf8(directory);
    if (!QFileInfo(place).isDir())
        throw ConfigurationError(Tr("archive", "'%1' is no directory").arg(place));
    const QString given = FromUtf8(address);
    if (!address.empty() && !sql::IsServer(given) && !QFileInfo::exists(given))
        throw ConfigurationError(Tr("archive", "--catalogue: there is no file '%1'").arg(given));
    auto catalogue = catalogue::Catalogue::ForReading(address.empty() ? CatalogueAbove(place) : given);
    const QString stored = catalogue->Stored(QDir::cleanPath(QFileInfo(place).absoluteFilePath()));
    if (!directory.empty() && !stored.isEmpty() && stored != QLatin1String("."))
        wanted.below = stored;
    return catalogue;
}
