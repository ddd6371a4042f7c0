// The three maxima: how far the numbered keys are read.
#include "support/dictionarysection.h"

#include <gtest/gtest.h>

TEST(DictionaryMaxima, SectionWithoutThemLoadsEmpty)
{
    const DictionarySection section("A01=W1:Ua\nD01=W1:x\nBAY01=W1,A");
    EXPECT_TRUE(section.Loaded);
    EXPECT_TRUE(section.Resorter.AnDictionary.empty());
    EXPECT_TRUE(section.Resorter.DiDictionary.empty());
    EXPECT_TRUE(section.Resorter.BayParams.empty());
    EXPECT_EQ(section.Log(), QStringList());
}

struct MaximumCase
{
    const char* key;
    const char* value;
};

class BadMaximum : public testing::TestWithParam<MaximumCase>
{};

TEST_P(BadMaximum, FailsTheLoadBeforeAnyEntry)
{
    const QByteArray key = GetParam().key;
    QByteArray lines = "nAnMax=1\nnDiMax=1\nnBayMax=1\nA01=W1:Ua\nD01=W1:x\nBAY01=W1,A\n";
    const DictionarySection section(lines + key + "=" + GetParam().value);
    const QString failure = QStringLiteral("Ошибка значения параметра: ") + QString::fromUtf8(key);
    EXPECT_FALSE(section.Loaded);
    EXPECT_EQ(section.Resorter.ErrorText, failure);
    EXPECT_EQ(section.Log(), QStringList{failure});
    EXPECT_EQ(section.Queue(), QStringList());
    EXPECT_TRUE(section.Resorter.AnDictionary.empty());
    EXPECT_TRUE(section.Resorter.DiDictionary.empty());
    EXPECT_TRUE(section.Resorter.BayParams.empty());
}

INSTANTIATE_TEST_SUITE_P(DictionaryMaxima, BadMaximum,
                         testing::Values(MaximumCase{"nAnMax", "abc"}, MaximumCase{"nAnMax", ""},
                                         MaximumCase{"nAnMax", "-1"}, MaximumCase{"nDiMax", "abc"},
                                         MaximumCase{"nDiMax", ""}, MaximumCase{"nDiMax", "1.5"},
                                         MaximumCase{"nBayMax", "abc"}, MaximumCase{"nBayMax", ""},
                                         MaximumCase{"nBayMax", "-2"}));

TEST(DictionaryMaxima, FirstBadOneIsNamed)
{
    const DictionarySection section("nAnMax=abc\nnDiMax=abc\nnBayMax=abc");
    EXPECT_EQ(section.Log(), QStringList{"Ошибка значения параметра: nAnMax"});
}

TEST(DictionaryMaxima, HighestNumberCountsAsAbsent)
{
    const DictionarySection section(
        "nAnMax=4294967295\nnDiMax=4294967295\nnBayMax=4294967295\nA01=W1:Ua\nD01=W1:x\nBAY01=W1,A");
    EXPECT_TRUE(section.Loaded);
    EXPECT_TRUE(section.Resorter.AnDictionary.empty());
    EXPECT_TRUE(section.Resorter.DiDictionary.empty());
    EXPECT_TRUE(section.Resorter.BayParams.empty());
}

TEST(DictionaryMaxima, OfBillionsFindTheFewEntriesInNumberOrder)
{
    const DictionarySection section("nAnMax=4000000000\nnDiMax=4000000000\nnBayMax=4000000000\n"
                                    "A100=W1:Uc\nA99=W1:Ub\nA03=W1:Ua\nA2000000000=W1:U0\n"
                                    "D2000000000=W1:z\nD02=W1:x\nD1000=W1:y\n"
                                    "BAY2000000000=W2,B\nBAY01=W1,A");
    ASSERT_TRUE(section.Loaded);
    QStringList names;
    std::vector<unsigned int> numbers;
    for (const DictionaryZuCmtrAn* entry : section.Resorter.AnDictionary) {
        names << entry->FullName;
        numbers.push_back(entry->Number);
    }
    for (const DictionaryZuCmtrDi* entry : section.Resorter.DiDictionary) {
        names << entry->FullName;
        numbers.push_back(entry->Number);
    }
    EXPECT_EQ(names, (QStringList{"W1:Ua", "W1:Ub", "W1:Uc", "W1:U0", "W1:x", "W1:y", "W1:z"}));
    EXPECT_EQ(numbers, (std::vector<unsigned int>{3, 99, 100, 2000000000, 2, 1000, 2000000000}));
    EXPECT_EQ(section.Log(), (QStringList{"BAY01: W1,[A],[]", "BAY2000000000: W2,[B],[]"}));
}
