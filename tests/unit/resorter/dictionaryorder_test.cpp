// The order of the dictionary, and the life of what was loaded.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <new>

namespace {

using Indexes = std::vector<unsigned int>;

} // namespace

TEST(DictionaryOrder, OfAnEmptyDictionaryIsEmpty)
{
    SortedDictionary section("");
    EXPECT_TRUE(section.Resorter.Equipment.empty());
    EXPECT_TRUE(section.Resorter.AnResorted.empty());
    EXPECT_TRUE(section.Resorter.DiResorted.empty());
    EXPECT_TRUE(section.Resorter.Prepared);
    EXPECT_EQ(section.Resorter.StatusChannelCount, 0U);
}

TEST(DictionaryOrder, HighestVoltageComesFirst)
{
    const SortedDictionary section(
        Entries("A", {"W1:a,V_L=110 E_G=L S_G=VT", "W2:a,V_L=6 E_G=L S_G=VT",
                      "W3:a,V_L=500 E_G=CB S_G=DCS_VP2G", "W4:a,V_L=1150 E_G=L S_G=VT"}) +
        Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD", "W2:x,V_L=500 E_G=CB D_G=OC S_T=ODC3"}));
    EXPECT_EQ(section.AnNames(), (QStringList{"W4:a", "W3:a", "W1:a", "W2:a"}));
    EXPECT_EQ(section.DiNames(), (QStringList{"W2:x", "W1:x"}));
}

TEST(DictionaryOrder, EquipmentGroupComesByItsRow)
{
    const SortedDictionary section(
        Entries("A", {"W1:a,V_L=110 E_G=CB S_G=VT", "W2:a,V_L=110 E_G=VTB S_G=CT", "W3:a,V_L=110 E_G=L S_G=F",
                      "W4:a,V_L=110 E_G=BPR S_G=VT"}) +
        Entries("D", {"W1:x,V_L=110 E_G=T D_G=RP S_T=FD", "W2:x,V_L=110 E_G=AT D_G=OC S_T=FD"}));
    EXPECT_EQ(section.AnNames(), (QStringList{"W3:a", "W4:a", "W2:a", "W1:a"}));
    EXPECT_EQ(section.DiNames(), (QStringList{"W2:x", "W1:x"}));
}

TEST(DictionaryOrder, EquipmentNamesComeByFirstAppearance)
{
    const SortedDictionary section(
        Entries("A", {"W2:a,V_L=110 E_G=L S_G=VT", "W1:a,V_L=110 E_G=L S_G=VT", "W2:b,V_L=110 E_G=L S_G=VT",
                      "w2:c,V_L=110 E_G=L S_G=VT"}) +
        Entries("D", {"W2:x,V_L=110 E_G=L D_G=RP S_T=FD", "W1:x,V_L=110 E_G=L D_G=RP S_T=FD",
                      "W2:y,V_L=110 E_G=L D_G=RP S_T=FD"}));
    EXPECT_EQ(section.AnNames(), (QStringList{"W2:a", "W2:b", "W1:a", "w2:c"}));
    EXPECT_EQ(section.DiNames(), (QStringList{"W2:x", "W2:y", "W1:x"}));
}

TEST(DictionaryOrder, SignalGroupsOfAnEquipmentComeByTheirRowsThenIniOrder)
{
    const SortedDictionary section(Entries(
        "A", {"W1:Ia,V_L=110 E_G=L S_G=CT", "W1:d,V_L=110 E_G=L S_G=DCS_VP2G", "W1:Ub,V_L=110 E_G=L S_G=VT",
              "W1:Ua,V_L=110 E_G=L S_G=VT", "W1:F,V_L=110 E_G=L S_G=F"}));
    EXPECT_EQ(section.AnNames(), (QStringList{"W1:Ub", "W1:Ua", "W1:Ia", "W1:F", "W1:d"}));
}

TEST(DictionaryOrder, DeviceGroupsComeByTheirRowsWhateverTheStatusType)
{
    const SortedDictionary section(
        Entries("D", {"W1:a,V_L=110 E_G=L D_G=OC S_T=FD", "W1:b,V_L=110 E_G=L D_G=RP S_T=ODC3",
                      "W1:c,V_L=110 E_G=L D_G=RP S_T=AL", "W1:d,V_L=110 E_G=L D_G=RP S_T=FD",
                      "W1:e,V_L=110 E_G=L D_G=NA S_T=FD"}));
    EXPECT_EQ(section.DiNames(), (QStringList{"W1:b", "W1:c", "W1:d", "W1:e", "W1:a"}));
}

TEST(DictionaryOrder, EntriesWithoutParametersAreLeftOut)
{
    const SortedDictionary section(Entries("A", {"W1:a", "W1:b,V_L=7", "W1:c,V_L=110 E_G=L S_G=VT"}) +
                                   Entries("D", {"W1:x", "W1:y,V_L=110 E_G=L D_G=RP S_T=FD"}));
    EXPECT_EQ(section.Resorter.AnSorted, Indexes{2});
    EXPECT_EQ(section.Resorter.DiSorted, Indexes{1});
    EXPECT_EQ(section.Resorter.StatusChannelCount, 1U);
    EXPECT_EQ(section.AnNames(), QStringList{"W1:c"});
    EXPECT_EQ(section.DiNames(), QStringList{"W1:y"});
    EXPECT_TRUE(section.Resorter.AnUnsorted.empty());
    EXPECT_TRUE(section.Resorter.DiUnsorted.empty());
}

TEST(DictionaryOrder, CommonPartSeparatesTheEquipmentRuns)
{
    DictionarySection section(
        Entries("A", {"W2:a,V_L=110 E_G=L S_G=VT", "W1:a,V_L=110 E_G=L S_G=VT", "W2:b,V_L=110 E_G=L S_G=CT",
                      "W1:a,V_L=110 E_G=T S_G=VT", "W1:x", "W1:a,V_L=220 E_G=T S_G=VT"}));
    const auto& entries = section.Resorter.AnDictionary;
    Indexes sorted;
    EXPECT_TRUE(section.Resorter.SortChannelsCommon({entries.begin(), entries.end()}, sorted));
    EXPECT_EQ(sorted, (Indexes{5, 0, 2, 1, 3}));
    EXPECT_EQ(section.Resorter.GroupSizes, (Indexes{1, 2, 1, 1}));
    EXPECT_EQ(section.Resorter.GroupNames, (std::vector<QString>{"W1", "W2", "W1", "W1"}));
}

TEST(DictionaryOrder, SecondPreSortGivesTheSame)
{
    SortedDictionary section(Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT", "W2:Ua,V_L=220 E_G=L S_G=VT"}) +
                             Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD"}));
    EXPECT_TRUE(section.Resorter.PreResort());
    EXPECT_EQ(section.AnNames(), (QStringList{"W2:Ua", "W1:Ua"}));
    EXPECT_EQ(section.DiNames(), QStringList{"W1:x"});
    EXPECT_EQ(section.Resorter.Equipment.size(), 2U);
    EXPECT_EQ(section.Resorter.StatusChannelCount, 1U);
    EXPECT_TRUE(section.Resorter.GroupSizes.empty());
}

TEST(Resorter, StartsEmptyWithTheNamesOfTheDevice)
{
    ZuCmtrDevParam device;
    device.PowerSystem = QStringLiteral("ЭС");
    device.Subject = QStringLiteral("МЭС");
    device.Object = QStringLiteral("ПС");
    alignas(ResorterZuCmtrConv) unsigned char memory[sizeof(ResorterZuCmtrConv)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xFF));
    auto* resorter = new (memory) ResorterZuCmtrConv(&device);
    device.Object = QStringLiteral("later");
    EXPECT_EQ(resorter->PowerObject.Territory, "ЭС");
    EXPECT_EQ(resorter->PowerObject.CompanyName, "МЭС");
    EXPECT_EQ(resorter->PowerObject.StationName, "ПС");
    EXPECT_EQ(resorter->Device, &device);
    EXPECT_FALSE(resorter->Prepared);
    EXPECT_EQ(resorter->StatusChannelCount, 0U);
    EXPECT_EQ(resorter->PrevFileAnMatched, 0U);
    EXPECT_EQ(resorter->PrevFileDiMatched, 0U);
    EXPECT_EQ(resorter->InfCodec, nullptr);
    resorter->~ResorterZuCmtrConv();
}

TEST(Resorter, ClearReleasesTheDictionaryAndKeepsTheOrderOfTheRecording)
{
    SortedDictionary section(Entries("A", {"W1:Ua,V_L=110 E_G=L S_G=VT", "W2:Ua"}) +
                             Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD", "W1:y"}) +
                             "nBayMax=1\nBAY01=W1,A");
    NamedChannels recording({"W1:Ua"}, {"W1:x"});
    EXPECT_TRUE(section.Resorter.SortZuFile(&recording.File));
    section.Resorter.Clear();
    EXPECT_FALSE(section.Resorter.Prepared);
    EXPECT_TRUE(section.Resorter.AnDictionary.empty());
    EXPECT_TRUE(section.Resorter.DiDictionary.empty());
    EXPECT_TRUE(section.Resorter.AnSorted.empty());
    EXPECT_TRUE(section.Resorter.DiSorted.empty());
    EXPECT_TRUE(section.Resorter.AnUnsorted.empty());
    EXPECT_TRUE(section.Resorter.DiUnsorted.empty());
    EXPECT_TRUE(section.Resorter.Equipment.empty());
    EXPECT_TRUE(section.Resorter.BayParams.empty());
    EXPECT_EQ(section.Resorter.StatusChannelCount, 0U);
    EXPECT_EQ(section.Resorter.PrevFileAnIndexes, Indexes{0});
    EXPECT_EQ(section.Resorter.PrevFileDiIndexes, Indexes{0});
}
