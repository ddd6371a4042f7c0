// The walk of a DAT file over the segments of a recording: which segment, which sample and which time each
// record takes.
#pragma once

#include <QtGlobal>

#include <vector>

class ZuFileFormat;

class SampleWalk
{
public:
    /// sampleRate in samples per second, totalSamples of all segments together; files is not empty.
    SampleWalk(const std::vector<ZuFileFormat*>& files_, double sampleRate, qint64 totalSamples_);

    /// Steps to the next record; false after the last one. The first call makes the first record current.
    bool Next();

    qint64 Number() const { return number; }               // of the record, from 1
    quint64 Time() const { return time; }                  // microseconds from the first sample
    quint32 SegmentTime() const { return segmentTime; }    // microseconds from the start of the segment
    size_t SegmentSample() const { return segmentSample; } // index into the segment's samples
    ZuFileFormat& Segment() const { return *files[segment]; }
    bool IsFirstOfSegment() const { return segmentSample == 0; }

private:
    bool EnterNextSegment();
    quint32 TimeInSegment() const;

    const std::vector<ZuFileFormat*>& files;
    const double step; // microseconds between samples
    const qint64 totalSamples;
    qint64 number = 0;
    quint64 time = 0;
    quint32 segmentTime = 0;
    size_t segment = 0;
    size_t segmentSample = 0;
};
