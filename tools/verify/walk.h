// The records that a recording makes, computed independently of the writer's code.
#pragma once

#include "base/numeric.h"
#include "comtrade/columns.h"
#include "recording/zufileformat.h"
#include "verify/source.h"
#include "verify/statewalk.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace verify {

/// Record number n has the time n / rate, and the segment whose time that is.
class Walk
{
public:
    explicit Walk(const Source& source_) : source(source_), step(1000000.0 / source_.SampleRate()) {}

    /// Moves to the next record; false after the last.
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
        return ++segment < source.Segments().size(); // one record moves on by one segment at most
    }

    qint64 Number() const { return number; } // from 1
    quint64 Time() const { return time; }    // microseconds from the first sample
    size_t Sample() const { return static_cast<size_t>(sample); }
    size_t SegmentNumber() const { return segment; }
    ZuFileFormat& Segment() const { return *source.Segments()[segment]; }

    /// Microseconds from the start of the segment, in the 32 bits of the recorder's clock.
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

/// The values of each record, channel by channel in the order of the record.
class SourceRows
{
public:
    explicit SourceRows(const Source& source_) : source(source_), walk(source_) {}

    /// Moves to the next record; false after the last.
    bool Next()
    {
        if (!walk.Next())
            return false;
        if (walk.SegmentNumber() != entered)
            EnterSegment();
        haveStatesChanged = states.MoveTo(walk.TimeInSegment());
        return true;
    }

    const Walk& At() const { return walk; }

    /// Whether the analog channel has a sample for the record.
    bool HasSample(size_t channel) const { return walk.Sample() < columns[channel].points; }

    /// Whether every analog channel has one.
    bool HasAllSamples() const { return walk.Sample() < shortest; }

    /// The sample; only if there is one.
    qint16 Code(size_t channel) const { return columns[channel].codes[walk.Sample()]; }

    /// The samples of all channels, one after the other; only if HasAllSamples.
    const qint16* Codes()
    {
        const size_t sample = walk.Sample();
        if (sample >= tile.end)
            FillTile(sample);
        return tile.codes.data() + (sample - tile.from) * columns.size();
    }

    bool State(size_t channel) const { return states.At(channel); }

    /// Whether a state may be another one than in the record before; always in a segment's first.
    bool HaveStatesChanged() const { return haveStatesChanged; }

private:
    struct Column
    {
        const qint16* codes;
        size_t points;
    };

    // The codes of some records, row by row. The channels' samples lie so far apart that the processor would
    // wait for each when it takes one of every channel at a time.
    struct Tile
    {
        size_t from = 0;
        size_t end = 0;
        std::vector<const qint16*> columns;
        std::vector<qint16> codes;
    };

    void FillTile(size_t from)
    {
        constexpr size_t rows = 128; // of 64 channels 16 KB
        tile.from = from;
        tile.end = std::min(from + rows, shortest);
        tile.codes.resize(rows * columns.size());
        comtrade::TurnColumns(tile.columns, from, tile.end - from, tile.codes.data());
    }

    void EnterSegment()
    {
        tile.end = 0;
        tile.columns.clear();
        entered = walk.SegmentNumber();
        columns.clear();
        shortest = std::numeric_limits<size_t>::max();
        for (size_t i = 0; i < source.AnalogCount(); ++i) {
            const AnChannelData& channel = *walk.Segment().AnChannels.at(source.AnalogOrder().at(i));
            columns.push_back({channel.Samples, channel.m_HeaderAn.points});
            tile.columns.push_back(channel.Samples);
            shortest = std::min(shortest, columns.back().points);
        }
        states.Enter(walk.Segment(), source.StateOrder(), source.StateCount());
    }

    const Source& source;
    Walk walk;
    std::vector<Column> columns;
    size_t shortest = 0; // samples of the channel that has the fewest
    Tile tile;
    StateWalk states;
    bool haveStatesChanged = false;
    size_t entered = ~size_t{0};
};

/// The code that stands for a missing sample in binary data.
constexpr qint16 MissingCode = -0x8000;

/// The time that stands for an unknown one in binary data.
constexpr quint32 UnknownTime = 0xFFFFFFFF;

} // namespace verify
