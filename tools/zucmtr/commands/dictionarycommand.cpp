#include "zucmtr/commands/dictionarycommand.h"

#include "dictionary/draft.h"
#include "output/outputfile.h"
#include "text/texts.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/values.h"

#include "explain/file.h"
#include "recording/anchanneldata.h"
#include "recording/dichanneldata.h"
#include "recording/zufileformat.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace {

const QString OutputOption = QStringLiteral("--output");
const QString LineDataOption = QStringLiteral("--line-data");

struct DictionaryOptions
{
    std::string file;
    std::string section = "Device";
    std::string output;
    std::string lineData; // path of the draft of lines.ini
    bool complete = false;
    bool force = false;
    uint64_t maxMemory = 0;
};

std::vector<dictionary::Signal> AnalogOf(const ZuFileFormat& recording)
{
    std::vector<dictionary::Signal> analog;
    analog.reserve(recording.AnChannels.size());
    for (const AnChannelData* channel : recording.AnChannels)
        analog.push_back({channel->Name, channel->Unit});
    return analog;
}

QStringList LinesFor(const ZuFileFormat& recording, const DictionaryOptions& options)
{
    const std::vector<dictionary::Signal> analog = AnalogOf(recording);
    std::vector<dictionary::Signal> discrete;
    discrete.reserve(recording.DiChannels.size());
    for (const DiChannelData* channel : recording.DiChannels)
        discrete.push_back({channel->Name, QString()});
    QStringList lines = dictionary::DictionaryLines(analog, discrete);
    if (!options.complete)
        return lines;
    return dictionary::CompleteIni(FromUtf8(options.section), recording.Identity, lines);
}

void WriteLines(const QString& option, const QString& path, const QStringList& lines, bool force)
{
    if (output::TargetOf(path).kind == output::Kind::RegularFile && !force)
        throw ConfigurationError(
            Tr("dictionary", "%1: '%2' is there already; choose another name, or replace it by --force")
                .arg(option, path));
    const QByteArray bytes = (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    QString error;
    if (!output::WriteOutput(path, bytes, error))
        throw ConfigurationError(Tr("dictionary", "%1: '%2' cannot be written: %3").arg(option, path, error));
}

int RunDictionary(const DictionaryOptions& options)
{
    LimitMemory(options.maxMemory);
    const QString section = FromUtf8(options.section);
    if (section.trimmed().isEmpty() || section.contains(QLatin1Char('\n')))
        throw ConfigurationError(Tr("dictionary", "--section: '%1' is no name of a section").arg(section));
    const QString path = FromUtf8(options.file);
    CheckIsNoInput(OutputOption, FromUtf8(options.output), path);
    CheckIsNoInput(LineDataOption, FromUtf8(options.lineData), path);
    CheckOutputsDiffer(
        {{OutputOption, FromUtf8(options.output)}, {LineDataOption, FromUtf8(options.lineData)}});
    ZuFileFormat recording;
    if (!recording.Load(path)) {
        Complain(path + QLatin1String(": ") + explain::NotLoaded(path, recording.ErrorText));
        return ExitFailed;
    }
    if (!options.lineData.empty())
        WriteLines(LineDataOption, FromUtf8(options.lineData), dictionary::LineDataDraft(AnalogOf(recording)),
                   options.force);
    const QStringList lines = LinesFor(recording, options);
    if (!options.output.empty()) {
        WriteLines(OutputOption, FromUtf8(options.output), lines, options.force);
        return ExitDone;
    }
    for (const QString& line : lines)
        PrintLine(line);
    return ExitDone;
}

} // namespace

void AddDictionaryCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "dictionary",
        HelpText("dictionary", "Write a first sorting dictionary for the channels of a recording"));
    const auto options = std::make_shared<DictionaryOptions>();
    command->add_flag(
        "--complete", options->complete,
        HelpText("dictionary", "A whole ini file, with which the recording can be converted at once"));
    AddValue(*command, "--section", options->section, "NAME",
             HelpText("dictionary", "Name of the device's section in a whole ini file. Default: Device"));
    AddValue(
        *command, "-o,--output", options->output, "FILE",
        HelpText("dictionary", "File to write; it must not be there. Default: standard output, as for -"));
    AddValue(*command, "--line-data", options->lineData, "FILE",
             HelpText("dictionary", "Write a first lines.ini as well: the data of the lines, which the "
                                    "distance to a fault needs, to be filled in"));
    command->add_flag("--force", options->force,
                      HelpText("dictionary", "Replace the files of --output and --line-data"));
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(*command, "FILE", options->file, HelpText("dictionary", "First file of a recording (.ZU)"));
    command->footer(HelpText(
        "dictionary",
        "Voltage level, equipment and groups are guessed from names and units; every guess has a comment. "
        "What\n"
        "could not be guessed stays unsorted until somebody adds its parameters. Names that an ini file "
        "cannot\n"
        "hold become comments.\n"
        "\n"
        "Exit code: 0 written, 1 the recording cannot be read, 2 wrong usage.\n"
        "\n"
        "Example, with the sample station:\n"
        "  mkdir -p new\n"
        "  zucmtr sample --out station\n"
        "  zucmtr dictionary --complete --output new/ZuDrv.ini --force station/Vostochnaya_000123.ZU\n"
        "  zucmtr convert --ini new/ZuDrv.ini --out new station/Vostochnaya_000123.ZU"));
    command->callback([options, &chosen] { chosen = [options] { return RunDictionary(*options); }; });
}
