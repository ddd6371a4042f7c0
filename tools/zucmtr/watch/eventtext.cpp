#include "zucmtr/watch/eventtext.h"

#include "text/texts.h"

#include <QJsonArray>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include <cmath>

namespace eventtext {

namespace {

QString Text(const QJsonObject& event, const char* key)
{
    return event[QLatin1String(key)].toVariant().toString();
}

// To the millisecond, in as few digits as that takes.
QString Seconds(const QJsonValue& value)
{
    return QString::number(std::round(value.toDouble() * 1000) / 1000);
}

QString Seconds(const QJsonObject& event, const char* key)
{
    return Seconds(event[QLatin1String(key)]);
}

QString List(const QJsonObject& event, const char* key)
{
    return event[QLatin1String(key)].toVariant().toStringList().join(QLatin1String(", "));
}

QString File(const QJsonObject& event)
{
    return Text(event, "file");
}

QString Sentence(const QJsonObject& event)
{
    return Text(event, "text");
}

QString Started(const QJsonObject& event)
{
    return Tr("log", "%1; a recording is complete when unchanged for %2 s")
        .arg(List(event, "directories"), Seconds(event, "quietSeconds"));
}

QString Converted(const QJsonObject& event)
{
    QStringList parts(
        QStringLiteral("%1 -> %2/%3").arg(File(event), Text(event, "directory"), Text(event, "record")));
    for (const auto& note : event[QLatin1String("notes")].toArray())
        parts << note.toString();
    return parts.join(QLatin1String("; "));
}

// What is tried again, and when.
QString Tried(const QJsonObject& event)
{
    const QString text = File(event) + QLatin1String(": ") + Text(event, "error");
    const QJsonValue retry = event[QLatin1String("retrySeconds")];
    const QString attempt = Text(event, "attempt");
    if (retry.isNull())
        return text + Tr("log", "; attempt %1, the last one").arg(attempt);
    return text + Tr("log", "; attempt %1, the next one in %2 s").arg(attempt, Seconds(retry));
}

QString CommandFailed(const QJsonObject& event)
{
    const QString output = Text(event, "output").simplified();
    return Tried(event) + (output.isEmpty() ? QString() : Tr("log", "; it said: %1").arg(output));
}

QString CommandDone(const QJsonObject& event)
{
    return Tr("log", "%1: the command is done (%2 s)").arg(File(event), Seconds(event, "seconds"));
}

QString Unreadable(const QJsonObject& event)
{
    const QString text = Text(event, "path") + QLatin1String(": ") + Text(event, "error");
    const int count = event[QLatin1String("count")].toInt();
    return count < 2 ? text : text + Tr("log", "; %1 of this kind").arg(count);
}

QString Orphan(const QJsonObject& event)
{
    return File(event) + QLatin1String(": ") + Sentence(event);
}

QString Leftovers(const QJsonObject& event)
{
    QStringList parts;
    if (!event[QLatin1String("back")].toArray().isEmpty())
        parts << Tr("log", "names given back: %1").arg(List(event, "back"));
    if (!event[QLatin1String("removed")].toArray().isEmpty())
        parts << Tr("log", "removed: %1").arg(List(event, "removed"));
    for (const auto& note : event[QLatin1String("notes")].toArray())
        parts << note.toString();
    return parts.join(QLatin1String("; "));
}

QString Recovered(const QJsonObject& event)
{
    return Tr("log", "%1 is over after %2 s").arg(Text(event, "reason"), Seconds(event, "seconds"));
}

QString CaughtUp(const QJsonObject& event)
{
    return Tr("log", "the journal's copy is complete after %1 s").arg(Seconds(event, "seconds"));
}

QString Stopped(const QJsonObject& event)
{
    return Sentence(event) +
           Tr("log", "; %1 converted, %2 given up, %3 waiting")
               .arg(Text(event, "converted"), Text(event, "failed"), Text(event, "waiting"));
}

QString Unwatched(const QJsonObject& event)
{
    return Text(event, "count") + QLatin1String(": ") + Sentence(event);
}

QString Down(const QJsonObject& event)
{
    const QJsonValue retry = event[QLatin1String("retrySeconds")];
    return retry.isNull() ? Sentence(event)
                          : Sentence(event) + Tr("log", "; started again in %1 s").arg(Seconds(retry));
}

QString Reloaded(const QJsonObject& event)
{
    return Tr("log", "started: %1; ended: %2")
        .arg(List(event, "startedRecorders"), List(event, "endedRecorders"));
}

struct Kind
{
    const char* level; // of an event that needs nobody's help, or is not over
    QString (*message)(const QJsonObject& event);
};

const QMap<QString, Kind>& Kinds()
{
    static const QMap<QString, Kind> kinds = {
        {QStringLiteral("started"), {"INFO", Started}},
        {QStringLiteral("found"), {"INFO", File}},
        {QStringLiteral("converting"), {"INFO", File}},
        {QStringLiteral("converted"), {"INFO", Converted}},
        {QStringLiteral("failed"), {"WARNING", Tried}},
        {QStringLiteral("unreadable"), {"WARNING", Unreadable}},
        {QStringLiteral("unwatched"), {"WARNING", Unwatched}},
        {QStringLiteral("orphan"), {"WARNING", Orphan}},
        {QStringLiteral("leftovers"), {"WARNING", Leftovers}},
        {QStringLiteral("trouble"), {"ERROR", Sentence}},
        {QStringLiteral("recovered"), {"INFO", Recovered}},
        {QStringLiteral("stopped"), {"INFO", Stopped}},
        {QStringLiteral("commandDone"), {"INFO", CommandDone}},
        {QStringLiteral("commandFailed"), {"WARNING", CommandFailed}},
        {QStringLiteral("copyBehind"), {"WARNING", Sentence}},
        {QStringLiteral("copyCaughtUp"), {"INFO", CaughtUp}},
        {QStringLiteral("recorderDown"), {"WARNING", Down}},
        {QStringLiteral("reloaded"), {"INFO", Reloaded}},
    };
    return kinds;
}

} // namespace

// What is not tried again waits for somebody.
QString LevelOf(const QJsonObject& event)
{
    if (event.contains(QLatin1String("retrySeconds")) && event[QLatin1String("retrySeconds")].isNull())
        return QStringLiteral("ERROR");
    const auto kind = Kinds().find(Text(event, "event"));
    return QLatin1String(kind == Kinds().end() ? "INFO" : kind->level);
}

QString LineOf(const QJsonObject& event)
{
    const auto kind = Kinds().find(Text(event, "event"));
    QString recorder = Text(event, "recorder");
    recorder.replace(QLatin1Char(' '), QLatin1Char('_'));
    const QString message = kind == Kinds().end() ? QString() : kind->message(event);
    return QStringList{Text(event, "time"), LevelOf(event),
                       recorder.isEmpty() ? QStringLiteral("-") : recorder, Text(event, "event"), message}
        .join(QLatin1Char(' '));
}

} // namespace eventtext
