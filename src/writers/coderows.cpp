// Turning columns of analog codes into rows.
#include "writers/coderows.h"

#include "recording/zufileformat.h"

#include <algorithm>

static constexpr size_t BlockCodes = 8192; // 16 KB of rows stay in the first-level cache
static constexpr size_t FewestRows = 16;

CodeRows::CodeRows(size_t channels)
    : columns(channels), rows(channels * std::max(FewestRows, BlockCodes / std::max<size_t>(channels, 1)))
{}

void CodeRows::Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order)
{
    rowCount = 0;
    shortest = columns.empty() ? 0 : ~size_t(0);
    for (size_t i = 0; i < columns.size(); ++i) {
        const AnChannelData& channel = *segment.AnChannels.at(order.at(i));
        columns[i] = {channel.Samples, channel.m_HeaderAn.points};
        shortest = std::min(shortest, columns[i].points);
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
    rowCount = rows.size() / channels;
    for (size_t i = 0; i < channels; ++i) {
        const Column& column = columns[i];
        const size_t present = column.points > sample ? std::min(rowCount, column.points - sample) : 0;
        const qint16* codes = column.codes + sample;
        qint16* row = rows.data() + i;
        for (size_t r = 0; r < present; ++r, row += channels)
            *row = codes[r];
        for (size_t r = present; r < rowCount; ++r, row += channels)
            *row = MissingData;
    }
}
