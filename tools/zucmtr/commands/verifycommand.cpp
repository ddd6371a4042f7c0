#include "zucmtr/commands/verifycommand.h"

#include "comtrade/record.h"
#include "explain/file.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "verify/mismatch.h"
#include "verify/wholeness.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/commands/recordpair.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/interrupt.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/progress.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

struct VerifyOptions
{
    ChoiceOptions choice;
    bool plain = false;
    bool recursive = false;
    bool quiet = false;
    bool json = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

bool IsRecording(const QString& path)
{
    return !comtrade::IsRecordFile(path) && !QFileInfo(path).isDir();
}

[[noreturn]] void RefuseUsage(const QString& text)
{
    throw UsageError(text, QStringLiteral("zucmtr verify"));
}

// The records of the command line, those of directories among them.
QStringList RecordsToVerify(const VerifyOptions& options, bool& good)
{
    QStringList records;
    for (const QString& path : FromUtf8(options.files)) {
        if (!QFileInfo(path).isDir()) {
            records << path;
            continue;
        }
        QStringList found;
        QDirIterator files(path, {QStringLiteral("*.cfg"), QStringLiteral("*.cff")}, QDir::Files,
                           options.recursive ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
        while (files.hasNext())
            found << files.next();
        found.sort();
        if (found.isEmpty()) {
            good = false;
            Complain(path + QLatin1String(": ") +
                     (options.recursive
                          ? Tr("verify command", "there is no record (.cfg, .cff) in this directory")
                          : Tr("verify command", "there is no record (.cfg, .cff) in this directory; "
                                                 "--recursive searches the directories below it, too")));
        }
        records << found;
    }
    return records;
}

QJsonArray JsonOf(const comtrade::Findings& findings)
{
    QJsonArray array;
    for (const comtrade::Finding& finding : findings.All()) {
        QJsonObject object{{"reason", QLatin1String(finding.reason)}, {"text", finding.text}};
        if (finding.line > 0)
            object["sample"] = finding.line;
        array << object;
    }
    return array;
}

QJsonValue JsonOf(double value)
{
    return std::isfinite(value) ? QJsonValue(value) : QJsonValue();
}

QJsonArray JsonOf(const std::vector<verify::ChannelDifference>& differences)
{
    constexpr size_t most = 100;
    QJsonArray array;
    for (size_t i = 0; i < std::min(most, differences.size()); ++i) {
        const verify::ChannelDifference& one = differences[i];
        array << QJsonObject{{"kind", QLatin1String(one.isAnalog ? "analog" : "discrete")},
                             {"number", static_cast<qint64>(one.number)},
                             {"name", one.name},
                             {"count", one.count},
                             {"sample", one.sample},
                             {"seconds", one.seconds},
                             {"found", JsonOf(one.found)},
                             {"expected", JsonOf(one.expected)}};
    }
    return array;
}

QJsonObject JsonOf(const QString& file, qint64 samples, size_t analog, size_t states,
                   const comtrade::Findings& wrong)
{
    QJsonObject object{{"file", file},
                       {"good", wrong.IsEmpty()},
                       {"samples", samples},
                       {"analogCount", static_cast<qint64>(analog)},
                       {"discreteCount", static_cast<qint64>(states)},
                       {"findings", JsonOf(wrong)}};
    object["reason"] = wrong.IsEmpty() ? QJsonValue() : QLatin1String(wrong.All().front().reason);
    object["error"] = wrong.IsEmpty() ? QJsonValue() : wrong.All().front().text;
    return object;
}

// "wrong: first; the others below it"
void PrintWrong(const QString& file, const QString& about, const comtrade::Findings& wrong)
{
    QStringList lines;
    qint64 left = 0;
    QStringList seen;
    for (const comtrade::Finding& finding : wrong.All()) {
        QString text = finding.text; // a message may start with the name of the file
        if (text.startsWith(file + QLatin1String(": ")))
            text.remove(0, file.size() + 2);
        lines << QStringLiteral("  ") + text;
        if (!seen.contains(QLatin1String(finding.reason))) {
            seen << QLatin1String(finding.reason);
            left += wrong.CountOf(finding.file, finding.reason);
        }
    }
    left -= lines.size();
    if (left > 0)
        lines << Tr("verify command", "  and %1 more like these").arg(left);
    const QString head = file + QLatin1String(": ") + about;
    if (lines.size() == 1)
        Complain(head + QLatin1String(": ") + lines.front().trimmed());
    else
        Complain(QStringList{head + QLatin1Char(':')} + lines);
}

QString CountsText(qint64 samples, size_t analog, size_t states)
{
    return Tr("verify command", "%1 samples, %2 + %3 channels")
        .arg(QString::number(samples), QString::number(analog), QString::number(states));
}

// A record by itself. False if something is wrong with it.
bool Show(const QString& file, const VerifyOptions& options)
{
    const verify::Wholeness whole = verify::WholenessOf(file);
    if (options.json)
        PrintJson(JsonOf(file, whole.samples, whole.analog, whole.states, whole.wrong));
    if (!whole.wrong.IsEmpty())
        PrintWrong(file, Tr("verify command", "wrong"), whole.wrong);
    else if (!options.json && !options.quiet)
        PrintLine(Tr("verify command", "%1: good (%2)")
                      .arg(file, CountsText(whole.samples, whole.analog, whole.states)));
    return whole.wrong.IsEmpty();
}

// How much of the recording a record has: "samples 101 to 700 of 2400, 3 + 12 of 8 + 12 channels".
QString PartText(const PairVerdict& verdict)
{
    const verify::ValueComparison& values = verdict.values;
    if (verdict.extent == Extent::Bytes || values.HasAll(verdict.analog, verdict.states))
        return CountsText(verdict.samples, verdict.analog, verdict.states);
    const verify::Alignment& alignment = values.alignment;
    const qint64 last = alignment.first + 1 + (alignment.count - 1) * alignment.every;
    QString text =
        Tr("verify command", "samples %1 to %2 of %3")
            .arg(QString::number(alignment.first + 1), QString::number(last), QString::number(values.total));
    if (alignment.every > 1)
        text += Tr("verify command", ", one in %1").arg(alignment.every);
    return text + Tr("verify command", "; %1 + %2 of %3 + %4 channels")
                      .arg(QString::number(verdict.analog), QString::number(verdict.states),
                           QString::number(values.analogOfAll), QString::number(values.statesOfAll));
}

// In the order of their enumerators.
const char* const ExtentWords[] = {"nothing", "samples", "names", "bytes"};

QString ExtentText(const PairVerdict& verdict)
{
    switch (verdict.extent) {
    case Extent::Bytes:
        return Tr("verify command", "every byte compared, by '%1'").arg(verdict.ini);
    case Extent::Names:
        return Tr("verify command", "samples, states, times and names compared; %1").arg(verdict.limit);
    case Extent::Samples:
        return Tr("verify command", "samples, states and times compared; %1").arg(verdict.limit);
    case Extent::Nothing:
        break;
    }
    return verdict.limit;
}

QJsonObject JsonOf(const QString& recording, const QString& record, const PairVerdict& verdict)
{
    QJsonObject object = JsonOf(record, verdict.samples, verdict.analog, verdict.states, verdict.wrong);
    object["recording"] = recording;
    object["compared"] = QLatin1String(ExtentWords[static_cast<int>(verdict.extent)]);
    object["ini"] = verdict.ini;
    object["limit"] = verdict.limit;
    const verify::ValueComparison& values = verdict.values;
    const bool isWhole = verdict.extent == Extent::Bytes;
    object["firstSample"] = isWhole ? 1 : values.alignment.first + 1;
    object["every"] = isWhole ? 1 : values.alignment.every;
    object["differences"] = JsonOf(values.differences);
    return object;
}

QJsonObject JsonOfFailure(const QString& recording, const QString& record, const char* word,
                          const QString& text)
{
    return {{"file", record},
            {"recording", recording},
            {"good", false},
            {"reason", QLatin1String(word)},
            {"error", text}};
}

int ShowPair(const QString& recording, const QString& record, const VerifyOptions& options)
{
    const auto refuse = [&](const char* word, const QString& text) {
        if (options.json)
            PrintJson(JsonOfFailure(recording, record, word, text));
        Complain(text.contains(record) || text.contains(recording) ? text
                                                                   : record + QLatin1String(": ") + text);
        return ExitFailed;
    };
    PairVerdict verdict;
    try {
        verdict = ComparePair(recording, record, ChoiceOf(options.choice), options.plain);
    } catch (const comtrade::Error& error) {
        return refuse(reason::RecordUnreadable, error.Message());
    } catch (const SourceError& error) {
        return refuse(explain::WordOf(recording, explain::WordOf(record, reason::RecordingUnreadable)),
                      error.Message());
    } catch (const verify::Unreadable& error) {
        return refuse(reason::OfLibrary(error.Message(), reason::RecordingUnreadable), error.Message());
    } catch (const std::bad_alloc&) {
        return refuse(reason::OutOfMemory, text::MemoryMessage());
    }
    if (options.json)
        PrintJson(JsonOf(recording, record, verdict));
    if (!verdict.wrong.IsEmpty()) {
        PrintWrong(record, Tr("verify command", "is not what %1 makes").arg(recording), verdict.wrong);
        if (!verdict.hint.isEmpty())
            Complain(record + QLatin1String(": ") + verdict.hint);
        return ExitFailed;
    }
    if (!options.json && !options.quiet)
        PrintLine(Tr("verify command", "%1: good, the record of %2 (%3); %4")
                      .arg(record, recording, PartText(verdict), ExtentText(verdict)));
    return ExitDone;
}

int ShowAll(const VerifyOptions& options)
{
    bool good = true;
    const QStringList records = RecordsToVerify(options, good);
    Progress progress(static_cast<size_t>(records.size()), !options.quiet && records.size() > 1);
    for (int i = 0; i < records.size() && !interrupt::Came(); ++i) {
        progress.Show(static_cast<size_t>(i));
        progress.Hide();
        good = Show(records[i], options) && good;
    }
    if (interrupt::Came())
        return interrupt::ExitCode();
    return good ? ExitDone : ExitFailed;
}

int RunVerify(const VerifyOptions& options)
{
    const QStringList files = FromUtf8(options.files);
    const auto recordings = std::count_if(files.begin(), files.end(), IsRecording);
    const bool isPair =
        files.size() == 2 && recordings == 1 && IsRecording(files[0]) && comtrade::IsRecordFile(files[1]);
    if (recordings > 0 && !isPair)
        RefuseUsage(files.size() == 1
                        ? Tr("verify command",
                             "'%1' is not the .cfg or .cff file of a record; give the record of "
                             "a recording after it")
                              .arg(files[0])
                        : Tr("verify command", "a recording is compared with one record: give the first file "
                                               "of the recording, then the .cfg or .cff file of the record"));
    const ChoiceOptions& choice = options.choice;
    if (!isPair &&
        (options.plain || !choice.ini.empty() || !choice.defaults.empty() || !choice.device.empty()))
        RefuseUsage(Tr("verify command", "--ini, --defaults, --device and --plain are for a record and its "
                                         "recording; give the recording first, or leave them out"));
    // However the program ends, temporary ini files must go.
    interrupt::Install();
    LimitMemory(options.maxMemory);
    return isPair ? ShowPair(files[0], files[1], options) : ShowAll(options);
}

std::string VerifyFooter()
{
    return HelpText(
        "verify command",
        "A record and its recording: with the recorder's ini file every byte is compared, as 'zucmtr "
        "convert'\n"
        "does it, in the form that the record has. Without one, and for records of 'zucmtr export' or of "
        "other\n"
        "settings, it is every sample, state and time; the line says what was compared. The record may have "
        "part\n"
        "of the samples and channels only.\n"
        "A record by itself: everything can be read, and samples, numbers, times, limits and the record's "
        "files\n"
        "agree with each other. It is not held against the standard: see 'zucmtr validate'.\n"
        "\n"
        "Exit code: 0 all records are good, 1 something is wrong with at least one, 2 wrong usage.\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station\n"
        "  zucmtr convert --out station/comtrade --make-out station/*.ZU\n"
        "  zucmtr verify station/comtrade\n"
        "  zucmtr verify station/Vostochnaya_000123.ZU station/comtrade/*120000*.cfg");
}

} // namespace

void AddVerifyCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "verify", HelpText("verify command", "Compare a record with its recording, or with itself"));
    const auto options = std::make_shared<VerifyOptions>();
    CLI::Option* plain = command->add_flag(
        "--plain", options->plain, HelpText("verify command", "Take no ini file: leave the texts out"));
    const std::vector<CLI::Option*> choice = AddChoiceOptions(
        *command, options->choice,
        {HelpText("verify command", "The recorder's ini file. Default: ZuDrv.ini beside the recording or in "
                                    "the current directory, if there is one"),
         HelpText("verify command",
                  "Section of the ini file for this recorder. Default: the only other section")});
    for (CLI::Option* option : choice)
        option->excludes(plain);
    command->add_flag("-r,--recursive", options->recursive,
                      HelpText("verify command", "Search for records in the directories below, too"));
    command->add_flag("-q,--quiet", options->quiet, HelpText("verify command", "Report only what is wrong"));
    command->add_flag("--json", options->json,
                      HelpText("verify command", "One JSON object per record, for programs"));
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(*command, "FILE", options->files,
                HelpText("verify command",
                         "The .cfg or .cff files of records, or directories with records; or the first file "
                         "of a recording (.ZU) and its record"));
    command->footer(VerifyFooter());
    command->callback([options, &chosen] { chosen = [options] { return RunVerify(*options); }; });
}
