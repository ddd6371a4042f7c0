// The CFG text: lines of fields separated by commas.
#include "comtrade/record.h"
#include "comtrade/text.h"
#include "text/texts.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace comtrade {

namespace {

// Reads the lines of a CFG text one by one. Every failure names the file and the line.
class Lines
{
public:
    Lines(const QByteArray& text, const QString& fileName_)
        : lines(DecodedText(text).split(QLatin1Char('\n'))), fileName(fileName_)
    {
        if (lines.last().isEmpty())
            lines.removeLast();
    }

    // The fields of the next line, at least as many as asked for, with surrounding blanks removed. `what` is
    // the name of the line or field for people, here and below.
    QStringList Next(int fewest, const QString& what)
    {
        if (next >= lines.size())
            throw Error(Tr("comtrade", "%1: ends after line %2, where %3 should follow")
                            .arg(fileName)
                            .arg(next)
                            .arg(what));
        QStringList fields = lines[next++].split(QLatin1Char(','));
        if (fields.size() < fewest)
            Fail(Tr("comtrade", "%1 needs %2 fields, there are %3").arg(what).arg(fewest).arg(fields.size()));
        for (QString& field : fields)
            field = field.trimmed();
        return fields;
    }

    // The same for a line whose number of fields is fixed.
    QStringList NextExactly(int count, const QString& what)
    {
        QStringList fields = Next(count, what);
        if (fields.size() > count)
            Fail(Tr("comtrade", "%1 has %2 fields, there are %3; does a name hold a comma?")
                     .arg(what)
                     .arg(count)
                     .arg(fields.size()));
        return fields;
    }

    double Number(const QString& field, const QString& what)
    {
        bool ok = false;
        const double number = field.toDouble(&ok);
        if (!ok)
            NotANumber(field, what);
        return number;
    }

    qint64 Integer(const QString& field, const QString& what)
    {
        bool ok = false;
        const qint64 number = field.toLongLong(&ok);
        if (!ok)
            NotANumber(field, what);
        return number;
    }

    [[noreturn]] void Fail(const QString& what) const
    {
        throw Error(Tr("comtrade", "%1, line %2: %3").arg(fileName).arg(next).arg(what));
    }

    int Left() const { return lines.size() - next; }

private:
    [[noreturn]] void NotANumber(const QString& field, const QString& what) const
    {
        Fail(Tr("comtrade", "%1 is '%2', which is no number").arg(what, field));
    }

