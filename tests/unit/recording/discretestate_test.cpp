// The state of a discrete channel at a time, and when it can change next.
#include "support/loadedfile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace recorderfile;

namespace {

using Changes = std::vector<Change>;
constexpr quint64 noChange = DiChannelData::NoChange;

// A file of one discrete channel; -> reaches the channel.
class Discrete
{
public:
    explicit Discrete(const Changes& changes, uint8_t inverted = 0)
        : file(Recording().Add(DiscreteChannel{"d", inverted, changes}))
    {}
    DiChannelData* operator->() { return &file.Di(); }

private:
    LoadedFile file;
};

// The state at time, found by going through all records, which must be in rising order.
bool StateAt(const Changes& changes, uint32_t time)
{
    if (changes.empty())
        return false;
    size_t last = 0;
    for (size_t i = 0; i < changes.size(); ++i)
        if (changes[i].time <= time)
            last = i;
    return changes[last].value != 0;
}

enum class Order { Rising, Unsorted };

void PrintTo(Order order, std::ostream* out)
{
    *out << (order == Order::Rising ? "Rising" : "Unsorted");
}

// Records within the times 0 to 99, some of them equal.
Changes RandomChanges(std::mt19937& random, Order order)
{
    Changes changes(random() % 12);
    for (Change& change : changes)
        change = {static_cast<uint32_t>(random() % 100), static_cast<uint8_t>(random() % 2)};
    if (order == Order::Rising)
        std::stable_sort(changes.begin(), changes.end(),
                         [](const Change& a, const Change& b) { return a.time < b.time; });
    return changes;
}

std::string Text(const Changes& changes)
{
    std::string text;
    for (const Change& change : changes)
        text += std::to_string(change.time) + ':' + std::to_string(change.value) + ' ';
    return text;
}

} // namespace

TEST(DiscreteState, IsOffWithoutRecordsEvenInverted)
{
    Discrete channel({}, 1);
    for (const unsigned int time : {0u, 1u, 0xFFFFFFFFu})
        EXPECT_FALSE(channel->GetVal(time));
    EXPECT_EQ(channel->CurrentIndex, 0u);
}

TEST(DiscreteState, OfOneRecordIsTheSameAtEveryTime)
{
    Discrete inverted({{100, 5}}, 1);
    Discrete straight({{100, 5}}, 0);
    for (const unsigned int time : {0u, 99u, 100u, 101u, 0xFFFFFFFFu, 0u}) {
        EXPECT_FALSE(inverted->GetVal(time)) << time;
        EXPECT_TRUE(straight->GetVal(time)) << time;
    }
}

TEST(DiscreteState, ChangesAtTheRecordsTimeAndGoesBackWithTheTime)
{
    Discrete channel({{100, 0}, {200, 1}});
    EXPECT_FALSE(channel->GetVal(0));
    EXPECT_FALSE(channel->GetVal(100));
    EXPECT_FALSE(channel->GetVal(199));
    EXPECT_TRUE(channel->GetVal(200));
    EXPECT_EQ(channel->CurrentIndex, 1u);
    EXPECT_EQ(channel->CurrentValue, 1);
    EXPECT_TRUE(channel->GetVal(100000));
    EXPECT_FALSE(channel->GetVal(150));
    EXPECT_EQ(channel->CurrentIndex, 0u);
    EXPECT_EQ(channel->CurrentValue, 0);
}

TEST(DiscreteState, BeforeTheFirstRecordIsTheFirstRecordsState)
{
    Discrete channel({{100, 1}, {200, 0}});
    EXPECT_TRUE(channel->GetVal(0));
    EXPECT_FALSE(channel->GetVal(300));
    EXPECT_TRUE(channel->GetVal(50));
    EXPECT_EQ(channel->CurrentIndex, 0u);
}

TEST(DiscreteState, SkipsToTheLastRecordThatIsNotLater)
{
    Discrete channel({{10, 0}, {20, 1}, {20, 0}, {20, 1}, {30, 0}, {40, 1}});
    EXPECT_TRUE(channel->GetVal(20));
    EXPECT_EQ(channel->CurrentIndex, 3u);
    EXPECT_FALSE(channel->GetVal(39));
    EXPECT_EQ(channel->CurrentIndex, 4u);
    EXPECT_FALSE(channel->GetVal(10));
    EXPECT_TRUE(channel->GetVal(0xFFFFFFFF));
    EXPECT_EQ(channel->CurrentIndex, 5u);
}

