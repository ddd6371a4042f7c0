// The CFG text: lines of fields separated by commas.
#include "comtrade/record.h"

#include "comtrade/cfgchannels.h"
#include "comtrade/cfglines.h"
#include "comtrade/cfgtimes.h"
#include "comtrade/text.h"
#include "text/texts.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace comtrade {

namespace {

struct NamedType
{
    const char* name;
    DataType type;
};

constexpr std::array<NamedType, 4> DataTypes = {{{"ASCII", DataType::Ascii},
                                                 {"BINARY", DataType::Binary},
                                                 {"BINARY32", DataType::Binary32},
                                                 {"FLOAT32", DataType::Float32}}};

// Other names that writers give the types.
constexpr std::array<NamedType, 8> OtherNames = {{{"ASC", DataType::Ascii},
                                                  {"BIN", DataType::Binary},
                                                  {"BINARY16", DataType::Binary},
                                                  {"BIN16", DataType::Binary},
                                                  {"BIN32", DataType::Binary32},
                                                  {"FLOAT", DataType::Float32},
                                                  {"REAL32", DataType::Float32},
                                                  {"SINGLE", DataType::Float32}}};

template <size_t Size>
std::optional<DataType> TypeNamed(const std::array<NamedType, Size>& names, const QString& name)
{
    const auto row = std::find_if(names.begin(), names.end(), [&](const NamedType& one) {
        return name.compare(QLatin1String(one.name), Qt::CaseInsensitive) == 0;
    });
    return row != names.end() ? std::optional<DataType>(row->type) : std::nullopt;
}

bool IsNumber(const QString& field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok;
}

bool IsRate(const Place& place)
{
    return place.fields.size() >= 2 && IsNumber(place.fields[0]) && IsNumber(place.fields[1]);
}

bool IsTimeCode(const Place& place)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([+-]?[0-9]{1,2}([hH\u0447\u0427:][0-9]{2})?|[xX])\\z"));
    return place.fields.size() <= 2 && form.match(place.fields.value(0)).hasMatch();
}

QString NameOf(Revision revision)
{
    return QString::number(static_cast<int>(revision));
}

// The revision whose fields the lines after the first two have: the first channel says it, without channels
// the date, and the lines with the zone that of 2013.
Revision FittingRevision(const CfgLines& lines)
{
    constexpr int linesAtEnd = 64; // a configuration has few after its times
    const int fields = lines.Peek(2).fields.size();
    bool is1991 = fields == 3 || fields == 10 || fields == 11;
    const int at = lines.Find(2, [](const QString& field) { return IsStamp(field); });
    if (fields < 3 || fields == 4)
        is1991 = HasShortYear(lines.Peek(at));
    if (is1991)
        return Revision::R1991;
    for (int i = at + 2; i < at + linesAtEnd && lines.Peek(i).line != 0; ++i)
        if (lines.Peek(i).fields.size() == 2 && IsTimeCode(lines.Peek(i)))
            return Revision::R2013;
    return Revision::R1999;
}

std::optional<Revision> RevisionNamed(const QString& text)
{
    for (const Revision revision : {Revision::R1991, Revision::R1999, Revision::R2013})
        if (text == NameOf(revision))
            return revision;
    return std::nullopt;
}

// A first line with more than three fields: the year is the last one, or what follows it is left out.
void TakeOverlong(CfgLines& lines, Place& place)
{
    lines.DropTrailing(place, 3);
    if (place.fields.size() <= 3)
        return;
    static const QRegularExpression year(QStringLiteral("\\A(19|20)[0-9]{2}\\z"));
    const QStringList unquoted = Unquoted(place);
    if (unquoted.size() == 2 || unquoted.size() == 3) {
        lines.Forgive(place, 0,
                      {Severity::Error, reason::QuotationMarks,
                       Tr("comtrade", "quotation marks do not keep a comma inside of a field"),
                       Tr("comtrade", "read as if they did")});
        place.fields = unquoted;
    } else if (year.match(place.fields[2]).hasMatch()) {
        lines.Forgive(place, 3,
                      {Severity::Warning, reason::ExtraFields,
                       Tr("comtrade", "%1 has %2 fields, there are %3")
                           .arg(Tr("comtrade", "the first line"))
                           .arg(3)
                           .arg(place.fields.size()),
                       Tr("comtrade", "the others are left out")});
    } else {
        const int device = place.fields.size() - 2;
        const QString station = place.TextOf(0, device - 1);
        place.fields = QStringList{station, place.fields[device], place.fields[device + 1]};
        lines.Forgive(place, 0,
                      {Severity::Error, reason::CommaInText,
                       Tr("comtrade", "a text holds a comma, which separates fields"),
                       Tr("comtrade", "read as the station '%1' and the device '%2'")
                           .arg(place.fields[0], place.fields[1])});
    }
}

