// Recordings that are cut off, at places all over the file.
#include "scene.h"

#include <gtest/gtest.h>

#include <set>

namespace {

constexpr int SpreadCuts = 200;

// Every boundary of a section, the bytes beside it, and places spread over the file.
std::set<int> CutsOf(const QByteArray& file)
{
    std::set<int> cuts;
    for (const Place& place : PlacesIn(file))
        cuts.insert({place.begin - 1, place.begin, place.begin + 1});
    for (int i = 0; i < SpreadCuts; ++i)
        cuts.insert(static_cast<int>(qint64{file.size()} * i / SpreadCuts));
    cuts.insert(file.size() - 1);
    return cuts;
}

// The columns of the channels that end before the cut.
Columns Before(int cut, const QByteArray& file, const Columns& columns)
{
    Columns whole;
    for (const Place& place : PlacesIn(file)) {
        if (place.end <= cut)
            whole[place.column] = columns[place.column];
    }
    if (!whole.isEmpty())
        whole[QString()] = columns[QString()];
    return whole;
}

void ExpectWholeChannelsAtEachCut(bool compressed)
{
    Scene scene;
    const QByteArray file = StationFiles(compressed).front();
    const Columns all = scene.Convert({file});
    ASSERT_EQ(all.size(), 97);
    const std::set<int> cuts = CutsOf(file);
    ASSERT_GE(cuts.size(), 450U);
    const TestDirectory whole;
    QByteArray before; // the copy that was converted last
    for (const int cut : cuts) {
        const Columns expected = Before(cut, file, all);
        const QByteArray rest = file.left(cut);
        const salvage::Examination found = scene.Examine({rest});
        EXPECT_TRUE(found.isDamaged) << cut;
        ASSERT_EQ(found.plan.has_value(), !expected.isEmpty()) << cut;
        if (!found.plan)
            continue;
        const QByteArray copy =
            ReadBytes(salvage::Write(found.plan->segments, found.plan->choice, whole.Path()));
        if (copy != before) {
            EXPECT_EQ(Difference(scene.Salvage({rest}), expected), QStringList()) << cut;
        }
        EXPECT_EQ(found.plan->choice.Channels() + 1, static_cast<size_t>(expected.size())) << cut;
        before = copy;
    }
}

} // namespace

TEST(Cut, LeavesTheWholeChannelsOfACompressedRecording)
{
    ExpectWholeChannelsAtEachCut(true);
}

TEST(Cut, LeavesTheWholeChannelsOfAPlainRecording)
{
    ExpectWholeChannelsAtEachCut(false);
}

TEST(Cut, LeavesAWholeRecordingAlone)
{
    Scene scene;
    for (const bool compressed : {false, true}) {
        const salvage::Examination found = scene.Examine(StationFiles(compressed, 2));
        EXPECT_FALSE(found.isDamaged);
        EXPECT_FALSE(found.plan.has_value());
    }
}

TEST(Cut, OfTheLastBytesLosesOneChannel)
{
    Scene scene;
    const QByteArray file = StationFiles(true).front();
    const salvage::Loss loss = scene.Examine({file.left(file.size() - 1)}).plan->loss;
    EXPECT_EQ(salvage::TextOf(loss), "32 of 32 analog, 63 of 64 discrete channels");
    EXPECT_EQ(salvage::NotesOf(loss), QStringList("lost channels: '" + PlacesIn(file).back().name + "'"));
    const salvage::Loss more = scene.Examine({file.left(file.size() - 86 - 20)}).plan->loss;
    EXPECT_EQ(salvage::TextOf(more), "32 analog and 62 discrete of 96 channels");
    EXPECT_EQ(more.nameless, 2U - static_cast<size_t>(more.lost.size()));
}
