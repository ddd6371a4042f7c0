// Helpers for texts and for the permissions of files.
#include "config/GlobalFunction.h"
#include "support/files.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Texts = std::vector<QString>;

// The permissions of whoever runs the test, besides owner, group and others.
static const QFile::Permissions OfThisUser = QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;

struct TextCase
{
    const char* text;
    const char* expected;
};

class BadSymbols : public testing::TestWithParam<TextCase>
{};

TEST_P(BadSymbols, AreRemovedFromAFileName)
{
    QString name = QString::fromUtf8(GetParam().text);
    GlobalFunction::FileNameRemoveBadSymbols(name);
    EXPECT_EQ(name, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(GlobalFunction, BadSymbols,
                         testing::Values(TextCase{"a:b/c*d", "abcd"}, TextCase{"\"\\/:*?<>|", ""},
                                         TextCase{"\"a\"", "a"}, TextCase{"a\\b", "ab"},
                                         TextCase{"a?b<c>d|e", "abcde"}, TextCase{"::a::", "a"},
                                         TextCase{" 1, 2.3;'%!", " 1, 2.3;'%!"}, TextCase{"", ""},
                                         TextCase{"ПС Южная:1", "ПС Южная1"}));

class Comments : public testing::TestWithParam<TextCase>
{};

TEST_P(Comments, AreCutAndTheRestTrimmed)
{
    QString text = QString::fromUtf8(GetParam().text);
    GlobalFunction::ClearComment(text);
    EXPECT_EQ(text, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(GlobalFunction, Comments,
                         testing::Values(TextCase{"  value ; note ; more", "value"},
                                         TextCase{"; only a comment", ""}, TextCase{"  value  ", "value"},
                                         TextCase{"\"a;b\"", "\"a"}, TextCase{"a#b", "a#b"},
                                         TextCase{"\ta b\t;", "a b"}, TextCase{"", ""}));

class LeftTrim : public testing::TestWithParam<TextCase>
{};

TEST_P(LeftTrim, DropsLeadingBlanksAndTabsAlone)
{
    EXPECT_EQ(GlobalFunction::TrimLeft(QString::fromUtf8(GetParam().text)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(GlobalFunction, LeftTrim,
                         testing::Values(TextCase{" \t a \t", "a \t"}, TextCase{" \t ", ""}, TextCase{"", ""},
                                         TextCase{"\n a", "\n a"}, TextCase{" \ra", "\ra"},
                                         TextCase{"a b", "a b"}));

struct SplitCase
{
    const char* text;
    bool result;
    Texts expected; // after the text that was there before
};

class NameSplit : public testing::TestWithParam<SplitCase>
{};

TEST_P(NameSplit, AppendsRawNamesUpToTheFirstGap)
{
    Texts names{QStringLiteral("before")};
    EXPECT_EQ(GlobalFunction::GetNamesFromString(QString::fromUtf8(GetParam().text), &names),
              GetParam().result);
    Texts expected{QStringLiteral("before")};
    expected.insert(expected.end(), GetParam().expected.begin(), GetParam().expected.end());
    EXPECT_EQ(names, expected);
}

INSTANTIATE_TEST_SUITE_P(GlobalFunction, NameSplit,
                         testing::Values(SplitCase{"a,b,c", true, {"a", "b", "c"}},
                                         SplitCase{"a,,c", false, {"a"}},
                                         SplitCase{"a, b", true, {"a", " b"}}, SplitCase{"a,", false, {"a"}},
                                         SplitCase{",a", false, {}}, SplitCase{"", false, {}},
                                         SplitCase{" ", true, {" "}}));

class ItemSplit : public testing::TestWithParam<SplitCase>
{};

TEST_P(ItemSplit, AppendsTrimmedItemsInTheirPlaces)
{
    Texts items{QStringLiteral("before")};
    EXPECT_EQ(GlobalFunction::GetItemsFromString(QString::fromUtf8(GetParam().text), &items, ","),
              GetParam().result);
    Texts expected{QStringLiteral("before")};
    expected.insert(expected.end(), GetParam().expected.begin(), GetParam().expected.end());
    EXPECT_EQ(items, expected);
}

INSTANTIATE_TEST_SUITE_P(GlobalFunction, ItemSplit,
                         testing::Values(SplitCase{"a, ,c", true, {"a", "", "c"}},
                                         SplitCase{"\ta ,b\n", true, {"a", "b"}},
                                         SplitCase{",", true, {"", ""}}, SplitCase{"a", true, {"a"}},
                                         SplitCase{" ", true, {""}}, SplitCase{"", false, {}}));

TEST(GlobalFunction, ItemsAreSplitAtTheFirstByteOfTheSeparatorOnly)
{
    Texts items;
    EXPECT_TRUE(GlobalFunction::GetItemsFromString(QStringLiteral("a;b,c"), &items, ";,"));
    EXPECT_EQ(items, (Texts{"a", "b,c"}));
}

TEST(GlobalFunction, SeparatorByteIsUnsigned)
{
    Texts items;
    const QString text = QStringLiteral("a") + QChar(0xFF) + QStringLiteral("b");
    EXPECT_TRUE(GlobalFunction::GetItemsFromString(text, &items, "\xFF"));
    EXPECT_EQ(items, (Texts{"a", "b"}));
}

TEST(GlobalFunction, ItemsAreSplitAtAnyCharacter)
{
    Texts items;
    const QChar separator(0x2116);
    EXPECT_TRUE(GlobalFunction::GetItemsFromString(QStringLiteral("a№ b"), &items, &separator));
    EXPECT_EQ(items, (Texts{"a", "b"}));
}

TEST(GlobalFunction, GroupMayReadAndWriteAFileAfterwards)
{
    const TestDirectory directory;
    const QString path = directory.Write(QStringLiteral("log"), "text");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    EXPECT_TRUE(GlobalFunction::AddFileGrpPermissions(path));
    const QFile::Permissions expected =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::ReadGroup | QFile::WriteGroup;
    EXPECT_EQ(QFile::permissions(path) & ~OfThisUser, expected);
}

TEST(GlobalFunction, PermissionsAreAddedToThoseOfTheFile)
{
    const TestDirectory directory;
    const QString path = directory.Write(QStringLiteral("log"), "text");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_TRUE(GlobalFunction::AddFilePermissions(path, QFile::ExeOther));
    EXPECT_EQ(QFile::permissions(path) & ~OfThisUser, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOther);
}

TEST(GlobalFunction, MissingFileGetsNoPermissionsAndIsNotCreated)
{
    const TestDirectory directory;
    EXPECT_FALSE(GlobalFunction::AddFileGrpPermissions(directory.Path(QStringLiteral("none"))));
    EXPECT_FALSE(
        GlobalFunction::AddFilePermissions(directory.Path(QStringLiteral("none")), QFile::ReadOther));
    EXPECT_EQ(directory.Names(), QStringList());
}

struct RoundCase
{
    double value;
    double expected;
};

class RoundSignedOf : public testing::TestWithParam<RoundCase>
{};

TEST_P(RoundSignedOf, GoesToTheNearestAndHalvesAwayFromZero)
{
    const double wide = RoundSigned(GetParam().value);
    EXPECT_EQ(wide, GetParam().expected);
    EXPECT_EQ(std::signbit(wide), std::signbit(GetParam().expected));
    const float narrow = RoundSigned(static_cast<float>(GetParam().value));
    EXPECT_EQ(narrow, static_cast<float>(GetParam().expected));
    EXPECT_EQ(std::signbit(narrow), std::signbit(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(GlobalFunction, RoundSignedOf,
                         testing::Values(RoundCase{2.5, 3}, RoundCase{-2.5, -3}, RoundCase{-0.4, -0.0},
                                         RoundCase{0.4, 0}, RoundCase{0, 0}, RoundCase{0.5, 1},
                                         RoundCase{-0.5, -1}, RoundCase{2.25, 2}, RoundCase{-7, -7}));

TEST(RoundSigned, SinglePrecisionIsRoundedInSixtyFourBits)
{
    // 8388609.0F + 0.5F would be rounded up to 8388610 in 32 bits.
    EXPECT_EQ(RoundSigned(8388609.0F), 8388609.0F);
    EXPECT_EQ(RoundSigned(-8388609.0F), -8388609.0F);
}

TEST(RoundSigned, NanStaysNan)
{
    EXPECT_TRUE(std::isnan(RoundSigned(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_TRUE(std::isnan(RoundSigned(std::numeric_limits<float>::quiet_NaN())));
}
