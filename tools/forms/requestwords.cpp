#include "forms/requestwords.h"

#include "analysis/summary.h"
#include "forms/spantext.h"
#include "forms/timewindow.h"
#include "text/texts.h"

#include <algorithm>
#include <array>
#include <utility>

using comtrade::DataType;
using comtrade::Revision;

namespace forms {

namespace {

// A word and what it stands for.
template <class Meaning>
using Word = std::pair<const char*, Meaning>;

constexpr std::array<Word<Form>, 4> Forms = {
    {{"cfg", Form::Cfg}, {"cff", Form::Cff}, {"csv", Form::Csv}, {"mat", Form::Mat}}};
constexpr std::array<Word<DataType>, 4> Types = {{{"ascii", DataType::Ascii},
                                                  {"binary", DataType::Binary},
                                                  {"binary32", DataType::Binary32},
                                                  {"float32", DataType::Float32}}};
constexpr std::array<Word<Revision>, 2> Revisions = {{{"1999", Revision::R1999}, {"2013", Revision::R2013}}};
constexpr std::array<Word<const char*>, 2> Encodings = {{{"utf8", "UTF-8"}, {"cp1251", "Windows-1251"}}};
constexpr std::array<Word<Side>, 2> Sides = {{{"primary", Side::Primary}, {"secondary", Side::Secondary}}};
constexpr std::array<Word<CsvTime>, 2> Times = {{{"seconds", CsvTime::Seconds}, {"iso", CsvTime::Iso8601}}};

template <class Words>
std::vector<std::string> NamesOf(const Words& words)
{
    std::vector<std::string> names;
    names.reserve(words.size());
    for (const auto& row : words)
        names.emplace_back(row.first);
    return names;
}

// Nothing for an empty word.
template <class Meaning, size_t Count>
std::optional<Meaning> MeaningOf(const std::string& word, const std::array<Word<Meaning>, Count>& words,
                                 const char* name)
{
    if (word.empty())
        return std::nullopt;
    QStringList known;
    for (const Word<Meaning>& row : words) {
        if (word == row.first)
            return row.second;
        known << QLatin1String(row.first);
    }
    throw WordError(
        Tr("export", "%1: '%2' is wrong; give one of %3")
            .arg(QLatin1String(name), QString::fromStdString(word), known.join(QLatin1String(", "))));
}

// The form of a file by its ending; nothing if it has none of the endings.
std::optional<Form> FormByEnding(const QString& path)
{
    for (const Word<Form>& row : Forms)
        if (path.endsWith(QLatin1Char('.') + QLatin1String(row.first), Qt::CaseInsensitive))
            return row.second;
    return std::nullopt;
}

Form FormOf(const std::string& word, const QString& out, const char* name)
{
    const std::optional<Form> byEnding = FormByEnding(out);
    const std::optional<Form> byWord = MeaningOf(word, Forms, name);
    if (byWord && byEnding && *byWord != *byEnding)
        throw WordError(Tr("export", "%1 %2 and '%3': the ending of the file is that of another form; leave "
                                     "one of the two out")
                            .arg(QLatin1String(name), QString::fromStdString(word), out));
    return byWord ? *byWord : byEnding.value_or(Form::Cfg);
}

bool IsComtrade(Form form)
{
    return form == Form::Cfg || form == Form::Cff;
}

// Words for one form are no part of another: given in vain, they would be a misunderstanding.
void CheckForm(const FormWords& words, Form form, const OptionNames& names)
{
    const std::array<std::pair<const std::string&, const char*>, 3> ofComtrade = {
        {{words.data, names.data}, {words.revision, names.revision}, {words.encoding, names.encoding}}};
    for (const auto& [word, name] : ofComtrade)
        if (!word.empty() && !IsComtrade(form))
            throw WordError(Tr("export", "%1 is for COMTRADE, that is %2 cfg or %2 cff; leave it out")
                                .arg(QLatin1String(name), QLatin1String(names.form)));
    if (form != Form::Csv && (!words.time.empty() || words.decimalComma))
        throw WordError(Tr("export", "%1 is for %2 csv; leave it out")
                            .arg(QLatin1String(words.decimalComma ? names.decimalComma : names.time),
                                 QLatin1String(names.form)));
    if (words.revision != "1999")
        return;
    if (form == Form::Cff)
        throw WordError(ContainerRevisionText(names.form, names.revision));
    if (words.data == "binary32" || words.data == "float32")
        throw WordError(Tr("export", "%1 %2 and %3 1999: revision 1999 has ASCII and BINARY only; leave one "
                                     "of the two out")
                            .arg(QLatin1String(names.data), QString::fromStdString(words.data),
                                 QLatin1String(names.revision)));
}

void CheckMoment(const std::string& word, const char* name)
{
    if (!word.empty() && !IsMoment(QString::fromStdString(word)))
        throw WordError(
            Tr("export", "%1: '%2' is no moment; give seconds from the trigger, as -0.2 or 200ms, or a time "
                         "as 2024-01-31T12:00:00.25")
                .arg(QLatin1String(name), QString::fromStdString(word)));
}

void CheckWindow(const std::string& window, const char* name)
{
    bool isNumber = false;
    const double seconds = QByteArray::fromStdString(window).toDouble(&isNumber);
    const bool isWindow = isNumber && seconds >= 0.001 && seconds <= 1e6;
    if (!window.empty() && window != "fault" && !isWindow)
        throw WordError(Tr("export", "%1: '%2' is wrong; give a number of seconds, or 'fault'")
                            .arg(QLatin1String(name), QString::fromStdString(window)));
}

// Of two words at most one may be given.
void CheckOneOf(bool isFirst, const char* first, bool isSecond, const char* second)
{
    if (isFirst && isSecond)
        throw WordError(Tr("export", "%1 excludes %2; leave one of the two out")
                            .arg(QLatin1String(first), QLatin1String(second)));
}

void CheckPart(const PartWords& part, const OptionNames& names)
{
    CheckMoment(part.from, names.from);
    CheckMoment(part.to, names.to);
    CheckWindow(part.window, names.window);
    CheckOneOf(!part.window.empty(), names.window, !part.from.empty(), names.from);
    CheckOneOf(!part.window.empty(), names.window, !part.to.empty(), names.to);
    CheckOneOf(part.rate.has_value(), names.rate, part.every.has_value(), names.every);
    if (part.every && (*part.every < LeastEvery || *part.every > MostEvery))
        throw WordError(Tr("export", "%1: '%2' is wrong; give a whole number from %3 to %4")
                            .arg(QLatin1String(names.every), QString::number(*part.every),
                                 QString::number(LeastEvery), QString::number(MostEvery)));
    if (part.rate && !(*part.rate >= LeastRate && *part.rate <= MostRate))
        throw WordError(Tr("export", "%1: '%2' is wrong; give a number from %3 to %4")
                            .arg(QLatin1String(names.rate), QString::number(*part.rate),
                                 QString::number(LeastRate), QString::number(MostRate, 'f', 0)));
}

// The fault with a margin of five periods.
Span AroundFault(const QString& record, const OptionNames& names)
{
    constexpr double margin = 0.1; // s
    const analysis::Summary summary = analysis::Summarise({record, {}, QString()});
    if (!summary.findings.fault)
        throw NoSamples(
            Tr("export", "%1 fault: no fault was found; give %2 and %3")
                .arg(QLatin1String(names.window), QLatin1String(names.from), QLatin1String(names.to)));
    Span span;
    span.from = summary.findings.fault->Onset() - margin;
    if (const std::optional<double>& clearing = summary.findings.fault->Clearing())
        span.to = *clearing + margin;
    return span;
}

} // namespace

std::vector<std::string> FormNames()
{
    return NamesOf(Forms);
}

std::vector<std::string> DataNames()
{
    return NamesOf(Types);
}

std::vector<std::string> RevisionNames()
{
    return NamesOf(Revisions);
}

std::vector<std::string> EncodingNames()
{
    return NamesOf(Encodings);
}

std::vector<std::string> SideNames()
{
    return NamesOf(Sides);
}

std::vector<std::string> TimeNames()
{
    return NamesOf(Times);
}

Request RequestOf(const FormWords& form, const PartWords& part, const QString& out, const OptionNames& names)
{
    Request request;
    request.form = FormOf(form.form, out, names.form);
    request.comtrade.data = MeaningOf(form.data, Types, names.data);
    request.comtrade.revision = MeaningOf(form.revision, Revisions, names.revision);
    request.comtrade.encoding = MeaningOf(form.encoding, Encodings, names.encoding).value_or("UTF-8");
    request.side = MeaningOf(form.side, Sides, names.side).value_or(Side::AsStored);
    request.csv.time = MeaningOf(form.time, Times, names.time).value_or(CsvTime::Seconds);
    request.csv.decimalComma = form.decimalComma;
    CheckForm(form, request.form, names);
    CheckPart(part, names);
    // A configuration has no name with a comma.
    for (const std::string& channels : part.channels)
        request.channels += QString::fromStdString(channels).split(QLatin1Char(','));
    request.channels.removeAll(QString());
    request.places = part.places;
    if (!part.channels.empty() && request.channels.isEmpty() && part.places.IsEmpty()) // all would be kept
        throw WordError(
            Tr("export", "%1: '%2' names no channel")
                .arg(QLatin1String(names.channels), QString::fromStdString(part.channels.front())));
    request.changingOnly = part.changingOnly;
    request.every = static_cast<int>(part.every.value_or(1));
    request.rate = part.rate.value_or(0);
    return request;
}

Span SpanOf(const PartWords& part, const QString& record, const comtrade::ReadingOptions& reading,
            const OptionNames& names)
{
    if (part.window == "fault")
        return AroundFault(record, names);
    if (!part.window.empty()) { // the same window as that of a page
        const double seconds = QByteArray::fromStdString(part.window).toDouble();
        return {-seconds / 3, seconds * 2 / 3};
    }
    if (part.from.empty() && part.to.empty())
        return {};
    const comtrade::Record opened(record, reading);
    const QString from = QString::fromStdString(part.from);
    const QString to = QString::fromStdString(part.to);
    const Span span = {SecondsOf(from, opened.Config()), SecondsOf(to, opened.Config())};
    if (span.from && span.to && *span.from > *span.to)
        throw NoSamples(Tr("export", "%1 '%2' is before %3 '%4'")
                            .arg(QLatin1String(names.to), to, QLatin1String(names.from), from));
    return span;
}

QString ContainerRevisionText(const char* form, const char* revision)
{
    return Tr("export", "%1 cff and %2 1999: a CFF file is of revision 2013; leave one of the two out")
        .arg(QLatin1String(form), QLatin1String(revision));
}

QString EndingOf(Form form)
{
    for (const Word<Form>& row : Forms)
        if (row.second == form)
            return QLatin1Char('.') + QLatin1String(row.first);
    return QString();
}

QString FormText(const Request& request, const comtrade::Configuration& written)
{
    QString form = EndingOf(request.form).mid(1);
    if (!IsComtrade(request.form))
        return form;
    return QStringLiteral("%1 %2 %3 %4")
        .arg(form)
        .arg(static_cast<int>(written.revision))
        .arg(comtrade::NameOf(written.dataType).toLower(), request.comtrade.encoding == QByteArray("UTF-8")
                                                               ? QStringLiteral("utf8")
                                                               : QStringLiteral("cp1251"));
}

} // namespace forms
