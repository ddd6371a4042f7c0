// A recording, decoded and put into the order of its record: what the record is compared with.
#pragma once

#include "preparation/segmentchain.h"

#include <QString>
#include <QStringList>

#include <vector>

class AnChannelData;
class DiChannelData;
class ZuFileFormat;

namespace verify {

class Device;

class Source
{
public:
    /// Loads the chain that starts with firstFile and takes it as far as the converter does before it writes.
    /// The device keeps the channel order for its next recording, as the converter's does. Throws Unreadable,
    /// and what the recording classes throw.
    Source(const Device& device_, const QString& firstFile);

    /// Orders the channels as for the first recording of a device.
    void OrderAfresh();

    const Device& Owner() const { return device; }
    const ZuFileFormat& First() const { return chain.First(); }
    const std::vector<ZuFileFormat*>& Segments() const { return segments; }

    /// The files of the chain, the first file first.
    const QStringList& Files() const { return files; }

    /// Why the chain is shorter than the files, and what the dictionary lacks.
    const QStringList& Notes() const { return notes; }

    /// Name of the record, without directory and extension.
    const QString& RecordName() const;

    double SampleRate() const { return sampleRate; }     // samples per second
    qint64 TotalSamples() const { return totalSamples; } // of all segments

    /// Bytes of one record of binary data.
    qint64 BinaryRecordSize() const;

    /// The most bytes that the files of the record can take on a disk, in the form of the device and while
    /// they are being written.
    qint64 MostRecordSize() const;

    /// For each channel of the record its index in the recording.
    const std::vector<unsigned int>& AnalogOrder() const;
    const std::vector<unsigned int>& StateOrder() const;

    /// The first segment's channel that a channel of the record is made from, counted from 0.
    const AnChannelData& Analog(size_t channel) const;
    const DiChannelData& State(size_t channel) const;
    size_t AnalogCount() const;
    size_t StateCount() const;

private:
    const Device& device;
    SegmentChain chain;
    std::vector<ZuFileFormat*> segments;
    QStringList files;
    QStringList notes;
    double sampleRate = 0;
    qint64 totalSamples = 0;
};

} // namespace verify
