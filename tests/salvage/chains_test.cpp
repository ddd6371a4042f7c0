// Chains of which one file is damaged.
#include "scene.h"

#include <gtest/gtest.h>

namespace {

constexpr int Rows = 40; // of one file

class SalvagedChain : public testing::Test
{
protected:
    // The chain with one file cut before a section.
    std::vector<QByteArray> CutBefore(size_t file, size_t section)
    {
        std::vector<QByteArray> cut = files;
        cut[file].truncate(PlacesIn(files[file])[section].begin);
        return cut;
    }

    // What is saved of these files: the first channels of the first files.
    void Expect(const std::vector<QByteArray>& damaged, size_t channels, int saved)
    {
        const salvage::Examination found = scene.Examine(damaged);
        ASSERT_TRUE(found.plan);
        EXPECT_EQ(found.plan->choice.Channels(), channels);
        EXPECT_EQ(found.plan->loss.files, saved);
        EXPECT_EQ(found.plan->loss.lostFiles.size(), 3 - saved);
        Columns expected = FirstRows(scene.Convert(files), Rows * saved);
        const std::vector<Place> places = PlacesIn(files.front());
        for (size_t i = channels; i < places.size(); ++i)
            expected.remove(places[i].column);
        EXPECT_EQ(Difference(scene.Salvage(damaged), expected), QStringList());
    }

    Scene scene;
    const std::vector<QByteArray> files = StationFiles(true, 3);
};

} // namespace

TEST_F(SalvagedChain, KeepsAllFilesIfOneLacksItsLastChannel)
{
    for (size_t file = 0; file < 3; ++file)
        Expect(CutBefore(file, 95), 95, 3);
}

TEST_F(SalvagedChain, KeepsWhatIsMoreInChannelsTimesTime)
{
    Expect(CutBefore(0, 40), 40, 3);
    Expect(CutBefore(1, 40), 40, 3); // 120 against 96 of the first file
    Expect(CutBefore(1, 33), 33, 3); // 99
    Expect(CutBefore(2, 65), 65, 3); // 195 against 192 of two files
    Expect(CutBefore(2, 64), 64, 3); // 192: of equal ones the longer
    Expect(CutBefore(2, 63), 96, 2);
}

TEST_F(SalvagedChain, EndsBeforeAFileWithoutAnyDiscreteChannel)
{
    Expect(CutBefore(0, 16), 16, 1); // the library does not join such files
    Expect(CutBefore(1, 32), 96, 1);
    Expect(CutBefore(2, 32), 96, 2);
}

TEST_F(SalvagedChain, EndsBeforeAFileWithoutAHeader)
{
    std::vector<QByteArray> damaged = files;
    damaged[2].truncate(100);
    Expect(damaged, 96, 2);
    EXPECT_FALSE(scene.Examine(damaged).plan->loss.LosesChannels());
    damaged[1] = "garbage";
    Expect(damaged, 96, 1);
    damaged[0].truncate(262);
    EXPECT_TRUE(scene.Examine(damaged).isDamaged);
    EXPECT_FALSE(scene.Examine(damaged).plan);
}

TEST_F(SalvagedChain, NamesWhatIsLostByAFileThatIsWhole)
{
    const salvage::Loss loss = scene.Examine(CutBefore(0, 94)).plan->loss;
    const std::vector<Place> places = PlacesIn(files.front());
    EXPECT_EQ(loss.lost, QStringList({places[94].name, places[95].name}));
    EXPECT_EQ(loss.nameless, 0U);
    EXPECT_EQ(salvage::TextOf(loss), "32 of 32 analog, 62 of 64 discrete channels");
}

TEST_F(SalvagedChain, IsNotContinuedByAFileOfAnotherRecorder)
{
    std::vector<QByteArray> damaged = CutBefore(0, 95);
    damaged[1][160] = 'X'; // in the identity
    Expect(damaged, 95, 1);
}

TEST_F(SalvagedChain, LeavesOutChannelsThatHaveOtherNamesInAnotherFile)
{
    std::vector<QByteArray> damaged = CutBefore(0, 95);
    damaged[1][PlacesIn(files[1])[94].begin + 4] = 'X';
    Expect(damaged, 94, 3);
}
