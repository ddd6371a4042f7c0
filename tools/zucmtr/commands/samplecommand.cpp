#include "zucmtr/commands/samplecommand.h"

#include "base/chainnames.h"
#include "output/outputfile.h"
#include "station/linerecording.h"
#include "text/texts.h"
#include "zucmtr/commands/sampleoptions.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QMap>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

struct SampleCommandOptions
{
    SampleOptions sample;
    std::string out;
    bool force = false;
};

const char* const IniName = "ZuDrv.ini";
const char* const LinesName = "lines.ini";

// Files of an older sample in the directory.
QStringList PresentFiles(const QDir& directory)
{
    const QStringList patterns = {QLatin1String(IniName),
                                  QStringLiteral("Vostochnaya_00012[3-9].Z*"),
                                  QStringLiteral("Vostochnaya_000130.Z*"),
                                  QLatin1String(LinesName),
                                  QStringLiteral("Vostochnaya_fault*.ZU"),
                                  QStringLiteral("Vostochnaya_quiet*.ZU"),
                                  QStringLiteral("Vostochnaya_*.truth.json")};
    return directory.entryList(patterns, QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Name);
}

// The same of an archive, with the directories of its recorders.
QStringList PresentArchive(const QDir& directory)
{
    QStringList present;
    for (const QString& recorder : station::ArchiveDirectories()) {
        const QStringList patterns = {QLatin1String(IniName), QLatin1String(LinesName),
                                      recorder + QStringLiteral("_*.Z*"),
                                      recorder + QStringLiteral("_*.truth.json")};
        const QDir place(directory.filePath(recorder));
        for (const QString& name :
             place.entryList(patterns, QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Name))
            present << recorder + QLatin1Char('/') + name;
    }
    return present;
}

// Writes files into the directory, and remembers which older ones they have replaced.
class FileWriter
{
public:
    FileWriter(const QDir& into, const QStringList& present, bool lists)
        : directory(into), older(present), isListing(lists)
    {}

    bool Write(const recorderfile::NamedFile& file)
    {
        older.removeAll(file.name);
        const QString path = directory.filePath(file.name);
        QString error;
        const bool isWritten = output::WriteOutput(path, file.bytes, error);
        if (isWritten && isListing)
            PrintLine(path);
        if (!isWritten)
            Complain(Tr("sample", "'%1' cannot be written: %2").arg(path, error));
        return isWritten;
    }

    bool WriteAll(const std::vector<recorderfile::NamedFile>& files)
    {
        return std::all_of(files.begin(), files.end(),
                           [this](const recorderfile::NamedFile& file) { return Write(file); });
    }

    // A continuation file left behind would be read after the new first file.
    void RemoveOlder() const
    {
        for (const QString& name : older)
            QFile::remove(directory.filePath(name));
    }

private:
    QDir directory;
    QStringList older;
    bool isListing; // each file
};

bool WriteStation(FileWriter& writer, const station::StationOptions& options)
{
    if (!writer.Write({QLatin1String(IniName), station::MakeIni(options).toUtf8()}))
        return false;
    const std::vector<station::StartKind> starts = station::PossibleStarts(options);
    return std::all_of(starts.begin(), starts.end(), [&](station::StartKind start) {
        return writer.WriteAll(station::MakeFiles(options, start));
    });
}

station::LineScenario ScenarioAt(const LineSample& sample, uint32_t seed)
{
    if (sample.kind == LineSample::Kind::Fault)
        return station::ScenarioOf(sample.fault);
    return sample.kind == LineSample::Kind::RandomFaults ? station::RandomFault(seed)
                                                         : station::RandomQuiet(seed);
}

// The lines of the recordings, each once, in order of appearance.
std::vector<station::StationLine> LinesOf(const LineSample& sample)
{
    std::vector<station::StationLine> lines;
    for (uint64_t seed = sample.firstSeed; seed <= sample.lastSeed; ++seed) {
        const station::StationLine line = ScenarioAt(sample, static_cast<uint32_t>(seed)).line;
        if (std::none_of(lines.begin(), lines.end(),
                         [&](const station::StationLine& known) { return known.name == line.name; }))
            lines.push_back(line);
    }
    return lines;
}

bool WriteLineSample(FileWriter& writer, const LineSample& sample)
{
    const std::vector<station::StationLine> lines = LinesOf(sample);
    if (!writer.Write({QLatin1String(IniName), station::MakeLinesStationIni(lines, {}).toUtf8()}) ||
        !writer.Write({QLatin1String(LinesName), station::MakeLinesIni(lines).toUtf8()}))
        return false;
    for (uint64_t seed = sample.firstSeed; seed <= sample.lastSeed; ++seed)
        if (!writer.WriteAll(station::MakeLineFiles(ScenarioAt(sample, static_cast<uint32_t>(seed)))))
            return false;
    return true;
}

