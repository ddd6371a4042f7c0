#include "zucmtr/commands/exportoptions.h"

#include "forms/spantext.h"
#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/values.h"

#include <CLI/CLI.hpp>

#include <array>

using comtrade::DataType;
using comtrade::Revision;
using forms::Form;

namespace {

struct NamedForm
{
    const char* word;
    Form form;
};

constexpr std::array<NamedForm, 4> Forms = {
    {{"cfg", Form::Cfg}, {"cff", Form::Cff}, {"csv", Form::Csv}, {"mat", Form::Mat}}};

struct NamedType
{
    const char* word;
    DataType type;
};

constexpr std::array<NamedType, 4> Types = {{{"ascii", DataType::Ascii},
                                             {"binary", DataType::Binary},
                                             {"binary32", DataType::Binary32},
                                             {"float32", DataType::Float32}}};

[[noreturn]] void Refuse(const QString& text)
{
    throw UsageError(text, QStringLiteral("zucmtr export"));
}

// The form of a file by its ending; nothing if it has none of the endings.
std::optional<Form> FormByEnding(const QString& path)
{
    for (const NamedForm& row : Forms)
        if (path.endsWith(QLatin1Char('.') + QLatin1String(row.word), Qt::CaseInsensitive))
            return row.form;
    return std::nullopt;
}

Form FormOf(const ExportFormOptions& options, const QString& out)
{
    const std::optional<Form> byEnding = FormByEnding(out);
    for (const NamedForm& row : Forms) {
        if (options.form != row.word)
            continue;
        if (byEnding && *byEnding != row.form)
            Refuse(Tr("export",
                      "--form %1 and '%2': the ending of the file is that of another form; leave one "
                      "of the two out")
                       .arg(QLatin1String(row.word), out));
        return row.form;
    }
    return byEnding.value_or(Form::Cfg);
}

bool IsComtrade(Form form)
{
    return form == Form::Cfg || form == Form::Cff;
}

// Options of one form are no part of another: given in vain, they would be a misunderstanding.
void CheckForm(const ExportFormOptions& options, Form form)
{
    const std::array<std::pair<const std::string&, const char*>, 3> ofComtrade = {
        {{options.data, "--data"}, {options.revision, "--revision"}, {options.encoding, "--out-encoding"}}};
    for (const auto& [value, name] : ofComtrade)
        if (!value.empty() && !IsComtrade(form))
            Refuse(Tr("export", "%1 is for COMTRADE, that is --form cfg or --form cff; leave it out")
                       .arg(QLatin1String(name)));
    if (form != Form::Csv && (!options.time.empty() || options.decimalComma))
        Refuse(Tr("export", "%1 is for --form csv; leave it out")
                   .arg(options.decimalComma ? QStringLiteral("--decimal-comma") : QStringLiteral("--time")));
    if (options.revision != "1999")
        return;
    if (form == Form::Cff)
        Refuse(Tr("form", "--form cff and --revision 1999: a CFF file is of revision 2013; leave one "
                          "of the two out"));
    if (options.data == "binary32" || options.data == "float32")
        Refuse(Tr("export",
                  "--data %1 and --revision 1999: revision 1999 has ASCII and BINARY only; leave one "
                  "of the two out")
                   .arg(FromUtf8(options.data)));
}

void CheckMoment(const std::string& text, const char* option)
{
    if (!text.empty() && !forms::IsMoment(FromUtf8(text)))
        Refuse(Tr("export",
                  "%1: '%2' is no moment; give seconds from the trigger, as -0.2 or 200ms, or a time "
                  "as 2024-01-31T12:00:00.25")
                   .arg(QLatin1String(option), FromUtf8(text)));
}

void CheckWindow(const std::string& window)
{
    bool isNumber = false;
    const double seconds = QByteArray::fromStdString(window).toDouble(&isNumber);
    const bool isWindow = isNumber && seconds >= 0.001 && seconds <= 1e6;
    if (!window.empty() && window != "fault" && !isWindow)
        Refuse(Tr("export", "--window: '%1' is wrong; give a number of seconds, or 'fault'")
                   .arg(FromUtf8(window)));
}

} // namespace

