// Turning columns of analog codes into rows.
#include "writers/coderows.h"

#include "recording/zufileformat.h"

#include <algorithm>
#include <cstring>

// 256 KB: enough rows to read every column a page at a time, which is worth more than staying in the
// first-level cache.
static constexpr size_t BlockCodes = 131072;
static constexpr size_t FewestRows = 16;

CodeRows::CodeRows(size_t channels)
    : columns(channels), rowsInBlock(std::max(FewestRows, BlockCodes / std::max<size_t>(channels, 1))),
      rows(new qint16[channels * rowsInBlock])
{}

void CodeRows::Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order)
{
    rowCount = 0;
    shortest = columns.empty() ? 0 : ~size_t(0);
    longest = 0;
    for (size_t i = 0; i < columns.size(); ++i) {
        const AnChannelData& channel = *segment.AnChannels.at(order.at(i));
        columns[i] = {channel.Samples, channel.m_HeaderAn.points};
        shortest = std::min(shortest, columns[i].points);
        longest = std::max(longest, columns[i].points);
    }
}

namespace {

// Eight codes of one channel, or of one row: one register on x86-64 and 64-bit ARM.
typedef qint16 Codes8 __attribute__((vector_size(16)));

inline Codes8 Low(Codes8 a, Codes8 b)
{
    return __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
}

inline Codes8 High(Codes8 a, Codes8 b)
{
    return __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
}

// One of three steps that turn eight columns into eight rows: element i of the halves goes to place 2i and 2i
// + 1.
inline void Interleave(Codes8 (&v)[8])
{
    const Codes8 turned[8] = {Low(v[0], v[4]), High(v[0], v[4]), Low(v[1], v[5]), High(v[1], v[5]),
                              Low(v[2], v[6]), High(v[2], v[6]), Low(v[3], v[7]), High(v[3], v[7])};
    std::copy(turned, turned + 8, v);
}

} // namespace

void CodeRows::Turn(size_t sample)
{
    firstSample = sample;
    const size_t channels = columns.size();
    if (channels == 0) {
        rowCount = ~size_t(0);
        return;
    }
    rowCount = rowsInBlock;
    if (longest > sample)
        rowCount = std::min(rowCount, longest - sample);
    const size_t tiledRows = shortest > sample ? std::min(rowCount, shortest - sample) / 8 * 8 : 0;
    const size_t tiledChannels = channels / 8 * 8;
    // Eight channels at a time for all rows: eight streams are what the processor can fetch ahead.
    for (size_t channel = 0; channel < tiledChannels; channel += 8) {
        for (size_t row = 0; row < tiledRows; row += 8)
            TurnTile(channel, row);
    }
    for (size_t channel = 0; channel < channels; ++channel)
        TurnColumn(channel, channel < tiledChannels ? tiledRows : 0);
}

// Turns eight channels of eight samples, none of which is missing.
void CodeRows::TurnTile(size_t channel, size_t row)
{
    Codes8 codes[8];
    for (size_t i = 0; i < 8; ++i)
        std::memcpy(&codes[i], columns[channel + i].codes + firstSample + row, sizeof codes[i]);
    for (int step = 0; step < 3; ++step)
        Interleave(codes);
    for (size_t i = 0; i < 8; ++i)
        std::memcpy(&rows[(row + i) * columns.size() + channel], &codes[i], sizeof codes[i]);
}

// Puts the samples of one channel, from a row on, into their rows one by one.
void CodeRows::TurnColumn(size_t channel, size_t row)
{
    const Column& column = columns[channel];
    for (; row < rowCount; ++row) {
        const size_t sample = firstSample + row;
        rows[row * columns.size() + channel] = sample < column.points ? column.codes[sample] : MissingData;
    }
}
