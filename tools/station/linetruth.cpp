#include "station/linetruth.h"

#include "station/linephasors.h"
#include "station/linerecording.h"
#include "text/numbers.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace station {

namespace {

constexpr double Pi = 3.14159265358979323846;

// Rounded, so that the last digits do not depend on the platform's functions.
double Digits(double value)
{
    return QString::number(value, 'g', 8).toDouble();
}

// Makes the parts of the truth; times are seconds from the trigger, to the microsecond.
class TruthMaker
{
public:
    TruthMaker(const LineScenario& plans, const LineOutcome& played,
               const std::vector<SignalHistory>& signals_)
        : scenario(plans), outcome(played), histories(signals_)
    {}

    QJsonObject Make(const QString& file) const;

private:
    double FromTrigger(int64_t microseconds) const;
    double FromTrigger(double seconds) const;
    QJsonValue FromTrigger(const std::optional<double>& seconds) const;
    QJsonValue Fault() const;
    QJsonArray Parts(const FaultPlan& plan) const;
    QJsonObject Phasors() const;
    QJsonObject ChannelPhasors(const LinePhasors& phasors) const;
    QJsonArray Events() const;
    QJsonObject Operating() const;
    std::optional<int64_t> ChangeAfter(Behaviour behaviour, double time) const;
    QJsonValue FirstChange(Behaviour behaviour) const;

    const LineScenario& scenario;
    const LineOutcome& outcome;
    const std::vector<SignalHistory>& histories;
};

double TruthMaker::FromTrigger(int64_t microseconds) const
{
    return static_cast<double>(microseconds - TimeToTrigger(scenario)) / 1e6;
}

double TruthMaker::FromTrigger(double seconds) const
{
    return FromTrigger(static_cast<int64_t>(std::llround(seconds * 1e6)));
}

QJsonValue TruthMaker::FromTrigger(const std::optional<double>& seconds) const
{
    return seconds ? QJsonValue(FromTrigger(*seconds)) : QJsonValue();
}

QString IsoOf(int64_t microseconds, int zoneSeconds)
{
    const QDateTime time =
        QDateTime::fromSecsSinceEpoch(microseconds / 1000000, Qt::OffsetFromUTC, zoneSeconds);
    return time.toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")) +
           QString::asprintf(".%06d+%02d:%02d", static_cast<int>(microseconds % 1000000), zoneSeconds / 3600,
                             zoneSeconds / 60 % 60);
}

// A part ends where it turns into the next one, or is cleared.
QJsonArray TruthMaker::Parts(const FaultPlan& plan) const
{
    QJsonArray parts;
    const auto add = [&](const FaultState& fault, double onset, const std::optional<double>& clearing) {
        parts.append(QJsonObject{{"kind", NameOf(fault.kind)},
                                 {"onset", FromTrigger(onset)},
                                 {"clearing", FromTrigger(clearing)},
                                 {"resistance", Digits(fault.resistance)}});
    };
    for (size_t i = 0; i < plan.parts.size(); ++i) {
        const bool isLast = i + 1 == plan.parts.size();
        add(plan.parts[i].fault, outcome.moments.partOnsets[i],
            isLast ? outcome.cleared : outcome.moments.partOnsets[i + 1]);
    }
    if (outcome.moments.second && outcome.moments.second->onset < outcome.moments.end)
        add(plan.parts.back().fault, outcome.moments.second->onset, outcome.clearedAgain);
    return parts;
}

// Currents that the other end and this end feed into the fault, in its first phase.
double InfeedRatio(const LineModel& model, const FaultState& fault)
{
    const LinePhasors phasors = SteadyState(model, fault);
    const size_t phase = ReferencePhase(fault.kind);
    return std::abs(phasors.remote[phase]) / std::abs(phasors.line[phase]);
}

QJsonValue TruthMaker::Fault() const
{
    if (!scenario.fault || !outcome.moments.first)
        return QJsonValue();
    const FaultState& last = scenario.fault->parts.back().fault;
    const double part = scenario.model.fraction;
    return QJsonObject{{"circuit", scenario.line.name},
                       {"kind", NameOf(last.kind)},
                       {"onset", FromTrigger(outcome.moments.first->onset)},
                       {"clearing", FromTrigger(outcome.cleared)},
                       {"parts", Parts(*scenario.fault)},
                       {"direction", QStringLiteral("forward")},
                       {"distance", QJsonObject{{"percent", Digits(part * 100.0)},
                                                {"km", Digits(part * scenario.line.data.length)}}},
                       {"resistance", Digits(last.resistance)},
                       {"infeed", Digits(InfeedRatio(scenario.model, last))},
                       {"saturation", outcome.saturated}};
}

QJsonObject TruthMaker::ChannelPhasors(const LinePhasors& phasors) const
{
    const LineBays bays = BaysAround(scenario.line);
    QJsonObject channels;
    for (const AnalogSignal& signal : AnalogSignalsAround(scenario.line)) {
        const Complex phasor =
            ValueOf(QuantityOf(signal, bays, phasors), signal.phase) * UnitsPerVolt(signal);
        // What is zero has no angle.
        const double magnitude = std::abs(phasor) < 1e-6 ? 0.0 : std::abs(phasor);
        const double angle = magnitude > 0.0 ? std::arg(phasor) * 180.0 / Pi : 0.0;
        channels.insert(signal.name, QJsonObject{{"magnitude", Digits(magnitude)}, {"angle", Digits(angle)}});
    }
    return channels;
}

QJsonObject TruthMaker::Phasors() const
{
    QJsonObject phasors{{"before", ChannelPhasors(SteadyState(scenario.model, std::nullopt))}};
    if (scenario.fault)
        phasors.insert("during",
                       ChannelPhasors(SteadyState(scenario.model, scenario.fault->parts.back().fault)));
    return phasors;
}

// In the order of time; at the same time in that of the channels.
QJsonArray TruthMaker::Events() const
{
    struct Event
    {
        int64_t time;
        size_t channel;
        bool state;
    };
    std::vector<Event> events;
    for (size_t channel = 0; channel < histories.size(); ++channel) {
        bool state = histories[channel].atStart;
        for (const int64_t toggle : histories[channel].toggles) {
            state = !state;
            events.push_back({toggle, channel, state});
        }
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& one, const Event& other) { return one.time < other.time; });
    QJsonArray list;
    for (const Event& event : events)
        list.append(QJsonObject{{"time", FromTrigger(event.time)},
                                {"channel", static_cast<int>(event.channel) + 1},
                                {"name", histories[event.channel].signal.name},
                                {"state", event.state ? 1 : 0}});
    return list;
}

