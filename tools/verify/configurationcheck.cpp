// The configuration of a record: lines of fields whose values are all known beforehand.
#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "text/texts.h"
#include "verify/channellines.h"
#include "verify/checks.h"
#include "verify/device.h"
#include "verify/mismatch.h"
#include "verify/source.h"
#include "verify/stamp.h"
#include "verify/textwalk.h"

#include <initializer_list>

namespace verify {

namespace {

// A field's name for people, and what it must be.
struct Field
{
    QString name;
    QString expected;
};

class Lines
{
public:
    Lines(const QByteArray& bytes, const Device& device, const QString& fileName_)
        : text(bytes, fileName_, "\n", device), fileName(fileName_)
    {}

    // The next line must have these fields. subject says what they belong to, and may be empty.
    void Line(const QString& subject, std::initializer_list<Field> fields)
    {
        const QStringList found = text.TakeLine().split(QLatin1Char(','));
        const QString place = QLatin1Char('\'') + fileName +
                              (subject.isEmpty() ? QStringLiteral("'") : QStringLiteral("', ") + subject);
        if (found.size() != static_cast<int>(fields.size()))
            throw Mismatch(Tr("verify", "%1: line %2 has %3 fields in place of %4")
                               .arg(place)
                               .arg(text.LinesTaken())
                               .arg(found.size())
                               .arg(fields.size()));
        int index = 0;
        for (const Field& field : fields)
            ExpectSame(place + QLatin1String(", ") + field.name, found[index++].trimmed(), field.expected);
    }

    // The same for lines that may be known from another record.
    template <class Channel, class Check>
    void KnownLine(KnownLines& known, size_t number, const Channel& channel, const Check& check)
    {
        known.Pass(number, InputsOf(channel), text, check);
    }

