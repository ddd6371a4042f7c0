// The sequence of events as a table for people and for spreadsheets.
#include "analysis/summary.h"
#include "comtrade/moment.h"
#include "text/columns.h"
#include "text/csv.h"
#include "text/texts.h"

namespace analysis {

namespace {

QString Shown(ChannelKind kind)
{
    switch (kind) {
    case ChannelKind::Start:
        return Tr("summary", "start");
    case ChannelKind::Trip:
        return Tr("summary", "trip");
    case ChannelKind::Breaker:
        return Tr("summary", "breaker");
    case ChannelKind::Reclosing:
        return Tr("summary", "reclosing");
    case ChannelKind::Other:
        break;
    }
    return QStringLiteral("-");
}

QString StateText(const Event& event)
{
    QString text = event.state ? QStringLiteral("1") : QStringLiteral("0");
    if (event.use.kind == ChannelKind::Breaker)
        text += QLatin1Char(' ') + (event.IsActive() ? Tr("summary", "closed") : Tr("summary", "open"));
    if (event.isBounce)
        text += QLatin1Char(' ') + Tr("summary", "(pulse, %1 changes)").arg(event.changes);
    else if (event.changes > 1)
        text += QLatin1Char(' ') + Tr("summary", "(bounce, %1 changes)").arg(event.changes);
    return text;
}

QString Signed(double seconds)
{
    const QString text = Decimal(seconds, 6);
    return text.startsWith(QLatin1Char('-')) ? text : QLatin1Char('+') + text;
}

QString SinceBefore(const std::vector<Event>& events, size_t at)
{
    return at == 0 ? QString() : Decimal(events[at].time - events[at - 1].time, 6);
}

// Six decimals with a point, in every language.
QByteArray Number(double seconds)
{
    const QByteArray text = QByteArray::number(seconds, 'f', 6);
    return text == "-0.000000" ? text.mid(1) : text;
}

QByteArray Row(const QList<QByteArray>& fields)
{
    return fields.join(',') + "\r\n";
}

} // namespace

QStringList TableOf(const Summary& summary)
{
    const std::vector<Event>& events = summary.events.events;
    std::vector<QStringList> rows = {
        {Tr("summary", "Time"), Tr("summary", "From trigger, s"), Tr("summary", "Since previous, s"),
         Tr("summary", "Circuit"), Tr("summary", "Signal"), Tr("summary", "Kind"), Tr("summary", "State")}};
    for (size_t i = 0; i < events.size(); ++i) {
        const Event& event = events[i];
        const comtrade::StateChannel& channel = summary.config.states[event.channel];
        rows.push_back({comtrade::ClockText(comtrade::After(summary.config.trigger, event.time))
                            .replace(QLatin1Char('.'), Tr("summary", ".")),
                        Signed(event.time), SinceBefore(events, i), channel.circuit, SignalName(channel),
                        Shown(event.use.kind), StateText(event)});
    }
    if (events.empty())
        return {};
    QStringList lines = text::Aligned(rows, {false, true, true, false, false, false, false});
    if (summary.events.leftOut > 0)
        lines << QStringLiteral("  ") +
                     Tr("summary", "further changes, not listed: %1").arg(summary.events.leftOut);
    return lines;
}

QByteArray CsvHead()
{
    return Row({"file", "at", "time", "since", "circuit", "channel", "name", "kind", "state", "active",
                "changes", "bounce"});
}

QByteArray CsvOf(const Summary& summary, const QString& file)
{
    const std::optional<int> offset = comtrade::UtcOffset(summary.config);
    const std::vector<Event>& events = summary.events.events;
    QByteArray text;
    for (size_t i = 0; i < events.size(); ++i) {
        const Event& event = events[i];
        const comtrade::StateChannel& channel = summary.config.states[event.channel];
        text += Row(
            {text::CsvField(file),
             comtrade::MomentText(comtrade::After(summary.config.trigger, event.time), offset).toLatin1(),
             Number(event.time), i == 0 ? QByteArray() : Number(event.time - events[i - 1].time),
             text::CsvField(channel.circuit), QByteArray::number(channel.number),
             text::CsvField(channel.name), NameOf(event.use.kind), event.state ? "1" : "0",
             event.IsActive() ? "1" : "0", QByteArray::number(event.changes), event.isBounce ? "1" : "0"});
    }
    return text;
}

} // namespace analysis
