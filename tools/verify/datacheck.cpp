// The data of a record, one record after the other. Which samples and states belong to a record is worked out
// here anew, not by the writer's code.
#include "config/Numeric.h"
#include "recording/zufileformat.h"
#include "service/zucmtrconverter.h"
#include "verify/checks.h"
#include "verify/device.h"
#include "verify/mismatch.h"
#include "verify/source.h"
#include "zucmtr/texts.h"

#include <cmath>

namespace verify {

namespace {

// The records that a recording makes: number n has the time n / rate, and the segment whose time that is.
class Walk
{
public:
    explicit Walk(const Source& source_) : source(source_), step(1000000.0 / source_.SampleRate()) {}

    // Goes on to the next record; false behind the last.
    bool Next()
    {
        if (number >= source.TotalSamples())
            return false;
        time = zu::ToInteger<quint64>(std::round(static_cast<double>(number) * step));
        ++number;
        ++sample;
        if (TimeInSegment() < Segment().SegmentDuration)
            return true;
        sample = 0;
        return ++segment < source.Segments().size(); // a record passes one segment at most
    }

    qint64 Number() const { return number; } // from 1
    quint64 Time() const { return time; }    // microseconds from the first sample
    size_t Sample() const { return static_cast<size_t>(sample); }
    size_t SegmentNumber() const { return segment; }
    ZuFileFormat& Segment() const { return *source.Segments()[segment]; }

    // Microseconds from the start of the segment, in the 32 bits of the recorder's clock.
    quint32 TimeInSegment() const
    {
        return static_cast<quint32>(time) - static_cast<quint32>(Segment().SegmentTimeBase);
    }

private:
    const Source& source;
    const double step; // microseconds
    qint64 number = 0;
    quint64 time = 0;
    size_t segment = 0;
    qint64 sample = -1; // within the segment
};

// How a reader sees them in binary data.
constexpr quint32 UnknownTime = 0xFFFFFFFF;
constexpr qint16 MissingCode = -0x8000;

QString CodeText(double code)
{
    return std::isnan(code) ? Tr("verify", "missing") : QString::number(code, 'g', 17);
}

class DataCheck
{
public:
    DataCheck(const Source& source_, const QString& fileName_)
        : source(source_), fileName(fileName_), binary(source_.Owner().Param().ComtradeBin), walk(source_)
    {}

    void Run(comtrade::Record& record)
    {
        comtrade::Row row;
        while (walk.Next()) {
            if (!record.Next(row))
                throw Mismatch(
                    Tr("verify", "'%1' ends after record %2 of %3; free the disk, then convert again")
                        .arg(fileName)
                        .arg(walk.Number() - 1)
                        .arg(source.TotalSamples()));
            EnterSegment();
            CheckHead(row);
            CheckCodes(row);
            CheckStates(row);
            last = walk.Number();
        }
        if (record.Next(row))
            throw Mismatch(Tr("verify", "'%1' goes on behind record %2, with which the recording ends")
                               .arg(fileName)
                               .arg(last));
    }

private:
    struct Column
    {
        const qint16* codes;
        size_t points;
    };

    // Takes the channels of the walk's segment in the order of the record.
    void EnterSegment()
    {
        if (walk.SegmentNumber() == entered)
            return;
        entered = walk.SegmentNumber();
        columns.clear();
        states.clear();
        for (size_t i = 0; i < source.AnalogCount(); ++i) {
            const AnChannelData& channel = *walk.Segment().AnChannels.at(source.AnalogOrder().at(i));
            columns.push_back({channel.Samples, channel.m_HeaderAn.points});
        }
        for (size_t i = 0; i < source.StateCount(); ++i)
            states.push_back(walk.Segment().DiChannels.at(source.StateOrder().at(i)));
    }

    QString Place() const { return Tr("verify", "'%1', record %2").arg(fileName).arg(walk.Number()); }

    void CheckHead(const comtrade::Row& row) const
    {
        if (row.number != static_cast<quint32>(walk.Number()))
            ExpectSame(Place() + Tr("verify", ", number"), qint64{row.number}, walk.Number());
        const auto time =
            binary ? qint64{static_cast<quint32>(walk.Time())} : static_cast<qint64>(walk.Time());
        const qint64 found = row.hasTime ? row.time : qint64{UnknownTime};
        if (found != time)
            Differ(Place() + Tr("verify", ", time"), QString::number(found), QString::number(time));
    }

    void CheckCodes(const comtrade::Row& row) const
    {
        const size_t sample = walk.Sample();
        for (size_t i = 0; i < columns.size(); ++i) {
            const double found = row.analog[i];
            const bool missing =
                sample >= columns[i].points || (binary && columns[i].codes[sample] == MissingCode);
            if (missing ? std::isnan(found) : found == columns[i].codes[sample])
                continue;
            const AnChannelData& channel = source.Analog(i);
            Differ(Place() + Tr("verify", ", analog channel %1 (%2)").arg(i + 1).arg(channel.CfgName),
                   CodeText(found), missing ? CodeText(NAN) : CodeText(columns[i].codes[sample]));
        }
    }

    void CheckStates(const comtrade::Row& row) const
    {
        const quint32 time = walk.TimeInSegment();
        for (size_t i = 0; i < states.size(); ++i) {
            const bool expected = states[i]->GetVal(time);
            if (row.states[i] == (expected ? 1 : 0))
                continue;
            const DiChannelData& channel = source.State(i);
            Differ(Place() + Tr("verify", ", state channel %1 (%2)").arg(i + 1).arg(channel.CfgName),
                   QString::number(row.states[i]), QLatin1String(expected ? "1" : "0"));
        }
    }

    const Source& source;
    const QString fileName;
    const bool binary;
    Walk walk;
    qint64 last = 0; // record that was compared
    std::vector<Column> columns;
    std::vector<DiChannelData*> states;
    size_t entered = ~size_t{0};
};

} // namespace

void CheckData(comtrade::Record& record, const Source& source, const QString& fileName)
{
    DataCheck(source, fileName).Run(record);
}

} // namespace verify