// The first change of the line's signal from a moment on, microseconds from the first sample.
std::optional<int64_t> TruthMaker::ChangeAfter(Behaviour behaviour, double time) const
{
    for (const SignalHistory& history : histories)
        if (history.signal.bay.name == scenario.line.name && history.signal.behaviour == behaviour)
            for (const int64_t toggle : history.toggles)
                if (static_cast<double>(toggle) >= time * 1e6)
                    return toggle;
    return std::nullopt;
}

QJsonValue TruthMaker::FirstChange(Behaviour behaviour) const
{
    const std::optional<int64_t> change = ChangeAfter(behaviour, 0.0);
    return change ? QJsonValue(FromTrigger(*change)) : QJsonValue();
}

// The dead time is that of the breaker's position signal, the interruption that of the currents.
QJsonObject TruthMaker::Operating() const
{
    static const char* const ends[] = {nullptr, "success", "fault"};
    const std::optional<double>& closing = outcome.moments.closing;
    QJsonObject operating{{"start", FirstChange(Behaviour::ProtectionStart)},
                          {"trip", FirstChange(Behaviour::Trip)},
                          {"breaker", FirstChange(Behaviour::BreakerClosed)},
                          {"clearing", FromTrigger(outcome.cleared)},
                          {"deadTime", QJsonValue()},
                          {"interruption", QJsonValue()},
                          {"reclosed", QJsonValue()}};
    if (!scenario.fault || !closing || !outcome.opened || *closing >= outcome.moments.end)
        return operating;
    operating["interruption"] = Digits(FromTrigger(*closing) - FromTrigger(*outcome.opened));
    operating["reclosed"] = QString::fromLatin1(ends[static_cast<size_t>(scenario.fault->reclosing)]);
    const std::optional<int64_t> opened = ChangeAfter(Behaviour::BreakerClosed, 0.0);
    const std::optional<int64_t> closed = ChangeAfter(Behaviour::BreakerClosed, *closing);
    if (opened && closed)
        operating["deadTime"] = static_cast<double>(*closed - *opened) / 1e6;
    return operating;
}

QJsonObject TruthMaker::Make(const QString& file) const
{
    const LineData& line = scenario.line.data;
    return {{"file", file},
            {"trigger", IsoOf(TriggerOf(scenario), ZoneSecondsOf(scenario))},
            {"fault", Fault()},
            {"line", QJsonObject{{"circuit", scenario.line.name},
                                 {"length", Digits(line.length)},
                                 {"r1", Digits(line.r1)},
                                 {"x1", Digits(line.x1)},
                                 {"r0", Digits(line.r0)},
                                 {"x0", Digits(line.x0)}}},
            {"frequency", Digits(scenario.model.frequency)},
            {"phasors", Phasors()},
            {"events", Events()},
            {"operating", Operating()},
            {"cause", scenario.quiet ? QJsonValue(WordOf(scenario.quiet->cause)) : QJsonValue()}};
}

} // namespace

QByteArray MakeTruth(const LineScenario& scenario, const LineOutcome& outcome,
                     const std::vector<SignalHistory>& histories, const QString& file)
{
    return text::JsonText(QJsonDocument(TruthMaker(scenario, outcome, histories).Make(file)));
}

} // namespace station
