#include "forms/comtradetext.h"

#include "comtrade/moment.h"
#include "text/texts.h"

#include <QTextCodec>

#include <algorithm>
#include <array>
#include <charconv>

using comtrade::Configuration;
using comtrade::Revision;

namespace forms {

namespace {

const QString LineEnd = QStringLiteral("\r\n");

QString StampText(const comtrade::TimeStamp& stamp)
{
    return stamp.date.toString(QStringLiteral("dd/MM/yyyy")) + QLatin1Char(',') + comtrade::ClockText(stamp);
}

QString Joined(const QStringList& fields)
{
    return fields.join(QLatin1Char(',')) + LineEnd;
}

QString AnalogLine(const comtrade::AnalogChannel& channel)
{
    return Joined({QString::number(channel.number), channel.name, channel.phase, channel.circuit,
                   channel.unit, NumberText(channel.a), NumberText(channel.b), NumberText(channel.skew),
                   NumberText(channel.min), NumberText(channel.max), NumberText(channel.primary),
                   NumberText(channel.secondary),
                   channel.primaryValues ? QStringLiteral("P") : QStringLiteral("S")});
}

QString StateLine(const comtrade::StateChannel& channel)
{
    return Joined({QString::number(channel.number), channel.name, channel.phase, channel.circuit,
                   channel.normalState ? QStringLiteral("1") : QStringLiteral("0")});
}

// Without a constant rate there are 0 rates, and one line that gives the number of samples.
QString RateLines(const std::vector<comtrade::SampleRate>& rates)
{
    const bool isConstant = rates.size() > 1 || (rates.size() == 1 && rates.front().hertz > 0);
    QString text = QString::number(isConstant ? rates.size() : 0) + LineEnd;
    for (const comtrade::SampleRate& rate : rates)
        text += Joined({NumberText(rate.hertz), QString::number(rate.lastSample)});
    return rates.empty() ? text + QStringLiteral("0,0") + LineEnd : text;
}

// A text of the configuration, how long it may be, and where it stands for people.
struct Field
{
    const QString& text;
    int longest;
    QString place;
};

void Check(const Field& field, Revision revision)
{
    for (const QChar letter : field.text)
        if (letter == QLatin1Char(',') || letter == QLatin1Char('\n') || letter == QLatin1Char('\r'))
            throw FormError(Tr("export", "%1: '%2' holds a comma or a line end, which COMTRADE has no way to "
                                         "write; CSV and MAT have")
                                .arg(field.place, field.text.simplified()));
    if (field.text.size() > field.longest)
        throw FormError(Tr("export", "%1: '%2' has %3 characters, revision %4 allows %5; CSV and MAT hold it")
                            .arg(field.place, field.text)
                            .arg(field.text.size())
                            .arg(static_cast<int>(revision))
                            .arg(field.longest));
}

// Lengths that the standard gives: names of channels are longer since 2013.
void CheckChannel(const QString& place, const QString& name, const QString& phase, const QString& circuit,
                  Revision revision)
{
    Check({name, revision == Revision::R1999 ? 64 : 128, place}, revision);
    Check({phase, 2, Tr("export", "%1 (%2), phase").arg(place, name)}, revision);
    Check({circuit, 64, Tr("export", "%1 (%2), circuit").arg(place, name)}, revision);
}

} // namespace

QString NumberText(double number)
{
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number + 0.0); // never "-0"
    return QString::fromLatin1(text.data(), static_cast<int>(result.ptr - text.data()));
}

QString ConfigurationText(const Configuration& configuration)
{
    const size_t analog = configuration.analog.size();
    const size_t states = configuration.states.size();
    QString text = Joined({configuration.station, configuration.device,
                           QString::number(static_cast<int>(configuration.revision))}) +
                   QStringLiteral("%1,%2A,%3D").arg(analog + states).arg(analog).arg(states) + LineEnd;
    for (const comtrade::AnalogChannel& channel : configuration.analog)
        text += AnalogLine(channel);
    for (const comtrade::StateChannel& channel : configuration.states)
        text += StateLine(channel);
    text += NumberText(configuration.lineFrequency) + LineEnd + RateLines(configuration.rates) +
            StampText(configuration.start) + LineEnd + StampText(configuration.trigger) + LineEnd +
            comtrade::NameOf(configuration.dataType) + LineEnd + NumberText(configuration.timeMultiplier) +
            LineEnd;
    if (configuration.revision == Revision::R2013)
        text += Joined({configuration.timeCode, configuration.localCode}) +
                Joined({configuration.timeQuality, configuration.leapSecond});
    return text;
}

QByteArray Encoded(const QString& text, const QByteArray& encoding, const QString& what)
{
    const QTextCodec* const codec = QTextCodec::codecForName(encoding);
    if (codec->canEncode(text))
        return codec->fromUnicode(text);
    const auto* const letter =
        std::find_if(text.begin(), text.end(), [codec](QChar one) { return !codec->canEncode(one); });
    throw FormError(Tr("export", "%1: the encoding %2 has no letter '%3'; --out-encoding utf8 has")
                        .arg(what, QString::fromLatin1(encoding), letter == text.end() ? text : *letter));
}

void CheckTexts(const Configuration& configuration)
{
    const Revision revision = configuration.revision;
    Check({configuration.station, 64, Tr("export", "station")}, revision);
    Check({configuration.device, 64, Tr("export", "recorder")}, revision);
    for (size_t i = 0; i < configuration.analog.size(); ++i) {
        const comtrade::AnalogChannel& channel = configuration.analog[i];
        const QString place = QStringLiteral("A%1").arg(i + 1);
        CheckChannel(place, channel.name, channel.phase, channel.circuit, revision);
        Check({channel.unit, 32, Tr("export", "%1 (%2), unit").arg(place, channel.name)}, revision);
    }
    for (size_t i = 0; i < configuration.states.size(); ++i) {
        const comtrade::StateChannel& channel = configuration.states[i];
        CheckChannel(QStringLiteral("D%1").arg(i + 1), channel.name, channel.phase, channel.circuit,
                     revision);
    }
}

} // namespace forms
