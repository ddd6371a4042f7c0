// The list of equipment that pre-sorting makes from the analog entries.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

namespace {

// An entry of line W1 at 110 kV.
QByteArray Signal(const char* name, const char* group, const char* cim = nullptr)
{
    QByteArray entry = QByteArray("W1:") + name + ",V_L=110 E_G=L S_G=" + group;
    if (cim != nullptr)
        entry += QByteArray(" CIM_ID=") + cim;
    return entry;
}

// Entries of busbars at 220 kV that take the first count places.
std::vector<QByteArray> Filled(int count, const std::vector<QByteArray>& entries)
{
    std::vector<QByteArray> all(static_cast<size_t>(count), "BB:x,V_L=220 E_G=VTB S_G=PR_BB");
    all.insert(all.end(), entries.begin(), entries.end());
    return all;
}

} // namespace

struct NumbersCase
{
    const char* rule;
    int placesBefore;
    std::vector<QByteArray> entries;
    const char* numbers;
    const char* cimIds;
};

class ChannelNumbers : public testing::TestWithParam<NumbersCase>
{};

TEST_P(ChannelNumbers, OfAnEquipment)
{
    const SortedDictionary section(Entries("A", Filled(GetParam().placesBefore, GetParam().entries)));
    ASSERT_FALSE(section.Resorter.Equipment.empty());
    EXPECT_EQ(section.Resorter.Equipment.back()->ChannelNumbers, GetParam().numbers);
    EXPECT_EQ(section.Resorter.Equipment.back()->CimChannelIds, GetParam().cimIds);
}

INSTANTIATE_TEST_SUITE_P(
    Equipment, ChannelNumbers,
    testing::Values(
        NumbersCase{"VoltagesFillThePhases",
                    2,
                    {Signal("Ua", "VT", "i"), Signal("Ub", "VT", "j"), Signal("Uc", "VT", "k")},
                    "3,4,5,0",
                    "i,j,k"},
        NumbersCase{"ZeroSequenceIsTheFourth", 6, {Signal("3I0", "CT", "i")}, "0,0,0,7", "i"},
        NumbersCase{"AllFourOfAnyQuantity",
                    0,
                    {Signal("3U0", "VT"), Signal("Xc", "VT"), Signal("_a", "VT"), Signal("Ub", "VT")},
                    "3,4,2,1",
                    ""},
        NumbersCase{"LineVoltageTakesNoSlotAndLosesItsCim",
                    0,
                    {Signal("Uab", "VT", "lost"), Signal("Ua", "VT", "i")},
                    "2,0,0,0",
                    "i"},
        NumbersCase{"OneLetterVoltageTakesNoSlot",
                    0,
                    {Signal("U", "VT", "lost"), Signal("a", "CT", "lost")},
                    "0,0,0,0",
                    ""},
        NumbersCase{"OtherPhaseLettersTakeNoSlot",
                    0,
                    {Signal("UA", "VT", "lost"), Signal("Uа", "VT", "lost"), Signal("Ud", "CT", "lost")},
                    "0,0,0,0",
                    ""},
        NumbersCase{"LongerSignalsTakeNoSlot",
                    0,
                    {Signal("3U01", "VT", "lost"), Signal("3U1", "VT", "lost"), Signal("2U0", "VT", "lost")},
                    "0,0,0,0",
                    ""},
        NumbersCase{"CurrentsOfTheSameNameWinTheSlots",
                    0,
                    {Signal("Ia", "CT", "i"), Signal("Ua", "VT", "j"), Signal("Ub", "VT", "k")},
                    "3,2,0,0",
                    "j,k,i"},
        NumbersCase{"FrequencyWithoutPhaseOverwritesTheFirst",
                    0,
                    {Signal("Fa", "F", "i"), Signal("Fx", "F", "j")},
                    "2,0,0",
                    "i,j"},
        NumbersCase{"FrequenciesGoByTheirLastLetter",
                    3,
                    {Signal("Fab", "F"), Signal("Fc", "F"), Signal("f1a", "F")},
                    "6,4,5",
                    ""},
        NumbersCase{"OneLetterFrequencyIsDroppedAndKeepsItsCim", 0, {Signal("F", "F", "i")}, "0,0,0", "i"},
        NumbersCase{"ReceiversAreListed",
                    3,
                    {Signal("x", "PR_REC", "i"), Signal("Ua", "PR_REC"), Signal("y", "PR_REC", "k")},
                    "4,5,6",
                    "i,k"},
        NumbersCase{"VoltagesFirstDropTheList",
                    0,
                    {Signal("x", "DCS_VPP", "j"), Signal("Ub", "VT", "i")},
                    "0,1,0,0",
                    "i,j"},
        NumbersCase{"ListFirstDropsTheSlots",
                    0,
                    {Signal("Fa", "F", "j"), Signal("x", "PR_BB", "i"), Signal("F", "F", "k")},
                    "1,3",
                    "i,j,k"},
        NumbersCase{"FrequencyFallsIntoTheSlotsOfVoltages",
                    0,
                    {Signal("Ua", "VT"), Signal("Ub", "VT"), Signal("Fa", "F")},
                    "3,2,0,0",
                    ""}),
    [](const testing::TestParamInfo<NumbersCase>& testCase) { return testCase.param.rule; });

