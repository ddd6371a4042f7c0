// The decoder of compressed samples: areas that are bad, or odd but good.
#include "expansion.h"

#include "recorderfile/compress.h"

#include <gtest/gtest.h>

using recorderfile::CompressedArea;

namespace {

using Codes = std::vector<int16_t>;

QByteArray Hex(const char* hex)
{
    return QByteArray::fromHex(hex);
}

bool CanExpandTo(const QByteArray& area, size_t points)
{
    return zu::CanExpandTo(
        {reinterpret_cast<const unsigned char*>(area.constData()), static_cast<size_t>(area.size())}, points);
}

} // namespace

TEST(BadArea, ShorterThanItsHead)
{
    for (int size = 0; size < 6; ++size) {
        EXPECT_FALSE(Expand(QByteArray(size, '\0'), 0).good) << size;
        EXPECT_FALSE(CanExpandTo(QByteArray(size, '\0'), 0)) << size;
    }
    EXPECT_TRUE(Expand(QByteArray(6, '\0'), 0).good);
}

TEST(BadArea, FirstBlockBeyondTheArea)
{
    const QByteArray area = CompressedArea(6, 3, {1, 2, 3}).Bytes();
    EXPECT_TRUE(Expand(area, 3).good);
    EXPECT_FALSE(Expand(area.left(area.size() - 1), 3).good);
    EXPECT_FALSE(Expand(area.left(6), 3).good);
    EXPECT_FALSE(CanExpandTo(area.left(area.size() - 1), 3));
    EXPECT_FALSE(Expand(CompressedArea(2, 65535, {1}).Bytes(), 70000).good);
}

TEST(BadArea, FirstBlockBeyondThePointsWritesNothing)
{
    const Expansion expansion = Expand(CompressedArea(6, 3, {1, 2, 3}).Bytes(), 2);
    EXPECT_FALSE(expansion.good);
    EXPECT_EQ(expansion.samples, Codes(2, filler));
    EXPECT_FALSE(CanExpandTo(CompressedArea(6, 3, {1, 2, 3}).Bytes(), 2));
}

TEST(BadArea, EndsWhereAControlByteBelongs)
{
    const Expansion afterFirst = Expand(CompressedArea(8, 2, {5, 6}).Bytes(), 4);
    EXPECT_FALSE(afterFirst.good);
    EXPECT_EQ(afterFirst.samples, (Codes{5, 6, filler, filler}));
    const Expansion afterGroup = Expand(CompressedArea(14, 2, {5, 6}).Group(0, "").Bytes(), 7);
    EXPECT_FALSE(afterGroup.good);
    EXPECT_EQ(afterGroup.samples, (Codes{5, 6, 5, 6, 5, 6, filler}));
}

