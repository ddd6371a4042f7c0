// Expands a compressed analog data area into 16-bit samples.
//
// The area: ZuCompressedHeader, the first block of N plain samples, then groups to the end. A group is a
// control byte and the packed data of up to two blocks, the low nibble being the width code of the first. A
// block encodes N samples, each the sample at the same position of the block before it minus an item.
#pragma once

#include "recording/itemdecoder.h"

#include <cstddef>
#include <cstdint>

namespace zu {

/// A range of bytes; nothing outside it is read.
struct ByteView
{
    const unsigned char* data;
    size_t size;
};

/// Whether the area could fill points samples if every byte after the first block were a control byte for two
/// whole blocks. If not, it is bad, and nothing needs to be allocated for it.
bool CanExpandTo(ByteView area, size_t points);

/// Expands area into samples, which has room for points. True if all points were decoded and their bytes are
/// exactly the area's total. False for a first block beyond the area or beyond points, a control byte or an
/// item beyond the area, too little output, or another total; what was decoded until then is in samples.
/// Never writes beyond points. Positions that an early end of a block passes over become 0; the first half of
/// a sample that an odd total leaves of a copy keeps its byte.
bool ExpandSamples(ByteView area, int16_t* samples, size_t points,
                   const ItemDecoderTable& decoders = ItemDecoders());

} // namespace zu
