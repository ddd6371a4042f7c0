// The item decoders with vector instructions, one source for all instruction sets: this file is compiled once
// for each of them.
//
// Eight items of b bits fill exactly b bytes, so groups of eight start on byte boundaries and lie in 16
// bytes. Byte shuffles bring the bytes of each item into a 16-bit lane of its own, multiplications, which
// stand for shifts by lane, bring its highest bit to the top, and an arithmetic shift back extends the sign.
// Items of up to 9 bits span two bytes at most. Wider ones span up to three: the upper two are raised
// together and what the lowest contributes is added. docs/performance.md has the figures.
#include "recording/itemdecoder.h"

#include "base/vectorcode.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "recording/itemdecoder_vector.cpp"
#include <hwy/foreach_target.h> // includes this file again
#include <hwy/highway.h>

#if ZU_HAS_VECTORS
HWY_BEFORE_NAMESPACE();
namespace zu::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t GroupItems = 8;

using Samples = hn::ScalableTag<int16_t>;
using Words = hn::Repartition<uint16_t, Samples>;
using Bytes = hn::Repartition<uint8_t, Samples>;

constexpr size_t VectorItems = hn::MaxLanes(Samples());
constexpr size_t VectorGroups = VectorItems / GroupItems;
static_assert(VectorItems <= LeastOverlap, "a vector must not reach into the samples that it makes");

// Shuffle masks and factors for the items of a group.
template <unsigned Bits>
struct Layout
{
    alignas(16) uint8_t upper[16] = {}; // the two bytes, of a wide item the upper two, that go to each lane
    alignas(16) uint8_t lower[16] = {}; // the lowest byte of a wide item, to the upper half of its lane
    alignas(16) uint16_t raise[8] = {}; // brings the highest bit to the top

    static constexpr bool Wide = Bits > 9;

    constexpr Layout()
    {
        constexpr uint8_t Nothing = 0x80;
        for (unsigned item = 0; item < GroupItems; ++item) {
            const unsigned first = item * Bits / 8;
            const unsigned end =
                item * Bits % 8 + Bits; // of the item, in bits from the start of its first byte
            const unsigned byte = first + (Wide ? 1 : 0);
            upper[2 * item] = static_cast<uint8_t>(byte);
            upper[2 * item + 1] = static_cast<uint8_t>(byte + 1);
            lower[2 * item] = Nothing;
            lower[2 * item + 1] = static_cast<uint8_t>(first);
            raise[item] = static_cast<uint16_t>(1U << ((Wide ? 24 : 16) - end));
        }
    }
};

// 16 bytes of each of the groups that make a vector, which are Bits bytes apart.
template <unsigned Bits, class D>
hn::Vec<D> LoadGroups(D bytes, const unsigned char* packed)
{
    constexpr size_t Groups = hn::MaxLanes(D()) / 16;
    if constexpr (Groups == 1) {
        return hn::LoadU(bytes, packed);
    } else {
        const hn::Half<D> half;
        return hn::Combine(bytes, LoadGroups<Bits>(half, packed + Groups / 2 * Bits),
                           LoadGroups<Bits>(half, packed));
    }
}

// Bytes from the start of a vector's groups that Items reads.
template <unsigned Bits>
constexpr size_t VectorReads()
{
    return Bits % 8 == 0 ? VectorGroups * Bits : (VectorGroups - 1) * Bits + 16;
}

// The items of a vector, whose groups start at packed.
template <unsigned Bits>
hn::Vec<Samples> Items(const unsigned char* packed)
{
    if constexpr (Bits == 8) {
        return hn::PromoteTo(Samples(), hn::BitCast(hn::Rebind<int8_t, Samples>(),
                                                    hn::LoadU(hn::Rebind<uint8_t, Samples>(), packed)));
    } else if constexpr (Bits == 16) {
        return hn::BitCast(Samples(), hn::LoadU(Bytes(), packed));
    } else {
        static constexpr Layout<Bits> layout;
        const Words words;
        const hn::Vec<Words> raise = hn::LoadDup128(words, layout.raise);
        const hn::Vec<Bytes> bytes = LoadGroups<Bits>(Bytes(), packed);
        const hn::Vec<Bytes> upper = hn::TableLookupBytesOr0(bytes, hn::LoadDup128(Bytes(), layout.upper));
        hn::Vec<Words> raised = hn::Mul(hn::BitCast(words, upper), raise);
        if constexpr (layout.Wide) {
            const hn::Vec<Bytes> lower =
                hn::TableLookupBytesOr0(bytes, hn::LoadDup128(Bytes(), layout.lower));
            raised = hn::Or(raised, hn::MulHigh(hn::BitCast(words, lower), raise));
        }
        return hn::ShiftRight<16 - Bits>(hn::BitCast(Samples(), raised));
    }
}

template <unsigned Bits>
void DecodeItems(const unsigned char* packed, const unsigned char* limit, size_t count, const int16_t* before,
                 int16_t* out)
{
    constexpr size_t VectorBytes = VectorGroups * Bits;
    const auto size = static_cast<size_t>(limit - packed);
    const size_t readable = size < VectorReads<Bits>() ? 0 : (size - VectorReads<Bits>()) / VectorBytes + 1;
    const size_t vectors = std::min(count / VectorItems, readable);
    for (size_t i = 0; i < vectors; ++i) {
        const hn::Vec<Samples> old = hn::LoadU(Samples(), before + i * VectorItems);
        hn::StoreU(hn::Sub(old, Items<Bits>(packed + i * VectorBytes)), Samples(), out + i * VectorItems);
    }
    const size_t done = vectors * VectorItems;
    if (done < count)
        PortableItemDecoders[Bits - 1](packed + vectors * VectorBytes, limit, count - done, before + done,
                                       out + done);
}

void CopySamples(const unsigned char* packed, const unsigned char* limit, size_t count, const int16_t* before,
                 int16_t* out)
{
    size_t done = 0;
    for (; count - done >= VectorItems; done += VectorItems)
        hn::StoreU(hn::LoadU(Samples(), before + done), Samples(), out + done);
    if (done < count)
        PortableItemDecoders[0](packed, limit, count - done, before + done, out + done);
}

constexpr ItemDecoderTable Decoders = {CopySamples,     DecodeItems<2>,  DecodeItems<3>,  DecodeItems<4>,
                                       DecodeItems<5>,  DecodeItems<6>,  DecodeItems<7>,  DecodeItems<8>,
                                       DecodeItems<9>,  DecodeItems<10>, DecodeItems<11>, DecodeItems<12>,
                                       DecodeItems<13>, DecodeItems<14>, DecodeItems<15>, DecodeItems<16>};

} // namespace
} // namespace zu::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
const zu::ItemDecoderTable& zu::ItemDecodersFor(VectorTargets targets)
{
    return ZU_BEST_OF(Decoders, targets, PortableItemDecoders);
}
#endif