TEST(BadArea, TotalIsNotTheSizeOfTheSamples)
{
    for (const uint32_t total : {0u, 2u, 6u, 7u, 9u, 10u, 0x80000008u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(Expand(CompressedArea(total, 2, {5, 6}).Group(0, "").Bytes(), 4).good) << total;
        EXPECT_FALSE(Expand(CompressedArea(total, 2, {5, 6}).Group(7, "ab").Bytes(), 4).good) << total;
        EXPECT_FALSE(Expand(CompressedArea(total, 4, {5, 6, 7, 8}).Bytes(), 4).good) << total;
    }
}

TEST(BadArea, CopyStopsAtTheRoomAndCountsWhatItCopied)
{
    for (const uint32_t total : {12u, 100u, 0xFFFFFFFFu}) {
        const Expansion expansion = Expand(CompressedArea(total, 3, {5, 6, 7}).Group(0, "").Bytes(), 5);
        EXPECT_FALSE(expansion.good) << total;
        EXPECT_EQ(expansion.samples, (Codes{5, 6, 7, 5, 6})) << total;
    }
    EXPECT_TRUE(Expand(CompressedArea(10, 3, {5, 6, 7}).Group(0, "").Bytes(), 5).good);
}

TEST(BadArea, CopiesStopAtATotalThatIsTooSmall)
{
    const Expansion expansion =
        Expand(CompressedArea(6, 2, {5, 6}).Group(0, "").Group(0, "").Group(0, "").Bytes(), 8);
    EXPECT_FALSE(expansion.good);
    EXPECT_EQ(expansion.samples, (Codes{5, 6, 5, filler, filler, filler, filler, filler}));
}

TEST(BadArea, TotalThatIsPassedEndsTheDecoding)
{
    const Expansion expansion = Expand(CompressedArea(2, 2, {5, 6}).Group(0, "").Bytes(), 6);
    EXPECT_FALSE(expansion.good);
    EXPECT_EQ(expansion.samples, (Codes{5, 6, filler, filler, filler, filler}));
}

TEST(BadArea, OddTotalCopiesHalfASample)
{
    const Expansion expansion = Expand(CompressedArea(7, 2, {0x0102, 0x0304}).Group(0, "").Bytes(), 4);
    EXPECT_FALSE(expansion.good);
    EXPECT_EQ(expansion.samples, (Codes{0x0102, 0x0304, 0x0102, (filler & ~0xFF) | 0x04}));
}

TEST(BadArea, ItemBeyondTheArea)
{
    // The second item of 9 bits has only 7 of them.
    EXPECT_FALSE(Expand(CompressedArea(8, 2, {5, 6}).Group(8, Hex("0102")).Bytes(), 4).good);
    // Half a word.
    EXPECT_FALSE(Expand(CompressedArea(8, 2, {5, 6}).Group(15, Hex("010002")).Bytes(), 4).good);
    // The third item of 3 bits has only 2 of them, and would be the last of the channel.
    EXPECT_FALSE(Expand(CompressedArea(14, 4, {5, 6, 7, 8}).Group(2, Hex("00")).Bytes(), 7).good);
    EXPECT_TRUE(Expand(CompressedArea(12, 4, {5, 6, 7, 8}).Group(2, Hex("00")).Bytes(), 6).good);
}

TEST(BadArea, BlocksWithoutSamplesComeToNoEnd)
{
    for (const char* controls : {"00", "77", "ff", "0000000000"})
        EXPECT_FALSE(Expand(CompressedArea(2, 0, {}).Raw(Hex(controls)).Bytes(), 1).good) << controls;
}

TEST(OddArea, EndOfTheAreaBetweenItemsSkipsTheRestOfTheBlock)
{
    // Only two of four items are there; the other two positions read as 0, but do not count.
    const QByteArray items = Hex("0101");
    const Expansion counted = Expand(CompressedArea(12, 4, {5, 6, 7, 8}).Group(7, items).Bytes(), 8);
    EXPECT_TRUE(counted.good);
    EXPECT_EQ(counted.samples, (Codes{5, 6, 7, 8, 4, 5, 0, 0}));
    const Expansion all = Expand(CompressedArea(16, 4, {5, 6, 7, 8}).Group(7, items).Bytes(), 8);
    EXPECT_FALSE(all.good);
    EXPECT_EQ(all.samples, (Codes{5, 6, 7, 8, 4, 5, 0, 0}));
}

TEST(OddArea, BlockWithoutAnyDataIsSkippedAndReadsAsZero)
{
    const Expansion both = Expand(CompressedArea(4, 2, {5, 6}).Raw("\x77").Bytes(), 6);
    EXPECT_TRUE(both.good);
    EXPECT_EQ(both.samples, (Codes{5, 6, 0, 0, 0, 0}));
    const Expansion cut = Expand(CompressedArea(4, 2, {5, 6}).Raw("\x01").Bytes(), 3);
    EXPECT_TRUE(cut.good);
    EXPECT_EQ(cut.samples, (Codes{5, 6, 0}));
}

TEST(OddArea, HalfASampleThatIsSkippedKeepsItsByte)
{
    // The copy gives three bytes of four; the block after it has no data.
    const Expansion expansion = Expand(CompressedArea(7, 2, {0x0102, 0x0304}).Raw("\x70").Bytes(), 5);
    EXPECT_TRUE(expansion.good);
    EXPECT_EQ(expansion.samples, (Codes{0x0102, 0x0304, 0x0102, 0x0004, 0}));
    const Expansion nothingElse = Expand(CompressedArea(5, 2, {0x0102, 0x0304}).Raw("\xf0").Bytes(), 3);
    EXPECT_TRUE(nothingElse.good);
    EXPECT_EQ(nothingElse.samples, (Codes{0x0102, 0x0304, 0x0002}));
}

TEST(OddArea, CopyAfterASkippedBlockCopiesItsZeros)
{
    const Expansion expansion = Expand(CompressedArea(8, 2, {5, 6}).Raw("\x07").Bytes(), 6);
    EXPECT_TRUE(expansion.good);
    EXPECT_EQ(expansion.samples, (Codes{5, 6, 0, 0, 0, 0}));
}

TEST(DecoderLimits, NothingIsWrittenBeyondThePoints)
{
    const QByteArray items =
        CompressedArea(200, 8, Codes(8, 1)).Group(1, "ab", 15, QByteArray(16, 'x')).Bytes();
    const QByteArray copies = CompressedArea(200, 8, Codes(8, 1)).Group(0, "").Bytes();
    const QByteArray skipped = CompressedArea(16, 8, Codes(8, 1)).Group(7, "").Bytes();
    for (const QByteArray& area : {items, copies, skipped})
        for (size_t points = 1; points <= 24; ++points) {
            Codes samples(64, filler);
            zu::ExpandSamples(
                {reinterpret_cast<const unsigned char*>(area.constData()), static_cast<size_t>(area.size())},
                samples.data(), points);
            const Codes after(samples.begin() + static_cast<std::ptrdiff_t>(points), samples.end());
            EXPECT_EQ(after, Codes(after.size(), filler)) << points;
        }
}

TEST(DecoderLimits, EveryByteMayBeAControlByteOfTwoBlocks)
{
    const QByteArray area = CompressedArea(0, 10, Codes(10)).Raw("xyz").Bytes();
    EXPECT_TRUE(CanExpandTo(area, 10 + 3 * 2 * 10));
    EXPECT_FALSE(CanExpandTo(area, 10 + 3 * 2 * 10 + 1));
    EXPECT_TRUE(CanExpandTo(area, 10));
    EXPECT_FALSE(CanExpandTo(area, 9));
}

TEST(DecoderLimits, ReachIsComputedIn64Bits)
{
    const QByteArray area = CompressedArea(0, 65535, Codes(65535)).Raw(QByteArray(40000, '\0')).Bytes();
    EXPECT_TRUE(CanExpandTo(area, 0xFFFFFFFF));
    EXPECT_FALSE(CanExpandTo(area, size_t{65535} * 80001 + 1));
}
