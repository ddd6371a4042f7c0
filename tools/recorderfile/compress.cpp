#include "recorderfile/compress.h"

#include "recording/zufilelayout.h"

#include <algorithm>

namespace recorderfile {

namespace {

constexpr int WidestCode = 15;

void AppendWord(QByteArray& out, uint16_t word)
{
    out.append(static_cast<char>(word & 0xFF));
    out.append(static_cast<char>(word >> 8));
}

bool Fits(int16_t item, int widthCode)
{
    if (widthCode == 0)
        return item == 0;
    const int limit = 1 << widthCode;
    return item >= -limit && item < limit;
}

bool AllFit(const std::vector<int16_t>& items, int widthCode)
{
    return std::all_of(items.begin(), items.end(), [=](int16_t item) { return Fits(item, widthCode); });
}

uint16_t UsableBlockSize(const std::vector<int16_t>& samples, uint16_t blockSamples)
{
    const size_t atMost = std::max<size_t>(samples.size(), 1);
    return static_cast<uint16_t>(std::clamp<size_t>(blockSamples, 1, atMost));
}

// The items of the block that starts at `start`, as many as there are samples.
std::vector<int16_t> BlockItems(const std::vector<int16_t>& samples, size_t start, uint16_t blockSamples)
{
    const size_t end = std::min(samples.size(), start + blockSamples);
    std::vector<int16_t> items;
    items.reserve(end - start);
    for (size_t i = start; i < end; ++i)
        items.push_back(static_cast<int16_t>(samples[i - blockSamples] - samples[i]));
    return items;
}

// `widthOf` chooses the width code for a block's items.
template <typename WidthOf>
QByteArray Compress(const std::vector<int16_t>& samples, uint16_t blockSamples, WidthOf widthOf)
{
    const auto firstBlockEnd = samples.begin() + blockSamples;
    CompressedArea area(static_cast<uint32_t>(samples.size() * sizeof(int16_t)), blockSamples,
                        {samples.begin(), firstBlockEnd});
    for (size_t start = blockSamples; start < samples.size(); start += 2 * size_t{blockSamples}) {
        const std::vector<int16_t> low = BlockItems(samples, start, blockSamples);
        const int lowCode = widthOf(low);
        const size_t second = start + blockSamples;
        if (second >= samples.size()) {
            area.Group(lowCode, PackItems(low, lowCode));
            break;
        }
        const std::vector<int16_t> high = BlockItems(samples, second, blockSamples);
        const int highCode = widthOf(high);
        area.Group(lowCode, PackItems(low, lowCode), highCode, PackItems(high, highCode));
    }
    return area.Bytes();
}

} // namespace

QByteArray CompressSamples(const std::vector<int16_t>& samples, uint16_t blockSamples)
{
    if (samples.empty())
        return CompressedArea(0, blockSamples, {}).Bytes();
    return Compress(samples, UsableBlockSize(samples, blockSamples), SmallestWidthCode);
}

QByteArray CompressSamplesWithWidth(const std::vector<int16_t>& samples, uint16_t blockSamples, int widthCode)
{
    if (samples.empty())
        return {};
    bool fits = true;
    const QByteArray area =
        Compress(samples, UsableBlockSize(samples, blockSamples), [&](const std::vector<int16_t>& items) {
            fits = fits && AllFit(items, widthCode);
            return widthCode;
        });
    return fits ? area : QByteArray();
}

int SmallestWidthCode(const std::vector<int16_t>& items)
{
    int widthCode = 0;
    while (widthCode < WidestCode && !AllFit(items, widthCode))
        ++widthCode;
    return widthCode;
}

QByteArray PackItems(const std::vector<int16_t>& items, int widthCode)
{
    if (widthCode == 0)
        return {};
    const int itemBits = widthCode + 1;
    QByteArray out;
    uint32_t pending = 0; // bits not yet written, from bit 0 up; never more than 7 + 16
    int pendingBits = 0;
    for (const int16_t item : items) {
        const uint32_t value = static_cast<uint16_t>(item) & ((1u << itemBits) - 1);
        pending |= value << pendingBits;
        pendingBits += itemBits;
        for (; pendingBits >= 8; pendingBits -= 8, pending >>= 8)
            out.append(static_cast<char>(pending & 0xFF));
    }
    if (pendingBits > 0)
        out.append(static_cast<char>(pending));
    return out;
}

CompressedArea::CompressedArea(uint32_t total, uint16_t blockSamples, const std::vector<int16_t>& firstBlock)
{
    const ZuCompressedHeader header{total, blockSamples};
    bytes.append(reinterpret_cast<const char*>(&header), static_cast<int>(sizeof header));
    for (const int16_t sample : firstBlock)
        AppendWord(bytes, static_cast<uint16_t>(sample));
}

CompressedArea& CompressedArea::Group(int lowCode, const QByteArray& lowData, int highCode,
                                      const QByteArray& highData)
{
    bytes.append(static_cast<char>(lowCode | highCode << 4));
    return Raw(lowData).Raw(highData);
}

CompressedArea& CompressedArea::Raw(const QByteArray& data)
{
    bytes.append(data);
    return *this;
}

} // namespace recorderfile
