#include "zucmtr/commands/viewcommand.h"

#include "output/target.h"
#include "picture/picture.h"
#include "text/error.h"
#include "text/texts.h"
#include "view/view.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/host/recordsource.h"
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
    std::string second; // empty: there is none
    std::string secondDevice;
    std::string alignment = "time";
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

// Of one record in a page.
void ComplainOfPart(const QString& name, const view::Held& held)
{
    if (held.samples < held.total)
        Complain(Tr("view", "%1: the page holds %2 of %3 samples around the trigger; --window SECONDS "
                            "chooses how many, --full takes all")
                     .arg(name)
                     .arg(held.samples)
                     .arg(held.total));
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

view::Options SettingsOf(const ViewOptions& options, const RecordSource& source, const QString& file)
{
    LineData data = LoadLines(FromUtf8(options.reading.lines), source.Ini(), file);
    view::Options settings;
    settings.lines = std::move(data.lines);
    settings.lineFile = data.path;
    settings.window = options.window;
    settings.full = options.full;
    settings.source = QFileInfo(file).fileName();
    settings.encoding = EncodingOf(options.reading.encoding, file);
    return settings;
}

// With two files, a mistake in the choice of the recorder names the file, and of the second one its option.
std::unique_ptr<RecordSource> Open(const ViewOptions& options, bool isSecond)
{
    const QString file = FromUtf8(isSecond ? options.second : options.file);
    DeviceChoice choice = ChoiceOf(options.reading.choice);
    if (isSecond && !options.secondDevice.empty())
        choice.device = FromUtf8(options.secondDevice);
    try {
        return std::make_unique<RecordSource>(file, choice, options.reading.plain);
    } catch (const ConfigurationError& error) {
        if (options.second.empty())
            throw;
        QStringList lines = error.Lines();
        if (isSecond)
            lines.replaceInStrings(QStringLiteral("--device"), QStringLiteral("--second-device"));
        lines.first().prepend(file + QLatin1String(": "));
        throw ConfigurationError(lines);
    }
}

// Both records; what is odd about the second is reported here.
view::Held PutBoth(const ViewOptions& options, const QString& record, const QString& page,
                   const view::Options& settings)
{
    const QString file = FromUtf8(options.second);
    const std::unique_ptr<RecordSource> source = Open(options, true);
    view::Second second;
    second.recordPath = source->Path();
    second.options = SettingsOf(options, *source, file);
    second.alignment = options.alignment == "trigger" ? view::Alignment::Trigger : view::Alignment::Time;
    const view::HeldBoth held = view::WritePage(record, second, page, settings);
    Confirm(page);
    ComplainOfPart(page, held.first);
    ComplainOfPart(file, held.second);
    ComplainOfRecord(file, held.second);
    if (held.isApart)
        Complain(Tr("view", "%1: it lies too far from '%2' in time to be seen over it; --align trigger lays "
                            "trigger over trigger")
                     .arg(file, FromUtf8(options.file)));
    return held.first;
}

view::Held PutPage(const ViewOptions& options, const QString& record, const view::Options& settings)
{
    const QString page = options.page.empty() ? DefaultPage(FromUtf8(options.file)) : FromUtf8(options.page);
    if (!options.second.empty())
        return PutBoth(options, record, page, settings);
    const view::Held held = view::WritePage(record, page, settings);
    Confirm(page);
    ComplainOfPart(page, held);
    return held;
}

void WriteAll(const ViewOptions& options, const RecordSource& source)
{
    const QString& record = source.Path();
    const view::Options settings = SettingsOf(options, source, FromUtf8(options.file));
    const bool pictureAlone = options.page.empty() && !(options.svg.empty() && options.png.empty());
    view::Held held;
    if (!pictureAlone)
        held = PutPage(options, record, settings);
    else if (!options.second.empty())
        Complain(Tr("view", "%1: a picture shows the first record alone; -o writes a page with both")
                     .arg(FromUtf8(options.second)));
    const std::pair<const std::string&, picture::Format> pictures[] = {{options.svg, picture::Format::Svg},
                                                                       {options.png, picture::Format::Png}};
    for (const auto& [path, format] : pictures) {
        if (path.empty() || interrupt::Came())
            continue;
        held = picture::Write(record, FromUtf8(path), format, settings);
        Confirm(FromUtf8(path));
    }
    ComplainOfRecord(FromUtf8(options.file), held);
}

int RunView(const ViewOptions& options)
{
    // However the program ends, the temporary record of a recording must go: Ctrl-C lets the current work
    // finish, and a reader of standard output that goes away is a failure.
    interrupt::Install();
    interrupt::InstallForClosedPipe();
    const QVector<QPair<QString, QString>> outputs = {{QStringLiteral("--out"), FromUtf8(options.page)},
                                                      {QStringLiteral("--svg"), FromUtf8(options.svg)},
                                                      {QStringLiteral("--png"), FromUtf8(options.png)}};
    for (const std::string& file : {options.file, options.second})
        for (const auto& [option, path] : outputs)
            CheckIsNoInput(option, path, FromUtf8(file));
    CheckOutputsDiffer(outputs);
    try {
        const std::unique_ptr<RecordSource> source = Open(options, false);
        if (!interrupt::Came())
            WriteAll(options, *source);
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

void AddSecondOptions(CLI::App& command, ViewOptions& options)
{
    CLI::Option* second =
        command
            .add_option("SECOND", options.second,
                        HelpText("view", "Another recording or record, to be laid over the first"))
            ->type_name("");
    command
        .add_option("--align", options.alignment,
                    HelpText("view",
                             "What the two have in common: the time of day (time, the default), or the "
                             "moment of the trigger (trigger)"))
        ->check(values::OneOf({"time", "trigger"}))
        ->needs(second)
        ->type_name("NAME");
}

// After the options of the choice, which its own section belongs to.
void AddSecondSection(CLI::App& command, ViewOptions& options)
{
    command
        .add_option(
            "--second-device", options.secondDevice,
            HelpText("view", "Section of the ini file for the recorder of SECOND. Default: as --device"))
        ->needs(command.get_option("SECOND"))
        ->excludes(command.get_option("--plain"))
        ->type_name("SECTION");
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
    AddSecondOptions(*command, *options);
    AddOutputOptions(*command, *options);
    AddReadingOptions(
        *command, options->reading,
        HelpText("view",
                 "Take no ini file: names as in the recording, a report without the values of circuits"));
    AddSecondSection(*command, *options);
    command->footer(
        HelpText("view", "FILE is the first file of a recording (.ZU, its continuations beside it) or a "
                         "COMTRADE record (.cfg or\n"
                         ".cff). The page is one HTML file with everything in it: mail it, archive it, open "
                         "it without a network.\n"
                         "A recording needs no ini file; with one, its names, circuits and bays are those of "
                         "the converted record.\n"
                         "Beyond 64 MB of samples the page holds a window around the trigger and says so.\n"
                         "\n"
                         "SECOND is of the other end of the line, of another recorder or an earlier one, of "
                         "any make. It lies over\n"
                         "FILE by date and time, in UTC where both records have their time zone; the page "
                         "shifts it by hand. Its ini\n"
                         "file is found as that of FILE, beside it, unless --ini names one for both.\n"
                         "\n"
                         "Exit code: 0 written, 1 the record cannot be read or the page cannot be written, 2 "
                         "wrong usage, 130 ended\n"
                         "by Ctrl-C (143 by SIGTERM).\n"
                         "\n"
                         "Example, with the sample station:\n"
                         "  zucmtr sample --out station --force\n"
                         "  zucmtr view station/Vostochnaya_000123.ZU -o station/fault.html\n"
                         "  zucmtr view station/Vostochnaya_000123.ZU station/Vostochnaya_000124.ZU --align "
                         "trigger"));
    command->callback([options, &chosen] { chosen = [options] { return RunView(*options); }; });
}
