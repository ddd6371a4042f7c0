// Turning columns of analog codes into rows.
#include "writers/coderows.h"

#include "recording/zufileformat.h"

#include <algorithm>

// 256 KB: enough rows to read every column a page at a time, which is worth more than staying in the
// first-level cache.
static constexpr size_t BlockCodes = 131072;
static constexpr size_t FewestRows = 16;

CodeRows::CodeRows(size_t channels) : CodeRows(channels, zu::TileTurnerFor(zu::SupportedVectorTargets())) {}

CodeRows::CodeRows(size_t channels, zu::TileTurner turner)
    : turnTiles(turner), columns(channels),
      rowsInBlock(std::max(FewestRows, BlockCodes / std::max<size_t>(channels, 1))),
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
    const size_t fullRows = shortest > sample ? std::min(rowCount, shortest - sample) : 0;
    const size_t tiledRows = fullRows / zu::TileSize * zu::TileSize;
    const size_t tiledChannels = turnTiles(columns.data(), channels, sample, tiledRows, rows.get());
    for (size_t channel = 0; channel < channels; ++channel)
        TurnColumn(channel, channel < tiledChannels ? tiledRows : 0);
}

// Puts the samples of one channel, from a row on, into their rows one by one.
void CodeRows::TurnColumn(size_t channel, size_t row)
{
    const zu::CodeColumn& column = columns[channel];
    for (; row < rowCount; ++row) {
        const size_t sample = firstSample + row;
        rows[row * columns.size() + channel] = sample < column.points ? column.codes[sample] : MissingData;
    }
}
