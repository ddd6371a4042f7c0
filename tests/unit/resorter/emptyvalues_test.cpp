// Keys of the dictionary and of the bays that have no value.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

TEST(EmptyValues, OfDiscreteEntriesArePassedOverWithoutAWord)
{
    const DictionarySection section("nDiMax=3\nD01=\nD02= ; none\nD03=W1:x");
    ASSERT_TRUE(section.Loaded);
    ASSERT_EQ(section.Resorter.DiDictionary.size(), 1U);
    EXPECT_EQ(section.Resorter.DiDictionary[0]->Number, 3U);
    EXPECT_EQ(section.Resorter.DiDictionary[0]->Ordinal, 0U);
    EXPECT_EQ(section.Resorter.DiDictionary[0]->FullName, "W1:x");
    EXPECT_EQ(section.Log(), QStringList());
    EXPECT_EQ(section.Queue(), QStringList());
}

TEST(EmptyValues, OfBaysArePassedOverWithoutAWord)
{
    const DictionarySection section("nBayMax=3\nBAY01=\nBAY02= ; none\nBAY03=W1,Line,L1");
    ASSERT_TRUE(section.Loaded);
    ASSERT_EQ(section.Resorter.BayParams.size(), 1U);
    EXPECT_EQ(section.Resorter.BayParams.begin()->second->Number, 3U);
    EXPECT_EQ(section.Queue(), QStringList{"BAY03: W1,[Line],[L1]"});
}

TEST(EmptyValues, NamelessDiscreteEntriesAreDroppedWithAndWithoutParameters)
{
    const DictionarySection section("nDiMax=2\nD01=,V_L=110 E_G=L D_G=RP S_T=FD\nD02=,");
    ASSERT_TRUE(section.Loaded);
    EXPECT_TRUE(section.Resorter.DiDictionary.empty());
    EXPECT_EQ(section.Resorter.DiUnsorted, (std::vector<unsigned int>{0, 1}));
    EXPECT_EQ(section.Queue().size(), 2);
}
