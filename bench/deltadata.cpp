#include "deltadata.h"

#include "recorderfile/compress.h"
#include "recording/deltadecoder.h"

#include <random>
#include <stdexcept>
#include <string>

namespace bench {

DeltaData MakeDeltaData(int widthCode, size_t points)
{
    std::mt19937 random(static_cast<uint32_t>(widthCode));
    DeltaData data;
    data.samples.resize(points);
    const int span = 1 << (widthCode + 1); // items of one bit more than the code
    for (size_t i = 0; i < points; ++i) {
        const int item = static_cast<int>(random() % static_cast<uint32_t>(span)) - span / 2;
        const int before = i < BlockSamples ? 0 : data.samples[i - BlockSamples];
        data.samples[i] = static_cast<int16_t>(static_cast<uint16_t>(before - item));
    }
    data.area = recorderfile::CompressSamplesWithWidth(data.samples, BlockSamples, widthCode);
    if (data.area.isEmpty())
        throw std::runtime_error("no compressed data of width code " + std::to_string(widthCode));
    return data;
}

void Expand(const DeltaData& data, std::vector<int16_t>& samples, const zu::ItemDecoderTable& decoders)
{
    const zu::ByteView area = {reinterpret_cast<const unsigned char*>(data.area.constData()),
                               static_cast<size_t>(data.area.size())};
    if (!zu::ExpandSamples(area, samples.data(), data.samples.size(), decoders))
        throw std::runtime_error("the decoder finds the area bad");
}

} // namespace bench
