// This file is compiled once for each instruction set.
//
// Each 128-bit part of eight registers holds eight samples of a channel; three rounds of interleaving make
// each of them eight channels of a sample. Registers of 256 bits do so for sixteen channels at once.
#include "writers/codetiles.h"

#include "base/vectorcode.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "writers/codetiles.cpp"
#include <hwy/foreach_target.h> // includes this file again
#include <hwy/highway.h>

#if ZU_HAS_VECTORS
HWY_BEFORE_NAMESPACE();
namespace zu::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// Eight samples of the channels at columns, columns + TileSize and so on.
template <class D>
hn::Vec<D> LoadCodes(D codes, const CodeColumn* columns, size_t sample)
{
    if constexpr (hn::MaxLanes(D()) == TileSize) {
        return hn::LoadU(codes, columns->codes + sample);
    } else {
        const hn::Half<D> half;
        return hn::Combine(codes, LoadCodes(half, columns + hn::MaxLanes(half), sample),
                           LoadCodes(half, columns, sample));
    }
}

// As many channels as a vector has lanes, of eight samples.
template <class D>
void TurnTile(D codes, const CodeColumn* columns, size_t channels, size_t sample, int16_t* row)
{
    hn::Vec<D> a0 = LoadCodes(codes, columns, sample);
    hn::Vec<D> a1 = LoadCodes(codes, columns + 1, sample);
    hn::Vec<D> a2 = LoadCodes(codes, columns + 2, sample);
    hn::Vec<D> a3 = LoadCodes(codes, columns + 3, sample);
    hn::Vec<D> a4 = LoadCodes(codes, columns + 4, sample);
    hn::Vec<D> a5 = LoadCodes(codes, columns + 5, sample);
    hn::Vec<D> a6 = LoadCodes(codes, columns + 6, sample);
    hn::Vec<D> a7 = LoadCodes(codes, columns + 7, sample);
    // Element i of two halves goes to places 2i and 2i + 1.
    for (int round = 0; round < 3; ++round) {
        const hn::Vec<D> b0 = hn::InterleaveLower(codes, a0, a4);
        const hn::Vec<D> b1 = hn::InterleaveUpper(codes, a0, a4);
        const hn::Vec<D> b2 = hn::InterleaveLower(codes, a1, a5);
        const hn::Vec<D> b3 = hn::InterleaveUpper(codes, a1, a5);
        const hn::Vec<D> b4 = hn::InterleaveLower(codes, a2, a6);
        const hn::Vec<D> b5 = hn::InterleaveUpper(codes, a2, a6);
        const hn::Vec<D> b6 = hn::InterleaveLower(codes, a3, a7);
        const hn::Vec<D> b7 = hn::InterleaveUpper(codes, a3, a7);
        a0 = b0;
        a1 = b1;
        a2 = b2;
        a3 = b3;
        a4 = b4;
        a5 = b5;
        a6 = b6;
        a7 = b7;
    }
    hn::StoreU(a0, codes, row);
    hn::StoreU(a1, codes, row + channels);
    hn::StoreU(a2, codes, row + 2 * channels);
    hn::StoreU(a3, codes, row + 3 * channels);
    hn::StoreU(a4, codes, row + 4 * channels);
    hn::StoreU(a5, codes, row + 5 * channels);
    hn::StoreU(a6, codes, row + 6 * channels);
    hn::StoreU(a7, codes, row + 7 * channels);
}

// Takes whole vectors of channels, from a channel on, then halves of vectors. All rows of some channels come
// before the next channels: the processor can fetch a few columns ahead.
template <class D>
size_t TurnFrom(D codes, size_t channel, const CodeColumn* columns, size_t channels, size_t first,
                size_t rowCount, int16_t* rows)
{
    constexpr size_t Lanes = hn::MaxLanes(D());
    for (; channels - channel >= Lanes; channel += Lanes) {
        for (size_t row = 0; row < rowCount; row += TileSize)
            TurnTile(codes, columns + channel, channels, first + row, rows + row * channels + channel);
    }
    if constexpr (Lanes > TileSize)
        return TurnFrom(hn::Half<D>(), channel, columns, channels, first, rowCount, rows);
    else
        return channel;
}

size_t TurnTiles(const CodeColumn* columns, size_t channels, size_t first, size_t rowCount, int16_t* rows)
{
    return TurnFrom(hn::ScalableTag<int16_t>(), 0, columns, channels, first, rowCount, rows);
}

} // namespace
} // namespace zu::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
namespace zu {

static size_t TakeNone(const CodeColumn* /*columns*/, size_t /*channels*/, size_t /*first*/,
                       size_t /*rowCount*/, int16_t* /*rows*/)
{
    return 0;
}

TileTurner TileTurnerFor(VectorTargets targets)
{
    return ZU_BEST_OF(TurnTiles, targets, TakeNone);
}

} // namespace zu
#endif
