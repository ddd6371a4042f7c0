// A COMTRADE record.
#include "info/description.h"
#include "info/facts.h"
#include "info/recorddata.h"
#include "info/values.h"

#include "comtrade/moment.h"
#include "comtrade/record.h"
#include "explain/file.h"
#include "text/error.h"
#include "text/texts.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace info {

namespace {

void AddIdentity(Description& description, const comtrade::Configuration& configuration)
{
    description.Add("station", Tr("info", "Station"), configuration.station);
    description.Add("device", Tr("info", "Device"), configuration.device);
    description.Add("revision", Tr("info", "Revision"), CountCell(static_cast<int>(configuration.revision)));
    description.Add("dataType", Tr("info", "Data"), comtrade::NameOf(configuration.dataType));
    const std::optional<int> offset = comtrade::UtcOffset(configuration);
    description.Add("start", Tr("info", "First sample"),
                    TextCell(comtrade::MomentText(configuration.start, offset)));
    description.Add("trigger", Tr("info", "Trigger"),
                    TextCell(comtrade::MomentText(configuration.trigger, offset)));
    if (!configuration.timeCode.isEmpty())
        description.Add("zone", Tr("info", "Time zone"),
                        configuration.timeCode + QLatin1Char(',') + configuration.localCode);
}

// The duration follows from rates and sample numbers or, if the rate is not constant, from the time stamps.
Sampling SamplingOf(const comtrade::Configuration& configuration, const RecordData& data)
{
    Sampling sampling;
    for (const comtrade::SampleRate& rate : configuration.rates)
        sampling.rates.push_back({rate.hertz, rate.lastSample});
    sampling.seconds = SecondsOfRates(sampling.rates);
    for (size_t i = 0; i < sampling.rates.size(); ++i)
        if (!sampling.rates[i].IsConstant())
            sampling.seconds += data.failure.isEmpty() ? data.stampSpans[i] : std::nan("");
    return sampling;
}

// The count of a channel; unknown if the data could not be read to their end.
Cell CountOf(const std::vector<qint64>& counts, size_t channel, const RecordData& data)
{
    return data.failure.isEmpty() ? CountCell(counts[channel]) : UnknownCell();
}

Table AnalogTable(const comtrade::Configuration& configuration, const RecordData& data)
{
    Table table{
        "analog",
        Tr("info", "Analog channels"),
        {"number", "name", "phase", "circuit", "unit", "a", "b", "primary", "secondary", "side", "missing"},
        {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Phase"), Tr("info", "Circuit"),
         Tr("info", "Unit"), QStringLiteral("a"), QStringLiteral("b"), Tr("info", "Primary"),
         Tr("info", "Secondary"), Tr("info", "P/S"), Tr("info", "Missing")},
        {}};
    for (size_t i = 0; i < configuration.analog.size(); ++i) {
        const comtrade::AnalogChannel& channel = configuration.analog[i];
        table.rows.push_back({CountCell(channel.number), TextCell(channel.name), TextCell(channel.phase),
                              TextCell(channel.circuit), TextCell(channel.unit), NumberCell(channel.a),
                              NumberCell(channel.b), NumberCell(channel.primary),
                              NumberCell(channel.secondary),
                              TextCell(channel.primaryValues ? QStringLiteral("P") : QStringLiteral("S")),
                              CountOf(data.missing, i, data)});
    }
    return table;
}

Table StateTable(const comtrade::Configuration& configuration, const RecordData& data)
{
    Table table{"discrete",
                Tr("info", "Discrete channels"),
                {"number", "name", "phase", "circuit", "normal", "changes"},
                {Tr("info", "No."), Tr("info", "Name"), Tr("info", "Phase"), Tr("info", "Circuit"),
                 Tr("info", "Normal"), Tr("info", "Changes")},
                {}};
    for (size_t i = 0; i < configuration.states.size(); ++i) {
        const comtrade::StateChannel& channel = configuration.states[i];
        table.rows.push_back({CountCell(channel.number), TextCell(channel.name), TextCell(channel.phase),
                              TextCell(channel.circuit), CountCell(channel.normalState ? 1 : 0),
                              CountOf(data.changes, i, data)});
    }
    return table;
}

void AddPieces(Description& description, const comtrade::Record& record)
{
    QStringList texts;
    QJsonArray values;
    const auto add = [&](const char* word, const QString& text, const QByteArray& piece) {
        if (piece.isEmpty())
            return;
        texts << text.arg(piece.size());
        values.append(QJsonObject{{"piece", QLatin1String(word)}, {"bytes", piece.size()}});
    };
    add("header", Tr("info", "header %1 bytes"), record.Header());
    add("information", Tr("info", "information %1 bytes"), record.Information());
    description.Add("pieces", Tr("info", "Further pieces"), values,
                    texts.isEmpty() ? Tr("info", "none") : texts.join(QLatin1String(", ")));
}

void AddMissing(Description& description, const RecordData& data)
{
    const qint64 sum = std::accumulate(data.missing.begin(), data.missing.end(), qint64{0});
    description.Add("missing", Tr("info", "Missing values"), CountCell(sum));
    description.AddForPrograms("samplesFound", data.samples);
}

// Any device or program may have written the record.
void CheckCount(Description& description, qint64 wanted, qint64 found)
{
    if (found < wanted)
        description.Fail(reason::SamplesLacking,
                         Tr("info", "the configuration says %1 samples, the data hold only %2: their end is "
                                    "lost; copy the record again from where it was made")
                             .arg(wanted)
                             .arg(found));
    if (found > wanted)
        description.Fail(reason::SamplesLeftOver,
                         Tr("info", "the configuration says %1 samples, the data hold %2: the two may be of "
                                    "different records; compare their file names and times")
                             .arg(wanted)
                             .arg(found));
}

// Of a kind of which only some were kept, the last one says how many more there are.
void AddForgiven(Description& description, const comtrade::Findings& findings)
{
    description.forgiven = findings.All();
}

void DescribeOpen(Description& description, comtrade::Record& record)
{
    const comtrade::Configuration& configuration = record.Config();
    AddIdentity(description, configuration);
    description.Add("encoding", Tr("info", "Encoding"), record.Encoding());
    const RecordData data = ReadData(record);
    AddSampling(description, SamplingOf(configuration, data));
    AddChannelCount(description, configuration.analog.size(), configuration.states.size());
    AddPieces(description, record);
    description.tables = {AnalogTable(configuration, data), StateTable(configuration, data)};
    if (!data.failure.isEmpty()) {
        description.Fail(reason::DataUnreadable, data.failure);
        return;
    }
    AddMissing(description, data);
    CheckCount(description, configuration.SampleCount(), data.samples);
}

} // namespace

void DescribeRecord(Description& description)
{
    const QString& path = description.file;
    const QString unreadable = explain::NotARecord(path);
    if (!unreadable.isEmpty()) {
        description.Fail(explain::WordOf(path, reason::RecordUnreadable), unreadable);
        return;
    }
    try {
        comtrade::ReadingOptions options;
        options.encoding = description.encoding;
        comtrade::Record record(description.file, options);
        DescribeOpen(description, record);
        AddForgiven(description, record.Forgiven());
    } catch (const comtrade::Error& error) {
        description.Fail(reason::RecordUnreadable, text::MessageOf(error));
    }
}

} // namespace info
