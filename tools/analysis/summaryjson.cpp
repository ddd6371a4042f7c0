// The summary for programs.
#include "analysis/summary.h"

#include "analysis/channelrole.h"
#include "comtrade/moment.h"

#include <QJsonArray>

#include <algorithm>
#include <array>
#include <cmath>

namespace analysis {

namespace {

constexpr double DegreesOfRadian = 180 / 3.14159265358979323846;

// At most so many decimals, and no negative zero; null for what is no number.
QJsonValue Rounded(double number, int decimals)
{
    if (!std::isfinite(number))
        return {};
    const double unit = std::pow(10.0, decimals);
    const double rounded = std::round(number * unit) / unit;
    return rounded == 0 ? 0.0 : rounded;
}

QJsonValue Seconds(double seconds)
{
    return Rounded(seconds, 6);
}

QJsonValue Seconds(const std::optional<double>& seconds)
{
    return seconds ? Seconds(*seconds) : QJsonValue();
}

QJsonValue NameOf(Lack lack)
{
    constexpr std::array<const char*, 4> names = {nullptr, "lineData", "voltages", "tooShort"};
    const char* name = names[static_cast<size_t>(lack)];
    return name == nullptr ? QJsonValue() : QJsonValue(QLatin1String(name));
}

QJsonObject JsonOf(const Distance& distance)
{
    return {{QStringLiteral("percent"), Rounded(distance.percent, 3)},
            {QStringLiteral("km"), Rounded(distance.km, 4)},
            {QStringLiteral("resistance"), Rounded(distance.resistance, 4)}};
}

// What is known of where a part of a fault is.
void AddDistance(QJsonObject& object, const FaultPart& part)
{
    QJsonObject methods;
    for (const Distance& distance : part.distances)
        methods[QLatin1String(analysis::NameOf(distance.method))] = JsonOf(distance);
    object[QStringLiteral("distance")] = methods.isEmpty() ? QJsonValue() : QJsonValue(methods);
    object[QStringLiteral("best")] =
        part.best ? QJsonValue(QLatin1String(analysis::NameOf(part.distances[*part.best].method)))
                  : QJsonValue();
    object[QStringLiteral("range")] =
        part.range ? QJsonValue(QJsonObject{{QStringLiteral("from"), Rounded(part.range->fromPercent, 3)},
                                            {QStringLiteral("to"), Rounded(part.range->toPercent, 3)}})
                   : QJsonValue();
    object[QStringLiteral("lack")] = NameOf(part.lack);
}

QJsonObject JsonOf(const FaultPart& part, const QString& circuit)
{
    QJsonObject object;
    object[QStringLiteral("circuit")] = circuit;
    object[QStringLiteral("kind")] = QLatin1String(analysis::NameOf(part.kind));
    object[QStringLiteral("afterReclosing")] = part.afterReclosing;
    object[QStringLiteral("onset")] = Seconds(part.onset);
    object[QStringLiteral("clearing")] = Seconds(part.clearing);
    AddDistance(object, part);
    return object;
}

QJsonValue FaultOf(const Summary& summary)
{
    if (!summary.findings.fault)
        return {};
    const Fault& fault = *summary.findings.fault;
    QJsonObject object;
    object[QStringLiteral("circuit")] = summary.FaultedCircuit()->name;
    object[QStringLiteral("kind")] = QLatin1String(analysis::NameOf(fault.Kind()));
    object[QStringLiteral("onset")] = Seconds(fault.Onset());
    object[QStringLiteral("clearing")] = Seconds(fault.Clearing());
    object[QStringLiteral("direction")] = QLatin1String(analysis::NameOf(fault.direction));
    AddDistance(object, fault.Located());
    QJsonArray parts;
    for (const FaultPart& part : fault.parts)
        parts.append(JsonOf(part, summary.FaultedCircuit()->name));
    object[QStringLiteral("parts")] = parts;
    return object;
}

// Names are unique in a record that follows the standard; others get the number of the channel.
QString UniqueName(const QJsonObject& object, const comtrade::AnalogChannel& channel)
{
    return object.contains(channel.name) ? QStringLiteral("%1 (%2)").arg(channel.name).arg(channel.number)
                                         : channel.name;
}

QJsonObject PhasorsOf(const Summary& summary, const std::vector<ChannelPhasors>& phasors,
                      Phasor ChannelPhasors::* moment)
{
    QJsonObject object;
    for (const ChannelPhasors& one : phasors) {
        const Phasor phasor = one.*moment;
        if (!std::isfinite(phasor.real()) || !std::isfinite(phasor.imag()))
            continue;
        const comtrade::AnalogChannel& channel = summary.config.analog[one.channel];
        object[UniqueName(object, channel)] = QJsonObject{
            {QStringLiteral("magnitude"), Rounded(std::abs(phasor) / BaseFactor(channel.unit), 6)},
            {QStringLiteral("unit"), channel.unit},
            {QStringLiteral("angle"), Rounded(std::arg(phasor) * DegreesOfRadian, 4)}};
    }
    return object;
}

QJsonObject PhasorsOf(const Summary& summary)
{
    const Findings& findings = summary.findings;
    const std::vector<ChannelPhasors>& phasors = findings.fault ? findings.fault->phasors : findings.phasors;
    QJsonObject object;
    object[QStringLiteral("before")] = PhasorsOf(summary, phasors, &ChannelPhasors::before);
    object[QStringLiteral("during")] =
        findings.fault ? PhasorsOf(summary, phasors, &ChannelPhasors::during) : QJsonObject();
    object[QStringLiteral("after")] =
        findings.fault ? PhasorsOf(summary, phasors, &ChannelPhasors::after) : QJsonObject();
    return object;
}

QJsonArray EventsOf(const Summary& summary)
{
    const std::optional<int> offset = comtrade::UtcOffset(summary.config);
    QJsonArray array;
    const Event* before = nullptr;
    for (const Event& event : summary.events.events) {
        const comtrade::StateChannel& channel = summary.config.states[event.channel];
        QJsonObject object;
        object[QStringLiteral("time")] = Seconds(event.time);
        object[QStringLiteral("at")] =
            comtrade::MomentText(comtrade::After(summary.config.trigger, event.time), offset);
        object[QStringLiteral("since")] =
            before == nullptr ? QJsonValue() : Seconds(event.time - before->time);
        object[QStringLiteral("circuit")] = channel.circuit;
        object[QStringLiteral("channel")] = channel.number;
        object[QStringLiteral("name")] = channel.name;
        object[QStringLiteral("kind")] = QLatin1String(analysis::NameOf(event.use.kind));
        object[QStringLiteral("state")] = event.state ? 1 : 0;
        object[QStringLiteral("active")] = event.IsActive();
        object[QStringLiteral("changes")] = event.changes;
        object[QStringLiteral("bounce")] = event.isBounce;
        array.append(object);
        before = &event;
    }
    return array;
}

QJsonObject OperatingJson(const Operating& operating)
{
    QJsonObject object;
    object[QStringLiteral("from")] = Seconds(operating.from);
    object[QStringLiteral("reference")] =
        operating.from ? QJsonValue(QLatin1String(operating.isFromOnset ? "onset" : "start")) : QJsonValue();
    object[QStringLiteral("circuit")] =
        operating.circuit.isEmpty() ? QJsonValue() : QJsonValue(operating.circuit);
    object[QStringLiteral("start")] = Seconds(operating.start);
    object[QStringLiteral("trip")] = Seconds(operating.trip);
    object[QStringLiteral("breaker")] = Seconds(operating.breaker);
    object[QStringLiteral("clearing")] = Seconds(operating.clearing);
    object[QStringLiteral("deadTime")] = Seconds(operating.deadTime);
    object[QStringLiteral("reclosed")] = operating.reclosed ? QJsonValue(*operating.reclosed) : QJsonValue();
    return object;
}

} // namespace

QJsonObject JsonOf(const Summary& summary)
{
    QJsonObject object;
    object[QStringLiteral("trigger")] =
        comtrade::MomentText(summary.config.trigger, comtrade::UtcOffset(summary.config));
    object[QStringLiteral("samples")] = summary.samples;
    object[QStringLiteral("total")] = summary.total;
    object[QStringLiteral("rate")] = Rounded(summary.rate, 6);
    object[QStringLiteral("frequency")] =
        summary.findings.hasWaves ? Rounded(summary.findings.frequency, 4) : QJsonValue();
    object[QStringLiteral("fault")] = FaultOf(summary);
    object[QStringLiteral("phasors")] = PhasorsOf(summary);
    object[QStringLiteral("events")] = EventsOf(summary);
    object[QStringLiteral("eventsLeftOut")] = summary.events.leftOut;
    object[QStringLiteral("operating")] = OperatingJson(summary.operating);
    object[QStringLiteral("text")] = QJsonArray::fromStringList(SentencesOf(summary));
    return object;
}

QJsonObject ShortJsonOf(const Summary& summary)
{
    return {{QStringLiteral("fault"), FaultOf(summary)},
            {QStringLiteral("operating"), OperatingJson(summary.operating)},
            {QStringLiteral("events"),
             static_cast<qint64>(summary.events.events.size()) + summary.events.leftOut},
            {QStringLiteral("text"), QJsonArray::fromStringList(SentencesOf(summary))}};
}

} // namespace analysis
