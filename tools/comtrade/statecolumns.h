// The states of discrete channels in memory. They seldom change, so the changes are kept; of a channel that
// changes often, a bit for each sample.
#pragma once

#include "comtrade/columns.h"

#include <vector>

namespace comtrade {

/// The changes of a discrete channel.
struct Changes
{
    std::vector<qint64> samples; ///< the first with the new state, from 0
    std::vector<quint8> states;  ///< the new ones
};

class StateColumns
{
public:
    /// How the states of a row follow each other: each in a bit, the lowest first, or in a byte.
    enum class Form { Bits = 1, Bytes = 8 };

    StateColumns(size_t channels, Form form_);

    void Add(const Rows& rows);

    Changes ChangesOf(size_t channel) const;

    /// Writes 0 or 1 for each sample.
    void Unpack(size_t channel, quint8* states) const;

    /// The state of one sample, 0 or 1.
    quint8 At(size_t channel, size_t sample) const;

    size_t MemorySize() const;

private:
    struct Channel
    {
        std::vector<qint64> changes; // the state before the first sample is 0
        std::vector<quint8> bits;    // if it changes often: the changes are not kept then
        bool isDense = false;
    };

    quint64 WordOf(const char* row, size_t word) const;
    void AddWord(const Rows& rows, size_t word);
    void AddBits(const Rows& rows, size_t channel);
    void MakeDense(size_t channel);

    const size_t bitsOfState;
    const size_t rowBytes; // with states
    std::vector<Channel> channels;
    std::vector<quint64> last; // row, as words of 64 bits
    std::vector<quint64> mask; // the bits of channels whose changes are kept
    size_t count = 0;          // of samples
};

} // namespace comtrade
