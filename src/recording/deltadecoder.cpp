// The decoder of compressed analog samples.
#include "recording/deltadecoder.h"

#include "recording/zufilelayout.h"

#include <algorithm>
#include <cstring>

namespace zu {

namespace {

ZuCompressedHeader HeadOf(ByteView area)
{
    ZuCompressedHeader head{};
    std::memcpy(&head, area.data, sizeof head);
    return head;
}

// Bytes of the head and the first block, or 0 if the area does not hold them.
size_t FirstBlockEnd(ByteView area)
{
    if (area.size < sizeof(ZuCompressedHeader))
        return 0;
    const size_t end = sizeof(ZuCompressedHeader) + size_t{2} * HeadOf(area).blockSamples;
    return end <= area.size ? end : 0;
}

// Item i of Bits bits, lowest bit first, as a two's complement value. Bytes from limit on read as 0.
template <unsigned Bits>
int32_t ItemAt(const unsigned char* packed, size_t i, const unsigned char* limit)
{
    const size_t bit = i * Bits;
    const unsigned char* byte = packed + bit / 8;
    uint32_t word = 0;
    const auto left = static_cast<size_t>(limit - byte);
    std::memcpy(&word, byte, std::min<size_t>(left, 4));
    const uint32_t raised = word << (32 - Bits - bit % 8);
    return static_cast<int32_t>(raised) >> (32 - Bits);
}

template <unsigned Bits>
void DecodeItems(const unsigned char* packed, const unsigned char* limit, size_t items, const int16_t* before,
                 int16_t* out)
{
    for (size_t i = 0; i < items; ++i)
        out[i] = static_cast<int16_t>(before[i] - ItemAt<Bits>(packed, i, limit));
}

using ItemDecoder = void (*)(const unsigned char*, const unsigned char*, size_t, const int16_t*, int16_t*);

// By width code; code 0 has no items.
constexpr ItemDecoder ItemDecoders[16] = {nullptr,         DecodeItems<2>,  DecodeItems<3>,  DecodeItems<4>,
                                          DecodeItems<5>,  DecodeItems<6>,  DecodeItems<7>,  DecodeItems<8>,
                                          DecodeItems<9>,  DecodeItems<10>, DecodeItems<11>, DecodeItems<12>,
                                          DecodeItems<13>, DecodeItems<14>, DecodeItems<15>, DecodeItems<16>};

class BlockDecoder
{
public:
    BlockDecoder(ByteView area, size_t firstBlockEnd, int16_t* samples_, size_t points_)
        : in(area.data + firstBlockEnd), end(area.data + area.size), samples(samples_), points(points_),
          total(HeadOf(area).total), blockSamples(HeadOf(area).blockSamples), out(blockSamples),
          bytesDone(uint64_t{2} * blockSamples)
    {}

    // Once more bytes have come out than total tells, the area is bad whatever follows.
    bool Run()
    {
        if (bytesDone > total)
            return false;
        size_t before = 0;
        while (out < points && in < end) {
            const unsigned control = *in++;
            for (const unsigned width : {control & 15U, control >> 4U}) {
                const size_t block = out;
                if (!DecodeBlock(width, before))
                    return false;
                before = block;
                if (out >= points)
                    break;
            }
        }
        return out >= points && bytesDone == total;
    }

private:
    // Decodes the block at out from the block at before; false if an item reaches beyond the area or total.
    bool DecodeBlock(unsigned width, size_t before)
    {
        if (width == 0) {
            CopyBlock(before);
            return true;
        }
        if (blockSamples == 0)
            return true;
        const size_t room = std::min(points - out, blockSamples);
        const size_t bits = width + 1;
        const auto bitsLeft = static_cast<uint64_t>(end - in) * 8;
        size_t items = room;
        if (bits * room > bitsLeft) {
            if (bitsLeft % bits != 0)
                return false;
            items = static_cast<size_t>(bitsLeft / bits);
        }
        if (bytesDone + uint64_t{2} * items > total)
            return false;
        ItemDecoders[width](in, end, items, samples + before, samples + out);
        std::fill(samples + out + items, samples + out + room, int16_t{0});
        bytesDone += uint64_t{2} * items;
        in += (bits * items + 7) / 8;
        out += blockSamples;
        return true;
    }

    // Copies the block at before to out, as far as total and the room allow.
    void CopyBlock(size_t before)
    {
        const size_t bytes =
            std::min({static_cast<size_t>(total - bytesDone), 2 * blockSamples, 2 * (points - out)});
        std::memmove(samples + out, samples + before, bytes);
        bytesDone += bytes;
        out += bytes / 2;
    }

    const unsigned char* in;
    const unsigned char* const end;
    int16_t* const samples;
    const size_t points;
    const uint32_t total;
    const size_t blockSamples;
    size_t out;         // next sample; may pass points at the end
    uint64_t bytesDone; // bytes of the samples produced, skipped positions not counted
};

} // namespace

bool CanExpandTo(ByteView area, size_t points)
{
    const size_t firstBlockEnd = FirstBlockEnd(area);
    if (firstBlockEnd == 0)
        return false;
    const uint64_t blockSamples = HeadOf(area).blockSamples;
    const uint64_t controls = area.size - firstBlockEnd;
    return blockSamples <= points && blockSamples + 2 * blockSamples * controls >= points;
}

bool ExpandSamples(ByteView area, int16_t* samples, size_t points)
{
    const size_t firstBlockEnd = FirstBlockEnd(area);
    if (firstBlockEnd == 0 || HeadOf(area).blockSamples > points)
        return false;
    std::memcpy(samples, area.data + sizeof(ZuCompressedHeader), firstBlockEnd - sizeof(ZuCompressedHeader));
    return BlockDecoder(area, firstBlockEnd, samples, points).Run();
}

} // namespace zu
