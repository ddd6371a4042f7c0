// A COMTRADE record.
#include "info/description.h"
#include "info/values.h"

#include "comtrade/record.h"
#include "explain/file.h"
#include "zucmtr/texts.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

namespace info {

namespace {

QString MomentText(const comtrade::TimeStamp& stamp)
{
    const qint64 second = stamp.nanoseconds / 1000000000;
    const QString clock =
        QString::asprintf("%02d:%02d:%02d", int(second / 3600), int(second / 60 % 60), int(second % 60));
    const QString decimals =
        QString::asprintf("%09d", int(stamp.nanoseconds % 1000000000)).left(std::min(stamp.decimals, 9));
    return stamp.date.toString(Qt::ISODate) + QLatin1Char('T') + clock +
           (decimals.isEmpty() ? QString() : QLatin1Char('.') + decimals);
}

void AddConfiguration(Description& description, const comtrade::Configuration& configuration)
{
    description.Add(QStringLiteral("station"), Tr("info", "Station"), configuration.station);
    description.Add(QStringLiteral("device"), Tr("info", "Device"), configuration.device);
    const int revision = static_cast<int>(configuration.revision);
    description.Add(QStringLiteral("revision"), Tr("info", "Revision"), revision, QString::number(revision));
    description.Add(QStringLiteral("dataType"), Tr("info", "Data"), comtrade::NameOf(configuration.dataType));
    description.Add(QStringLiteral("start"), Tr("info", "First sample"), MomentText(configuration.start));
    description.Add(QStringLiteral("trigger"), Tr("info", "Trigger"), MomentText(configuration.trigger));
    if (!configuration.timeCode.isEmpty())
        description.Add(QStringLiteral("zone"), Tr("info", "Time zone"),
                        configuration.timeCode + QLatin1Char(',') + configuration.localCode);
    const double rate = configuration.rates.front().hertz;
    description.Add(QStringLiteral("rate"), Tr("info", "Sampling rate"), rate, Tr("info", "%1 Hz").arg(rate));
    description.Add(QStringLiteral("samples"), Tr("info", "Samples"), configuration.SampleCount(),
                    QString::number(configuration.SampleCount()));
    description.Add(QStringLiteral("channels"), Tr("info", "Channels"),
                    qint64(configuration.analog.size() + configuration.states.size()),
                    Tr("info", "%1 analog, %2 discrete")
                        .arg(configuration.analog.size())
                        .arg(configuration.states.size()));
}

Table AnalogTable(const comtrade::Configuration& configuration)
{
    Table table{QStringLiteral("analog"),
                Tr("info", "Analog channels"),
                {"number", "name", "phase", "circuit", "unit", "a", "b", "primary", "secondary", "side"},
                {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Phase"), Tr("info", "Circuit"),
                 Tr("info", "Unit"), QStringLiteral("a"), QStringLiteral("b"), Tr("info", "Primary"),
                 Tr("info", "Secondary"), Tr("info", "P/S")},
                {}};
    for (const comtrade::AnalogChannel& channel : configuration.analog)
        table.rows.push_back({CountCell(channel.number), TextCell(channel.name), TextCell(channel.phase),
                              TextCell(channel.circuit), TextCell(channel.unit), NumberCell(channel.a),
                              NumberCell(channel.b), NumberCell(channel.primary),
                              NumberCell(channel.secondary),
                              TextCell(channel.primaryValues ? QStringLiteral("P") : QStringLiteral("S"))});
    return table;
}

Table StateTable(const comtrade::Configuration& configuration)
{
    Table table{QStringLiteral("discrete"),
                Tr("info", "Discrete channels"),
                {"number", "name", "phase", "circuit", "normal"},
                {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Phase"), Tr("info", "Circuit"),
                 Tr("info", "Normal")},
                {}};
    for (const comtrade::StateChannel& channel : configuration.states)
        table.rows.push_back({CountCell(channel.number), TextCell(channel.name), TextCell(channel.phase),
                              TextCell(channel.circuit), CountCell(channel.normalState ? 1 : 0)});
    return table;
}

// Goes through the data: how many there are, and how long they last.
void AddData(Description& description, comtrade::Record& record)
{
    comtrade::Row row;
    qint64 found = 0;
    qint64 first = 0;
    qint64 last = 0;
    while (record.Next(row)) {
        if (found++ == 0)
            first = row.time;
        last = row.time;
    }
    const double seconds = static_cast<double>(last - first) * record.Config().timeMultiplier / 1e6;
    description.Add(QStringLiteral("seconds"), Tr("info", "Duration"), seconds,
                    Tr("info", "%1 s").arg(seconds, 0, 'f', 6));
    description.Add(QStringLiteral("pieces"), Tr("info", "Further pieces"),
                    Tr("info", "header %1 bytes, information %2 bytes")
                        .arg(record.Header().size())
                        .arg(record.Information().size()));
    const qint64 wanted = record.Config().SampleCount();
    if (found != wanted)
        description.error =
            Tr("info", "the configuration tells %1 samples, the data hold %2; convert the recording again")
                .arg(wanted)
                .arg(found);
}

} // namespace

Description DescribeRecord(const QString& path)
{
    Description description;
    description.file = path;
    description.kind = QStringLiteral("record");
    description.error = explain::NotARecord(path);
    if (!description.error.isEmpty())
        return description;
    try {
        comtrade::Record record(path);
        AddConfiguration(description, record.Config());
        description.tables = {AnalogTable(record.Config()), StateTable(record.Config())};
        AddData(description, record);
    } catch (const comtrade::Error& error) {
        description.error = QString::fromUtf8(error.what());
    }
    return description;
}

} // namespace info
