// The output order of a recording's channels, and how it is carried from one recording to the next.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

namespace {

using Indexes = std::vector<unsigned int>;

const char* const NotAllFound =
    "В исходном файле найдены не все сигналы с параметрами сортировки из файла конфигурации, файл inf "
    "недостоверен";

// Ua and Ub of W2 at 500 kV, then those of W1 at 110 kV; the breakers of both.
class ChannelOrder : public testing::Test
{
protected:
    ChannelOrder()
        : section(
              Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT VL_IND=1", "W1:Ub,V_L=110 E_G=L S_G=VT",
                            "W2:Ua,V_L=500 E_G=L S_G=VT VL_IND=25"}) +
              Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD", "W2:x,V_L=500 E_G=L D_G=RP S_T=FD VL_IND=9"}))
    {
        section.Device.LogMessages.clear();
    }

    void Sort(const QStringList& analog, const QStringList& discrete)
    {
        NamedChannels recording(analog, discrete);
        EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
    }

    const Indexes& An() const { return section.Resorter.PrevFileAnIndexes; }
    const Indexes& Di() const { return section.Resorter.PrevFileDiIndexes; }

    SortedDictionary section;
};

} // namespace

TEST_F(ChannelOrder, IsThatOfTheDictionaryThenThatOfTheFile)
{
    Sort({"Z:1", "W1:Ub", "W2:Ua", "A:2", "W1:Ua"}, {"Z:1", "W1:x", "A:2", "W2:x"});
    EXPECT_EQ(An(), (Indexes{2, 4, 1, 0, 3}));
    EXPECT_EQ(Di(), (Indexes{3, 1, 0, 2}));
    EXPECT_EQ(section.Resorter.PrevFileAnDictIndexes, (Indexes{0, 1, 2}));
    EXPECT_EQ(section.Resorter.PrevFileDiDictIndexes, (Indexes{0, 1}));
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 3U);
    EXPECT_EQ(section.Resorter.PrevFileDiMatched, 2U);
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST(ChannelOrderWithoutDictionary, IsThatOfTheFileWithoutAMessage)
{
    SortedDictionary section("");
    NamedChannels recording({"B:1", "A:1"}, {"B:x", "A:x", "B:x"});
    EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
    EXPECT_EQ(section.Resorter.PrevFileAnIndexes, (Indexes{0, 1}));
    EXPECT_EQ(section.Resorter.PrevFileDiIndexes, (Indexes{0, 1, 2}));
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST_F(ChannelOrder, MissingAnalogSignalIsReportedOnce)
{
    Sort({"W1:Ub", "W1:Ua", "x"}, {"W1:x", "W2:x"});
    EXPECT_EQ(An(), (Indexes{1, 0, 2}));
    EXPECT_EQ(section.Resorter.PrevFileAnDictIndexes, (Indexes{1, 2}));
    EXPECT_EQ(section.Queue(), QStringList{NotAllFound});
}

TEST_F(ChannelOrder, MissingDiscreteSignalIsNotReported)
{
    Sort({"W2:Ua", "W1:Ua", "W1:Ub"}, {"W1:x", "y"});
    EXPECT_EQ(Di(), (Indexes{0, 1}));
    EXPECT_EQ(section.Resorter.PrevFileDiDictIndexes, Indexes{1});
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST_F(ChannelOrder, OfARecordingThatKnowsNoneIsThatOfTheFile)
{
    Sort({"x", "y"}, {"z"});
    EXPECT_EQ(An(), (Indexes{0, 1}));
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 0U);
    EXPECT_EQ(section.Queue(), QStringList{NotAllFound});
    Sort({"W1:Ua", "W2:Ua"}, {"z"});
    EXPECT_EQ(An(), (Indexes{0, 1})) << "an order without matches stays for the same number of channels";
    EXPECT_EQ(section.Queue(), QStringList{NotAllFound});
}

TEST_F(ChannelOrder, NameMustBeEqualInFull)
{
    Sort({"w2:Ua", "W2:Ua ", "W2:U", "W2 : Ua", "W1:Ub"}, {});
    EXPECT_EQ(An(), (Indexes{4, 0, 1, 2, 3}));
}

TEST_F(ChannelOrder, RepeatedNameMapsToItsFirstChannel)
{
    Sort({"x", "W1:Ua", "W1:Ua", "W2:Ua", "W2:Ua", "W1:Ub"}, {"W1:x", "W2:x", "W2:x"});
    EXPECT_EQ(An(), (Indexes{3, 1, 5, 0, 2, 4}));
    EXPECT_EQ(Di(), (Indexes{1, 0, 2}));
}

TEST(ChannelOrderOfRepeatedEntries, NamesTheChannelTwice)
{
    SortedDictionary section(Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT", "W1:Ua,V_L=220 E_G=L S_G=VT"}));
    NamedChannels recording({"x", "W1:Ua"}, {});
    EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
    EXPECT_EQ(section.Resorter.PrevFileAnIndexes, (Indexes{1, 1, 0}));
    EXPECT_EQ(section.Resorter.PrevFileAnDictIndexes, (Indexes{0, 1}));
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 2U);
}

TEST_F(ChannelOrder, RecordingInDictionaryOrderKeepsThePreviousOne)
{
    Sort({"W2:Ua", "W1:Ua", "x"}, {"W2:x", "x"});
    EXPECT_EQ(section.Queue(), QStringList{NotAllFound});
    Sort({"W2:Ua", "W1:Ua", "W1:Ub"}, {"W2:x", "W1:x"});
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 2U) << "kept: W1:Ub was not looked for";
    EXPECT_EQ(section.Resorter.PrevFileDiMatched, 1U);
    EXPECT_EQ(section.Queue(), QStringList{NotAllFound}) << "a kept order is not reported again";
}