class ListedGroup : public testing::TestWithParam<const char*>
{};

TEST_P(ListedGroup, JoinsItsNumbersByCommas)
{
    const SortedDictionary section(
        Entries("A", Filled(3, {Signal("Ua", GetParam()), Signal("Ub", GetParam())})));
    EXPECT_EQ(section.Resorter.Equipment.back()->ChannelNumbers, "4,5");
}

INSTANTIATE_TEST_SUITE_P(Equipment, ListedGroup,
                         testing::Values("PR_REC", "PR_BB", "PR_DIFF1", "PR_DIFF2", "PR_RC", "PR_RV",
                                         "PR_RVG", "PR_IEX", "PR_VEX", "DCS_VPP", "DCS_VP1G", "DCS_VP2G"));

TEST(Equipment, OneNameForVoltagesAndCurrentsIsOneRecord)
{
    const SortedDictionary section(Entries("A", {Signal("Ia", "CT"), Signal("Ua", "VT")}));
    EXPECT_EQ(section.AnNames(), (QStringList{"W1:Ua", "W1:Ia"}));
    ASSERT_EQ(section.Resorter.Equipment.size(), 1U);
    EXPECT_EQ(section.Resorter.Equipment[0]->SignalGroup, 0U);
    EXPECT_EQ(section.Resorter.Equipment[0]->ChannelNumbers, "2,0,0,0");
}

TEST(Equipment, TwoNamesForVoltagesAndCurrentsAreTwoRecords)
{
    const SortedDictionary section(
        Entries("A", {"W1I:Ia,V_L=110 E_G=L S_G=CT", "W1U:Ua,V_L=110 E_G=L S_G=VT"}));
    ASSERT_EQ(section.Resorter.Equipment.size(), 2U);
    EXPECT_EQ(section.Resorter.Equipment[0]->EquipmentName, "W1I");
    EXPECT_EQ(section.Resorter.Equipment[0]->SignalGroup, 1U);
    EXPECT_EQ(section.Resorter.Equipment[0]->ChannelNumbers, "1,0,0,0");
    EXPECT_EQ(section.Resorter.Equipment[1]->EquipmentName, "W1U");
    EXPECT_EQ(section.Resorter.Equipment[1]->SignalGroup, 0U);
    EXPECT_EQ(section.Resorter.Equipment[1]->ChannelNumbers, "2,0,0,0");
}

TEST(Equipment, RecordHasThePlaceOfItsEntries)
{
    const SortedDictionary section(Entries("A", {"T1:Ua,V_L=35 E_G=T S_G=PR_RV"}));
    const RCE_AnalogChannelEquipmentZuCmtr& record = *section.Resorter.Equipment.at(0);
    EXPECT_EQ(record.EquipmentGroup, 3U);
    EXPECT_EQ(record.VoltageLevel, 4U);
    EXPECT_EQ(record.SignalGroup, 8U);
    EXPECT_EQ(record.EquipmentName, "T1");
}

TEST(Equipment, SameNameAtTwoLevelsIsTwoRecords)
{
    const SortedDictionary section(Entries("A", {"T1:Ua,V_L=35 E_G=T S_G=VT", "T1:Ub,V_L=220 E_G=T S_G=VT"}));
    ASSERT_EQ(section.Resorter.Equipment.size(), 2U);
    EXPECT_EQ(section.Resorter.Equipment[0]->ChannelNumbers, "0,1,0,0");
    EXPECT_EQ(section.Resorter.Equipment[1]->ChannelNumbers, "2,0,0,0");
}

TEST(Equipment, DiscreteEntriesMakeNone)
{
    const SortedDictionary section(Entries("D", {"W1:x,V_L=110 E_G=L D_G=RP S_T=FD"}));
    EXPECT_TRUE(section.Resorter.Equipment.empty());
}
