// Random dictionaries and recordings: the order against a slow second implementation of it.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>

namespace {

using Indexes = std::vector<unsigned int>;

class Random
{
public:
    explicit Random(unsigned int seed) : engine(seed) {}

    // 0 to limit - 1
    unsigned int Below(unsigned int limit) { return static_cast<unsigned int>(engine() % limit); }

private:
    std::mt19937 engine;
};

// A few names, so that they repeat within a dictionary and within a recording.
QString RandomName(Random& random)
{
    return QStringLiteral("W%1:%2").arg(random.Below(4)).arg(random.Below(5));
}

template <class Entry>
void FillRandomly(Random& random, std::vector<Entry*>& dictionary, quint32 Entry::* lastKey,
                  unsigned int rows)
{
    const unsigned int count = random.Below(12);
    for (unsigned int i = 0; i < count; ++i) {
        auto* entry = new Entry{};
        entry->FullName = RandomName(random);
        entry->EquipmentName = entry->FullName.section(QLatin1Char(':'), 0, 0);
        entry->SignalName = entry->FullName.section(QLatin1Char(':'), 1);
        entry->HasSortParams = random.Below(6) != 0;
        // Few different rows, the first and last ones among them.
        entry->VoltageLevel = random.Below(2) * 5 + random.Below(2) * 7;
        entry->EquipmentGroup = random.Below(2) * 7;
        entry->*lastKey = random.Below(3) * (rows - 1) / 2;
        dictionary.push_back(entry);
    }
}

// Indexes of the sorted entries: a stable sort by these keys.
template <class Entry>
Indexes SlowDictionaryOrder(const std::vector<Entry*>& dictionary, quint32 Entry::* lastKey)
{
    const auto firstAppearance = [&](const Entry& entry) {
        for (size_t i = 0; i < dictionary.size(); ++i) {
            const Entry& other = *dictionary[i];
            if (other.HasSortParams && other.VoltageLevel == entry.VoltageLevel &&
                other.EquipmentGroup == entry.EquipmentGroup && other.EquipmentName == entry.EquipmentName)
                return i;
        }
        return dictionary.size();
    };
    using Keys = std::tuple<int, quint32, size_t, quint32>;
    std::vector<std::pair<Keys, unsigned int>> keyed;
    for (unsigned int i = 0; i < dictionary.size(); ++i) {
        const Entry& entry = *dictionary[i];
        if (entry.HasSortParams)
            keyed.emplace_back(Keys{-static_cast<int>(entry.VoltageLevel), entry.EquipmentGroup,
                                    firstAppearance(entry), entry.*lastKey},
                               i);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    Indexes sorted;
    for (const auto& place : keyed)
        sorted.push_back(place.second);
    return sorted;
}

// The order that one recording leaves for the next.
struct SlowOrder
{
    Indexes order;
    Indexes found;
    size_t kept = 0;       // orders that stayed
    size_t incomplete = 0; // recordings that lacked a signal

    template <class Channel, class Entry>
    void Sort(const std::vector<Channel*>& channels, const std::vector<Entry*>& sorted)
    {
        if (channels.empty())
            return;
        if (Stays(channels, sorted)) {
            ++kept;
            return;
        }
        order.clear();
        found.clear();
        for (unsigned int i = 0; i < sorted.size(); ++i) {
            for (unsigned int j = 0; j < channels.size(); ++j) {
                if (channels[j]->Name == sorted[i]->FullName) {
                    order.push_back(j);
                    found.push_back(i);
                    break;
                }
            }
        }
        if (found.size() != sorted.size())
            ++incomplete;
        const Indexes known = order;
        for (unsigned int j = 0; j < channels.size(); ++j) {
            if (std::find(known.begin(), known.end(), j) == known.end())
                order.push_back(j);
        }
    }

    template <class Channel, class Entry>
    bool Stays(const std::vector<Channel*>& channels, const std::vector<Entry*>& sorted) const
    {
        if (channels.size() != order.size())
            return false;
        for (size_t i = 0; i < found.size(); ++i) {
            if (channels[i]->Name != sorted[found[i]]->FullName)
                return false;
        }
        return true;
    }
};

QStringList RandomNames(Random& random)
{
    QStringList names;
    const unsigned int count = random.Below(9);
    for (unsigned int i = 0; i < count; ++i)
        names << RandomName(random);
    return names;
}

// Sometimes the sorted names themselves, because only then can an order stay.
template <class Entry>
QStringList SortedOrRandomNames(Random& random, const std::vector<Entry*>& sorted)
{
    if (random.Below(3) != 0)
        return RandomNames(random);
    QStringList names;
    for (const Entry* entry : sorted)
        names << entry->FullName;
    if (random.Below(2) == 0)
        names << RandomName(random);
    return names;
}

// A re-sorter with a random dictionary, and what a series of recordings must leave in it.
class RandomDevice
{
public:
    explicit RandomDevice(unsigned int seed) : random(seed), resorter(&device)
    {
        FillRandomly(random, resorter.AnDictionary, &DictionaryZuCmtrAn::SignalGroup, 15);
        FillRandomly(random, resorter.DiDictionary, &DictionaryZuCmtrDi::DeviceGroup, 7);
        for (DictionaryZuCmtrDi* entry : resorter.DiDictionary)
            entry->StatusType = random.Below(20);
    }

    void CheckDictionaryOrder()
    {
        ASSERT_TRUE(resorter.PreResort());
        EXPECT_EQ(resorter.AnSorted,
                  SlowDictionaryOrder(resorter.AnDictionary, &DictionaryZuCmtrAn::SignalGroup));
        EXPECT_EQ(resorter.DiSorted,
                  SlowDictionaryOrder(resorter.DiDictionary, &DictionaryZuCmtrDi::DeviceGroup));
    }

    void CheckRecording()
    {
        NamedChannels recording(SortedOrRandomNames(random, resorter.AnResorted),
                                SortedOrRandomNames(random, resorter.DiResorted));
        ASSERT_TRUE(resorter.SortZuFile(&recording.File));
        analog.Sort(recording.File.AnChannels, resorter.AnResorted);
        discrete.Sort(recording.File.DiChannels, resorter.DiResorted);
        EXPECT_EQ(resorter.PrevFileAnIndexes, analog.order);
        EXPECT_EQ(resorter.PrevFileAnDictIndexes, analog.found);
        EXPECT_EQ(resorter.PrevFileAnMatched, analog.found.size());
        EXPECT_EQ(resorter.PrevFileDiIndexes, discrete.order);
        EXPECT_EQ(resorter.PrevFileDiDictIndexes, discrete.found);
        EXPECT_EQ(resorter.PrevFileDiMatched, discrete.found.size());
        EXPECT_EQ(device.LogMessages.size(), analog.incomplete);
    }

    size_t Kept() const { return analog.kept + discrete.kept; }

private:
    Random random;
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter;
    SlowOrder analog;
    SlowOrder discrete;
};

} // namespace

TEST(ChannelOrderModel, AgreesForRandomDictionariesAndRecordings)
{
    size_t kept = 0;
    for (unsigned int seed = 1; seed <= 2000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomDevice device(seed);
        device.CheckDictionaryOrder();
        for (int recording = 0; recording < 5; ++recording)
            device.CheckRecording();
        kept += device.Kept();
    }
    EXPECT_GT(kept, 100U) << "the recordings must make previous orders stay, too";
}
