#include "recorderfile/compress.h"
#include "support/slowdecoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using recorderfile::CompressedArea;
using recorderfile::CompressSamples;
using recorderfile::CompressSamplesWithWidth;
using recorderfile::PackItems;
using recorderfile::SmallestWidthCode;

namespace {

using Samples = std::vector<int16_t>;

Samples RandomSamples(size_t count, int amplitude, uint32_t seed)
{
    std::mt19937 random(seed);
    Samples samples;
    while (samples.size() < count)
        samples.push_back(static_cast<int16_t>(
            static_cast<int>(random() % (2u * static_cast<uint32_t>(amplitude) + 1u)) - amplitude));
    return samples;
}

Samples SmoothSamples(size_t count)
{
    Samples samples;
    for (size_t i = 0; i < count; ++i)
        samples.push_back(
            static_cast<int16_t>(std::lround(20000 * std::sin(0.131 * static_cast<double>(i)))));
    return samples;
}

Samples EdgeSamples(size_t count)
{
    const int16_t edges[] = {-32768, 32767, 0, -1, 32767, -32768, 1, -32768};
    Samples samples;
    for (size_t i = 0; i < count; ++i)
        samples.push_back(edges[i % 8]);
    return samples;
}

void ExpectRoundTrip(const Samples& samples, uint16_t blockSamples)
{
    const auto decoded =
        DecodeSlowly(CompressSamples(samples, blockSamples), static_cast<uint32_t>(samples.size()));
    ASSERT_TRUE(decoded) << samples.size() << " samples in blocks of " << blockSamples;
    EXPECT_EQ(*decoded, samples) << samples.size() << " samples in blocks of " << blockSamples;
}

} // namespace

TEST(Compression, RoundTripsAtEveryBlockSizeAndLength)
{
    for (size_t count = 1; count <= 40; ++count)
        for (uint16_t blockSamples = 1; blockSamples <= count; ++blockSamples) {
            ExpectRoundTrip(RandomSamples(count, 3, 1), blockSamples);
            ExpectRoundTrip(RandomSamples(count, 32767, 2), blockSamples);
            ExpectRoundTrip(SmoothSamples(count), blockSamples);
            ExpectRoundTrip(EdgeSamples(count), blockSamples);
            ExpectRoundTrip(Samples(count, -7), blockSamples);
        }
}

TEST(Compression, RoundTripsLongSignalsInCommonBlockSizes)
{
    for (const uint16_t blockSamples : std::initializer_list<uint16_t>{1, 7, 16, 32, 48, 1000, 4801, 5000}) {
        ExpectRoundTrip(SmoothSamples(4801), blockSamples);
        ExpectRoundTrip(RandomSamples(4801, 200, 3), blockSamples);
        ExpectRoundTrip(EdgeSamples(4801), blockSamples);
    }
}

TEST(Compression, RoundTripsEveryForcedWidthWithCutLastBlock)
{
    for (int widthCode = 1; widthCode <= 15; ++widthCode) {
        const int largestStep = widthCode == 15 ? 32767 : (1 << widthCode) - 1;
        const Samples samples = RandomSamples(5 * 16 + 11, largestStep / 2, 4);
        const QByteArray area = CompressSamplesWithWidth(samples, 16, widthCode);
        ASSERT_FALSE(area.isEmpty()) << widthCode;
        EXPECT_EQ(static_cast<uint8_t>(area[6 + 32]), widthCode | widthCode << 4);
        const auto decoded = DecodeSlowly(area, static_cast<uint32_t>(samples.size()));
        ASSERT_TRUE(decoded) << widthCode;
        EXPECT_EQ(*decoded, samples) << widthCode;
    }
}

TEST(Compression, ForcedWidthGivesNothingIfADifferenceDoesNotFit)
{
    EXPECT_TRUE(CompressSamplesWithWidth({0, 4}, 1, 1).isEmpty());
    EXPECT_TRUE(CompressSamplesWithWidth({0, 1}, 1, 0).isEmpty());
    EXPECT_FALSE(CompressSamplesWithWidth({5, 5}, 1, 0).isEmpty());
    EXPECT_FALSE(CompressSamplesWithWidth({0, 4}, 1, 2).isEmpty()); // the item is -4
    EXPECT_TRUE(CompressSamplesWithWidth({4, 0}, 1, 2).isEmpty());  // the item is 4
}

TEST(Compression, EveryWidthCodeIsTheSmallestThatHoldsTheItem)
{
    EXPECT_EQ(SmallestWidthCode({0, 0}), 0);
    EXPECT_EQ(SmallestWidthCode({1}), 1);
    EXPECT_EQ(SmallestWidthCode({-2}), 1);
    for (int widthCode = 1; widthCode <= 14; ++widthCode) {
        EXPECT_EQ(SmallestWidthCode({static_cast<int16_t>((1 << widthCode) - 1)}), widthCode);
        EXPECT_EQ(SmallestWidthCode({static_cast<int16_t>(-(1 << widthCode))}), widthCode);
        EXPECT_EQ(SmallestWidthCode({static_cast<int16_t>(-(1 << widthCode) - 1)}), widthCode + 1);
    }
    EXPECT_EQ(SmallestWidthCode({-32768}), 15);
}

TEST(Compression, PacksTwoBitItemsFromTheLowestBitUp)
{
    // +1 is 01, -2 is 10, -1 is 11, 0 is 00, the next +1 opens a second byte.
    EXPECT_EQ(PackItems({1, -2, -1, 0, 1}, 1), QByteArray::fromHex("3901"));
}

TEST(Compression, PacksItemsAcrossByteBoundaries)
{
    EXPECT_EQ(PackItems({1, 1}, 4), QByteArray::fromHex("2100"));         // five bits an item
    EXPECT_EQ(PackItems({-1, 0}, 8), QByteArray::fromHex("ff0100"));      // nine bits an item
    EXPECT_EQ(PackItems({-1, 2}, 7), QByteArray::fromHex("ff02"));        // a byte an item
    EXPECT_EQ(PackItems({-2, 258}, 15), QByteArray::fromHex("feff0201")); // a word an item
}

TEST(Compression, AreaStartsWithTotalBlockSizeAndFirstBlock)
{
    // Block two repeats the first (width 0), block three is 1 lower and then 1 higher (items 1 and -1).
    EXPECT_EQ(CompressSamples({100, -2, 100, -2, 99, -1}, 2), QByteArray::fromHex("0c000000"
                                                                                  "0200"
                                                                                  "6400feff"
                                                                                  "10"
                                                                                  "0d"));
}

TEST(Compression, DifferencesWrapAroundAtSixteenBits)
{
    // -32768 - 32767 is +1 in 16 bits, so one item of width 1 is enough.
    EXPECT_EQ(CompressSamples({-32768, 32767}, 1), QByteArray::fromHex("04000000"
                                                                       "0100"
                                                                       "0080"
                                                                       "01"
                                                                       "01"));
}

TEST(Compression, BlockSizeIsCutToTheNumberOfSamples)
{
    EXPECT_EQ(CompressSamples({1, 2, 3}, 32), QByteArray::fromHex("060000000300010002000300"));
    EXPECT_EQ(CompressSamples({1}, 0), QByteArray::fromHex("0200000001000100"));
}

TEST(Compression, ComposerTakesAnything)
{
    const QByteArray area =
        CompressedArea(7, 500, {1}).Group(3, QByteArray::fromHex("aa"), 12).Raw("x").Bytes();
    EXPECT_EQ(area, QByteArray::fromHex("07000000f4010100c3aa78"));
}
