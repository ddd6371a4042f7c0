// Columns of analog codes turned into rows with vector instructions: squares of eight channels by eight
// samples.
#pragma once

#include "base/vectortargets.h"

#include <cstddef>

namespace zu {

/// The samples of a channel.
struct CodeColumn
{
    const int16_t* codes;
    size_t points;
};

/// Writes samples first to first + rowCount - 1 of the leading channels into rows, which have a place for
/// each of the channels. All channels have these samples, and rowCount is a multiple of TileSize. Returns how
/// many channels were taken: a multiple of TileSize, or 0.
using TileTurner = size_t (*)(const CodeColumn* columns, size_t channels, size_t first, size_t rowCount,
                              int16_t* rows);

constexpr size_t TileSize = 8;

/// The best one for a processor that has these instruction sets; without any it takes no channel.
TileTurner TileTurnerFor(VectorTargets targets);

} // namespace zu