    QStringList lines;
    const QString fileName;
    int next = 0; // also the number of the last line taken, counted from 1
};

void ReadStation(Lines& lines, Configuration& configuration)
{
    const QStringList fields = lines.Next(2, Tr("comtrade", "station, device, revision"));
    configuration.station = fields[0];
    configuration.device = fields[1];
    if (fields.size() == 2)
        lines.Fail(Tr("comtrade", "no revision year: records of 1991 are not supported"));
    if (fields.size() > 3)
        lines.Fail(Tr("comtrade", "more than three fields; does a name hold a comma?"));
    if (fields[2] == QLatin1String("1999"))
        configuration.revision = Revision::R1999;
    else if (fields[2] == QLatin1String("2013"))
        configuration.revision = Revision::R2013;
    else
        lines.Fail(Tr("comtrade", "revision '%1' is not supported, only 1999 and 2013").arg(fields[2]));
}

// The count in a field such as "32A".
size_t ChannelCount(Lines& lines, const QString& field, QChar letter)
{
    if (!field.endsWith(letter, Qt::CaseInsensitive))
        lines.Fail(Tr("comtrade", "'%1' should be a number and %2").arg(field).arg(letter));
    const qint64 count = lines.Integer(field.chopped(1), Tr("comtrade", "channel count"));
    if (count < 0 || count > lines.Left())
        lines.Fail(Tr("comtrade", "%1 channels, but only %2 lines follow").arg(count).arg(lines.Left()));
    return static_cast<size_t>(count);
}

AnalogChannel ReadAnalog(Lines& lines)
{
    const QStringList fields = lines.NextExactly(13, Tr("comtrade", "an analog channel"));
    AnalogChannel channel;
    channel.number = static_cast<int>(lines.Integer(fields[0], Tr("comtrade", "channel number")));
    channel.name = fields[1];
    channel.phase = fields[2];
    channel.circuit = fields[3];
    channel.unit = fields[4];
    channel.a = lines.Number(fields[5], Tr("comtrade", "multiplier a"));
    channel.b = lines.Number(fields[6], Tr("comtrade", "offset b"));
    channel.skew = fields[7].isEmpty() ? 0.0 : lines.Number(fields[7], Tr("comtrade", "skew"));
    channel.min = lines.Number(fields[8], Tr("comtrade", "minimum"));
    channel.max = lines.Number(fields[9], Tr("comtrade", "maximum"));
    channel.primary = lines.Number(fields[10], Tr("comtrade", "primary factor"));
    channel.secondary = lines.Number(fields[11], Tr("comtrade", "secondary factor"));
    const QString side = fields[12].toUpper();
    if (side != QLatin1String("P") && side != QLatin1String("S"))
        lines.Fail(Tr("comtrade", "'%1' should be P or S").arg(fields[12]));
    channel.primaryValues = side == QLatin1String("P");
    return channel;
}

StateChannel ReadState(Lines& lines)
{
    const QStringList fields = lines.NextExactly(5, Tr("comtrade", "a status channel"));
    StateChannel channel;
    channel.number = static_cast<int>(lines.Integer(fields[0], Tr("comtrade", "channel number")));
    channel.name = fields[1];
    channel.phase = fields[2];
    channel.circuit = fields[3];
    channel.normalState =
        !fields[4].isEmpty() && lines.Integer(fields[4], Tr("comtrade", "normal state")) != 0;
    return channel;
}

void ReadChannels(Lines& lines, Configuration& configuration)
{
    const QStringList fields = lines.NextExactly(3, Tr("comtrade", "channel counts"));
    const qint64 total = lines.Integer(fields[0], Tr("comtrade", "channel count"));
    const size_t analog = ChannelCount(lines, fields[1], QLatin1Char('A'));
    const size_t states = ChannelCount(lines, fields[2], QLatin1Char('D'));
    if (total != static_cast<qint64>(analog) + static_cast<qint64>(states))
        lines.Fail(Tr("comtrade", "%1 channels in all are not %2 and %3").arg(total).arg(analog).arg(states));
    for (size_t i = 0; i < analog; ++i)
        configuration.analog.push_back(ReadAnalog(lines));
    for (size_t i = 0; i < states; ++i)
        configuration.states.push_back(ReadState(lines));
}

void ReadRates(Lines& lines, Configuration& configuration)
{
    const QString frequency = lines.NextExactly(1, Tr("comtrade", "line frequency"))[0];
    configuration.lineFrequency =
        frequency.isEmpty() ? 0.0 : lines.Number(frequency, Tr("comtrade", "line frequency"));
    const qint64 count = lines.Integer(lines.NextExactly(1, Tr("comtrade", "number of rates"))[0],
                                       Tr("comtrade", "number of rates"));
    if (count < 0 || count > lines.Left())
        lines.Fail(Tr("comtrade", "%1 rates, but only %2 lines follow").arg(count).arg(lines.Left()));
    // Without a constant rate there is still one line, which gives the number of samples.
    for (qint64 i = 0; i < std::max<qint64>(count, 1); ++i) {
        const QStringList fields = lines.NextExactly(2, Tr("comtrade", "a sampling rate"));
        const SampleRate rate = {lines.Number(fields[0], Tr("comtrade", "rate")),
                                 lines.Integer(fields[1], Tr("comtrade", "last sample"))};
        const qint64 before = configuration.rates.empty() ? 0 : configuration.rates.back().lastSample;
        if (!(rate.hertz >= 0) || !std::isfinite(rate.hertz) || rate.lastSample < before)
            lines.Fail(Tr("comtrade", "the rate or its last sample is out of range"));
        configuration.rates.push_back(rate);
    }
}

// Converts the digits after the decimal point into nanoseconds.
qint64 Nanoseconds(const QString& digits)
{
    return digits.leftJustified(9, QLatin1Char('0'), true).toLongLong();
}

TimeStamp ReadStamp(Lines& lines, const QString& what)
{
    const QStringList fields = lines.NextExactly(2, what);
    const QStringList date = fields[0].split(QLatin1Char('/'));
    const QStringList clock = fields[1].split(QLatin1Char(':'));
    if (date.size() != 3 || clock.size() != 3)
        lines.Fail(Tr("comtrade", "'%1,%2' should be dd/mm/yyyy,hh:mm:ss.ssssss").arg(fields[0], fields[1]));
    TimeStamp stamp;
    stamp.date = QDate(date[2].toInt(), date[1].toInt(), date[0].toInt());
    const QString seconds = clock[2].section(QLatin1Char('.'), 0, 0);
    const QString decimals = clock[2].section(QLatin1Char('.'), 1);
    stamp.decimals = decimals.size();
    const qint64 hour = lines.Integer(clock[0], Tr("comtrade", "hour"));
    const qint64 minute = lines.Integer(clock[1], Tr("comtrade", "minute"));
    const qint64 second = lines.Integer(seconds, Tr("comtrade", "second"));
    const qint64 nanoseconds =
        decimals.isEmpty() ? 0 : lines.Integer(decimals.left(9), Tr("comtrade", "decimals of a second"));
    if (!stamp.date.isValid() || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
        second > 60 || nanoseconds < 0)
        lines.Fail(Tr("comtrade", "'%1,%2' is no date and time").arg(fields[0], fields[1]));
    stamp.nanoseconds = ((hour * 60 + minute) * 60 + second) * 1000000000 + Nanoseconds(decimals);
    return stamp;
}

struct NamedType
{
    const char* name;
    DataType type;
};

constexpr std::array<NamedType, 4> DataTypes = {{{"ASCII", DataType::Ascii},
                                                 {"BINARY", DataType::Binary},
                                                 {"BINARY32", DataType::Binary32},
                                                 {"FLOAT32", DataType::Float32}}};

DataType ReadDataType(Lines& lines)
{
    const QString name = lines.NextExactly(1, Tr("comtrade", "data file type"))[0];
    for (const NamedType& row : DataTypes) {
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0)
            return row.type;
    }
    lines.Fail(Tr("comtrade", "data file type '%1' is not known").arg(name));
}

