// All samples of a record in memory, channel by channel, in the narrowest types that hold them exactly.
#pragma once

#include "comtrade/codecolumns.h"
#include "comtrade/record.h"
#include "comtrade/statecolumns.h"

namespace comtrade {

class Samples
{
public:
    /// Reads all records that the record still has. Room is made for as many as the configuration says, but
    /// never for more than their bytes can hold. Throws Error.
    explicit Samples(Record& record);

    qint64 Count() const { return count; }

    /// The codes of an analog channel, by its place in the configuration; valid as long as this object.
    Codes Analog(size_t channel) const { return analog.Of(channel); }

    /// a * code + b of each sample, the result times `factor`; NaN where the value is missing.
    void Values(size_t channel, const Scale& scale, double* values) const;

    /// The states of a discrete channel, 0 or 1 for each sample.
    void Unpack(size_t channel, quint8* unpacked) const { states.Unpack(channel, unpacked); }

    quint8 State(size_t channel, size_t sample) const { return states.At(channel, sample); }

    Changes ChangesOf(size_t channel) const { return states.ChangesOf(channel); }

    /// The sample numbers as stored; empty if they count up from 1.
    View<quint32> Numbers() const { return {numbers.data(), numbers.size()}; }

    /// The time stamps as stored, or Block::NoTime; empty unless the configuration has no constant rate.
    View<qint64> Stamps() const { return {stamps.data(), stamps.size()}; }

    /// Bytes that the samples take.
    qint64 MemorySize() const;

private:
    void ReadStored(Record& record);
    void ReadBlocks(Record& record);
    template <class SomeBlock>
    void AddOthers(const SomeBlock& block, size_t stateCount);
    void AddHeads(const quint32* some, const qint64* times, size_t more);

    CodeColumns analog;
    StateColumns states;
    Growing<quint32> numbers;
    Growing<qint64> stamps;
    size_t room; // samples that are expected
    qint64 count = 0;
    bool hasStamps = false;
    bool numbersCount = true; // up from 1, so far
};

} // namespace comtrade
