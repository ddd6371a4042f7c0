#include "verify/valuecomparison.h"

#include "comtrade/moment.h"
#include "device/zucmtrdevparam.h"
#include "text/texts.h"
#include "verify/alignedrows.h"
#include "verify/channellines.h"
#include "verify/device.h"
#include "verify/forgivendamage.h"
#include "verify/mismatch.h"
#include "verify/source.h"
#include "verify/stamp.h"

#include <algorithm>
#include <cmath>

namespace verify {

namespace {

constexpr double Microsecond = 1e-6;

comtrade::Finding Wrong(const QString& file, const char* word, const QString& text, qint64 line = 0)
{
    comtrade::Finding finding;
    finding.file = file;
    finding.line = line;
    finding.severity = Severity::Error;
    finding.reason = word;
    finding.text = text;
    return finding;
}

comtrade::TimeStamp StampOf(const Moment& moment)
{
    comtrade::TimeStamp stamp;
    stamp.date = moment.date;
    stamp.nanoseconds = moment.microseconds * 1000;
    stamp.decimals = 6;
    return stamp;
}

QString TextOf(const comtrade::TimeStamp& stamp)
{
    return StampText({stamp.date, stamp.nanoseconds / 1000});
}

// What the record says, and the recording.
QString Says(const QString& what, const QString& found, const QString& expected)
{
    return Tr("verify", "%1: the record says '%2', the recording '%3'").arg(what, found, expected);
}

QString ValueText(double value)
{
    return std::isnan(value) ? Tr("verify", "missing") : QString::number(value, 'g', 9);
}

class Comparison
{
public:
    Comparison(const QString& path_, const Source& source_) : path(path_), source(source_)
    {
        result.total = source.TotalSamples();
        result.analogOfAll = source.AnalogCount();
        result.statesOfAll = source.StateCount();
    }

    ValueComparison Run()
    {
        const comtrade::Record record(path);
        configuration = record.Config();
        if (!CheckCounts() || !CheckStamps() || !Align())
            return result;
        result.channels = MatchColumns(path, source, result.alignment);
        CompareSamples();
        ReportDifferences();
        return result;
    }

private:
    void Add(const char* word, const QString& text, qint64 line = 0)
    {
        result.wrong.Add(Wrong(path, word, text, line));
    }

    bool CheckCounts()
    {
        if (configuration.analog.size() <= source.AnalogCount() &&
            configuration.states.size() <= source.StateCount())
            return true;
        const auto pair = [](size_t analog, size_t states) {
            return QStringLiteral("%1 + %2").arg(analog).arg(states);
        };
        Add(reason::OtherRecording, Says(Tr("verify", "analog and state channels"),
                                         pair(configuration.analog.size(), configuration.states.size()),
                                         pair(source.AnalogCount(), source.StateCount())));
        return false;
    }

    bool CheckStamps()
    {
        const QString trigger = StampText(TriggerMoment(source));
        if (TextOf(configuration.trigger) == trigger)
            return true;
        Add(reason::OtherRecording, Says(Tr("verify", "trigger"), TextOf(configuration.trigger), trigger));
        return false;
    }

    // Finds out where the record lies in the recording.
    bool Align()
    {
        const double hertz = configuration.rates.empty() ? 0 : configuration.rates.front().hertz;
        const double ratio = hertz > 0 ? source.SampleRate() / hertz : 1;
        Alignment& alignment = result.alignment;
        alignment.every = std::llround(std::clamp(ratio, 0.0, 1e9));
        alignment.count = configuration.SampleCount();
        constexpr double precision = 1e-4;
        if (configuration.rates.size() > 1 || alignment.every < 1 ||
            std::abs(ratio - static_cast<double>(alignment.every)) > precision * ratio) {
            Add(reason::SamplesDiffer, Says(Tr("verify", "samples per second"), QString::number(hertz),
                                            QString::number(source.SampleRate())));
            return false;
        }
        const double offset = static_cast<double>(comtrade::NanosecondsBetween(StampOf(StartMoment(source)),
                                                                               configuration.start)) *
                              1e-9;
        alignment.first = std::llround(offset * source.SampleRate());
        const bool isInGrid = std::abs(offset - static_cast<double>(alignment.first) / source.SampleRate()) <
                              1.01 * Microsecond;
        if (!isInGrid || alignment.first < 0 || (alignment.first > 0 && EndsLate())) {
            Add(reason::OtherRecording, Says(Tr("verify", "first sample"), TextOf(configuration.start),
                                             StampText(StartMoment(source))));
            return false;
        }
        if (alignment.count > 0 && EndsLate()) {
            Add(reason::SamplesLeftOver,
                Says(Tr("verify", "number of the last sample"), QString::number(alignment.count),
                     QString::number(source.TotalSamples())));
            return false;
        }
        return true;
    }

