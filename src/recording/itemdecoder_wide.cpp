// The item decoders with 256-bit integer instructions (AVX2), chosen at run time.
//
// Sixteen items of b bits fill exactly 2b bytes, so groups of sixteen start on byte boundaries. A byte
// shuffle brings the bytes of each item into a lane of its own, a shift per lane brings its highest bit to
// the top, and an arithmetic shift back extends the sign. Items of up to 9 bits span two bytes and stay in
// 16-bit lanes; wider ones span three and take 32-bit lanes. Bit-packed items are five to eight times as fast
// as with the portable loops (docs/performance.md has the figures).
#include "recording/itemdecoder.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <algorithm>
#include <immintrin.h>

#define ZU_WIDE __attribute__((target("avx2")))

namespace zu {

namespace {

constexpr size_t GroupItems = 16;

// Shuffle masks, multipliers and shifts of one item width.
template <unsigned Bits>
struct Layout
{
    alignas(32) uint8_t bytes[32];    // which bytes of the half group go to which lane
    alignas(32) uint16_t raise16[16]; // narrow: factor that brings the highest bit to the top of 16
    alignas(32) uint32_t raise32[8];  // wide: shift that brings it to the top of 32

    constexpr Layout() : bytes{}, raise16{}, raise32{}
    {
        constexpr uint8_t Nothing = 0x80;
        for (unsigned item = 0; item < 8; ++item) {
            const unsigned first = item * Bits / 8;
            const unsigned shift = item * Bits % 8;
            if constexpr (Bits <= 9) {
                for (unsigned half = 0; half < 2; ++half) {
                    bytes[16 * half + 2 * item] = static_cast<uint8_t>(first);
                    bytes[16 * half + 2 * item + 1] =
                        first + 1 < 16 ? static_cast<uint8_t>(first + 1) : Nothing;
                    raise16[8 * half + item] = static_cast<uint16_t>(1U << (16 - Bits - shift));
                }
            } else {
                for (unsigned byte = 0; byte < 4; ++byte)
                    bytes[4 * item + byte] = first + byte < 16 ? static_cast<uint8_t>(first + byte) : Nothing;
                raise32[item] = 32 - Bits - shift;
            }
        }
    }
};

ZU_WIDE inline __m256i Load(const void* from)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

ZU_WIDE inline __m128i LoadHalf(const void* from)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

// Sixteen items whose 2 * Bits bytes start at packed. Reads 16 bytes from packed + Bits.
template <unsigned Bits>
ZU_WIDE inline __m256i Items(const unsigned char* packed, const Layout<Bits>& layout)
{
    const __m256i mask = Load(layout.bytes);
    if constexpr (Bits <= 9) {
        const __m256i both =
            _mm256_inserti128_si256(_mm256_castsi128_si256(LoadHalf(packed)), LoadHalf(packed + Bits), 1);
        const __m256i raised = _mm256_mullo_epi16(_mm256_shuffle_epi8(both, mask), Load(layout.raise16));
        return _mm256_srai_epi16(raised, 16 - Bits);
    } else {
        const __m256i shifts = Load(layout.raise32);
        const __m256i low = _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(LoadHalf(packed)), mask);
        const __m256i high = _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(LoadHalf(packed + Bits)), mask);
        const __m256i lowItems = _mm256_srai_epi32(_mm256_sllv_epi32(low, shifts), 32 - Bits);
        const __m256i highItems = _mm256_srai_epi32(_mm256_sllv_epi32(high, shifts), 32 - Bits);
        // Packing works within 128-bit halves; the permutation puts the quarters in order.
        return _mm256_permute4x64_epi64(_mm256_packs_epi32(lowItems, highItems), 0xD8);
    }
}

template <>
ZU_WIDE inline __m256i Items<8>(const unsigned char* packed, const Layout<8>& /*layout*/)
{
    return _mm256_cvtepi8_epi16(LoadHalf(packed));
}

template <>
ZU_WIDE inline __m256i Items<16>(const unsigned char* packed, const Layout<16>& /*layout*/)
{
    return Load(packed);
}

// Bytes from the start of a group that Items reads.
template <unsigned Bits>
constexpr size_t GroupReads()
{
    return Bits == 8 ? 16 : Bits == 16 ? 32 : Bits + 16;
}

template <unsigned Bits>
ZU_WIDE void DecodeItems(const unsigned char* packed, const unsigned char* limit, size_t count,
                         const int16_t* before, int16_t* out)
{
    static constexpr Layout<Bits> layout;
    constexpr size_t GroupBytes = size_t{2} * Bits;
    const auto size = static_cast<size_t>(limit - packed);
    const size_t readable = size < GroupReads<Bits>() ? 0 : (size - GroupReads<Bits>()) / GroupBytes + 1;
    const size_t groups = std::min(count / GroupItems, readable);
    for (size_t group = 0; group < groups; ++group) {
        const __m256i items = Items<Bits>(packed + group * GroupBytes, layout);
        const __m256i samples = _mm256_sub_epi16(Load(before + group * GroupItems), items);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + group * GroupItems), samples);
    }
    const size_t done = groups * GroupItems;
    if (done < count)
        PortableItemDecoders[Bits - 1](packed + groups * GroupBytes, limit, count - done, before + done,
                                       out + done);
}

ZU_WIDE void CopySamples(const unsigned char* packed, const unsigned char* limit, size_t count,
                         const int16_t* before, int16_t* out)
{
    size_t done = 0;
    for (; count - done >= GroupItems; done += GroupItems)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + done), Load(before + done));
    if (done < count)
        PortableItemDecoders[0](packed, limit, count - done, before + done, out + done);
}

constexpr ItemDecoderTable Wide = {CopySamples,     DecodeItems<2>,  DecodeItems<3>,  DecodeItems<4>,
                                   DecodeItems<5>,  DecodeItems<6>,  DecodeItems<7>,  DecodeItems<8>,
                                   DecodeItems<9>,  DecodeItems<10>, DecodeItems<11>, DecodeItems<12>,
                                   DecodeItems<13>, DecodeItems<14>, DecodeItems<15>, DecodeItems<16>};

} // namespace

const ItemDecoderTable* WideItemDecoders()
{
    return __builtin_cpu_supports("avx2") != 0 ? &Wide : nullptr;
}

} // namespace zu

#else

const zu::ItemDecoderTable* zu::WideItemDecoders()
{
    return nullptr;
}

#endif
