// A number for each channel that is another one if any of its values differs, so that two passes through a
// record can be compared without keeping it.
#pragma once

#include "comtrade/record.h"

#include <vector>

namespace forms {

class Digest
{
public:
    Digest(size_t analogChannels, size_t stateChannels);

    void Add(const comtrade::Block& block);

    qint64 Samples() const { return samples; }

    bool operator==(const Digest& other) const;
    bool operator!=(const Digest& other) const { return !(*this == other); }

private:
    qint64 samples = 0;
    quint64 numbers = 0;
    quint64 times = 0;
    std::vector<quint64> analog;
    std::vector<quint64> states; // of eight channels each
    size_t stateChannels;
};

/// Whether two codes or values are the same: both missing, or equal.
bool IsSame(double a, double b);

} // namespace forms
