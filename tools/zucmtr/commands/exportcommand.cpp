#include "zucmtr/commands/exportcommand.h"

#include "analysis/summary.h"
#include "explain/file.h"
#include "forms/channelchoice.h"
#include "forms/exporting.h"
#include "forms/spantext.h"
#include "forms/timewindow.h"
#include "inicheck/nearest.h"
#include "output/outputfile.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/exportoptions.h"
#include "zucmtr/commands/exporttarget.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/findingline.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

struct ExportOptions
{
    ExportFormOptions form;
    ExportPartOptions part;
    ReadingOptions reading;
    std::string out;
    bool makeOut = false;
    bool replace = false;
    bool json = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

/// Why a file was not exported: a word for programs and a text for people.
class ExportFailure : public text::Error
{
public:
    ExportFailure(const char* reason_, const QString& sentence) : text::Error(sentence), reason(reason_) {}
    const char* const reason;
};

// What became of a file.
struct Outcome
{
    forms::Exported exported;
    QStringList files; // paths
    QStringList notes;
};

// The fault with a margin of five periods.
forms::Span AroundFault(const QString& record)
{
    constexpr double margin = 0.1; // s
    const analysis::Summary summary = analysis::Summarise({record, {}, QString()});
    if (!summary.findings.fault)
        throw ExportFailure(reason::NothingThere,
                            Tr("export", "--window fault: no fault was found; give --from and --to"));
    forms::Span span;
    span.from = summary.findings.fault->Onset() - margin;
    if (const std::optional<double>& clearing = summary.findings.fault->Clearing())
        span.to = *clearing + margin;
    return span;
}

forms::Span SpanOf(const ExportPartOptions& part, const QString& record,
                   const comtrade::ReadingOptions& reading)
{
    if (part.window == "fault")
        return AroundFault(record);
    if (!part.window.empty()) { // the same window as that of a page
        const double seconds = QByteArray::fromStdString(part.window).toDouble();
        return {-seconds / 3, seconds * 2 / 3};
    }
    if (part.from.empty() && part.to.empty())
        return {};
    const comtrade::Record opened(record, reading);
    const forms::Span span = {forms::SecondsOf(FromUtf8(part.from), opened.Config()),
                              forms::SecondsOf(FromUtf8(part.to), opened.Config())};
    if (span.from && span.to && *span.from > *span.to)
        throw ExportFailure(
            reason::NothingThere,
            Tr("export", "--to '%1' is before --from '%2'").arg(FromUtf8(part.to), FromUtf8(part.from)));
    return span;
}

// What is not as it should be in a record that the user has; ours are as they should be.
QStringList ForgivenOf(const QString& file, const forms::Exported& exported)
{
    QStringList texts;
    if (!comtrade::IsRecordFile(file))
        return texts;
    for (const comtrade::Finding& one : exported.forgiven.All())
        texts << text::FindingText({one.file, one.line, one.column, one.severity, one.reason, one.text});
    return texts;
}

// "name, name and 5 more"
QString Listed(const QStringList& names)
{
    constexpr int most = 5;
    const QString text = names.mid(0, most).join(QLatin1String(", "));
    return names.size() <= most ? text : Tr("export", "%1 and %2 more").arg(text).arg(names.size() - most);
}

QString TextOf(const forms::Exported& exported, const forms::NewScale& scale)
{
    const comtrade::AnalogChannel& channel = exported.config.analog[scale.channel];
    return QStringLiteral("%1 (±%2 %3)")
        .arg(channel.name, QString::number(scale.halfStep, 'g', 3), channel.unit);
}

// What the user should know about what was written.
QStringList NotesOf(const forms::Exported& exported)
{
    QStringList notes;
    if (exported.total != exported.announced)
        notes << Tr("export",
                    "the configuration announces %1 samples, the data have %2; the configuration that "
                    "was written says %2")
                     .arg(exported.announced)
                     .arg(exported.total);
    if (!exported.newScales.empty()) {
        QStringList names;
        for (const forms::NewScale& scale : exported.newScales)
            names << TextOf(exported, scale);
        notes << Tr("export",
                    "the form has whole codes, the source has not; channels with new codes, a and b "
                    "(greatest error): %1")
                     .arg(Listed(names));
    }
    if (!exported.resampling.isEmpty())
        notes << exported.resampling;
    if (exported.rounded > 0)
        notes << Tr("export", "values rounded to single precision: %1").arg(exported.rounded);
    if (!exported.lost.isEmpty())
        notes << Tr("export", "left out, as revision 1999 has no place for it: %1")
                     .arg(exported.lost.join(QLatin1String(", ")));
    if (exported.equipmentLeftOut)
        notes << Tr(
            "export",
            "left out of the INF file: sections on equipment, which count channels that are not there");
    if (exported.statesLeftOut > 0)
        notes << Tr("export", "discrete channels left out, since they never change: %1")
                     .arg(exported.statesLeftOut);
    return notes;
}

// The most similar name or circuit.
QString Meant(const QString& record, const comtrade::ReadingOptions& reading, const QString& pattern)
{
    const comtrade::Record opened(record, reading);
    QStringList names;
    for (const comtrade::AnalogChannel& channel : opened.Config().analog)
        names << channel.name << channel.circuit;
    for (const comtrade::StateChannel& channel : opened.Config().states)
        names << channel.name << channel.circuit;
    names.removeDuplicates();
    return inicheck::MeantText(inicheck::Nearest(pattern, names));
}

void CheckPresent(const ExportTarget& target, forms::Form form, bool replace)
{
    const QStringList present = PresentFiles(target, form);
    if (target.stream.isEmpty() && !replace && !present.isEmpty())
        throw ExportFailure(
            reason::FilePresent,
            Tr("export", "'%1' is there already; --replace replaces it").arg(present.first()));
}

// A verified file, to standard output, a device or a pipe.
void Pour(const QString& path, const QString& stream)
{
    constexpr qint64 step = qint64{1} << 20;
    QFile file(path);
    output::OutputFile out(stream);
    bool good = file.open(QIODevice::ReadOnly) && out.Open();
    while (good && !file.atEnd())
        good = out.Write(file.read(step));
    if (!good || !out.Commit())
        throw ExportFailure(reason::RecordNotInPlace, stream + QStringLiteral(": ") + out.ErrorText());
}

// Writes the files and puts them in their place; returns their paths.
QStringList Write(const forms::Source& source, const forms::Request& request, const ExportTarget& target,
                  bool replace, forms::Exported& exported)
{
    if (!target.stream.isEmpty()) {
        const QTemporaryDir directory;
        const QString base = directory.filePath(QStringLiteral("export"));
        exported = forms::Export(source, request, base);
        Pour(base + exported.files.first(), target.stream);
        return {target.stream};
    }
    CheckPresent(target, request.form, replace);
    Staging staging(target.directory);
    exported = forms::Export(source, request, staging.Directory() + QLatin1Char('/') + target.base);
    staging.Lock();
    CheckPresent(target, request.form, replace); // also what has appeared meanwhile
    QStringList names;
    QStringList paths;
    for (const QString& ending : exported.files) {
        names << target.base + ending;
        paths << target.directory + QLatin1Char('/') + names.last();
    }
    staging.Commit(names, false);
    return paths;
}

Outcome Export(const ExportTarget& target, forms::Request request, const ExportOptions& options)
{
    const RecordSource record(target.file, ChoiceOf(options.reading.choice), options.reading.plain);
    comtrade::ReadingOptions reading;
    reading.encoding = EncodingOf(options.reading.encoding, target.file);
    Outcome outcome;
    try {
        request.span = SpanOf(options.part, record.Path(), reading);
        const forms::Source source = {record.Path(), reading, [] { return interrupt::Came(); }};
        outcome.files = Write(source, request, target, options.replace, outcome.exported);
    } catch (const forms::NoSuchChannel& error) {
        throw ExportFailure(reason::ChannelMissing,
                            error.Message() + Meant(record.Path(), reading, error.pattern));
    }
    outcome.notes = ForgivenOf(target.file, outcome.exported) + NotesOf(outcome.exported);
    return outcome;
}

void Print(const ExportTarget& target, const forms::Request& request, const Outcome& outcome, bool json)
{
    const comtrade::Configuration& config = outcome.exported.config;
    const bool isStandardOutput = !target.stream.isEmpty() && output::IsStandardOutput(target.stream);
    if (json && !isStandardOutput) {
        PrintJson({{"file", target.file},
                   {"reason", QJsonValue()},
                   {"error", QJsonValue()},
                   {"files", QJsonArray::fromStringList(outcome.files)},
                   {"form", FormText(request, config)},
                   {"samples", outcome.exported.samples},
                   {"analog", static_cast<int>(config.analog.size())},
                   {"discrete", static_cast<int>(config.states.size())},
                   {"notes", QJsonArray::fromStringList(outcome.notes)}});
        return;
    }
    if (!isStandardOutput)
        PrintLine(Tr("export", "%1 -> %2 (%3): samples: %4, channels: %5 + %6; read back and compared")
                      .arg(target.file, outcome.files.first(), FormText(request, config))
                      .arg(outcome.exported.samples)
                      .arg(config.analog.size())
                      .arg(config.states.size()));
    for (const QString& note : outcome.notes)
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
    } catch (const ExportFailure& error) {
        return Refuse(file, error.reason, error.Message(), json);
    } catch (const forms::NoSamples& error) {
        return Refuse(file, reason::NothingThere, error.Message(), json);
    } catch (const forms::FormError& error) {
        return Refuse(file, reason::FormCannotHold, error.Message(), json);
    } catch (const forms::MomentError& error) {
        return Refuse(file, reason::NothingThere, error.Message(), json);
    } catch (const forms::Different& error) {
        return Refuse(file, reason::RecordWrong,
                      Tr("export", "what was written is wrong and was removed: %1").arg(error.Message()),
                      json);
    } catch (const StagingError& error) {
        return Refuse(file, reason::RecordNotInPlace, error.Message(), json);
    } catch (const forms::FileError& error) {
        return Refuse(file, reason::RecordNotInPlace, error.Message(), json);
    } catch (const std::bad_alloc&) {
        return Refuse(file, reason::OutOfMemory, text::MemoryMessage(), json);
    } catch (const text::Error& error) {
        const QString message = error.Message();
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

int RunExport(const ExportOptions& options)
{
    interrupt::Install();
    std::signal(SIGPIPE, SIG_IGN);
    LimitMemory(options.maxMemory);
    const QString out = FromUtf8(options.out);
    const forms::Request request = RequestOf(options.form, options.part, out);
    if (options.makeOut)
        MakeDirectory(QStringLiteral("--out"), out);
    const std::vector<ExportTarget> targets = TargetsOf(FromUtf8(options.files), out, request.form);
    Progress progress(targets.size(), targets.size() > 1);
    ExitCode worst = ExitDone;
    for (size_t i = 0; i < targets.size() && !interrupt::Came(); ++i) {
        progress.Show(i);
        progress.Hide();
        worst = std::max(worst, Show(targets[i], request, options));
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
