#include "recording/samplememory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

TEST(SampleMemory, IsNotForFewSamples)
{
    zu::SampleMemory memory;
    EXPECT_EQ(memory.Take(1), nullptr);
    EXPECT_EQ(memory.Take(65535 - 32), nullptr);
}

TEST(SampleMemory, GivesRoomThatNoOtherChannelHas)
{
    zu::SampleMemory memory;
    std::vector<quint16*> places;
    const std::vector<size_t> sizes = {65536, 100001, 20000000, 3000000, 3000000, 9000000, 65537};
    for (size_t i = 0; i < sizes.size(); ++i) {
        places.push_back(memory.Take(sizes[i]));
        ASSERT_NE(places[i], nullptr);
        places[i][0] = static_cast<quint16>(i);
        places[i][sizes[i] - 1] = static_cast<quint16>(i);
    }
    for (size_t i = 0; i < sizes.size(); ++i) {
        EXPECT_EQ(places[i][0], i);
        EXPECT_EQ(places[i][sizes[i] - 1], i);
    }
}
