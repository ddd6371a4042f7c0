// The item decoders for each instruction set of this machine against items taken out bit by bit.
#include "decodertables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

namespace {

int16_t SlowItem(const std::vector<unsigned char>& packed, size_t index, unsigned bits)
{
    if (bits == 0)
        return 0;
    int value = 0;
    for (unsigned i = 0; i < bits; ++i) {
        const size_t bit = index * bits + i;
        value |= (packed[bit / 8] >> (bit % 8) & 1) << i;
    }
    return static_cast<int16_t>(value >= 1 << (bits - 1) ? value - (1 << bits) : value);
}

// Decodes count random items of every width, with spare bytes after them, and compares.
void ExpectSameItems(const zu::ItemDecoderTable& decoders, size_t count, size_t spare)
{
    std::mt19937 random(static_cast<unsigned>(count * 100 + spare));
    for (unsigned width = 0; width <= 15; ++width) {
        const unsigned bits = width == 0 ? 0 : width + 1;
        std::vector<unsigned char> packed((count * bits + 7) / 8 + spare);
        for (unsigned char& byte : packed)
            byte = static_cast<unsigned char>(random());
        std::vector<int16_t> before(count);
        for (int16_t& sample : before)
            sample = static_cast<int16_t>(random());
        // Memory of exactly the size lets the sanitizer see a step beyond it.
        const std::unique_ptr<int16_t[]> out(new int16_t[count]);
        decoders[width](packed.data(), packed.data() + packed.size(), count, before.data(), out.get());
        for (size_t i = 0; i < count; ++i)
            ASSERT_EQ(out[i], static_cast<int16_t>(before[i] - SlowItem(packed, i, bits)))
                << "width " << width << ", item " << i << " of " << count << ", " << spare << " spare bytes";
    }
}

void ExpectSameItemsOfAllSizes(const zu::ItemDecoderTable& decoders)
{
    for (size_t count = 1; count <= 70; ++count) {
        for (const size_t spare : {0U, 1U, 2U, 3U, 4U, 8U, 15U, 16U, 17U, 40U})
            ExpectSameItems(decoders, count, spare);
    }
    ExpectSameItems(decoders, 65535, 0);
}

class ItemDecodersOfASet : public testing::TestWithParam<const zu::ItemDecoderTable*>
{};

TEST_P(ItemDecodersOfASet, GiveTheItemsBitByBit)
{
    ExpectSameItemsOfAllSizes(*GetParam());
}

// Two blocks of one width, decoded together after the block before them.
void ExpectJoinedBlocks(const zu::ItemDecoderTable& decoders, size_t block)
{
    std::mt19937 random(static_cast<unsigned>(block));
    for (unsigned width = 1; width <= 15; ++width) {
        const unsigned bits = width + 1;
        std::vector<unsigned char> packed(2 * block * bits / 8);
        for (unsigned char& byte : packed)
            byte = static_cast<unsigned char>(random());
        std::vector<int16_t> samples(3 * block);
        for (size_t i = 0; i < block; ++i)
            samples[i] = static_cast<int16_t>(random());
        decoders[width](packed.data(), packed.data() + packed.size(), 2 * block, samples.data(),
                        samples.data() + block);
        for (size_t i = block; i < samples.size(); ++i)
            ASSERT_EQ(samples[i],
                      static_cast<int16_t>(samples[i - block] - SlowItem(packed, i - block, bits)))
                << "width " << width << ", sample " << i << " of blocks of " << block;
    }
}

TEST_P(ItemDecodersOfASet, TakeTheirOwnSamplesAsThoseBefore)
{
    for (size_t block = zu::LeastOverlap; block <= 10 * zu::LeastOverlap; block += zu::LeastOverlap)
        ExpectJoinedBlocks(*GetParam(), block);
}

INSTANTIATE_TEST_SUITE_P(EachSet, ItemDecodersOfASet, testing::ValuesIn(AllItemDecoders()));

TEST(ItemDecoders, ArePortableForAProcessorWithoutVectors)
{
    EXPECT_EQ(&zu::ItemDecodersFor(0), &zu::PortableItemDecoders);
}

TEST(ItemDecoders, DifferForEachInstructionSet)
{
    std::vector<const zu::ItemDecoderTable*> tables = AllItemDecoders();
    EXPECT_GT(tables.size(), 1U);
    std::sort(tables.begin(), tables.end());
    EXPECT_EQ(std::unique(tables.begin(), tables.end()), tables.end());
}

TEST(ItemDecoders, AreThoseForAllInstructionSetsTogether)
{
    EXPECT_EQ(&zu::ItemDecoders(), &zu::ItemDecodersFor(zu::SupportedVectorTargets()));
}

} // namespace
