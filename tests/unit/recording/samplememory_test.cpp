#include "recording/samplememory.h"

#include "allocations.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr qint64 LargeFile = 100000000;

} // namespace

TEST(SampleMemory, IsNotForFewSamples)
{
    zu::SampleMemory memory(LargeFile);
    EXPECT_EQ(memory.Take(1), nullptr);
    EXPECT_EQ(memory.Take(65535 - 32), nullptr);
    EXPECT_NE(memory.Take(65536), nullptr);
}

TEST(SampleMemory, IsNotForChannelsThatAreMostOfTheFile)
{
    zu::SampleMemory memory(LargeFile);
    EXPECT_EQ(memory.Take(20000000), nullptr);
    EXPECT_EQ(memory.Take(0x80000001U), nullptr);
    zu::SampleMemory small(300000);
    EXPECT_EQ(small.Take(100000), nullptr);
}

TEST(SampleMemory, AsksForNoMoreThanTheFileHas)
{
    const AllocationLimit allocations(5000000);
    zu::SampleMemory fits(5000000);
    EXPECT_NE(fits.Take(65536), nullptr);
    EXPECT_EQ(allocations.LargestRequest(), 5000000U);
    zu::SampleMemory refused(LargeFile);
    EXPECT_EQ(refused.Take(65536), nullptr);
}

TEST(SampleMemory, GivesRoomThatNoOtherChannelHas)
{
    zu::SampleMemory memory(LargeFile);
    const std::vector<size_t> sizes = {65536, 100001, 3000000, 3000000, 2000000, 4000000, 65537};
    std::vector<quint16*> places;
    for (size_t i = 0; i < sizes.size(); ++i) {
        places.push_back(memory.Take(sizes[i]));
        ASSERT_NE(places[i], nullptr) << i;
        places[i][0] = static_cast<quint16>(i);
        places[i][sizes[i] - 1] = static_cast<quint16>(i);
    }
    for (size_t i = 0; i < sizes.size(); ++i) {
        EXPECT_EQ(places[i][0], i);
        EXPECT_EQ(places[i][sizes[i] - 1], i);
    }
}
