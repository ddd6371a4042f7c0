// The decoder of compressed samples: good areas.
#include "expansion.h"

#include "recorderfile/compress.h"

#include <gtest/gtest.h>

using recorderfile::CompressedArea;
using recorderfile::CompressSamplesWithWidth;

namespace {

using Codes = std::vector<int16_t>;

void ExpectExpands(const QByteArray& area, const Codes& codes)
{
    const Expansion expansion = Expand(area, codes.size());
    EXPECT_TRUE(expansion.good);
    EXPECT_EQ(expansion.samples, codes);
}

QByteArray Hex(const char* hex)
{
    return QByteArray::fromHex(hex);
}

} // namespace

TEST(Decoder, FirstBlockMayBeTheWholeChannel)
{
    ExpectExpands(Hex("0600000003000100feff0300"), {1, -2, 3});
    ExpectExpands(CompressedArea(6, 3, {1, -2, 3}).Raw("ignored").Bytes(), {1, -2, 3});
}

TEST(Decoder, GroupIsAControlByteAndTwoBlocks)
{
    // Low nibble 7 subtracts 1 and -1, high nibble 15 subtracts 0x0102 and 3 from that.
    ExpectExpands(Hex("0c00000002000a00140077"
                      "01ff"
                      "0203"),
                  {10, 20, 9, 21, 7, 18});
    ExpectExpands(Hex("0c00000002000a001400f7"
                      "01ff"
                      "02010300"),
                  {10, 20, 9, 21, 9 - 0x0102, 18});
}

TEST(Decoder, EveryBlockRefersToTheBlockBeforeIt)
{
    const QByteArray one = Hex("01"); // subtracts 1 in a block of one sample
    ExpectExpands(
        CompressedArea(14, 1, {100}).Group(7, one, 7, one).Group(7, one, 0).Group(0, "", 7, one).Bytes(),
        {100, 99, 98, 97, 97, 97, 96});
}

TEST(Decoder, HighNibbleIsIgnoredIfTheLowBlockFinishesTheChannel)
{
    ExpectExpands(CompressedArea(8, 2, {5, 6}).Group(7, Hex("0102"), 15).Bytes(), {5, 6, 4, 4});
    ExpectExpands(CompressedArea(8, 2, {5, 6}).Group(0, "", 15).Bytes(), {5, 6, 5, 6});
    ExpectExpands(CompressedArea(8, 2, {5, 6}).Group(0, "", 15, "behind").Bytes(), {5, 6, 5, 6});
}

TEST(Decoder, WidthCodeOneHasAValueBitAndASignBit)
{
    // 01 is +1, 10 is -2, 11 is -1, 00 is 0, from the lowest bits up.
    ExpectExpands(CompressedArea(16, 4, {0, 0, 0, 0}).Group(1, Hex("39")).Bytes(), {0, 0, 0, 0, -1, 2, 1, 0});
}

TEST(Decoder, ItemsRunOnFromByteToByte)
{
    // Items of 3 bits: 3, -4, -1 across the first byte's end, 0, 2; then unused bits.
    // From bit 0: 110 001 111 000 010 x
    ExpectExpands(CompressedArea(20, 5, {0, 0, 0, 0, 0}).Group(2, Hex("e3a1")).Bytes(),
                  {0, 0, 0, 0, 0, -3, 4, 1, 0, -2});
}

TEST(Decoder, BlockStartsOnAByteBoundary)
{
    // One item of 2 bits per block; the other six bits of its byte are set and mean nothing.
    ExpectExpands(CompressedArea(6, 1, {7}).Group(1, Hex("fd"), 1, Hex("fe")).Bytes(), {7, 6, 8});
}

TEST(Decoder, SamplesWrapAroundAtSixteenBits)
{
    ExpectExpands(CompressedArea(8, 2, {32767, -32768}).Group(15, Hex("ffff0100")).Bytes(),
                  {32767, -32768, -32768, 32767});
    ExpectExpands(CompressedArea(8, 2, {0, -1}).Group(15, Hex("00800080")).Bytes(), {0, -1, -32768, 32767});
    ExpectExpands(CompressedArea(4, 1, {-32768}).Group(1, Hex("01")).Bytes(), {-32768, 32767});
}

TEST(Decoder, CopiesOfTheBlockBeforeEndWithTheTotal)
{
    ExpectExpands(CompressedArea(10, 2, {5, 6}).Group(0, "").Bytes(), {5, 6, 5, 6, 5});
    ExpectExpands(CompressedArea(10, 3, {5, 6, 7}).Group(0, "").Bytes(), {5, 6, 7, 5, 6});
}

TEST(Decoder, ItemsOfTheLastBlockEndWithThePoints)
{
    ExpectExpands(CompressedArea(10, 3, {5, 6, 7}).Group(7, Hex("0102")).Bytes(), {5, 6, 7, 4, 4});
    ExpectExpands(CompressedArea(10, 3, {5, 6, 7}).Group(7, Hex("010203")).Bytes(), {5, 6, 7, 4, 4});
    ExpectExpands(CompressedArea(10, 3, {5, 6, 7}).Group(1, Hex("05")).Bytes(), {5, 6, 7, 4, 5});
}

TEST(Decoder, BytesAfterTheLastSampleAreIgnored)
{
    ExpectExpands(CompressedArea(4, 1, {5}).Group(7, Hex("01")).Raw("and more").Bytes(), {5, 4});
}

namespace {

class DecoderWidth : public testing::TestWithParam<int>
{};

} // namespace

TEST_P(DecoderWidth, HoldsItsExtremeItems)
{
    const int most = (1 << GetParam()) - 1;
    const int least = -most - 1;
    const std::vector<int> items = {most, least, -1, 0, 1, least, most, most};
    CompressedArea area(32, 8, Codes(8, 100));
    Codes packed;
    Codes codes(8, 100);
    for (const int item : items) {
        packed.push_back(static_cast<int16_t>(item));
        codes.push_back(static_cast<int16_t>(100 - item));
    }
    area.Group(GetParam(), recorderfile::PackItems(packed, GetParam()));
    ExpectExpands(area.Bytes(), codes);
}

TEST_P(DecoderWidth, ExpandsWhatWasCompressedWithACutLastBlock)
{
    const int step = GetParam() == 15 ? 32767 : (1 << GetParam()) - 1;
    Codes codes;
    for (int i = 0; i < 5 * 16 + 11; ++i)
        codes.push_back(static_cast<int16_t>((i * 7919) % (step + 1)));
    const QByteArray area = CompressSamplesWithWidth(codes, 16, GetParam());
    ASSERT_FALSE(area.isEmpty());
    ExpectExpands(area, codes);
}

TEST_P(DecoderWidth, WorksInTheHighNibble)
{
    const Codes items = {1, 0, -1};
    CompressedArea area(18, 3, {10, 20, 30});
    area.Group(0, "", GetParam(), recorderfile::PackItems(items, GetParam()));
    ExpectExpands(area.Bytes(), {10, 20, 30, 10, 20, 30, 9, 20, 31});
}

INSTANTIATE_TEST_SUITE_P(Codes, DecoderWidth, testing::Range(1, 16));
