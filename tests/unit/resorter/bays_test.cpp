// Bays of the dictionary, and the look-ups that go through them.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <new>

TEST(Bays, EntryHasItsThreeFields)
{
    DictionarySection section("nBayMax=12\nBAY12= W1 , Line one ,W-1,further");
    BayOptionalParam* bay = nullptr;
    ASSERT_TRUE(section.Resorter.FindOptBayParams(QStringLiteral("W1"), &bay));
    EXPECT_EQ(bay->Number, 12U);
    EXPECT_EQ(bay->BayName, "W1");
    EXPECT_EQ(bay->DisplayName, "Line one");
    EXPECT_EQ(bay->CircuitName, "W-1");
    EXPECT_EQ(section.Log(), QStringList{"BAY12: W1,[Line one],[W-1]"});
    EXPECT_EQ(section.Queue(), section.Log());
}

TEST(Bays, UnknownNameLeavesTheResultAlone)
{
    DictionarySection section("nBayMax=1\nBAY01=W1,A");
    BayOptionalParam* bay = nullptr;
    EXPECT_FALSE(section.Resorter.FindOptBayParams(QStringLiteral("w1"), &bay));
    EXPECT_EQ(bay, nullptr);
}

TEST(Bays, WithoutTextsAreIgnoredSilently)
{
    const DictionarySection section("nBayMax=5\nBAY01=W1\nBAY02=W2,,\nBAY03=W3,\nBAY04=;\nBAY05=W5, , ,x");
    EXPECT_TRUE(section.Loaded);
    EXPECT_TRUE(section.Resorter.BayParams.empty());
    EXPECT_EQ(section.Log(), QStringList());
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST(Bays, MayHaveACircuitNameAlone)
{
    DictionarySection section("nBayMax=1\nBAY01=W1,,X");
    BayOptionalParam* bay = nullptr;
    ASSERT_TRUE(section.Resorter.FindOptBayParams(QStringLiteral("W1"), &bay));
    EXPECT_EQ(bay->DisplayName, "");
    EXPECT_EQ(bay->CircuitName, "X");
    EXPECT_EQ(section.Log(), QStringList{"BAY01: W1,[],[X]"});
}

TEST(Bays, MayHaveADisplayNameAlone)
{
    DictionarySection section("nBayMax=1\nBAY01=W1,A");
    EXPECT_EQ(section.Resorter.BayParams.at(QStringLiteral("W1"))->CircuitName, "");
    EXPECT_EQ(section.Log(), QStringList{"BAY01: W1,[A],[]"});
}

TEST(Bays, FirstOfTwoEqualNamesStays)
{
    DictionarySection section("nBayMax=2\nBAY01=W1,A\nBAY02=W1,B");
    EXPECT_TRUE(section.Loaded);
    EXPECT_EQ(section.Resorter.BayParams.at(QStringLiteral("W1"))->DisplayName, "A");
    EXPECT_EQ(section.Log(),
              (QStringList{"BAY01: W1,[A],[]", "Имя присоединения [W1] в параметре BAY02 секции Dev "
                                               "ini-файла использовано повторно, "}));
    EXPECT_EQ(section.Queue(), section.Log());
}

TEST(Bays, IgnoredBayDoesNotTakeItsName)
{
    DictionarySection section("nBayMax=2\nBAY01=W1,,\nBAY02=W1,B");
    EXPECT_EQ(section.Log(), QStringList{"BAY02: W1,[B],[]"});
}

TEST(Bays, NameMayBeEmpty)
{
    DictionarySection section("nBayMax=1\nBAY01=,A");
    EXPECT_EQ(section.Resorter.BayParams.at(QString())->DisplayName, "A");
}

TEST(Bays, PercentSequenceIsTakenByTheNextValue)
{
    const DictionarySection section("nBayMax=1\nBAY01=%3,A,B");
    EXPECT_EQ(section.Log(), QStringList{"BAY01: A,[A],[B]"});
}

TEST(Bays, NumberAndTextsStartEmpty)
{
    alignas(BayOptionalParam) unsigned char memory[sizeof(BayOptionalParam)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xFF));
    auto* bay = new (memory) BayOptionalParam;
    EXPECT_EQ(bay->Number, 0U);
    EXPECT_TRUE(bay->BayName.isNull());
    EXPECT_TRUE(bay->DisplayName.isNull());
    EXPECT_TRUE(bay->CircuitName.isNull());
    bay->~BayOptionalParam();
}

struct EquipmentNameCase
{
    const char* rule;
    const char* bay; // ini value
    const char* fullName;
    const char* equipment;
    const char* display;
};

class EquipmentName : public testing::TestWithParam<EquipmentNameCase>
{};

TEST_P(EquipmentName, IsTakenFromAKnownEquipment)
{
    SortedDictionary section(
        Entries("A", {"W0:Ua,V_L=110 E_G=L S_G=VT", "W1:Ua,V_L=110 E_G=L S_G=VT", "W9:Ua"}) +
        "nBayMax=1\nBAY01=" + GetParam().bay);
    QString equipment = QStringLiteral("before");
    QString display = QStringLiteral("before");
    section.Resorter.SetEqNameIfExist(QString::fromUtf8(GetParam().fullName), equipment, display);
    EXPECT_EQ(equipment, GetParam().equipment);
    EXPECT_EQ(display, GetParam().display);
}

INSTANTIATE_TEST_SUITE_P(
    Bays, EquipmentName,
    testing::Values(EquipmentNameCase{"DisplayNameAloneIsNotShown", "W1,A,", "W1:Ua", "W1", ""},
                    EquipmentNameCase{"DisplayNameIsShownBesideACircuitName", "W1,A,B", "W1:Ua", "W1", "A"},
                    EquipmentNameCase{"CircuitNameAloneShowsNothing", "W1,,B", "W1:Ua", "W1", ""},
                    EquipmentNameCase{"NoBay", "W7,A,B", "W1:Ua", "W1", ""},
                    EquipmentNameCase{"AnyOfTheEquipment", "W7,A,B", "W0:x", "W0", ""},
                    EquipmentNameCase{"ThreePartsChangeNothing", "W1,A,B", "W1:x:y", "before", "before"},
                    EquipmentNameCase{"OnePartChangesNothing", "W1,A,B", "W1", "before", "before"},
                    EquipmentNameCase{"EmptySignalIsAPart", "W1,A,B", " W1 :", "W1", "A"},
                    EquipmentNameCase{"UnsortedEntryIsNoEquipment", "W9,A,B", "W9:Ua", "before", "before"},
                    EquipmentNameCase{"OtherCaseIsUnknown", "W1,A,B", "w1:Ua", "before", "before"}),
    [](const testing::TestParamInfo<EquipmentNameCase>& testCase) { return testCase.param.rule; });