    bool EndsLate() const
    {
        const Alignment& alignment = result.alignment;
        return alignment.first + (alignment.count - 1) * alignment.every >= source.TotalSamples();
    }

    void CompareSamples()
    {
        AlignedRows rows(path, source, result.alignment);
        const ColumnValues values(configuration, source);
        const size_t analog = configuration.analog.size();
        counts.resize(analog + configuration.states.size());
        try {
            while (rows.Next()) {
                CompareHead(rows);
                for (size_t i = 0; i < analog; ++i)
                    CompareCode(rows, values, i);
                for (size_t i = 0; i < configuration.states.size(); ++i)
                    CompareState(rows, i);
            }
        } catch (const comtrade::Error& error) {
            Add(reason::DataUnreadable, error.Message(), rows.Sample() + 1);
            return;
        }
        const qint64 count = rows.Sample() + 1;
        if (count < result.alignment.count)
            Add(reason::SamplesLacking, Tr("verify", "there are %1 samples, but the configuration says %2")
                                            .arg(count)
                                            .arg(result.alignment.count));
        else if (rows.GoesOn())
            Add(reason::SamplesLeftOver,
                Tr("verify", "there are samples after the last one, number %1").arg(count));
        AddForgivenDamage(rows.Forgiven(), false, result.wrong);
    }

    void CompareHead(const AlignedRows& rows)
    {
        const comtrade::Row& row = rows.Found();
        const auto number = static_cast<quint32>(rows.Sample() + 1);
        if (row.number != number)
            Add(reason::SampleNumbering,
                Tr("verify", "sample %1 has the number %2").arg(number).arg(row.number), number);
        if (rows.Sample() == 0)
            startTime = rows.At().Time();
        if (!row.hasTime)
            return;
        const double unit = configuration.StampSeconds() / Microsecond;
        const double found = static_cast<double>(row.time) * unit;
        const auto expected = static_cast<double>(rows.At().Time() - startTime);
        double distance = std::abs(found - expected);
        if (configuration.dataType != comtrade::DataType::Ascii) // 32 bits, again and again
            distance = std::abs(std::remainder(found - expected, 4294967296.0 * unit));
        // The first sample of a window has a rounded time of its own.
        const double allowed = result.alignment.first == 0 ? 0.5 * std::max(unit, 1.0) : 1.01;
        if (distance > allowed)
            Add(reason::TimesDisagree,
                Tr("verify", "sample %1 has the time %2 µs, the recording %3 µs")
                    .arg(QString::number(number), QString::number(found, 'f', 0),
                         QString::number(expected, 'f', 0)),
                number);
    }

    void Count(size_t column, const AlignedRows& rows, double found, double expected)
    {
        ChannelDifference& difference = counts[column];
        if (++difference.count > 1)
            return;
        difference.sample = rows.Sample() + 1;
        difference.seconds = static_cast<double>(rows.At().Time() - startTime) * Microsecond;
        difference.found = found;
        difference.expected = expected;
    }

    void CompareCode(const AlignedRows& rows, const ColumnValues& values, size_t column)
    {
        if (result.channels.analog[column] == ColumnChannels::None)
            return;
        const auto channel = static_cast<size_t>(result.channels.analog[column]);
        const double found = rows.Found().analog[column];
        const double code = rows.Code(channel);
        if (!values.IsSame(column, channel, found, code))
            Count(column, rows, found, values.Expected(column, channel, code));
    }

    void CompareState(const AlignedRows& rows, size_t column)
    {
        if (result.channels.states[column] == ColumnChannels::None)
            return;
        const bool expected = rows.State(static_cast<size_t>(result.channels.states[column]));
        const bool found = rows.Found().states[column] != 0;
        if (found != expected)
            Count(configuration.analog.size() + column, rows, found ? 1 : 0, expected ? 1 : 0);
    }