TEST(DiscreteState, AppliesTheInversionToEveryRecord)
{
    Discrete channel({{0, 0}, {10, 7}, {20, 0}}, 9);
    EXPECT_TRUE(channel->GetVal(0));
    EXPECT_FALSE(channel->GetVal(10));
    EXPECT_TRUE(channel->GetVal(20));
    EXPECT_FALSE(channel->GetVal(19));
}

TEST(DiscreteState, CursorAfterTheRecordsKeepsTheValue)
{
    Discrete channel({{100, 0}});
    channel->CurrentIndex = 1;
    channel->CurrentValue = 1;
    EXPECT_TRUE(channel->GetVal(0));
    EXPECT_EQ(channel->CurrentIndex, 1u);
}

TEST(DiscreteState, WalkStopsAtTheFirstLaterRecordOfUnsortedTimes)
{
    Discrete channel({{10, 0}, {50, 1}, {20, 0}});
    EXPECT_FALSE(channel->GetVal(30));
    EXPECT_EQ(channel->CurrentIndex, 0u);
    EXPECT_FALSE(channel->GetVal(50));
    EXPECT_EQ(channel->CurrentIndex, 2u);
}

TEST(DiscreteState, AgreesWithASearchThroughAllRecordsAtTimesInAnyOrder)
{
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        const Changes changes = RandomChanges(random, Order::Rising);
        Discrete channel(changes);
        for (int i = 0; i < 100; ++i) {
            const auto time = static_cast<uint32_t>(random() % 110);
            ASSERT_EQ(channel->GetVal(time), StateAt(changes, time)) << time << " of " << Text(changes);
        }
    }
}

TEST(DiscreteNextChange, IsTheNextRecordsTime)
{
    Discrete channel({{100, 0}, {200, 1}, {200, 0}, {0xFFFFFFFF, 1}});
    channel->GetVal(0);
    EXPECT_EQ(channel->NextChange(0), 100u);
    channel->GetVal(100);
    EXPECT_EQ(channel->NextChange(100), 200u);
    channel->GetVal(199);
    EXPECT_EQ(channel->NextChange(199), 200u);
    channel->GetVal(200);
    EXPECT_EQ(channel->NextChange(200), 0xFFFFFFFFu);
    channel->GetVal(0xFFFFFFFF);
    EXPECT_EQ(channel->NextChange(0xFFFFFFFF), noChange);
}

TEST(DiscreteNextChange, NeverComesWithoutRecords)
{
    Discrete channel({});
    channel->GetVal(5);
    EXPECT_EQ(channel->NextChange(5), noChange);
    EXPECT_GT(noChange, quint64(0xFFFFFFFF));
}

namespace {

class NextChangeOfOrder : public testing::TestWithParam<Order>
{};

} // namespace

TEST_P(NextChangeOfOrder, NoStateChangesBeforeIt)
{
    std::mt19937 random(2);
    for (int round = 0; round < 400; ++round) {
        const Changes changes = RandomChanges(random, GetParam());
        Discrete everyTime(changes);
        Discrete onlyAtChanges(changes);
        bool state = false;
        quint64 next = 0;
        for (unsigned int time = 0; time < 110; ++time) {
            if (time >= next) {
                state = onlyAtChanges->GetVal(time);
                next = onlyAtChanges->NextChange(time);
                ASSERT_GT(next, time) << Text(changes);
            }
            ASSERT_EQ(everyTime->GetVal(time), state) << time << " of " << Text(changes);
        }
        ASSERT_EQ(next, noChange) << Text(changes);
    }
}

TEST_P(NextChangeOfOrder, HoldsAlsoAfterTimesInAnyOrder)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        const Changes changes = RandomChanges(random, GetParam());
        Discrete channel(changes);
        for (int i = 0; i < 40; ++i) {
            const auto time = static_cast<uint32_t>(random() % 110);
            const bool state = channel->GetVal(time);
            const quint64 next = channel->NextChange(time);
            for (uint32_t later = time; later < std::min<quint64>(next, 110); ++later)
                ASSERT_EQ(channel->GetVal(later), state) << later << " of " << Text(changes);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Times, NextChangeOfOrder, testing::Values(Order::Rising, Order::Unsorted));
