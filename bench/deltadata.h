// Compressed data of one width code, for measuring the decoder.
#pragma once

#include "recording/itemdecoder.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace bench {

constexpr uint16_t BlockSamples = 32; // what the recorder uses

struct DeltaData
{
    std::vector<int16_t> samples;
    QByteArray area; // their compressed form, every block of the one width code
};

/// Samples whose differences fill the width code (1 to 15), the same for every call. Throws
/// std::runtime_error if they cannot be compressed with it.
DeltaData MakeDeltaData(int widthCode, size_t points);

/// Expands data.area into samples, which has room for all of them. Throws std::runtime_error if the decoder
/// rejects the area.
void Expand(const DeltaData& data, std::vector<int16_t>& samples,
            const zu::ItemDecoderTable& decoders = zu::ItemDecoders());

} // namespace bench
