#include "comtrade/statecolumns.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace comtrade {

namespace {

constexpr size_t FewChanges = 256;

// Whether a bit for each sample takes less memory than the changes.
bool IsDense(size_t changes, size_t samples)
{
    return changes > FewChanges && changes * sizeof(qint64) > samples / 8;
}

} // namespace

StateColumns::StateColumns(size_t count_, Form form)
    : bitsOfState(static_cast<size_t>(form)), rowBytes((count_ * bitsOfState + 7) / 8), channels(count_),
      last((rowBytes + 7) / 8), mask(last.size())
{
    for (size_t channel = 0; channel < count_; ++channel)
        mask[channel * bitsOfState / 64] |= quint64{1} << (channel * bitsOfState % 64);
}

quint64 StateColumns::WordOf(const char* row, size_t word) const
{
    if (8 * word + 8 <= rowBytes)
        return qFromLittleEndian<quint64>(row + 8 * word);
    char bytes[8] = {};
    std::memcpy(bytes, row + 8 * word, rowBytes - 8 * word);
    return qFromLittleEndian<quint64>(bytes);
}

void StateColumns::Add(const Rows& rows)
{
    for (size_t word = 0; word < last.size(); ++word)
        AddWord(rows, word);
    for (size_t i = 0; i < channels.size(); ++i)
        if (channels[i].isDense)
            AddBits(rows, i);
    count += rows.count;
    for (size_t i = 0; i < channels.size(); ++i)
        if (!channels[i].isDense && IsDense(channels[i].changes.size(), count))
            MakeDense(i);
}

void StateColumns::AddWord(const Rows& rows, size_t word)
{
    quint64 before = last[word];
    const quint64 watched = mask[word];
    for (size_t i = 0; i < rows.count; ++i) {
        const quint64 now = WordOf(rows.bytes + i * rows.stride, word);
        for (quint64 changed = (now ^ before) & watched; Q_UNLIKELY(changed != 0); changed &= changed - 1) {
            const size_t channel = (64 * word + qCountTrailingZeroBits(changed)) / bitsOfState;
            channels[channel].changes.push_back(static_cast<qint64>(count + i));
        }
        before = now;
    }
    last[word] = before;
}

void StateColumns::AddBits(const Rows& rows, size_t channel)
{
    std::vector<quint8>& bits = channels[channel].bits;
    bits.resize((count + rows.count + 7) / 8);
    const size_t place = channel * bitsOfState;
    const char* byte = rows.bytes + place / 8;
    for (size_t i = 0; i < rows.count; ++i, byte += rows.stride) {
        const auto state = static_cast<unsigned>(*byte) >> (place % 8) & 1U;
        bits[(count + i) / 8] = static_cast<quint8>(bits[(count + i) / 8] | state << ((count + i) % 8));
    }
}

void StateColumns::MakeDense(size_t channel)
{
    Channel& one = channels[channel];
    std::vector<quint8> states(count);
    Unpack(channel, states.data());
    one.bits.resize((count + 7) / 8);
    for (size_t i = 0; i < count; ++i)
        one.bits[i / 8] = static_cast<quint8>(one.bits[i / 8] | unsigned{states[i]} << (i % 8));
    one.isDense = true;
    one.changes = std::vector<qint64>();
    mask[channel * bitsOfState / 64] &= ~(quint64{1} << (channel * bitsOfState % 64));
}

void StateColumns::Unpack(size_t channel, quint8* states) const
{
    const Channel& one = channels[channel];
    if (one.isDense) {
        for (size_t i = 0; i < count; ++i)
            states[i] = one.bits[i / 8] >> (i % 8) & 1U;
        return;
    }
    size_t done = 0;
    quint8 state = 0;
    for (const qint64 change : one.changes) {
        std::fill(states + done, states + change, state);
        done = static_cast<size_t>(change);
        state ^= 1U;
    }
    std::fill(states + done, states + count, state);
}

quint8 StateColumns::At(size_t channel, size_t sample) const
{
    const Channel& one = channels[channel];
    if (one.isDense)
        return one.bits[sample / 8] >> (sample % 8) & 1U;
    const auto later = std::upper_bound(one.changes.begin(), one.changes.end(), static_cast<qint64>(sample));
    return static_cast<quint8>((later - one.changes.begin()) % 2);
}

Changes StateColumns::ChangesOf(size_t channel) const
{
    const Channel& one = channels[channel];
    Changes changes;
    const auto add = [&changes](qint64 sample, quint8 state) {
        if (sample > 0) { // the state of the first sample is no change
            changes.samples.push_back(sample);
            changes.states.push_back(state);
        }
    };
    quint8 state = 0;
    for (const qint64 sample : one.changes)
        add(sample, state ^= 1U);
    for (size_t i = 0; one.isDense && i < count; ++i) {
        const quint8 next = one.bits[i / 8] >> (i % 8) & 1U;
        if (next != state)
            add(static_cast<qint64>(i), next);
        state = next;
    }
    return changes;
}

size_t StateColumns::MemorySize() const
{
    size_t bytes = 0;
    for (const Channel& channel : channels)
        bytes += channel.bits.size() + channel.changes.size() * sizeof(qint64);
    return bytes;
}

} // namespace comtrade