// One line for each recorder, as the files are many.
bool WriteArchive(FileWriter& writer, const QDir& directory, const station::ArchiveOptions& options)
{
    QMap<QString, int> recordings;
    for (const QString& recorder : station::ArchiveDirectories())
        MakeDirectory(QStringLiteral("--out"), directory.filePath(recorder));
    const bool isWritten = station::MakeArchive(options, [&](const recorderfile::NamedFile& file) {
        if (zu::IsFirstFileName(file.name))
            ++recordings[file.name.section(QLatin1Char('/'), 0, 0)];
        return writer.Write(file);
    });
    for (auto one = recordings.cbegin(); isWritten && one != recordings.cend(); ++one)
        PrintLine(Tr("sample", "%1, recordings: %2").arg(directory.filePath(one.key())).arg(one.value()));
    return isWritten;
}

QString ConvertCommand(const QString& program, const QDir& directory)
{
    const QString records = ShellWord(directory.filePath(QStringLiteral("comtrade")));
    return QStringLiteral("mkdir -p %1 && %2 convert --ini %3 --defaults %4 --device %5 --out %1 %6/%5_*.ZU")
        .arg(records, ShellWord(program), ShellWord(directory.filePath(QLatin1String(IniName))),
             station::DefaultsSection(), station::DeviceSection(), ShellWord(directory.path()));
}

QString UpdateCommand(const QString& program, const QDir& directory)
{
    return QStringLiteral("%1 archive update %2").arg(ShellWord(program), ShellWord(directory.path()));
}

int RunSample(const SampleCommandOptions& options, const QString& program)
{
    const bool ofLine = IsLineSample(options.sample);
    const LineSample line = ofLine ? CheckedLineSample(options.sample) : LineSample{};
    const station::StationOptions station =
        ofLine ? station::StationOptions() : CheckedStation(options.sample);
    const QString out = FromUtf8(options.out);
    MakeDirectory(QStringLiteral("--out"), out);
    const QDir directory(CheckedDirectory(QStringLiteral("--out"), out));
    const bool isArchive = ofLine && line.kind == LineSample::Kind::Archive;
    const QStringList older = isArchive ? PresentArchive(directory) : PresentFiles(directory);
    if (!older.isEmpty() && !options.force)
        throw ConfigurationError(
            Tr("sample", "--out: '%1' already has '%2'; choose another directory, or replace the sample and "
                         "its ini file by --force")
                .arg(directory.path(), older.first()));
    FileWriter writer(directory, older, !isArchive);
    const bool isWritten = isArchive ? WriteArchive(writer, directory, line.archive)
                           : ofLine  ? WriteLineSample(writer, line)
                                     : WriteStation(writer, station);
    if (!isWritten)
        return ExitFailed;
    writer.RemoveOlder();
    PrintLine(isArchive ? UpdateCommand(program, directory) : ConvertCommand(program, directory));
    return ExitDone;
}

} // namespace

void AddSampleCommand(CLI::App& app, Action& chosen, const QString& program)
{
    CLI::App* command = app.add_subcommand(
        "sample", HelpText("sample", "Write a sample station: recordings and their ini file"));
    const auto options = std::make_shared<SampleCommandOptions>();
    AddValue(*command, "--out", options->out, "DIR",
             HelpText("sample", "Directory for the files; it is made if it is not there"))
        ->required();
    AddStationOptions(*command, options->sample);
    command->add_flag("--force", options->force,
                      HelpText("sample", "Replace an older sample in the directory"));
    command->footer(HelpText(
        "sample",
        "The station is a substation of 220/110 kV with a short circuit on a line. "
        "There is one recording for "
        "each\n"
        "kind of start, and the ini file ZuDrv.ini. The same options give the same "
        "bytes everywhere. The files\n"
        "written are listed; the last line is the command that converts them.\n"
        "\n"
        "A simulated fault (--fault AG to ABC, --random-fault) is on a line between two "
        "sources whose data\n"
        "are in lines.ini; a file .truth.json beside each recording says where the fault "
        "is, and all else\n"
        "that an analysis should find. An archive (--archive) has a directory for each recorder, with "
        "the same\n"
        "files; the last line is the command that catalogues it.\n"
        "\n"
        "Examples:\n"
        "  zucmtr sample --out station --fault three --segments 2\n"
        "  zucmtr sample --out faults --fault BCG --distance 70 --resistance 5 --reclose fault\n"
        "  zucmtr sample --out random --random-fault 1-20\n"
        "  zucmtr sample --out recordings --archive 20"));
    command->callback([options, program, &chosen] {
        chosen = [options, program] { return RunSample(*options, program); };
    });
}
