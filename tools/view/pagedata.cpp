#include "view/pagedata.h"

#include "text/numbers.h"
#include "view/answer.h"
#include "view/base64.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace view {

namespace {

// A number, or null where there is none.
QJsonValue NumberOrNull(double number)
{
    return std::isfinite(number) ? QJsonValue(number) : QJsonValue();
}

QJsonObject AnalogJson(const comtrade::AnalogChannel& channel, const analysis::Codes& codes)
{
    const analysis::Role role = analysis::RoleOf(channel);
    return {{QStringLiteral("number"), channel.number},
            {QStringLiteral("name"), channel.name},
            {QStringLiteral("phase"), channel.phase},
            {QStringLiteral("circuit"), channel.circuit},
            {QStringLiteral("unit"), channel.unit},
            {QStringLiteral("kiloUnit"), analysis::WithKilo(channel.unit)},
            {QStringLiteral("a"), channel.a},
            {QStringLiteral("b"), channel.b},
            {QStringLiteral("factor"), analysis::PrimaryFactor(channel)},
            {QStringLiteral("base"), analysis::BaseFactor(channel.unit)},
            {QStringLiteral("primary"), channel.primary},
            {QStringLiteral("secondary"), channel.secondary},
            {QStringLiteral("wide"), codes.IsWide()},
            {QStringLiteral("least"), NumberOrNull(codes.Least())},
            {QStringLiteral("greatest"), NumberOrNull(codes.Greatest())},
            {QStringLiteral("isWave"), analysis::IsWave(channel.unit)},
            {QStringLiteral("quantity"), QuantityName(role.quantity)},
            {QStringLiteral("role"), QString(QLatin1Char(role.phase)).trimmed()}};
}

QJsonObject StateJson(const comtrade::StateChannel& channel, const analysis::States& states)
{
    QJsonObject json = {{QStringLiteral("number"), channel.number},
                        {QStringLiteral("name"), channel.name},
                        {QStringLiteral("phase"), channel.phase},
                        {QStringLiteral("circuit"), channel.circuit},
                        {QStringLiteral("normal"), channel.normalState ? 1 : 0},
                        {QStringLiteral("initial"), states.Size() > 0 && states.At(0) ? 1 : 0}};
    constexpr qint64 bitsOfPosition = 32;
    if (states.Changes() * bitsOfPosition <= static_cast<qint64>(states.Size()))
        json[QStringLiteral("changes")] = QString::fromLatin1(Base64(states.ChangePositions()));
    else // with so many changes the states themselves are shorter
        json[QStringLiteral("bits")] = QString::fromLatin1(Base64(states.Bits()));
    return json;
}

template <typename Channel, typename Samples, typename Function>
QJsonArray Channels(const std::vector<Channel>& channels, const std::vector<Samples>& samples, Function json)
{
    QJsonArray array;
    for (size_t i = 0; i < channels.size(); ++i)
        array.append(json(channels[i], samples[i]));
    return array;
}

QJsonObject HeldJson(const Held& held)
{
    return {{QStringLiteral("announced"), static_cast<double>(held.announced)},
            {QStringLiteral("hasTrigger"), held.hasTrigger},
            {QStringLiteral("missing"), static_cast<double>(held.missing)},
            {QStringLiteral("incomplete"), static_cast<double>(held.incomplete)}};
}

QJsonObject Identity(const comtrade::Configuration& config)
{
    return {{QStringLiteral("station"), config.station},
            {QStringLiteral("device"), config.device},
            {QStringLiteral("revision"), static_cast<int>(config.revision)},
            {QStringLiteral("dataType"), comtrade::NameOf(config.dataType)},
            {QStringLiteral("lineFrequency"), config.lineFrequency},
            {QStringLiteral("start"), StampText(config.start)},
            {QStringLiteral("trigger"), StampText(config.trigger)},
            {QStringLiteral("timeCode"), config.timeCode},
            {QStringLiteral("localCode"), config.localCode},
            {QStringLiteral("timeQuality"), config.timeQuality}};
}

} // namespace