// The revision of the first line, unless the lines have the fields of another one.
Revision ReadRevision(CfgLines& lines, const Place& place, Revision fitting)
{
    const QString year = place.fields.value(2);
    const QString reading =
        Tr("comtrade", "read as revision %1, whose fields the lines have").arg(NameOf(fitting));
    const std::optional<Revision> named = RevisionNamed(year);
    if (year.isEmpty() && fitting != Revision::R1991) {
        lines.Forgive(place, place.fields.size() > 2 ? 2 : -1,
                      {Severity::Error, reason::RevisionUnknown,
                       Tr("comtrade", "the first line has no revision year, which stands for 1991"),
                       reading});
    } else if (!year.isEmpty() && !named) {
        lines.Forgive(place, 2,
                      {Severity::Error, reason::RevisionUnknown,
                       Tr("comtrade", "revision '%1' is none of 1991, 1999 and 2013").arg(year), reading});
    } else if (named == Revision::R1991 && fitting != Revision::R1991) {
        lines.Forgive(place, 2,
                      {Severity::Error, reason::RevisionUnknown,
                       Tr("comtrade", "the lines do not have the fields of revision 1991"), reading});
    } else if (named) {
        return *named;
    }
    return fitting;
}

void ReadStation(CfgLines& lines, Configuration& configuration, Place& place)
{
    const Revision fitting = FittingRevision(lines);
    const QString what = Tr("comtrade", "station, device, revision");
    place = lines.Take(what);
    Place arranged = place;
    TakeOverlong(lines, arranged);
    lines.ExpectFields(arranged, 2, 3, what);
    configuration.station = arranged.fields[0];
    configuration.device = arranged.fields[1];
    configuration.revision = ReadRevision(lines, arranged, fitting);
}

