#include "forms/digest.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace forms {

namespace {

// Each record has a factor of its own, so that the sum of the products depends on the order. As it is odd, a
// change of one value changes the sum.
inline quint64 FactorOf(quint64 sample)
{
    quint64 mixed = (sample + 1) * 0x9E3779B97F4A7C15;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9;
    return (mixed ^ (mixed >> 31U)) | 1U;
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
        const quint64 factor = FactorOf(static_cast<quint64>(samples) + i);
        numbers += block.numbers[i] * factor;
        times += static_cast<quint64>(block.times[i]) * factor;
        for (quint64& digest : analog)
            digest += BitsOf(*value++) * factor;
        for (size_t group = 0; group < states.size(); ++group) {
            quint64 eight = 0;
            if (group < whole)
                std::memcpy(&eight, state + 8 * group, 8);
            else
                std::memcpy(&eight, state + 8 * group, stateChannels - 8 * whole);
            states[group] += eight * factor;
        }
        state += stateChannels;
    }
    samples += static_cast<qint64>(block.count);
}

bool Digest::operator==(const Digest& other) const
{
    return samples == other.samples && numbers == other.numbers && times == other.times &&
           analog == other.analog && states == other.states;
}

} // namespace forms