    // The name of a column for people.
    QString Place(bool isAnalog, size_t index) const
    {
        const QString number = QString::number(index + 1);
        return isAnalog ? Tr("verify", "analog channel %1 (%2)").arg(number, configuration.analog[index].name)
                        : Tr("verify", "state channel %1 (%2)").arg(number, configuration.states[index].name);
    }

    void ReportDifferences()
    {
        const size_t analog = configuration.analog.size();
        for (size_t i = 0; i < counts.size(); ++i) {
            const bool isAnalog = i < analog;
            const size_t index = isAnalog ? i : i - analog;
            const int channel = isAnalog ? result.channels.analog[index] : result.channels.states[index];
            if (channel == ColumnChannels::None)
                Add(reason::SamplesDiffer, Tr("verify", "%1: no channel of the recording has its samples")
                                               .arg(Place(isAnalog, index)));
            if (counts[i].count == 0)
                continue;
            counts[i].isAnalog = isAnalog;
            counts[i].number = index + 1;
            counts[i].name = isAnalog ? configuration.analog[index].name : configuration.states[index].name;
            result.differences.push_back(counts[i]);
            Add(reason::SamplesDiffer,
                Tr("verify", "%1: %2 of %3 values differ; sample %4 (%5 s) is %6 and should be %7")
                    .arg(Place(isAnalog, index), QString::number(counts[i].count),
                         QString::number(result.alignment.count), QString::number(counts[i].sample),
                         QString::number(counts[i].seconds, 'f', 6), ValueText(counts[i].found),
                         ValueText(counts[i].expected)),
                counts[i].sample);
        }
    }

    const QString path;
    const Source& source;
    comtrade::Configuration configuration;
    ValueComparison result;
    std::vector<ChannelDifference> counts; // by column, analog ones first
    quint64 startTime = 0;                 // of the record's first sample in the recording, microseconds
};

class TextComparison
{
public:
    TextComparison(const QString& path_, comtrade::Findings& wrong_) : path(path_), wrong(wrong_) {}

    void Same(const QString& what, const QString& found, const QString& expected)
    {
        if (found != expected)
            wrong.Add(Wrong(path, reason::TextsDiffer,
                            Tr("verify", "%1: the record says '%2', the ini file makes it '%3'")
                                .arg(what, found, expected)));
    }

private:
    const QString path;
    comtrade::Findings& wrong;
};

} // namespace

ValueComparison CompareValues(const QString& record, const Source& source)
{
    return Comparison(record, source).Run();
}

void CompareTexts(const QString& record, const Source& source, const ColumnChannels& channels,
                  comtrade::Findings& wrong)
{
    const comtrade::Record opened(record);
    const comtrade::Configuration& configuration = opened.Config();
    const Device& device = source.Owner();
    TextComparison texts(record, wrong);
    texts.Same(Tr("verify", "station"), configuration.station,
               device.AsWritten(device.Param().Object).trimmed());
    texts.Same(Tr("verify", "recording device"), configuration.device,
               device.AsWritten(device.Param().Source).trimmed());
    const auto compare = [&](const QString& place, const QStringList& found, const QStringList& expected) {
        const QStringList names = {Tr("verify", "name"), Tr("verify", "phase"), Tr("verify", "circuit"),
                                   Tr("verify", "unit")};
        for (int i = 0; i < found.size(); ++i)
            texts.Same(place + QLatin1String(", ") + names[i], found[i], expected[i + 1]);
    };
    for (size_t i = 0; i < configuration.analog.size(); ++i) {
        const comtrade::AnalogChannel& one = configuration.analog[i];
        if (channels.analog[i] != ColumnChannels::None)
            compare(Tr("verify", "analog channel %1 (%2)").arg(QString::number(i + 1), one.name),
                    {one.name, one.phase, one.circuit, one.unit},
                    NameFields(source.Analog(static_cast<size_t>(channels.analog[i])), i + 1, device));
    }
    for (size_t i = 0; i < configuration.states.size(); ++i) {
        const comtrade::StateChannel& one = configuration.states[i];
        if (channels.states[i] != ColumnChannels::None)
            compare(Tr("verify", "state channel %1 (%2)").arg(QString::number(i + 1), one.name),
                    {one.name, one.phase, one.circuit},
                    NameFields(source.State(static_cast<size_t>(channels.states[i])), i + 1, device));
    }
}

} // namespace verify
