#include "checkcommand.h"

#include "checks.h"
#include "console.h"
#include "devicechoice.h"
#include "inicheck/inicheck.h"
#include "memorylimit.h"
#include "recordinglist.h"
#include "texts.h"

#include <recording/anchanneldata.h>
#include <recording/dichanneldata.h>
#include <recording/zufileformat.h>

#include <CLI/CLI.hpp>

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Options
{
    std::string ini;
    std::string defaults;
    std::string device;
    bool json = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

// Names for programs too, so they are the same in every language.
const char* NameOf(inicheck::Severity severity)
{
    switch (severity) {
    case inicheck::Severity::Error:
        return "error";
    case inicheck::Severity::Warning:
        return "warning";
    case inicheck::Severity::Note:
        break;
    }
    return "note";
}

const char* NameOf(inicheck::Effect effect)
{
    switch (effect) {
    case inicheck::Effect::Refused:
        return "refused";
    case inicheck::Effect::Defaulted:
        return "defaulted";
    case inicheck::Effect::Dropped:
        return "dropped";
    case inicheck::Effect::None:
        break;
    }
    return "none";
}

QString TextOf(const inicheck::Finding& finding)
{
    const QString line = finding.line > 0 ? QStringLiteral(":%1").arg(finding.line) : QString();
    // Put together without arg(), for which the texts may hold place marks.
    return finding.file + line + QStringLiteral(": ") + QLatin1String(NameOf(finding.severity)) +
           QStringLiteral(": ") + finding.what + QStringLiteral("; ") + finding.advice;
}

QString JsonOf(const inicheck::Finding& finding)
{
    const QJsonObject object{{QStringLiteral("file"), finding.file},
                             {QStringLiteral("line"), finding.line},
                             {QStringLiteral("severity"), QLatin1String(NameOf(finding.severity))},
                             {QStringLiteral("effect"), QLatin1String(NameOf(finding.effect))},
                             {QStringLiteral("section"), finding.section},
                             {QStringLiteral("key"), finding.key},
                             {QStringLiteral("what"), finding.what},
                             {QStringLiteral("advice"), finding.advice}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

// The sections to look at. Without recordings all devices are; a recording belongs to one.
inicheck::Choice ChosenSections(const inicheck::IniText& text, const DeviceChoice& choice, bool all)
{
    if (!all)
        return {choice.defaults, {choice.device}};
    QStringList devices = text.Names();
    if (devices.size() > 1)
        devices.removeAll(choice.defaults);
    return {choice.defaults, devices};
}

void CheckSections(const QString& ini, const inicheck::Choice& sections)
{
    for (const QString& section : QStringList{sections.defaults} + sections.devices) {
        const QString missing = MissingSectionText(ini, section);
        if (!missing.isEmpty())
            throw ConfigurationError(missing);
    }
}

// The recording's own failure is a finding too.
inicheck::Findings OfRecording(const inicheck::IniText& text, const QString& device, const QString& path)
{
    ZuFileFormat recording;
    if (!recording.Load(path))
        return {{0, inicheck::Severity::Error, inicheck::Effect::Refused, device, QString(),
                 Tr("check", "the recording cannot be loaded: %1").arg(recording.ErrorText),
                 Tr("check", "see zucmtr info"), path}};
    inicheck::Channels channels{path, {}, {}};
    for (const AnChannelData* channel : recording.AnChannels)
        channels.analog << channel->Name;
    for (const DiChannelData* channel : recording.DiChannels)
        channels.discrete << channel->Name;
    return inicheck::CheckRecording(text, device, channels);
}

// Those of the ini file by line, then those of the recordings.
void Sort(inicheck::Findings& findings)
{
    std::stable_sort(findings.begin(), findings.end(),
                     [](const inicheck::Finding& left, const inicheck::Finding& right) {
                         if (left.file.isEmpty() != right.file.isEmpty())
                             return left.file.isEmpty();
                         return left.file.isEmpty() && left.line < right.line;
                     });
}

DeviceChoice Completed(const Options& options, const std::vector<Recording>& recordings, bool all)
{
    DeviceChoice choice{QString::fromStdString(options.ini), QString::fromStdString(options.defaults),
                        QString::fromStdString(options.device)};
    if (all)
        choice.device = QStringLiteral("*"); // not to be found out: several are as good as one
    CompleteChoice(choice, recordings);
    return choice;
}

std::vector<Recording> RecordingsOf(const Options& options, bool& failed)
{
    QStringList files;
    for (const std::string& file : options.files)
        files << QString::fromStdString(file);
    const RecordingList list = CollectRecordings(files, false, {});
    for (const Refusal& refusal : list.refusals) {
        Complain(QStringLiteral("%1: %2").arg(refusal.path, refusal.text));
        failed = failed || refusal.failed;
    }
    return list.recordings;
}

int Run(const Options& options)
{
    LimitMemory(options.maxMemory);
    bool failed = false;
    const std::vector<Recording> recordings = RecordingsOf(options, failed);
    const bool all = options.device.empty() && options.files.empty();
    const DeviceChoice choice = Completed(options, recordings, all);
    const inicheck::IniText text = inicheck::ReadIni(choice.ini);
    if (!text.error.isEmpty())
        throw ConfigurationError(Tr("check", "--ini: '%1' cannot be read: %2").arg(choice.ini, text.error));
    const inicheck::Choice sections = ChosenSections(text, choice, all);
    CheckSections(choice.ini, sections);
    inicheck::Findings findings = inicheck::Check(text, sections);
    for (const Recording& recording : recordings) {
        const inicheck::Findings more = OfRecording(text, choice.device, recording.path);
        findings.insert(findings.end(), more.begin(), more.end());
    }
    Sort(findings);
    for (inicheck::Finding& finding : findings) {
        if (finding.file.isEmpty())
            finding.file = choice.ini;
        PrintLine(options.json ? JsonOf(finding) : TextOf(finding));
        failed = failed || finding.severity != inicheck::Severity::Note;
    }
    return failed ? ExitFailed : ExitDone;
}

void AddOptions(CLI::App& command, Options& options)
{
    command
        .add_option("--ini", options.ini,
                    HelpText("check", "Ini file. Default: the ZuDrv.ini of the recordings, or of the current "
                                      "directory"))
        ->type_name("FILE");
    command
        .add_option("--defaults", options.defaults,
                    HelpText("check", "Section with the defaults. Default: [Default]"))
        ->type_name("SECTION");
    command
        .add_option("--device", options.device,
                    HelpText("check", "Section of the recorder. Default: every other section; with "
                                      "recordings, the one other section"))
        ->type_name("SECTION");
    command.add_flag("--json", options.json, HelpText("check", "One JSON object a finding, for programs"));
    AddMemoryOption(command, options.maxMemory);
    command
        .add_option("FILE", options.files,
                    HelpText("check", "First files of recordings (.ZU), or directories of them, whose "
                                      "channels are compared with the dictionary"))
        ->type_name("");
}

} // namespace

void AddCheckCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "check", HelpText("check", "Explain what of an ini file would be refused, defaulted or ignored"));
    const auto options = std::make_shared<Options>();
    AddOptions(*command, *options);
    command->footer(HelpText(
        "check",
        "One line a finding: file, line, kind, what is wrong and what to do. An error means that the\n"
        "section would not load or be read as something else; a warning, that something of the file\n"
        "has no effect or harms the record; a note needs no answer.\n"
        "\n"
        "Exit code: 0 nothing but notes, 1 warnings or errors, 2 wrong usage.\n"
        "\n"
        "Example, with the sample station:\n"
        "  mkdir -p station\n"
        "  zucmtr sample --out station\n"
        "  zucmtr check station/*.ZU"));
    command->callback([options, &chosen] { chosen = [options] { return Run(*options); }; });
}