void ReadClock(Lines& lines, Configuration& configuration)
{
    const QStringList codes = lines.NextExactly(2, Tr("comtrade", "time codes"));
    configuration.timeCode = codes[0];
    configuration.localCode = codes[1];
    const QStringList quality = lines.NextExactly(2, Tr("comtrade", "time quality"));
    configuration.timeQuality = quality[0];
    configuration.leapSecond = quality[1];
}

} // namespace

qint64 Configuration::SampleCount() const
{
    return rates.empty() ? 0 : rates.back().lastSample;
}

double Configuration::StampSeconds() const
{
    constexpr int microseconds = 6;
    return timeMultiplier * (start.decimals > microseconds ? 1e-9 : 1e-6);
}

QString NameOf(DataType type)
{
    const auto* const row = std::find_if(DataTypes.begin(), DataTypes.end(),
                                         [type](const NamedType& one) { return one.type == type; });
    return QLatin1String(row->name);
}

Configuration ParseConfiguration(const QByteArray& text, const QString& fileName, Findings* /*forgiven*/)
{
    Lines lines(text, fileName);
    Configuration configuration;
    ReadStation(lines, configuration);
    ReadChannels(lines, configuration);
    ReadRates(lines, configuration);
    configuration.start = ReadStamp(lines, Tr("comtrade", "start time"));
    configuration.trigger = ReadStamp(lines, Tr("comtrade", "trigger time"));
    configuration.dataType = ReadDataType(lines);
    const QString multiplier = lines.NextExactly(1, Tr("comtrade", "time multiplier"))[0];
    configuration.timeMultiplier = lines.Number(multiplier, Tr("comtrade", "time multiplier"));
    if (configuration.revision == Revision::R2013)
        ReadClock(lines, configuration);
    return configuration;
}

} // namespace comtrade
