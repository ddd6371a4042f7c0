#include "zucmtr/commands/validatecommand.h"

#include "text/texts.h"
#include "validate/validate.h"
#include "zucmtr/commands/deviceoptions.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/terminal/findingline.h"
#include "zucmtr/terminal/memorylimit.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

struct ValidateOptions
{
    bool json = false;
    uint64_t maxMemory = 0;
    std::string encoding;
    std::vector<std::string> files;
};

// "RECORD: errors: 1, warnings: 2, notes: 3", without what there is none of.
QString ConclusionOf(const QString& record, const std::vector<comtrade::Finding>& findings)
{
    std::array<int, 3> counts = {}; // by severity
    for (const comtrade::Finding& finding : findings)
        ++counts[static_cast<size_t>(finding.severity)];
    if (findings.empty())
        return Tr("validate", "%1: nothing is wrong").arg(record);
    const QString notes = Tr("validate", "notes: %1").arg(counts[0]);
    if (counts[1] + counts[2] == 0)
        return Tr("validate", "%1: nothing is wrong; %2").arg(record, notes);
    QStringList parts;
    if (counts[2] > 0)
        parts << Tr("validate", "errors: %1").arg(counts[2]);
    if (counts[1] > 0)
        parts << Tr("validate", "warnings: %1").arg(counts[1]);
    if (counts[0] > 0)
        parts << notes;
    return Tr("validate", "%1: %2").arg(record, parts.join(QStringLiteral(", ")));
}

// ExitFailed if there is more than notes.
ExitCode Show(const QString& record, const ValidateOptions& options)
{
    comtrade::ReadingOptions reading;
    reading.encoding = FromUtf8(options.encoding);
    const std::vector<comtrade::Finding> findings = validate::Validate(record, reading);
    ExitCode code = ExitDone;
    for (const comtrade::Finding& finding : findings) {
        PrintFinding(
            {finding.file, finding.line, finding.column, finding.severity, finding.reason, finding.text},
            options.json);
        if (finding.severity != Severity::Note)
            code = ExitFailed;
    }
    if (!options.json)
        PrintLine(ConclusionOf(record, findings));
    return code;
}

int RunValidate(const ValidateOptions& options)
{
    LimitMemory(options.maxMemory);
    ExitCode code = ExitDone;
    for (const std::string& file : options.files)
        code = std::max(code, Show(FromUtf8(file), options));
    return code;
}

} // namespace

void AddValidateCommand(CLI::App& app, Action& chosen)
{
    CLI::App* command = app.add_subcommand(
        "validate", HelpText("validate", "Check whether COMTRADE records keep to the standard"));
    const auto options = std::make_shared<ValidateOptions>();
    command->add_flag("--json", options->json,
                      HelpText("validate", "One JSON object per finding, for programs"));
    AddEncodingOption(*command, options->encoding);
    AddMemoryOption(*command, options->maxMemory);
    AddArgument(
        *command, "FILE", options->files,
        HelpText("validate", "The .cfg or .cff files of records; the files beside them are checked too"));
    command->footer(HelpText("validate",
                             "Compares the configuration, data, header and information file of a record, or "
                             "the one file that holds "
                             "them\n"
                             "all, with the rules of IEEE C37.111, revisions 1991, 1999 and 2013. An error "
                             "makes readers fail or show "
                             "what\n"
                             "is not there; a warning is something that not every reader understands, or not "
                             "what it looks like; a note "
                             "is\n"
                             "worth knowing.\n"
                             "\n"
                             "Exit code: 0 nothing but notes, 1 errors or warnings, 2 wrong usage.\n"
                             "\n"
                             "Example, with the sample station:\n"
                             "  zucmtr sample --out station\n"
                             "  zucmtr convert --out comtrade --make-out station\n"
                             "  zucmtr validate comtrade/*.cfg"));
    command->callback([options, &chosen] { chosen = [options] { return RunValidate(*options); }; });
}
