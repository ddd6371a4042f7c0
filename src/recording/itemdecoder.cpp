// The portable item decoders, and the choice between them and those with vector instructions.
#include "recording/itemdecoder.h"

#include <algorithm>
#include <cstring>

namespace zu {

namespace {

// Item of Bits bits that starts at bit 0 to 7 of word.
template <unsigned Bits>
int16_t ItemOf(uint32_t word, unsigned bit)
{
    const uint32_t raised = word << (32 - Bits - bit); // arithmetic shift back extends the sign
    return static_cast<int16_t>(static_cast<int32_t>(raised) >> (32 - Bits));
}

template <unsigned Bits>
void DecodeItems(const unsigned char* packed, const unsigned char* limit, size_t count, const int16_t* before,
                 int16_t* out)
{
    // An item spans at most 4 bytes. As long as these are there, one load takes them.
    const auto size = static_cast<size_t>(limit - packed);
    const size_t loads = size < 4 ? 0 : std::min(count, ((size - 4) * 8 + 7) / Bits + 1);
    size_t bit = 0;
    size_t i = 0;
    for (; i < loads; ++i, bit += Bits) {
        uint32_t word = 0;
        std::memcpy(&word, packed + bit / 8, sizeof word);
        out[i] = static_cast<int16_t>(before[i] - ItemOf<Bits>(word, bit % 8));
    }
    for (; i < count; ++i, bit += Bits) {
        uint32_t word = 0;
        std::memcpy(&word, packed + bit / 8, std::min<size_t>(4, size - bit / 8));
        out[i] = static_cast<int16_t>(before[i] - ItemOf<Bits>(word, bit % 8));
    }
}

// Whole bytes and whole words need no shifts, and the compiler vectorises them by itself.
template <>
void DecodeItems<8>(const unsigned char* packed, const unsigned char* /*limit*/, size_t count,
                    const int16_t* before, int16_t* out)
{
    for (size_t i = 0; i < count; ++i)
        out[i] = static_cast<int16_t>(before[i] - static_cast<int8_t>(packed[i]));
}

template <>
void DecodeItems<16>(const unsigned char* packed, const unsigned char* /*limit*/, size_t count,
                     const int16_t* before, int16_t* out)
{
    for (size_t i = 0; i < count; ++i) {
        int16_t item = 0;
        std::memcpy(&item, packed + 2 * i, sizeof item);
        out[i] = static_cast<int16_t>(before[i] - item);
    }
}

void CopySamples(const unsigned char* /*packed*/, const unsigned char* /*limit*/, size_t count,
                 const int16_t* before, int16_t* out)
{
    std::memcpy(out, before, 2 * count);
}

} // namespace

const ItemDecoderTable PortableItemDecoders = {
    CopySamples,     DecodeItems<2>,  DecodeItems<3>,  DecodeItems<4>,  DecodeItems<5>,  DecodeItems<6>,
    DecodeItems<7>,  DecodeItems<8>,  DecodeItems<9>,  DecodeItems<10>, DecodeItems<11>, DecodeItems<12>,
    DecodeItems<13>, DecodeItems<14>, DecodeItems<15>, DecodeItems<16>};

const ItemDecoderTable& ItemDecoders()
{
    static const ItemDecoderTable& best = ItemDecodersFor(SupportedVectorTargets());
    return best;
}

} // namespace zu
