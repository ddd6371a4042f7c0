#include "zucmtr/commands/infocommand.h"

#include "analysis/summary.h"
#include "base/chainnames.h"
#include "info/description.h"
#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/host/recordinglist.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

struct InfoOptions
{
    bool json = false;
    bool withoutChannels = false;
    std::string encoding;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

// A message about a record may start with the name of one of its files, the one that is bad.
bool NamesFile(const QString& text, const QString& file)
{
    const int extension = QFileInfo(file).suffix().size();
    return extension > 0 && text.startsWith(file.chopped(extension));
}

// A recording whose recorder is not chosen is converted without its ini file.
RecordSource SourceOf(const QString& file)
{
    try {
        return RecordSource(file, DeviceChoice(), false);
    } catch (const ConfigurationError&) {
        return RecordSource(file, DeviceChoice(), true);
    }
}

// What happened. A file whose description is good may still be one that cannot be converted.
void AddSummary(info::Description& description, const QString& encoding)
{
    const QString& file = description.file;
    try {
        const RecordSource source = SourceOf(file);
        const LineData data = LoadLines(QString(), source.Ini(), file);
        analysis::Question question;
        question.record = source.Path();
        question.lines = data.lines;
        question.lineFile = data.path;
        question.encoding = encoding;
        const analysis::Summary summary = analysis::Summarise(question);
        const bool hasNews = summary.findings.fault || !summary.events.events.empty();
        if (hasNews)
            description.Add("summary", Tr("info", "What happened"), analysis::ShortJsonOf(summary),
                            analysis::SentencesOf(summary).join(QLatin1Char(' ')));
        else
            description.AddForPrograms("summary", analysis::ShortJsonOf(summary));
    } catch (const std::bad_alloc&) {
        description.notes << text::MemoryMessage();
    } catch (const text::Error& error) {
        description.notes << text::MessageOf(error);
    }
}

// False if something is wrong with the file.
bool Show(const QString& file, const InfoOptions& options)
{
    const QString encoding = EncodingOf(options.encoding, file);
    info::Description description = info::Describe(file, encoding);
    if (description.error.isEmpty())
        AddSummary(description, encoding);
    const QString first = zu::FirstFileOf(file);
    if (!first.isEmpty())
        description.notes
            << (QFileInfo::exists(first)
                    ? Tr("info", "this file continues a recording; its first file is %1").arg(first)
                    : ContinuationText(file));
    if (options.json) {
        PrintJson(info::JsonOf(description, !options.withoutChannels));
    } else if (!description.facts.empty()) {
        for (const QString& line : info::LinesOf(description, !options.withoutChannels))
            PrintLine(line);
    }
    if (!description.error.isEmpty())
        Complain(NamesFile(description.error, file) ? description.error
                                                    : file + QLatin1String(": ") + description.error);
    return description.error.isEmpty();
}

int RunInfo(const InfoOptions& options)
{
    LimitMemory(options.maxMemory);
    bool good = true;
    for (const std::string& file : options.files)
        good = Show(FromUtf8(file), options) && good;
    return good ? ExitDone : ExitFailed;
}

} // namespace

void AddInfoCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("info", HelpText("info", "Show what is in recordings and COMTRADE records"));
    const auto options = std::make_shared<InfoOptions>();
    command->add_flag("--json", options->json, HelpText("info", "One JSON object a file, for programs"));
    command->add_flag("--no-channels", options->withoutChannels,
                      HelpText("info", "Leave out the lists of channels"));
    AddEncodingOption(*command, options->encoding);
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(*command, "FILE", options->files,
                HelpText("info", "First files of recordings (.ZU), or the .cfg or .cff files of records"));
    command->footer(HelpText(
        "info",
        "Of a recording: its times with zone, duration, rate, the segments found and why the chain\n"
        "ends, the start comment as stored and as understood, the channels. Of a record: what its\n"
        "configuration says, and whether all its data are there. Of both: what happened, as 'zucmtr events' "
        "says it.\n"
        "\n"
        "Exit code: 0 all files are good, 1 something is wrong with at least one, 2 wrong usage.\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station\n"
        "  zucmtr info --no-channels station/*.ZU"));
    command->callback([options, &chosen] { chosen = [options] { return RunInfo(*options); }; });
}
