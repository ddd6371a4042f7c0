#include "slowexpander.h"

#include <algorithm>

namespace {

class SlowExpander
{
public:
    SlowExpander(const QByteArray& area_, size_t points_)
        : area(area_), end(static_cast<size_t>(area_.size())), points(points_), samples(points_, filler)
    {}

    SlowExpansion Run()
    {
        const bool good = ReadFirstBlock() && ReadGroups() && bytesDone == total;
        return {{good, samples}, std::min(bytesDone <= total ? out : settled, points)};
    }

private:
    uint32_t ByteAt(size_t at) const { return static_cast<uint8_t>(area[static_cast<int>(at)]); }
    uint32_t WordAt(size_t at) const { return ByteAt(at) | ByteAt(at + 1) << 8; }

    bool ReadFirstBlock()
    {
        if (end < 6)
            return false;
        total = WordAt(0) | WordAt(2) << 16;
        blockSamples = WordAt(4);
        if (blockSamples > points || 6 + 2 * blockSamples > end)
            return false;
        for (in = 6; out < blockSamples; in += 2)
            samples[out++] = static_cast<int16_t>(WordAt(in));
        bytesDone = 2 * blockSamples;
        samplesDone = blockSamples;
        settled = blockSamples;
        return true;
    }

    bool ReadGroups()
    {
        while (out < points) {
            if (in >= end)
                return false; // no control byte
            const uint32_t control = ByteAt(in++);
            for (const uint32_t width : {control % 16, control / 16}) {
                const size_t begin = out;
                if (!ReadBlock(width))
                    return false;
                prev = begin;
                if (out >= points)
                    return true;
            }
        }
        return true;
    }

    bool ReadBlock(uint32_t width)
    {
        if (bytesDone <= total)
            settled = out;
        if (width == 0) {
            CopyBlock();
            return true;
        }
        const size_t available = std::min(end - in, ((width + 1) * blockSamples + 7) / 8);
        if (blockSamples != 0 && available != 0 && samplesDone < points)
            return ReadItems(width, available);
        for (size_t i = out; i < std::min(points, out + blockSamples); ++i)
            samples[i] = i == out && half ? static_cast<int16_t>(samples[i] & 0xFF) : int16_t{0};
        out += blockSamples;
        return true;
    }

    void CopyBlock()
    {
        size_t bytes = std::min<size_t>(static_cast<uint32_t>(total - bytesDone), 2 * blockSamples);
        bytes = std::min(bytes, 2 * (points - out));
        auto* to = reinterpret_cast<unsigned char*>(samples.data() + out);
        const auto* from = reinterpret_cast<const unsigned char*>(samples.data() + prev);
        for (size_t i = 0; i < bytes; ++i)
            to[i] = from[i];
        bytesDone += bytes;
        samplesDone += bytes / 2;
        out += bytes / 2;
        half = bytes % 2 == 1;
    }

    bool ReadItems(uint32_t width, size_t available)
    {
        byte = 0;
        bit = 0;
        size_t i = 0;
        for (;; ++i) {
            bytesDone += 2;
            samplesDone += 1;
            uint32_t item = 0;
            if (!ReadItem(width, item))
                return false;
            samples[out + i] = static_cast<int16_t>(samples[prev + i] - static_cast<int16_t>(item));
            if (i + 1 == blockSamples || byte == available || samplesDone == points)
                break;
        }
        for (size_t skipped = out + i + 1; skipped < std::min(points, out + blockSamples); ++skipped)
            samples[skipped] = 0;
        out += blockSamples;
        in += byte + (bit != 0 ? 1 : 0);
        return true;
    }

    // The item as 16 bits; false if it reaches beyond the area.
    bool ReadItem(uint32_t width, uint32_t& item)
    {
        uint32_t one = 0;
        for (uint32_t place = 0; place < width; ++place) {
            if (!ReadBit(one))
                return false;
            item |= one << place;
        }
        if (!ReadBit(one))
            return false;
        for (uint32_t place = width; place < 16; ++place)
            item |= one << place;
        return true;
    }

    bool ReadBit(uint32_t& one)
    {
        if (in + byte >= end)
            return false;
        one = ByteAt(in + byte) >> bit & 1U;
        bit = (bit + 1) % 8;
        byte += bit == 0 ? 1 : 0;
        return true;
    }

    const QByteArray& area;
    const size_t end;
    const size_t points;
    std::vector<int16_t> samples;
    uint32_t total = 0;
    size_t blockSamples = 0;
    size_t in = 0;          // next byte of the area
    size_t settled = 0;     // samples before the block that passed the total
    size_t out = 0;         // next sample
    size_t prev = 0;        // first sample of the block before
    size_t bytesDone = 0;   // of the output
    size_t samplesDone = 0; // of the output
    bool half = false;      // the low byte of the next sample is there
    size_t byte = 0;        // of the block's data
    uint32_t bit = 0;       // of that byte
};

} // namespace

SlowExpansion ExpandSlowly(const QByteArray& area, size_t points)
{
    return SlowExpander(area, points).Run();
}
