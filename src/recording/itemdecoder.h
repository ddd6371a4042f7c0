// Unpacks the items of one compressed block: the inner loop of the decoder, in a portable form and with the
// vector instructions of the processor.
#pragma once

#include "base/vectortargets.h"

#include <cstddef>
#include <cstdint>

namespace zu {

/// out[i] = before[i] - item i, in 16-bit arithmetic with wrap-around, for count items that start at packed.
/// An item is widthCode + 1 bits in two's complement, lowest bit first, each following the one before it. All
/// items end at or before limit, and no byte at limit or after it is read. before and out do not overlap,
/// unless out is LeastOverlap samples or more after before and the width code is not 0: then the first
/// samples of out serve as before for the later ones.
using ItemDecoder = void (*)(const unsigned char* packed, const unsigned char* limit, size_t count,
                             const int16_t* before, int16_t* out);

constexpr size_t LeastOverlap = 16;

/// The decoders by width code.
using ItemDecoderTable = ItemDecoder[16];

/// The best table for this processor.
const ItemDecoderTable& ItemDecoders();

/// The best table for a processor that has these instruction sets; the portable one if none of them is of
/// use.
const ItemDecoderTable& ItemDecodersFor(VectorTargets targets);

/// The portable table.
extern const ItemDecoderTable PortableItemDecoders;

} // namespace zu
