// Columns turned into rows, with each instruction set of this machine.
#include "writers/coderows.h"

#include "recording/zufileformat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

std::vector<zu::TileTurner> AllTileTurners()
{
    std::vector<zu::TileTurner> turners = {zu::TileTurnerFor(0)};
    const auto supported = static_cast<uint64_t>(zu::SupportedVectorTargets());
    for (uint64_t rest = supported; rest != 0; rest &= rest - 1)
        turners.push_back(zu::TileTurnerFor(static_cast<zu::VectorTargets>(rest & ~(rest - 1))));
    return turners;
}

class CodeRowsOfASet : public testing::TestWithParam<zu::TileTurner>
{};

// Adds channels with random codes in memory of exactly their size, for the sanitizer.
void AddChannels(ZuFileFormat& segment, size_t channels, size_t points, std::mt19937& random)
{
    for (size_t i = 0; i < channels; ++i) {
        auto* channel = new AnChannelData; // the segment owns it
        channel->m_HeaderAn.points = static_cast<quint32>(points);
        channel->m_pData = new quint16[points];
        channel->Samples = reinterpret_cast<qint16*>(channel->m_pData);
        std::generate_n(channel->Samples, points, [&] { return static_cast<qint16>(random()); });
        segment.AnChannels.push_back(channel);
    }
}

void ExpectRows(CodeRows& rows, const ZuFileFormat& segment, const std::vector<unsigned int>& order,
                size_t first, size_t end)
{
    for (size_t sample = first; sample < end; ++sample) {
        const qint16* row = rows.Row(sample);
        for (size_t i = 0; i < order.size(); ++i) {
            const AnChannelData& channel = *segment.AnChannels.at(order[i]);
            const qint16 code =
                sample < channel.m_HeaderAn.points ? channel.Samples[sample] : CodeRows::MissingData;
            ASSERT_EQ(row[i], code) << order.size() << " channels, channel " << i << ", sample " << sample;
        }
    }
}

TEST_P(CodeRowsOfASet, AreTheColumnsTurned)
{
    std::mt19937 random(1);
    for (size_t channels = 1; channels <= 41; ++channels) {
        ZuFileFormat segment;
        AddChannels(segment, channels, 1 + random() % 70, random);
        std::vector<unsigned int> order(channels);
        std::iota(order.rbegin(), order.rend(), 0U);
        CodeRows rows(channels, GetParam());
        rows.Enter(segment, order);
        ExpectRows(rows, segment, order, 0, segment.AnChannels.at(0)->m_HeaderAn.points);
    }
}

TEST_P(CodeRowsOfASet, HaveMissingDataWhereAChannelIsShorter)
{
    std::mt19937 random(2);
    ZuFileFormat segment;
    AddChannels(segment, 20, 50, random);
    AddChannels(segment, 13, 37, random);
    std::vector<unsigned int> order(33);
    std::iota(order.begin(), order.end(), 0U);
    CodeRows rows(33, GetParam());
    rows.Enter(segment, order);
    ExpectRows(rows, segment, order, 3, 60);
}

TEST_P(CodeRowsOfASet, GoOnAfterABlockOfRows)
{
    std::mt19937 random(3);
    ZuFileFormat segment;
    AddChannels(segment, 24, 6000, random); // a block has 5461 of such rows
    std::vector<unsigned int> order(24);
    std::iota(order.begin(), order.end(), 0U);
    CodeRows rows(24, GetParam());
    rows.Enter(segment, order);
    ExpectRows(rows, segment, order, 0, 6000);
}

INSTANTIATE_TEST_SUITE_P(EachSet, CodeRowsOfASet, testing::ValuesIn(AllTileTurners()));

} // namespace
