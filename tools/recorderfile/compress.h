// Encoder of the compressed data area of an analog channel.
//
// The area is the size of the plain samples in bytes, the block size N, the first block of N plain samples,
// and groups of up to two blocks after one control byte: the low nibble is the width code of the first block,
// the high nibble that of the second. A block stores for each sample the sample N places earlier minus the
// sample, in 16-bit arithmetic. Width code 0 stores nothing (a copy of the block before); 1 to 14 store items
// of one bit more than the code, in two's complement from the lowest bit up, so 7 is a byte per item; 15
// stores whole words. A last block that the samples do not fill stores the items of those samples only.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace recorderfile {

// The data area with the smallest width code that fits for every block. The block size is limited to between
// 1 and the number of samples; there must be at least one sample.
QByteArray CompressSamples(const std::vector<int16_t>& samples, uint16_t blockSamples);

// The same with one width code (0 to 15) for every block. Empty if a difference does not fit into it.
QByteArray CompressSamplesWithWidth(const std::vector<int16_t>& samples, uint16_t blockSamples,
                                    int widthCode);

// The smallest width code that holds every item.
int SmallestWidthCode(const std::vector<int16_t>& items);

// The packed data of one block. Bits of an item that the width code has no room for are lost.
QByteArray PackItems(const std::vector<int16_t>& items, int widthCode);

// Composer of data areas by hand, right or wrong: nothing is checked and nothing is counted.
class CompressedArea
{
public:
    // The head as stored, whatever follows it.
    CompressedArea(uint32_t total, uint16_t blockSamples, const std::vector<int16_t>& firstBlock);

    // A control byte and the packed data of its blocks.
    CompressedArea& Group(int lowCode, const QByteArray& lowData, int highCode = 0,
                          const QByteArray& highData = {});

    // Bytes as they are.
    CompressedArea& Raw(const QByteArray& data);

    const QByteArray& Bytes() const { return bytes; }

private:
    QByteArray bytes;
};

} // namespace recorderfile
