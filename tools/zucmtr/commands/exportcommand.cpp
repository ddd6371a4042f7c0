#include "zucmtr/commands/exportcommand.h"

#include "explain/file.h"
#include "forms/channelchoice.h"
#include "forms/fileerror.h"
#include "forms/notes.h"
#include "forms/spantext.h"
#include "forms/timewindow.h"
#include "output/target.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/exportfile.h"
#include "zucmtr/commands/exportoptions.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

struct ExportOptions
{
    forms::FormWords form;
    forms::PartWords part;
    ReadingOptions reading;
    std::string out;
    bool makeOut = false;
    bool replace = false;
    bool json = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

// What is not as it should be in a record that the user has; ours are as they should be.
QStringList NotesOf(const QString& file, const forms::Exported& exported)
{
    QStringList notes;
    if (comtrade::IsRecordFile(file))
        notes = forms::ForgivenLines(exported);
    for (const forms::Note& note : forms::NotesOf(exported))
        notes << note.text;
    return notes;
}

ExportResult Export(const ExportTarget& target, const forms::Request& request, const ExportOptions& options)
{
    const RecordSource record(target.file, ChoiceOf(options.reading.choice), options.reading.plain);
    ExportOrder order{target, request, options.part, record.Path(), {}, options.replace, interrupt::Came};
    order.reading.encoding = EncodingOf(options.reading.encoding, target.file);
    return ExportFile(order, ExportOptionNames);
}

void Print(const ExportTarget& target, const forms::Request& request, const ExportResult& outcome, bool json)
{
    const QStringList notes = NotesOf(target.file, outcome.exported);
    const comtrade::Configuration& config = outcome.exported.config;
    const bool isStandardOutput = !target.stream.isEmpty() && output::IsStandardOutput(target.stream);
    if (json && !isStandardOutput) {
        PrintJson({{"file", target.file},
                   {"reason", QJsonValue()},
                   {"error", QJsonValue()},
                   {"files", QJsonArray::fromStringList(outcome.files)},
                   {"form", forms::FormText(request, config)},
                   {"samples", outcome.exported.samples},
                   {"analog", static_cast<int>(config.analog.size())},
                   {"discrete", static_cast<int>(config.states.size())},
                   {"notes", QJsonArray::fromStringList(notes)}});
        return;
    }
    if (!isStandardOutput)
        PrintLine(Tr("export", "%1 -> %2 (%3): samples: %4, channels: %5 + %6; read back and compared")
                      .arg(target.file, outcome.files.first(), forms::FormText(request, config))
                      .arg(outcome.exported.samples)
                      .arg(config.analog.size())
                      .arg(config.states.size()));
    for (const QString& note : notes)
        Complain(note.startsWith(target.file.chopped(4)) ? note : target.file + QLatin1String(": ") + note);
}

ExitCode Refuse(const QString& file, const char* reason, const QString& text, bool json)
{
    if (json)
        PrintJson({{"file", file}, {"reason", QLatin1String(reason)}, {"error", text}});
    Complain(text.startsWith(file) ? text : file + QLatin1String(": ") + text);
    return ExitFailed;
}

// The exit code of the failure that is being handled.
ExitCode Explain(const QString& file, bool json)
{
    const char* unreadable =
        comtrade::IsRecordFile(file) ? reason::RecordUnreadable : reason::RecordingUnreadable;
    try {
        throw;
    } catch (const ConfigurationError& error) { // the other files may have other ini files
        Complain(error.Lines());
        return ExitUsage;
    } catch (const PresentError& error) {
        return Refuse(file, reason::FilePresent,
                      Tr("export", "'%1' is there already; --replace replaces it").arg(error.Message()),
                      json);
    } catch (const forms::NoSuchChannel& error) {
        return Refuse(file, reason::ChannelMissing, error.Message(), json);
    } catch (const forms::NoSamples& error) {
        return Refuse(file, reason::NothingThere, error.Message(), json);
    } catch (const forms::FormError& error) {
        return Refuse(file, reason::FormCannotHold, error.Message(), json);
    } catch (const forms::MomentError& error) {
        return Refuse(file, reason::NothingThere, error.Message(), json);
    } catch (const forms::Different& error) {
        return Refuse(file, reason::RecordWrong, error.Message(), json);
    } catch (const StagingError& error) {
        return Refuse(file, reason::RecordNotInPlace, error.Message(), json);
    } catch (const forms::FileError& error) {
        return Refuse(file, reason::RecordNotInPlace, error.Message(), json);
    } catch (const std::bad_alloc&) {
        return Refuse(file, reason::OutOfMemory, text::MemoryMessage(), json);
    } catch (const text::Error& error) {
        const QString& message = error.Message();
        return Refuse(file, reason::OfLibrary(message, explain::WordOf(file, unreadable)), message, json);
    }
}

ExitCode Show(const ExportTarget& target, const forms::Request& request, const ExportOptions& options)
{
    try {
        Print(target, request, Export(target, request, options), options.json);
        return ExitDone;
    } catch (const forms::Stopped&) {
        return ExitFailed; // the signal decides
    } catch (const std::exception&) {
        return Explain(target.file, options.json);
    }
}

// What is to be done with each of the files.
struct Plan
{
    forms::Request request;
    std::vector<ExportTarget> targets;
};

Plan PlanOf(const ExportOptions& options)
{
    try {
        const QString out = FromUtf8(options.out);
        Plan plan;
        plan.request = forms::RequestOf(options.form, options.part, out, ExportOptionNames);
        if (options.makeOut)
            MakeDirectory(QStringLiteral("--out"), out);
        plan.targets = TargetsOf(FromUtf8(options.files), out, plan.request.form, ExportOptionNames);
        return plan;
    } catch (const forms::WordError& error) {
        throw UsageError(error.Message(), QStringLiteral("zucmtr export"));
    }
}

int RunExport(const ExportOptions& options)
{
    interrupt::Install();
    interrupt::InstallForClosedPipe();
    LimitMemory(options.maxMemory);
    const Plan plan = PlanOf(options);
    Progress progress(plan.targets.size(), plan.targets.size() > 1);
    ExitCode worst = ExitDone;
    for (size_t i = 0; i < plan.targets.size() && !interrupt::Came(); ++i) {
        progress.Show(i);
        progress.Hide();
        worst = std::max(worst, Show(plan.targets[i], plan.request, options));
    }
    if (interrupt::Came())
        return interrupt::ExitCode();
    return worst;
}

void AddOptions(CLI::App& command, ExportOptions& options)
{
    AddValue(command, "-o,--out", options.out, "PATH",
             HelpText("export",
                      "The file, or the directory for several; - is standard output. Default: beside "
                      "FILE, under its name"));
    command.add_flag("--make-out", options.makeOut, HelpText("export", "Make the directory of --out"))
        ->needs("--out");
    command.add_flag("--replace", options.replace, HelpText("export", "Replace files that are there"));
    AddExportFormOptions(command, options.form);
    AddExportPartOptions(command, options.part);
    AddReadingOptions(command, options.reading,
                      HelpText("export", "Take no ini file: circuits and names as in the recording"));
    command.add_flag("--json", options.json, HelpText("export", "One JSON object a file, for programs"));
    AddMemoryOption(command, options.maxMemory);
}

} // namespace

void AddExportCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "export", HelpText("export", "Write recordings and COMTRADE records in another form"));
    const auto options = std::make_shared<ExportOptions>();
    AddOptions(*command, *options);
    AddArgument(*command, "FILE", options->files,
                HelpText("export", "First files of recordings (.ZU), or the .cfg or .cff files of records"));
    command->footer(HelpText(
        "export",
        "COMTRADE of both revisions and all data types, CSV tables and MAT files, of the whole or of a part: "
        "some\n"
        "time, some channels, fewer samples. Codes, coefficients, times and texts stay as they are where the "
        "form\n"
        "holds them. Each file is read back and compared, every value of every sample; what a form cannot "
        "hold\n"
        "is an error that names the place.\n"
        "\n"
        "Exit code: 0 done, 1 at least one file was not exported, 2 wrong usage.\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station --force\n"
        "  zucmtr export station/Vostochnaya_000123.ZU -o station/fault.csv --window fault --channels "
        "'U*'"));
    command->callback([options, &chosen] { chosen = [options] { return RunExport(*options); }; });
}
