#include "support/slowdecoder.h"

#include <algorithm>

namespace {

class Reader
{
public:
    explicit Reader(const QByteArray& area) : bytes(area) {}

    bool AtEnd() const { return position >= 8 * static_cast<size_t>(bytes.size()); }
    bool Failed() const { return failed; }
    void SkipToByte() { position = (position + 7) / 8 * 8; }

    uint32_t Bits(int count)
    {
        uint32_t value = 0;
        for (int i = 0; i < count; ++i)
            value |= Bit() << i;
        return value;
    }

private:
    uint32_t Bit()
    {
        if (AtEnd()) {
            failed = true;
            return 0;
        }
        const auto byte = static_cast<uint8_t>(bytes[static_cast<int>(position / 8)]);
        return (byte >> (position++ % 8)) & 1u;
    }

    const QByteArray& bytes;
    size_t position = 0;
    bool failed = false;
};

int Item(Reader& in, int widthCode)
{
    if (widthCode == 0)
        return 0;
    const int value = static_cast<int>(in.Bits(widthCode));
    const bool negative = in.Bits(1) != 0;
    return negative ? value - (1 << widthCode) : value;
}

} // namespace

std::optional<std::vector<int16_t>> DecodeSlowly(const QByteArray& area, uint32_t points)
{
    Reader in(area);
    const uint32_t total = in.Bits(32);
    const uint32_t blockSamples = in.Bits(16);
    if (total != 2 * points || blockSamples == 0 || blockSamples > points)
        return std::nullopt;
    std::vector<int16_t> samples;
    while (samples.size() < blockSamples)
        samples.push_back(static_cast<int16_t>(in.Bits(16)));
    while (samples.size() < points && !in.Failed()) {
        const int codes[] = {static_cast<int>(in.Bits(4)), static_cast<int>(in.Bits(4))};
        for (const int code : codes) {
            for (uint32_t i = 0; i < blockSamples && samples.size() < points; ++i)
                samples.push_back(
                    static_cast<int16_t>(samples[samples.size() - blockSamples] - Item(in, code)));
            in.SkipToByte();
        }
    }
    if (in.Failed() || !in.AtEnd())
        return std::nullopt;
    return samples;
}
