#include "zucmtr/watch/statusfile.h"

#include "output/outputfile.h"
#include "text/numbers.h"

#include <QDateTime>
#include <QJsonDocument>

#include <vector>

namespace statusfile {

namespace {

// A time as seconds since 1970, a truth as 0 or 1; nothing for null.
QByteArray NumberOf(const QJsonValue& value)
{
    if (value.isString()) {
        const QDateTime time = QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
        return QByteArray::number(static_cast<double>(time.toMSecsSinceEpoch()) / 1000, 'f', 3);
    }
    if (value.isBool())
        return value.toBool() ? "1" : "0";
    return value.isDouble() ? QByteArray::number(value.toDouble(), 'f', 0) : QByteArray();
}

QByteArray Escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return text.replace(QLatin1Char('\n'), QLatin1String("\\n")).toUtf8();
}

QByteArray LabelOf(const char* name, const QString& value)
{
    return QByteArray(name) + "=\"" + Escaped(value) + '"';
}

struct Metric
{
    const char* name; // after "zucmtr_watch_"
    const char* type;
    const char* help;
    QJsonValue (*value)(const QJsonObject& recorder);
};

QJsonValue Command(const QJsonObject& recorder, const char* key)
{
    return recorder[QLatin1String("commands")].toObject()[QLatin1String(key)];
}

const Metric OfRecorders[] = {
    {"recorder_up", "gauge", "1 if the recorder's process runs.",
     [](const QJsonObject& one) { return QJsonValue(one["state"].toString() == QLatin1String("running")); }},
    {"recorder_start_time_seconds", "gauge", "When the recorder's process started.",
     [](const QJsonObject& one) { return one["since"]; }},
    {"recorder_seen_time_seconds", "gauge", "When the recorder's process last reported.",
     [](const QJsonObject& one) { return one["seen"]; }},
    {"last_scan_time_seconds", "gauge", "When the directories were last scanned.",
     [](const QJsonObject& one) { return one["lastScan"]; }},
    {"last_recording_time_seconds", "gauge", "When a recording was last converted.",
     [](const QJsonObject& one) { return one["lastRecording"]; }},
    {"converted_total", "counter", "Recordings converted since the recorder's process started.",
     [](const QJsonObject& one) { return one["converted"]; }},
    {"failed_total", "counter", "Recordings given up since the recorder's process started.",
     [](const QJsonObject& one) { return one["failed"]; }},
    {"pending", "gauge", "Recordings found and not converted yet.",
     [](const QJsonObject& one) { return one["pending"]; }},
    {"commands_done_total", "counter", "Commands done since the recorder's process started.",
     [](const QJsonObject& one) { return Command(one, "done"); }},
    {"commands_failed_total", "counter", "Commands given up since the recorder's process started.",
     [](const QJsonObject& one) { return Command(one, "failed"); }},
    {"commands_pending", "gauge", "Commands not done yet.",
     [](const QJsonObject& one) { return Command(one, "pending"); }},
    {"trouble", "gauge", "1 while the recorder waits for something to be put right.",
     [](const QJsonObject& one) { return QJsonValue(!one["trouble"].isNull()); }},
};

QByteArray Head(const char* name, const char* type, const char* help)
{
    const QByteArray whole = QByteArray("zucmtr_watch_") + name;
    return "# HELP " + whole + ' ' + help + "\n# TYPE " + whole + ' ' + type + '\n';
}

// A metric without a value, such as the time of what never happened, has no line.
QByteArray Line(const char* name, const QByteArray& labels, const QJsonValue& value)
{
    const QByteArray number = NumberOf(value);
    const QByteArray braces = labels.isEmpty() ? QByteArray() : '{' + labels + '}';
    return number.isEmpty() ? QByteArray()
                            : QByteArray("zucmtr_watch_") + name + braces + ' ' + number + '\n';
}

QByteArray Disks(const QJsonArray& recorders)
{
    QByteArray text = Head("free_bytes", "gauge", "Free space in a directory that is written to.");
    for (const QJsonValue& value : recorders) {
        const QJsonObject recorder = value.toObject();
        const QByteArray name = LabelOf("recorder", recorder["recorder"].toString());
        for (const auto& disk : recorder["disks"].toArray())
            text +=
                Line("free_bytes", name + ',' + LabelOf("directory", disk.toObject()["directory"].toString()),
                     disk.toObject()["freeBytes"]);
    }
    return text;
}

} // namespace

QByteArray MetricsOf(const QJsonObject& status)
{
    const QJsonArray recorders = status["recorders"].toArray();
    QByteArray text = Head("start_time_seconds", "gauge", "When the service started.") +
                      Line("start_time_seconds", {}, status["since"]) +
                      Head("updated_time_seconds", "gauge", "When this was written.") +
                      Line("updated_time_seconds", {}, status["updated"]);
    for (const Metric& metric : OfRecorders) {
        text += Head(metric.name, metric.type, metric.help);
        for (const QJsonValue& recorder : recorders)
            text += Line(metric.name, LabelOf("recorder", recorder.toObject()["recorder"].toString()),
                         metric.value(recorder.toObject()));
    }
    return text + Disks(recorders);
}

bool HasMetrics(const QString& path)
{
    return path.endsWith(QLatin1String(".prom"));
}

bool Write(const QString& path, const QJsonObject& status, QString& error)
{
    return output::WriteOutput(
        path, HasMetrics(path) ? MetricsOf(status) : text::JsonText(QJsonDocument(status)), error);
}

} // namespace statusfile
