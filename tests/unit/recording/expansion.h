// Expanding compressed data areas in tests.
#pragma once

#include "recording/deltadecoder.h"

#include <QByteArray>

#include <algorithm>
#include <vector>

/// What became of an area: the result, and all points samples, which are `filler` at first.
struct Expansion
{
    bool good;
    std::vector<int16_t> samples;
};

constexpr int16_t filler = 0x5A5A;

/// Expands area with zu::ExpandSamples. Area and samples have memory of exactly their size, so that a
/// sanitizer sees every access beyond them.
inline Expansion Expand(const QByteArray& area, size_t points,
                        const zu::ItemDecoderTable& decoders = zu::ItemDecoders())
{
    const std::vector<unsigned char> bytes(area.begin(), area.end());
    Expansion result{false, std::vector<int16_t>(std::max<size_t>(points, 1), filler)};
    result.good = zu::ExpandSamples({bytes.data(), bytes.size()}, result.samples.data(), points, decoders);
    result.samples.resize(points);
    return result;
}
