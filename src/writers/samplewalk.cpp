// The walk of a DAT file over the segments of a recording.
#include "writers/samplewalk.h"

#include "base/numeric.h"
#include "recording/zufileformat.h"

#include <cmath>

// The nearest whole number; halves are rounded away from zero.
static quint64 ToMicroseconds(double time)
{
    constexpr double Exact = 4503599627370496.0;    // 2^52: below, a number and its fraction are exact
    const bool isExact = time >= 0 && time < Exact; // false for what is no number
    if (!isExact)
        return zu::ToInteger<quint64>(std::round(time));
    const auto whole = static_cast<qint64>(time);
    return static_cast<quint64>(whole) + (time - static_cast<double>(whole) >= 0.5 ? 1 : 0);
}

SampleWalk::SampleWalk(const std::vector<ZuFileFormat*>& files_, double sampleRate, qint64 totalSamples_)
    : files(files_), step(1000000.0 / sampleRate), totalSamples(totalSamples_)
{}

quint32 SampleWalk::TimeInSegment() const
{
    return static_cast<quint32>(time) - static_cast<quint32>(Segment().SegmentTimeBase);
}

bool SampleWalk::EnterNextSegment()
{
    if (segment + 1 == files.size())
        return false;
    ++segment;
    segmentSample = 0;
    // Deliberate: the time in the new segment is not tested again; one record passes one segment at most.
    segmentTime = TimeInSegment();
    return true;
}

bool SampleWalk::Next()
{
    if (number >= totalSamples)
        return false;
    if (number > 0)
        ++segmentSample;
    time = ToMicroseconds(static_cast<double>(number) * step);
    ++number;
    segmentTime = TimeInSegment();
    return segmentTime < Segment().SegmentDuration || EnterNextSegment();
}