void AddExportFormOptions(CLI::App& command, ExportFormOptions& options)
{
    const auto add = [&command](const char* name, std::string& word, const std::vector<std::string>& words,
                                const std::string& help) {
        AddValue(command, name, word, "KIND", help)->check(values::OneOf(words));
    };
    add("--form", options.form, {"cfg", "cff", "csv", "mat"},
        HelpText("export",
                 "cfg, a COMTRADE record of several files; cff, one of a single file; csv, a table; "
                 "mat, variables of MATLAB. Default: by the ending of --out, else cfg"));
    add("--data", options.data, {"ascii", "binary", "binary32", "float32"},
        HelpText("export", "Samples of a COMTRADE record. Default: as in the record"));
    add("--revision", options.revision, {"1999", "2013"},
        HelpText("export", "Revision of COMTRADE. Default: as in the record, if it allows the form"));
    add("--out-encoding", options.encoding, {"utf8", "cp1251"},
        HelpText("export", "Encoding of the texts of a COMTRADE record. Default: utf8"));
    add("--side", options.side, {"primary", "secondary"},
        HelpText("export", "Values of the primary or the secondary circuit. Default: as in the record"));
    add("--time", options.time, {"seconds", "iso"},
        HelpText("export", "Times of a table: seconds from the trigger (the default), or date and time "
                           "(ISO 8601)"));
    command.add_flag("--decimal-comma", options.decimalComma,
                     HelpText("export", "Numbers of a table with a decimal comma, columns separated by "
                                        "semicolons"));
}

void AddExportPartOptions(CLI::App& command, ExportPartOptions& options)
{
    CLI::Option* from = AddValue(command, "--from", options.from, "TIME",
                                 HelpText("export", "Start with this moment: seconds from the trigger (-0.2, "
                                                    "200ms), or a date and time (2024-01-31T12:00:00.25)"));
    CLI::Option* to =
        AddValue(command, "--to", options.to, "TIME", HelpText("export", "End with this moment"));
    AddValue(command, "--window", options.window, "SECONDS",
             HelpText("export", "Keep this many seconds around the trigger, a third of them before it; or, "
                                "with 'fault', from 0.1 s before the fault to 0.1 s after it"))
        ->excludes(from)
        ->excludes(to);
    AddValue(command, "--channels", options.channels, "NAME",
             HelpText("export", "Keep these channels, and no others: by name, circuit or number (A3,D5); * "
                                "and ? stand for any letters"));
    command.add_flag("--changing-only", options.changingOnly,
                     HelpText("export", "Leave out discrete channels that never change"));
    CLI::Option* every = AddValue(command, "--every", options.every, "N",
                                  HelpText("export", "Keep one sample of N, as it is: without a filter"))
                             ->transform(values::WholeNumber(2, 1000000));
    AddValue(command, "--rate", options.rate, "HZ",
             HelpText("export", "Compute samples of this rate, with a filter against aliasing"))
        ->check(values::Number(0.001, 1e9))
        ->excludes(every);
}

forms::Request RequestOf(const ExportFormOptions& options, const ExportPartOptions& part, const QString& out)
{
    forms::Request request;
    request.form = FormOf(options, out);
    CheckForm(options, request.form);
    CheckMoment(part.from, "--from");
    CheckMoment(part.to, "--to");
    CheckWindow(part.window);
    for (const NamedType& row : Types)
        if (options.data == row.word)
            request.comtrade.data = row.type;
    if (!options.revision.empty())
        request.comtrade.revision = options.revision == "1999" ? Revision::R1999 : Revision::R2013;
    if (options.encoding == "cp1251")
        request.comtrade.encoding = "Windows-1251";
    if (!options.side.empty())
        request.side = options.side == "primary" ? forms::Side::Primary : forms::Side::Secondary;
    request.csv.time = options.time == "iso" ? forms::CsvTime::Iso8601 : forms::CsvTime::Seconds;
    request.csv.decimalComma = options.decimalComma;
    // A configuration has no name with a comma.
    if (!part.channels.empty())
        request.channels = FromUtf8(part.channels).join(QLatin1Char(',')).split(QLatin1Char(','));
    request.channels.removeAll(QString());
    request.changingOnly = part.changingOnly;
    request.every = part.every > 0 ? static_cast<int>(part.every) : 1;
    request.rate = part.rate;
    return request;
}

QString EndingOf(Form form)
{
    for (const NamedForm& row : Forms)
        if (row.form == form)
            return QLatin1Char('.') + QLatin1String(row.word);
    return QString();
}

QString FormText(const forms::Request& request, const comtrade::Configuration& written)
{
    const QString form = EndingOf(request.form).mid(1);
    if (!IsComtrade(request.form))
        return form;
    return QStringLiteral("%1 %2 %3 %4")
        .arg(form)
        .arg(static_cast<int>(written.revision))
        .arg(comtrade::NameOf(written.dataType).toLower(), request.comtrade.encoding == QByteArray("UTF-8")
                                                               ? QStringLiteral("utf8")
                                                               : QStringLiteral("cp1251"));
}
