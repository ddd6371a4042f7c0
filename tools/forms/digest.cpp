#include "forms/digest.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace forms {

namespace {

constexpr quint64 Factor = 0x9E3779B97F4A7C15; // odd, so that no bit is lost

// Depends on the order. A change of one value changes the result, whatever follows.
inline quint64 Mixed(quint64 digest, quint64 word)
{
    return digest * Factor + (word ^ (word >> 32U));
}

inline quint64 BitsOf(double value)
{
    const double plain = value + 0.0; // 0 and -0 are the same
    quint64 bits = 0;
    std::memcpy(&bits, &plain, sizeof bits);
    return value == value ? bits : 0x7FF8000000000000;
}

} // namespace

bool IsSame(double a, double b)
{
    return BitsOf(a) == BitsOf(b);
}

Digest::Digest(size_t analogChannels, size_t stateChannels_)
    : analog(analogChannels), states((stateChannels_ + 7) / 8), stateChannels(stateChannels_)
{}

void Digest::Add(const comtrade::Block& block)
{
    const double* value = block.analog.data();
    const quint8* state = block.states.data();
    const size_t whole = stateChannels / 8;
    for (size_t i = 0; i < block.count; ++i) {
        heads = Mixed(Mixed(heads, block.numbers[i]), static_cast<quint64>(block.times[i]));
        for (quint64& digest : analog)
            digest = Mixed(digest, BitsOf(*value++));
        for (size_t group = 0; group < states.size(); ++group) {
            quint64 eight = 0;
            if (group < whole)
                std::memcpy(&eight, state + 8 * group, 8);
            else
                std::memcpy(&eight, state + 8 * group, stateChannels - 8 * whole);
            states[group] = Mixed(states[group], eight);
        }
        state += stateChannels;
    }
    samples += static_cast<qint64>(block.count);
}

bool Digest::operator==(const Digest& other) const
{
    return samples == other.samples && heads == other.heads && analog == other.analog &&
           states == other.states;
}

} // namespace forms
