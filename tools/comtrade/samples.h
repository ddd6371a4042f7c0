// All samples of a record in memory, channel by channel, in the narrowest types that hold them exactly.
#pragma once

#include "comtrade/record.h"

#include <variant>
#include <vector>

namespace comtrade {

/// The codes of one analog channel. What is missing is the least number of an integer type, NaN otherwise.
using Codes = std::variant<std::vector<qint16>, std::vector<qint32>, std::vector<float>, std::vector<double>>;

/// The changes of a discrete channel.
struct Changes
{
    std::vector<qint64> samples; ///< the first with the new state, from 0
    std::vector<quint8> states;  ///< the new ones
};

class Samples
{
public:
    /// Reads all records that the record still has. Throws Error.
    explicit Samples(Record& record);

    qint64 Count() const { return count; }

    /// The codes of an analog channel, by its place in the configuration.
    const Codes& Analog(size_t channel) const { return analog[channel]; }

    /// The states of a discrete channel, eight samples in a byte, the first in the lowest bit.
    const std::vector<quint8>& StateBits(size_t channel) const { return states[channel]; }

    Changes ChangesOf(size_t channel) const;

    /// The sample numbers as stored; empty if they count up from 1.
    const std::vector<quint32>& Numbers() const { return numbers; }

    /// The time stamps as stored, or Block::NoTime; empty unless the configuration has no constant rate.
    const std::vector<qint64>& Stamps() const { return stamps; }

    /// Bytes that the samples take.
    qint64 MemorySize() const;

private:
    void Add(const Block& block);
    void AddStates(const Block& block, size_t channel);

    qint64 count = 0;
    std::vector<Codes> analog;
    std::vector<std::vector<quint8>> states;
    std::vector<quint32> numbers;
    std::vector<qint64> stamps;
    bool hasStamps = false;
    bool numbersCount = true; // up from 1, so far
};

} // namespace comtrade