// A number that a unit may follow: "50 Hz".
double ReadHertz(CfgLines& lines, const Place& place, const QString& what)
{
    static const QRegularExpression unit(QStringLiteral("\\A(.*[0-9.])\\s*(Hz|Гц)\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = unit.match(place.fields[0]);
    if (!match.hasMatch() || !IsNumber(match.captured(1)))
        return lines.Number(place, 0, what);
    lines.Forgive(place, 0,
                  {Severity::Error, reason::NumberForm,
                   Tr("comtrade", "%1 is '%2', which is no plain number").arg(what, place.fields[0]),
                   Tr("comtrade", "read as %1").arg(match.captured(1))});
    return match.captured(1).toDouble();
}

// The line may be empty, and of an empty line at its place it is found out whether it is this one: then the
// number of rates follows, and not another line before it.
void ReadFrequency(CfgLines& lines, Configuration& configuration, Places& places)
{
    const QString what = Tr("comtrade", "line frequency");
    const bool twoNumbers = lines.Peek().fields.size() == 1 && lines.Peek(1).fields.size() == 1;
    const bool isLacking = !lines.IsNextEmpty() && lines.Peek().fields.size() == 1 && IsRate(lines.Peek(1));
    if (isLacking) {
        lines.Forgive(lines.Peek(), -1,
                      {Severity::Error, reason::LineLacking,
                       Tr("comtrade", "the line with %1 is missing").arg(what), Tr("comtrade", "not known")});
        return;
    }
    Place place = lines.IsNextEmpty() && !twoNumbers ? lines.TakeEvenIfEmpty(what) : lines.Take(what);
    places.frequency = place;
    lines.ExpectFields(place, 1, 1, what);
    if (!place.fields[0].isEmpty())
        configuration.lineFrequency = ReadHertz(lines, place, what);
}

SampleRate ReadRate(CfgLines& lines, qint64 before, Place& place)
{
    const QString what = Tr("comtrade", "a sampling rate");
    place = lines.Take(what);
    Place arranged = place;
    lines.ExpectFields(arranged, 2, 2, what);
    const SampleRate rate{ReadHertz(lines, arranged, Tr("comtrade", "rate")),
                          lines.Integer(arranged, 1, Tr("comtrade", "last sample"))};
    if (!(rate.hertz >= 0) || rate.lastSample < before)
        lines.Fail(arranged, Tr("comtrade", "the rate or its last sample is out of range"));
    return rate;
}

// How many lines with rates follow. Without a constant rate there should be one, with the number of samples.
qint64 CountRates(CfgLines& lines, const Place& place, qint64 said)
{
    const qint64 wanted = std::max<qint64>(said, 1);
    int found = 0;
    while (IsRate(lines.Peek(found)))
        ++found;
    if (found == wanted || !IsStamp(lines.Peek(found)))
        return wanted; // if a line is malformed, reading it says so
    lines.Forgive(place, 0,
                  {Severity::Error, found == 0 ? reason::LineLacking : reason::CountsDiffer,
                   Tr("comtrade", "%1 sampling rates are announced, there are %2").arg(said).arg(found),
                   found == 0 ? Tr("comtrade", "the samples are counted in the data")
                              : Tr("comtrade", "the lines that are there are taken")});
    return found;
}

void ReadRates(CfgLines& lines, Configuration& configuration, Places& places)
{
    ReadFrequency(lines, configuration, places);
    const QString what = Tr("comtrade", "number of rates");
    Place place = lines.Take(what);
    places.rateCount = place;
    lines.ExpectFields(place, 1, 1, what);
    const qint64 said = lines.Integer(place, 0, what);
    if (said < 0 || said > lines.Left())
        lines.Fail(place, Tr("comtrade", "%1 rates, but only %2 lines follow").arg(said).arg(lines.Left()));
    const qint64 count = CountRates(lines, place, said);
    for (qint64 i = 0; i < count; ++i) {
        const qint64 before = configuration.rates.empty() ? 0 : configuration.rates.back().lastSample;
        Place line;
        configuration.rates.push_back(ReadRate(lines, before, line));
        places.rates.push_back(line);
    }
}

DataType ReadDataType(CfgLines& lines, Place& place)
{
    const QString what = Tr("comtrade", "data file type");
    place = lines.Take(what);
    Place arranged = place;
    lines.ExpectFields(arranged, 1, 1, what);
    const QString name = arranged.fields[0];
    if (const std::optional<DataType> type = TypeNamed(DataTypes, name))
        return *type;
    static const QRegularExpression other(QStringLiteral("[^0-9A-Za-z]"));
    const QString letters = QString(name).remove(other);
    std::optional<DataType> type = TypeNamed(DataTypes, letters);
    if (!type)
        type = TypeNamed(OtherNames, letters);
    if (!type)
        lines.Fail(arranged, Tr("comtrade", "data file type '%1' is not known").arg(name));
    lines.Forgive(
        arranged, 0,
        {Severity::Error, reason::WordForm,
         Tr("comtrade", "data file type '%1' is none of ASCII, BINARY, BINARY32 and FLOAT32").arg(name),
         Tr("comtrade", "read as %1").arg(NameOf(*type))});
    return *type;
}

// Revision 1991 has no such line.
void ReadMultiplier(CfgLines& lines, Configuration& configuration, Places& places)
{
    const QString what = Tr("comtrade", "time multiplier");
    const bool isThere = lines.Left() > 0 && lines.Peek().fields.size() == 1;
    if (!isThere && configuration.revision == Revision::R1991)
        return;
    if (!isThere) {
        lines.Forgive(places.dataType, -1,
                      {Severity::Error, reason::LineLacking,
                       Tr("comtrade", "the line with %1 is missing").arg(what),
                       Tr("comtrade", "read as %1").arg(1)});
        return;
    }
    const Place place = lines.Take(what);
    places.timeMultiplier = place;
    const double multiplier = lines.Number(place, 0, what);
    if (multiplier > 0)
        configuration.timeMultiplier = multiplier;
    else
        lines.Forgive(place, 0,
                      {Severity::Error, reason::NumberForm,
                       Tr("comtrade", "%1 is '%2', but should be above 0").arg(what, place.fields[0]),
                       Tr("comtrade", "read as %1").arg(1)});
}

// Two fields of a line, either of which may be missing.
void ReadPair(CfgLines& lines, const QString& what, Place& place, QString& first, QString& second)
{
    place = lines.Take(what);
    Place arranged = place;
    lines.DropTrailing(arranged, 2);
    if (arranged.fields.size() == 1)
        lines.Forgive(arranged, -1,
                      {Severity::Error, reason::FieldsLacking,
                       Tr("comtrade", "%1 needs %2 fields, there are %3").arg(what).arg(2).arg(1),
                       Tr("comtrade", "what is missing is taken as not known")});
    else
        lines.ExpectFields(arranged, 2, 2, what);
    first = arranged.fields[0];
    second = arranged.fields.value(1);
}

void ForgiveLacking(CfgLines& lines, const Place& before, const QString& what)
{
    lines.Forgive(before, -1,
                  {Severity::Error, reason::LineLacking,
                   Tr("comtrade", "the line with %1 is missing").arg(what), Tr("comtrade", "not known")});
}

// The lines with the zone and the quality of the clock. In other revisions than 2013 they are read if they
// are there.
void ReadClock(CfgLines& lines, Configuration& configuration, Places& places)
{
    const QString codes = Tr("comtrade", "time codes");
    const QString quality = Tr("comtrade", "time quality");
    const bool isNew = configuration.revision == Revision::R2013;
    const bool hasCodes = IsTimeCode(lines.Peek()) && (isNew || lines.Peek().fields.size() == 2);
    if (!isNew && !hasCodes)
        return;
    if (!isNew)
        lines.Forgive(lines.Peek(), -1,
                      {Severity::Warning, reason::LinesLeftOver,
                       Tr("comtrade", "lines with time codes are of revision 2013"),
                       Tr("comtrade", "read all the same")});
    const Place before = places.timeMultiplier.line != 0 ? places.timeMultiplier : places.dataType;
    if (hasCodes || lines.Left() > 1)
        ReadPair(lines, codes, places.timeCode, configuration.timeCode, configuration.localCode);
    else
        ForgiveLacking(lines, before, codes);
    if (lines.Left() > 0)
        ReadPair(lines, quality, places.timeQuality, configuration.timeQuality, configuration.leapSecond);
    else
        ForgiveLacking(lines, places.timeCode.line != 0 ? places.timeCode : before, quality);
}

// Reserves nothing: the lines there are set the limit.
void ReadChannels(CfgLines& lines, Configuration& configuration, Places& places)
{
    const Counts counts = ReadCounts(lines, places.counts);
    for (int i = 1; i <= counts.analog; ++i) {
        Place place;
        configuration.analog.push_back(ReadAnalog(lines, configuration.revision, i, place));
        places.analog.push_back(place);
    }
    for (int i = 1; i <= counts.states; ++i) {
        Place place;
        configuration.states.push_back(ReadState(lines, configuration.revision, i, place));
        places.states.push_back(place);
    }
}

} // namespace

qint64 Configuration::SampleCount() const
{
    return rates.empty() ? 0 : rates.back().lastSample;
}

// Only revision 2013 knows nanoseconds; writers of the others may give more decimals than they need.
double Configuration::StampSeconds() const
{
    constexpr int microseconds = 6;
    const bool isFine = revision == Revision::R2013 && start.decimals > microseconds;
    return timeMultiplier * (isFine ? 1e-9 : 1e-6);
}

QString NameOf(DataType type)
{
    const auto* const row = std::find_if(DataTypes.begin(), DataTypes.end(),
                                         [type](const NamedType& one) { return one.type == type; });
    return QLatin1String(row->name);
}

Configuration ParseConfiguration(const QString& text, const QString& fileName, Findings* forgiven,
                                 qint64 firstLine, Places* places)
{
    CfgLines lines(text, fileName, forgiven, firstLine);
    Configuration configuration;
    Places found;
    found.file = fileName;
    ReadStation(lines, configuration, found.station);
    ReadChannels(lines, configuration, found);
    ReadRates(lines, configuration, found);
    ReadStamps(lines, configuration, found);
    configuration.dataType = ReadDataType(lines, found.dataType);
    ReadMultiplier(lines, configuration, found);
    ReadClock(lines, configuration, found);
    lines.Close();
    if (places != nullptr)
        *places = std::move(found);
    return configuration;
}

Configuration ParseConfiguration(const QByteArray& text, const QString& fileName, Findings* forgiven)
{
    return ParseConfiguration(CfgText(text, EncodingOf(text), fileName, 1, forgiven), fileName, forgiven);
}

} // namespace comtrade