QJsonObject TimeJson(const analysis::TimeAxis& axis, qint64 first, qint64 count)
{
    constexpr double milliseconds = 1000;
    const auto& pieces = axis.Pieces();
    if (pieces.empty()) {
        std::vector<double> times;
        for (qint64 sample = first; sample < first + count; ++sample)
            times.push_back(axis.TimeOf(sample) * milliseconds);
        return {{QStringLiteral("stamps"), QString::fromLatin1(Base64(times))},
                {QStringLiteral("resolution"), axis.Resolution() * milliseconds}};
    }
    QJsonArray array;
    for (size_t i = 0; i < pieces.size(); ++i) {
        const bool isOver = i + 1 < pieces.size() && pieces[i + 1].from <= first;
        if (isOver || (pieces[i].from >= first + count && !array.isEmpty()))
            continue;
        const qint64 from = std::max(pieces[i].from, first);
        array.append(QJsonArray{static_cast<double>(from - first), axis.TimeOf(from) * milliseconds,
                                pieces[i].step * milliseconds, pieces[i].hertz});
    }
    return {{QStringLiteral("pieces"), array}};
}

QString QuantityName(analysis::Quantity quantity)
{
    switch (quantity) {
    case analysis::Quantity::Voltage:
        return QStringLiteral("U");
    case analysis::Quantity::Current:
        return QStringLiteral("I");
    case analysis::Quantity::Other:
        break;
    }
    return QString();
}

QString StampText(const comtrade::TimeStamp& stamp)
{
    constexpr qint64 second = 1000000000;
    const QTime time = QTime(0, 0).addSecs(static_cast<int>(stamp.nanoseconds / second));
    const QString fraction =
        QStringLiteral("%1").arg(stamp.nanoseconds % second, 9, 10, QLatin1Char('0')).left(stamp.decimals);
    return stamp.date.toString(Qt::ISODate) + QLatin1Char(' ') + time.toString(QStringLiteral("HH:mm:ss")) +
           (fraction.isEmpty() ? QString() : QLatin1Char('.') + fraction);
}

QByteArray PageData(const analysis::Oscillogram& oscillogram, const analysis::Summary& summary,
                    const QString& source, const QJsonObject& overlay)
{
    const comtrade::Configuration& config = oscillogram.config;
    QJsonArray rates;
    for (const comtrade::SampleRate& rate : config.rates)
        rates.append(rate.hertz);
    QJsonObject identity = Identity(config);
    identity[QStringLiteral("source")] = source;
    identity[QStringLiteral("rates")] = rates;
    identity[QStringLiteral("seconds")] = oscillogram.axis.Duration(oscillogram.total);
    QJsonObject data = {
        {QStringLiteral("identity"), identity},
        {QStringLiteral("count"), static_cast<double>(oscillogram.Count())},
        {QStringLiteral("total"), static_cast<double>(oscillogram.total)},
        {QStringLiteral("first"), static_cast<double>(oscillogram.first)},
        {QStringLiteral("trigger"), static_cast<double>(oscillogram.Trigger())},
        {QStringLiteral("frequency"), analysis::MainsFrequency(config)},
        {QStringLiteral("held"), HeldJson(Holding(oscillogram))},
        {QStringLiteral("time"), TimeJson(oscillogram.axis, oscillogram.first, oscillogram.Count())},
        {QStringLiteral("analog"), Channels(config.analog, oscillogram.analog, AnalogJson)},
        {QStringLiteral("states"), Channels(config.states, oscillogram.states, StateJson)},
        {QStringLiteral("report"), oscillogram.report},
        {QStringLiteral("startedCircuit"), StartedCircuit(oscillogram)},
        {QStringLiteral("answer"), AnswerJson(summary, oscillogram.first)}};
    if (!overlay.isEmpty())
        data[QStringLiteral("overlay")] = overlay;
    return text::JsonText(QJsonDocument(data), QJsonDocument::Compact).replace("<", "\\u003c");
}

} // namespace view
