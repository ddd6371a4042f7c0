#include "zucmtr/commands/checkcommand.h"

#include "inicheck/inicheck.h"
#include "text/texts.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/findingline.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/values.h"

#include "explain/file.h"
#include "inicheck/inilines.h"
#include "inicheck/linedatacheck.h"
#include "zucmtr/host/linefile.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using inicheck::Finding;
using inicheck::Severity;

struct CheckOptions
{
    ChoiceOptions choice;
    std::string lines;
    bool json = false;
    uint64_t maxMemory = 0;
    std::vector<std::string> files;
};

QStringList DevicesOf(const DeviceChoice& choice)
{
    QStringList devices = inicheck::IniLines(choice.ini).Sections();
    devices.removeAll(choice.defaults);
    return devices.isEmpty() ? QStringList{choice.defaults} : devices;
}

bool IsIni(const QString& file)
{
    return file.endsWith(QLatin1String(".ini"), Qt::CaseInsensitive);
}

// Sorts the files of the command line: recordings, and the ini file unless --ini names it.
void SortFiles(const CheckOptions& options, DeviceChoice& choice, QStringList& recordings)
{
    for (const std::string& argument : options.files) {
        const QString file = FromUtf8(argument);
        const QString reason = explain::Unreadable(file);
        if (!reason.isEmpty())
            throw ConfigurationError(file + QLatin1String(": ") + reason);
        if (!IsIni(file))
            recordings << file;
        else if (choice.ini.isEmpty())
            choice.ini = file;
        else
            throw ConfigurationError(
                Tr("check", "there are two ini files, '%1' and '%2'; check one after the other")
                    .arg(choice.ini, file));
    }
}

inicheck::Question QuestionOf(const CheckOptions& options)
{
    inicheck::Question question;
    DeviceChoice choice = ChoiceOf(options.choice);
    SortFiles(options, choice, question.recordings);
    std::vector<Recording> recordings;
    for (const QString& file : question.recordings)
        recordings.push_back({file, QString(), QString()});
    CompleteIni(choice, recordings);
    question.ini = choice.ini;
    if (inicheck::UnknownEncodingOf(choice.ini))
        return question; // no section can be chosen
    if (recordings.empty())
        CompleteDefaults(choice, recordings);
    else
        CompleteChoice(choice, recordings); // they are those of one recorder
    question.defaults = choice.defaults;
    question.devices = choice.device.isEmpty() ? DevicesOf(choice) : QStringList{choice.device};
    return question;
}

// ExitFailed if there is more than notes.
ExitCode Print(const QString& ini, const inicheck::Findings& findings, bool json)
{
    ExitCode code = ExitDone;
    for (const Finding& finding : findings) {
        PrintFinding({ini, finding.line, 0, finding.severity, finding.reason, finding.text}, json);
        if (finding.severity != Severity::Note)
            code = ExitFailed;
    }
    return code;
}

int RunCheck(const CheckOptions& options)
{
    LimitMemory(options.maxMemory);
    const inicheck::Question question = QuestionOf(options);
    ExitCode code = Print(question.ini, inicheck::Check(question), options.json);
    const QString lines =
        options.lines.empty() ? LineFileIn({QFileInfo(question.ini).path()}) : FromUtf8(options.lines);
    if (!lines.isEmpty())
        code = std::max(
            code, Print(lines, inicheck::CheckLineData(lines, question.ini, question.devices), options.json));
    if (code == ExitDone && !options.json)
        PrintLine(Tr("check", "%1: nothing is wrong with [%2]")
                      .arg(question.ini, question.devices.join(QLatin1String("], ["))));
    return code;
}

} // namespace

void AddCheckCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command =
        app.add_subcommand("check", HelpText("check", "Explain what is wrong with an ini file"));
    const auto options = std::make_shared<CheckOptions>();
    AddChoiceOptions(
        *command, options->choice,
        {HelpText("check", "The recorders' ini file. Default: ZuDrv.ini beside the recordings, else in the "
                           "current directory"),
         HelpText("check", "Section of the ini file for a recorder. Default: all of them")});
    AddLinesOption(*command, options->lines);
    command->add_flag("--json", options->json,
                      HelpText("check", "One JSON object per finding, for programs"));
    AddMemoryOption(*command, options->maxMemory);
    AddValue(*command, "FILE", options->files, "",
             HelpText("check",
                      "The ini file, and first files of recordings to compare with its sorting dictionary"));
    command->footer(HelpText(
        "check",
        "Lists by line what the converter ignores, takes from the defaults, drops or refuses, and what "
        "makes\n"
        "records that no program opens. An error is a section that does not load or a record that no "
        "program\n"
        "opens; a warning, something that is not what it looks like; a note, what may well be meant.\n"
        "\n"
        "Exit code: 0 nothing but notes, 1 errors or warnings, 2 wrong usage.\n"
        "\n"
        "Example, with the sample station:\n"
        "  zucmtr sample --out station --force\n"
        "  zucmtr check station/ZuDrv.ini station/*.ZU"));
    command->callback([options, &chosen] { chosen = [options] { return RunCheck(*options); }; });
}