TEST_F(ChannelOrder, IsComparedByPlaceInTheFile)
{
    Sort({"W1:Ua", "W2:Ua"}, {"W1:x", "W2:x"});
    EXPECT_EQ(section.Queue().size(), 1);
    Sort({"W1:Ua", "W2:Ua"}, {"W1:x", "W2:x"});
    EXPECT_EQ(section.Queue().size(), 2) << "the same recording out of dictionary order is looked up anew";
    EXPECT_EQ(An(), (Indexes{1, 0}));
    EXPECT_EQ(Di(), (Indexes{1, 0}));
}

TEST_F(ChannelOrder, OtherNumberOfChannelsIsOrderedAnew)
{
    Sort({"W2:Ua", "W1:Ua", "W1:Ub"}, {"W2:x", "W1:x"});
    Sort({"W1:Ub", "W1:Ua", "x", "W2:Ua"}, {"W1:x"});
    EXPECT_EQ(An(), (Indexes{3, 1, 0, 2}));
    EXPECT_EQ(Di(), Indexes{0});
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 3U);
    EXPECT_EQ(section.Resorter.PrevFileDiMatched, 1U);
}

TEST_F(ChannelOrder, RecordingWithoutChannelsLeavesThePreviousOne)
{
    Sort({"W1:Ub", "W1:Ua", "W2:Ua"}, {"W1:x", "W2:x"});
    Sort({}, {});
    EXPECT_EQ(An(), (Indexes{2, 1, 0}));
    EXPECT_EQ(Di(), (Indexes{1, 0}));
    EXPECT_EQ(section.Resorter.PrevFileAnDictIndexes, (Indexes{0, 1, 2}));
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 3U);
    EXPECT_EQ(section.Resorter.PrevFileDiMatched, 2U);
}

TEST_F(ChannelOrder, CanBeForgotten)
{
    Sort({"W1:Ub"}, {"W1:x"});
    section.Resorter.ClearPrevFileAnIndexes();
    EXPECT_TRUE(An().empty());
    EXPECT_TRUE(section.Resorter.PrevFileAnDictIndexes.empty());
    EXPECT_EQ(section.Resorter.PrevFileAnMatched, 0U);
    EXPECT_EQ(Di(), Indexes{0});
    section.Resorter.ClearPrevFileDiIndexes();
    EXPECT_TRUE(Di().empty());
    EXPECT_TRUE(section.Resorter.PrevFileDiDictIndexes.empty());
    EXPECT_EQ(section.Resorter.PrevFileDiMatched, 0U);
}

TEST_F(ChannelOrder, FurtherIndexGoesIntoTheNameOfEachNewChannel)
{
    for (int conversion = 0; conversion < 2; ++conversion) {
        NamedChannels recording({"W2:Ua", "W1:Ua", "W1:Ub"}, {"W2:x"});
        const auto& channels = recording.File.AnChannels;
        for (AnChannelData* channel : channels) {
            channel->CfgName = QStringLiteral("Ua W1");
            channel->AddIndexPos = 2;
        }
        recording.File.DiChannels[0]->CfgName = QStringLiteral("x W2");
        recording.File.DiChannels[0]->AddIndexPos = 1;
        EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
        EXPECT_EQ(channels[0]->CfgName, "Ua25 W1");
        EXPECT_EQ(channels[1]->CfgName, "Ua1 W1");
        EXPECT_EQ(channels[2]->CfgName, "Ua W1") << "no VL_IND";
        EXPECT_EQ(recording.File.DiChannels[0]->CfgName, "x W2") << "analog channels only";
    }
}

TEST_F(ChannelOrder, FurtherIndexNeedsAPlaceInTheName)
{
    NamedChannels recording({"W2:Ua", "W1:Ua", "x"}, {});
    const auto& channels = recording.File.AnChannels;
    for (AnChannelData* channel : channels)
        channel->CfgName = QStringLiteral("abc");
    channels[0]->AddIndexPos = 3;
    channels[1]->AddIndexPos = 4;
    channels[2]->AddIndexPos = 1;
    EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
    EXPECT_EQ(channels[0]->CfgName, "abc25");
    EXPECT_EQ(channels[1]->CfgName, "abc");
    EXPECT_EQ(channels[2]->CfgName, "abc");
    channels[0]->AddIndexPos = -1;
    section.Resorter.AddAdditionalIndexes(&recording.File);
    EXPECT_EQ(channels[0]->CfgName, "abc25");
}

TEST_F(ChannelOrder, FurtherIndexesNeedAnOrderThatHoldsTogether)
{
    NamedChannels recording({"W2:Ua"}, {});
    recording.File.AnChannels[0]->AddIndexPos = 0;
    EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
    section.Resorter.PrevFileAnMatched = 2;
    section.Resorter.AddAdditionalIndexes(&recording.File);
    section.Resorter.PrevFileAnDictIndexes = {0, 0};
    section.Resorter.AddAdditionalIndexes(&recording.File);
    EXPECT_EQ(recording.File.AnChannels[0]->CfgName, "25");
}
