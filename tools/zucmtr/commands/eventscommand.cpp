#include "zucmtr/commands/eventscommand.h"

#include "analysis/summary.h"
#include "comtrade/record.h"
#include "explain/file.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

struct EventsOptions
{
    ReadingOptions reading;
    bool json = false;
    bool csv = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

analysis::Summary SummaryOf(const QString& file, const EventsOptions& options)
{
    const RecordSource source(file, ChoiceOf(options.reading.choice), options.reading.plain);
    const LineData data = LoadLines(FromUtf8(options.reading.lines), source.Ini(), file);
    analysis::Question question;
    question.record = source.Path();
    question.lines = data.lines;
    question.lineFile = data.path;
    question.encoding = EncodingOf(options.reading.encoding, file);
    return analysis::Summarise(question);
}

void Print(const QString& file, const analysis::Summary& summary, const EventsOptions& options, bool isFirst)
{
    if (options.json) {
        QJsonObject object = analysis::JsonOf(summary);
        object["file"] = file;
        PrintJson(object);
        return;
    }
    if (options.csv) {
        PrintBytes(analysis::CsvOf(summary, file));
        return;
    }
    if (!isFirst)
        PrintLine(QString());
    PrintLine(file);
    for (const QString& sentence : analysis::SentencesOf(summary))
        PrintLine(QStringLiteral("  ") + sentence);
    const QStringList table = analysis::TableOf(summary);
    if (!table.isEmpty())
        PrintLine(QString());
    for (const QString& line : table)
        PrintLine(line);
}

// Programs get an object for every file, whatever is wrong with it.
ExitCode Refuse(const QString& file, const char* reason, const QString& text, const EventsOptions& options)
{
    if (options.json)
        PrintJson(
            {{"file", file}, {"reason", QLatin1String(explain::WordOf(file, reason))}, {"error", text}});
    Complain(text.startsWith(file) ? text : file + QLatin1String(": ") + text);
    return ExitFailed;
}

// ExitDone, or why nothing can be said about the file.
ExitCode Show(const QString& file, const EventsOptions& options, bool isFirst)
{
    const char* unreadable =
        comtrade::IsRecordFile(file) ? reason::RecordUnreadable : reason::RecordingUnreadable;
    try {
        Print(file, SummaryOf(file, options), options, isFirst);
        return ExitDone;
    } catch (const ConfigurationError& error) { // the other files may have other ini files
        Complain(error.Lines());
        return ExitUsage;
    } catch (const comtrade::Error& error) {
        return Refuse(file, reason::RecordUnreadable, text::MessageOf(error), options);
    } catch (const SourceError& error) {
        const QString message = text::MessageOf(error);
        return Refuse(file, reason::OfLibrary(message, unreadable), message, options);
    } catch (const std::bad_alloc&) {
        return Refuse(file, reason::OutOfMemory, text::MemoryMessage(), options);
    }
}

int RunEvents(const EventsOptions& options)
{
    // However the program ends, the temporary record of a recording must go.
    interrupt::Install();
    interrupt::InstallForClosedPipe();
    LimitMemory(options.maxMemory);
    if (options.csv)
        PrintBytes(analysis::CsvHead());
    Progress progress(options.files.size(), options.files.size() > 1);
    ExitCode worst = ExitDone;
    for (size_t i = 0; i < options.files.size() && !interrupt::Came(); ++i) {
        progress.Show(i);
        progress.Hide();
        worst = std::max(worst, Show(FromUtf8(options.files[i]), options, i == 0));
    }
    if (interrupt::Came())
        return interrupt::ExitCode();
    return worst;
}

void AddOptions(CLI::App& command, EventsOptions& options)
{
    CLI::Option* json =
        command.add_flag("--json", options.json, HelpText("events", "One JSON object a file, for programs"));
    command
        .add_flag("--csv", options.csv,
                  HelpText("events", "The events of all files as one CSV table (RFC 4180), for spreadsheets"))
        ->excludes(json);
    AddReadingOptions(command, options.reading,
                      HelpText("events", "Take no ini file: circuits and names as in the recording"));
    AddMemoryOption(command, options.maxMemory);
}

} // namespace

void AddEventsCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "events", HelpText("events", "Say what happened: the fault, the events, what the protection did"));
    const auto options = std::make_shared<EventsOptions>();
    AddOptions(*command, *options);
    AddArgument(*command, "FILE", options->files,
                HelpText("events", "First files of recordings (.ZU), or the .cfg or .cff files of records"));
    command->footer(HelpText(
        "events",
        "In a few sentences: which circuit and phases failed and when, how far away, what protection and\n"
        "breaker did. Below them each change of a discrete signal: its time of day, from the trigger and "
        "since\n"
        "the one before, its circuit and what it is. The distance needs the data of the line in lines.ini.\n"
        "\n"
        "Exit code: 0 done, 1 at least one file cannot be read, 2 wrong usage, or a mistake in lines.ini.\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station --force\n"
        "  zucmtr events station/Vostochnaya_000123.ZU"));
    command->callback([options, &chosen] { chosen = [options] { return RunEvents(*options); }; });
}
