#include "zucmtr/commands/viewcommand.h"

#include "output/target.h"
#include "text/error.h"
#include "text/texts.h"
#include "view/view.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/recordsource.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <csignal>
#include <cstring>
#include <memory>

namespace {

struct ViewOptions
{
    std::string file;
    std::string page;
    std::string svg;
    std::string png;
    ReadingOptions reading;
    double window = 0;
    bool full = false;
};

// Beside the record, where convert would put it as well.
QString DefaultPage(const QString& file)
{
    const QFileInfo info(file);
    return info.path() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(".html");
}

// Says where the output is, unless standard output is the output itself.
void Confirm(const QString& path)
{
    if (!output::IsStandardOutput(path))
        PrintLine(path);
}

view::Held PutPage(const QString& record, const QString& page, const view::Options& options)
{
    const view::Held held = view::WritePage(record, page, options);
    Confirm(page);
    if (held.samples < held.total)
        Complain(Tr("view", "%1: the page holds %2 of %3 samples around the trigger; --window SECONDS "
                            "chooses how many, --full takes all")
                     .arg(page)
                     .arg(held.samples)
                     .arg(held.total));
    return held;
}

// What is odd about the record, no matter which device made it.
void ComplainOfRecord(const QString& file, const view::Held& held)
{
    if (held.announced != held.total)
        Complain(Tr("view", "%1: the configuration announces %2 samples, the data have %3")
                     .arg(file, QString::number(held.announced), QString::number(held.total)));
    if (!held.hasTrigger)
        Complain(Tr("view", "%1: the trigger time is outside the record's samples; check the start time, the "
                            "trigger time and the sampling rates in its configuration")
                     .arg(file));
    if (held.missing > 0)
        Complain(Tr("view", "%1: missing analog values: %2 (channels: %3); the traces have gaps there, and a "
                            "period with a gap has no RMS and no angle")
                     .arg(file, QString::number(held.missing), QString::number(held.incomplete)));
}

void WriteAll(const ViewOptions& options, const RecordSource& source)
{
    const QString& record = source.Path();
    LineData data = LoadLines(FromUtf8(options.reading.lines), source.Ini(), FromUtf8(options.file));
    view::Options settings;
    settings.lines = std::move(data.lines);
    settings.lineFile = data.path;
    settings.window = options.window;
    settings.full = options.full;
    settings.source = QFileInfo(FromUtf8(options.file)).fileName();
    const bool pictureAlone = options.page.empty() && !(options.svg.empty() && options.png.empty());
    view::Held held;
    if (!pictureAlone)
        held = PutPage(record,
                       options.page.empty() ? DefaultPage(FromUtf8(options.file)) : FromUtf8(options.page),
                       settings);
    const std::pair<const std::string&, view::Picture> pictures[] = {{options.svg, view::Picture::Svg},
                                                                     {options.png, view::Picture::Png}};
    for (const auto& [path, format] : pictures) {
        if (path.empty() || interrupt::Came())
            continue;
        held = view::WritePicture(record, FromUtf8(path), format, settings);
        Confirm(FromUtf8(path));
    }
    ComplainOfRecord(FromUtf8(options.file), held);
}

int RunView(const ViewOptions& options)
{
    // However the program ends, the temporary record of a recording must go: Ctrl-C lets the current work
    // finish, and a reader of standard output that goes away is a failure.
    interrupt::Install();
    std::signal(SIGPIPE, SIG_IGN);
    const QVector<QPair<QString, QString>> outputs = {{QStringLiteral("--out"), FromUtf8(options.page)},
                                                      {QStringLiteral("--svg"), FromUtf8(options.svg)},
                                                      {QStringLiteral("--png"), FromUtf8(options.png)}};
    for (const auto& [option, path] : outputs)
        CheckIsNoInput(option, path, FromUtf8(options.file));
    CheckOutputsDiffer(outputs);
    try {
        const RecordSource source(FromUtf8(options.file), ChoiceOf(options.reading.choice),
                                  options.reading.plain);
        if (!interrupt::Came())
            WriteAll(options, source);
    } catch (const ConfigurationError&) {
        throw;
    } catch (const text::Error& error) {
        Complain(error.Message());
        return ExitFailed;
    }
    return interrupt::Came() ? interrupt::ExitCode() : ExitDone;
}

void AddOutputOptions(CLI::App& command, ViewOptions& options)
{
    AddValue(command, "-o,--out", options.page, "FILE",
             HelpText("view", "The page; - is standard output. Default: FILE with the extension .html"));
    AddValue(command, "--svg", options.svg, "FILE",
             HelpText("view", "Write an overview as an SVG picture; without -o no page"));
    AddValue(command, "--png", options.png, "FILE",
             HelpText("view", "Write the overview as a PNG picture; likewise"));
    CLI::Option* window =
        AddValue(command, "--window", options.window, "SECONDS",
                 HelpText("view", "Hold this many seconds around the trigger, a third of them before it"))
            ->check(values::Number(0.001, 1e6));
    command
        .add_flag("--full", options.full,
                  HelpText("view", "Hold all samples, however large the page becomes"))
        ->excludes(window);
}

} // namespace

bool PaintsPicture(int count, char** arguments)
{
    if (count < 2 || std::strcmp(arguments[1], "view") != 0)
        return false;
    for (int i = 2; i < count; ++i)
        if (std::strncmp(arguments[i], "--svg", 5) == 0 || std::strncmp(arguments[i], "--png", 5) == 0)
            return true;
    return false;
}

void AddViewCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "view",
        HelpText("view", "Show a recording or COMTRADE record as a page for the browser, or as a picture"));
    const auto options = std::make_shared<ViewOptions>();
    AddArgument(*command, "FILE", options->file, HelpText("view", "The recording or record"));
    AddOutputOptions(*command, *options);
    AddReadingOptions(
        *command, options->reading,
        HelpText("view",
                 "Take no ini file: names as in the recording, a report without the values of circuits"));
    command->footer(
        HelpText("view", "FILE is the first file of a recording (.ZU, its continuations beside it) or a "
                         "COMTRADE record (.cfg or\n"
                         ".cff). The page is one HTML file with everything in it: mail it, archive it, open "
                         "it without a network.\n"
                         "A recording needs no ini file; with one, its names, circuits and bays are those of "
                         "the converted record.\n"
                         "Beyond 64 MB of samples the page holds a window around the trigger and says so.\n"
                         "\n"
                         "Exit code: 0 written, 1 the record cannot be read or the page cannot be written, 2 "
                         "wrong usage, 130 ended\n"
                         "by Ctrl-C (143 by SIGTERM).\n"
                         "\n"
                         "Example, with the sample station:\n"
                         "  zucmtr sample --out station --force\n"
                         "  zucmtr view station/Vostochnaya_000123.ZU -o station/fault.html"));
    command->callback([options, &chosen] { chosen = [options] { return RunView(*options); }; });
}