    void End() const { text.End(); }

private:
    TextWalk text;
    const QString fileName;
};

void CheckStation(Lines& lines, const Source& source)
{
    const ZuCmtrDevParam& param = source.Owner().Param();
    const QString year = QLatin1String(param.Comtrade1999 ? "1999" : "2013");
    const QStringList names =
        source.Owner()
            .AsWritten(Filled(QStringLiteral("%1,%2,%3"), {param.Object, param.Source, year}))
            .split(QLatin1Char(','));
    if (names.size() != 3)
        throw Mismatch(Tr("verify", "the ini file's object '%1' or source '%2' holds a comma, so that no "
                                    "program can read the record's configuration; take it out")
                           .arg(param.Object, param.Source));
    lines.Line(QString(), {{Tr("verify", "station"), names[0].trimmed()},
                           {Tr("verify", "recording device"), names[1].trimmed()},
                           {Tr("verify", "revision"), names[2]}});
    lines.Line(
        QString(),
        {{Tr("verify", "number of channels"), QString::number(source.AnalogCount() + source.StateCount())},
         {Tr("verify", "number of analog channels"), QStringLiteral("%1A").arg(source.AnalogCount())},
         {Tr("verify", "number of state channels"), QStringLiteral("%1D").arg(source.StateCount())}});
}

void CheckAnalog(Lines& lines, const Source& source, size_t index)
{
    const AnChannelData& channel = source.Analog(index);
    const QStringList names = NameFields(channel, index + 1, source.Owner());
    const Scaling scaling = ScalingOf(channel);
    lines.Line(Tr("verify", "analog channel %1 (%2)").arg(QString::number(index + 1), names[1]),
               {{Tr("verify", "number"), names[0]},
                {Tr("verify", "name"), names[1]},
                {Tr("verify", "phase"), names[2]},
                {Tr("verify", "circuit"), names[3]},
                {Tr("verify", "unit"), names[4]},
                {Tr("verify", "multiplier a"), scaling.a},
                {Tr("verify", "offset b"), scaling.b},
                {Tr("verify", "skew"), scaling.skew},
                {Tr("verify", "lowest code"), QString::number(scaling.lowest)},
                {Tr("verify", "highest code"), QString::number(scaling.highest)},
                {Tr("verify", "primary value"), scaling.primary},
                {Tr("verify", "secondary value"), scaling.secondary},
                {Tr("verify", "primary or secondary"), QStringLiteral("P")}});
}

void CheckState(Lines& lines, const Source& source, size_t index)
{
    const QStringList names = NameFields(source.State(index), index + 1, source.Owner());
    lines.Line(Tr("verify", "state channel %1 (%2)").arg(QString::number(index + 1), names[1]),
               {{Tr("verify", "number"), names[0]},
                {Tr("verify", "name"), names[1]},
                {Tr("verify", "phase"), names[2]},
                {Tr("verify", "circuit"), names[3]},
                {Tr("verify", "normal state"), names[4]}});
}

void CheckRate(Lines& lines, const Source& source)
{
    lines.Line(QString(), {{Tr("verify", "line frequency"), QStringLiteral("50")}});
    lines.Line(QString(), {{Tr("verify", "number of rates"), QStringLiteral("1")}});
    lines.Line(QString(),
               {{Tr("verify", "samples per second"), QString::number(source.SampleRate(), 'g', 6)},
                {Tr("verify", "number of the last sample"), QString::number(source.TotalSamples())}});
}

void CheckStamp(Lines& lines, const QString& name, const Moment& moment)
{
    const QStringList parts = StampText(moment).split(QLatin1Char(','));
    lines.Line(name, {{Tr("verify", "date"), parts[0]}, {Tr("verify", "time of day"), parts[1]}});
}

// The zone of a revision 2013 record. The letter between hours and minutes is Cyrillic.
QString ZoneField(int zoneSeconds)
{
    const int hours = zoneSeconds / 3600;
    const int minutes = zoneSeconds / 60 % 60;
    if (hours == 0 && minutes == 0)
        return QStringLiteral("0");
    if (minutes == 0)
        return QStringLiteral("+%1").arg(hours);
    return QStringLiteral("+%1ч%2").arg(hours, 2, 10, QLatin1Char('0')).arg(minutes, 2, 10, QLatin1Char('0'));
}

void CheckZone(Lines& lines, const Source& source)
{
    const Device& device = source.Owner();
    lines.Line(QString(),
               {{Tr("verify", "time code"), device.AsWritten(ZoneField(source.First().TimeZoneSeconds))},
                {Tr("verify", "local code"), device.AsWritten(device.Param().TimeCode)}});
    lines.Line(QString(), {{Tr("verify", "time quality"), QStringLiteral("0")},
                           {Tr("verify", "leap second"), QStringLiteral("3")}});
}

} // namespace

void CheckConfiguration(const QByteArray& configuration, const Source& source, const QString& fileName)
{
    const ZuCmtrDevParam& param = source.Owner().Param();
    Lines lines(configuration, source.Owner(), fileName);
    CheckStation(lines, source);
    KnownTexts& known = source.Owner().Known();
    for (size_t i = 0; i < source.AnalogCount(); ++i)
        lines.KnownLine(known.analogLines, i, source.Analog(i), [&] { CheckAnalog(lines, source, i); });
    for (size_t i = 0; i < source.StateCount(); ++i)
        lines.KnownLine(known.stateLines, i, source.State(i), [&] { CheckState(lines, source, i); });
    CheckRate(lines, source);
    CheckStamp(lines, Tr("verify", "first sample"), StartMoment(source));
    CheckStamp(lines, Tr("verify", "trigger"), TriggerMoment(source));
    lines.Line(QString(),
               {{Tr("verify", "form of the data"), QLatin1String(param.ComtradeBin ? "Binary" : "ASCII")}});
    lines.Line(QString(), {{Tr("verify", "time multiplier"), QStringLiteral("1")}});
    if (!param.Comtrade1999)
        CheckZone(lines, source);
    lines.End();
}

} // namespace verify
