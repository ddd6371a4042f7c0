// The decoder of compressed analog samples.
#include "recording/deltadecoder.h"

#include "recording/zufilelayout.h"

#include <algorithm>
#include <array>
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

class BlockDecoder
{
public:
    BlockDecoder(ByteView area, size_t firstBlockEnd, int16_t* samples_, size_t points_,
                 const ItemDecoderTable& decoders_)
        : decoders(decoders_), in(area.data + firstBlockEnd), end(area.data + area.size), samples(samples_),
          points(points_), total(HeadOf(area).total), blockSamples(HeadOf(area).blockSamples),
          out(blockSamples), bytesDone(uint64_t{2} * blockSamples)
    {
        for (size_t width = 1; width < packedBytes.size(); ++width)
            packedBytes[width] = ((width + 1) * blockSamples + 7) / 8;
    }

    // Once there are more bytes than total says, the area is bad whatever follows.
    bool Run()
    {
        if (bytesDone > total)
            return false;
        DecodeWholeGroups();
        while (out < points && in < end) {
            if (!DecodeGroup())
                return false;
        }
        return out >= points && bytesDone == total;
    }

private:
    // Decodes groups as long as neither the area, nor the samples, nor total can cut one: nearly all of them.
    void DecodeWholeGroups()
    {
        if (blockSamples == 0)
            return;
        const size_t groups =
            std::min(out < points ? (points - out) / (2 * blockSamples) : 0,
                     static_cast<size_t>((total - bytesDone) / (uint64_t{4} * blockSamples)));
        // Two blocks of one width are one of twice the length if no bits are left over between them.
        const bool joins = blockSamples % LeastOverlap == 0;
        const unsigned char* group = in;
        int16_t* block = samples + out;
        size_t done = 0;
        for (; done < groups && group < end; ++done) {
            const unsigned low = *group & 15U;
            const unsigned high = *group >> 4U;
            if (static_cast<size_t>(end - group) <= packedBytes[low] + packedBytes[high])
                break;
            const unsigned char* packed = group + 1;
            if (low == high && joins && low != 0) {
                decoders[low](packed, end, 2 * blockSamples, block - blockSamples, block);
            } else {
                decoders[low](packed, end, blockSamples, block - blockSamples, block);
                decoders[high](packed + packedBytes[low], end, blockSamples, block, block + blockSamples);
            }
            group = packed + packedBytes[low] + packedBytes[high];
            block += 2 * blockSamples;
        }
        in = group;
        out += 2 * blockSamples * done;
        bytesDone += uint64_t{4} * blockSamples * done;
        before = out - blockSamples;
    }

    bool DecodeGroup()
    {
        const unsigned control = *in++;
        for (const unsigned width : {control & 15U, control >> 4U}) {
            const size_t block = out;
            if (!DecodeBlock(width))
                return false;
            before = block;
            if (out >= points)
                break;
        }
        return true;
    }

    // Decodes the block at out from the block at before; false if an item reaches beyond the area or total.
    bool DecodeBlock(unsigned width)
    {
        if (width == 0) {
            CopyBlock();
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
        decoders[width](in, end, items, samples + before, samples + out);
        ClearSkipped(out + items, out + room);
        bytesDone += uint64_t{2} * items;
        in += (bits * items + 7) / 8;
        out += blockSamples;
        return true;
    }

    // Positions that a block passes over read as 0, apart from the half of a sample that a copy has left
    // there.
    void ClearSkipped(size_t first, size_t last)
    {
        auto* const bytes = reinterpret_cast<unsigned char*>(samples);
        const size_t written = first == out && leftHalfSample ? 1 : 0;
        std::fill(bytes + 2 * first + written, bytes + 2 * last, static_cast<unsigned char>(0));
    }

    // Copies the block at before to out, as far as total and the room allow.
    void CopyBlock()
    {
        const size_t bytes =
            std::min({static_cast<size_t>(total - bytesDone), 2 * blockSamples, 2 * (points - out)});
        std::memcpy(samples + out, samples + before, bytes);
        bytesDone += bytes;
        out += bytes / 2;
        leftHalfSample = bytes % 2 != 0;
    }

    const ItemDecoderTable& decoders;
    const unsigned char* in;
    const unsigned char* const end;
    int16_t* const samples;
    const size_t points;
    const uint32_t total;
    const size_t blockSamples;
    std::array<size_t, 16> packedBytes{}; // of a whole block, by width code
    size_t before = 0;                    // the block before the next one
    size_t out;                           // next sample; may exceed points at the end
    uint64_t bytesDone;                   // bytes of the samples produced, skipped positions not counted
    bool leftHalfSample = false;          // an odd total has cut the copy before out within a sample
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

bool ExpandSamples(ByteView area, int16_t* samples, size_t points, const ItemDecoderTable& decoders)
{
    const size_t firstBlockEnd = FirstBlockEnd(area);
    if (firstBlockEnd == 0 || HeadOf(area).blockSamples > points)
        return false;
    std::memcpy(samples, area.data + sizeof(ZuCompressedHeader), firstBlockEnd - sizeof(ZuCompressedHeader));
    return BlockDecoder(area, firstBlockEnd, samples, points, decoders).Run();
}

} // namespace zu
