// Names of the files of one recording.
#include "base/chainnames.h"

#include <gtest/gtest.h>

#include <QByteArray>

using namespace zu;

TEST(ChainNames, ExtensionsCountOnInHexadecimalThreeBytesApart)
{
    ASSERT_EQ(sizeof ChainExtensions, 45U);
    const QByteArray table(ChainExtensions[0], sizeof ChainExtensions);
    EXPECT_EQ(table.left(44).split('\0').join(' '), "01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f");
    EXPECT_EQ(table[44], '\0');
}

TEST(ChainNames, ContinuationsKeepTheCaseOfTheFirstFile)
{
    EXPECT_EQ(ContinuationName("dir/rec.ZU", 0), "dir/rec.ZU");
    EXPECT_EQ(ContinuationName("dir/rec.ZU", 1), "dir/rec.Z01");
    EXPECT_EQ(ContinuationName("rec.zu", 10), "rec.z0a");
    EXPECT_EQ(ContinuationName("rec.zu", MostContinuations), "rec.z0f");
}

TEST(ChainNames, FirstFilesEndInEitherCaseButNotInBoth)
{
    EXPECT_TRUE(IsFirstFileName("dir/rec.ZU"));
    EXPECT_TRUE(IsFirstFileName(".zu"));
    for (const char* name : {"", "ZU", "rec.Zu", "rec.zU", "rec.ZU ", "rec.ZU\n", "rec.Z01"})
        EXPECT_FALSE(IsFirstFileName(name)) << name;
}

TEST(ChainNames, ContinuationLeadsBackToItsFirstFile)
{
    for (const QString& first :
         {QStringLiteral("dir.d/rec.ZU"), QStringLiteral("rec.zu"), QStringLiteral(".ZU")}) {
        for (int number = 1; number <= MostContinuations; ++number)
            EXPECT_EQ(FirstFileOf(ContinuationName(first, number)), first);
    }
}

TEST(ChainNames, OtherNamesLeadToNoFirstFile)
{
    for (const char* name : {"", "1", "01", "z01", "rec.ZU", "rec.Z00", "rec.Z0A", "rec.Z10", "rec.Z0g",
                             "rec.Z1", "rec.y01", "recZ01", "rec.Z01 ", "rec.Z01\n"})
        EXPECT_EQ(FirstFileOf(name), QString()) << name;
}

TEST(ChainNames, RecorderFilesAreFirstFilesAndContinuations)
{
    EXPECT_TRUE(IsRecorderFile("rec.ZU"));
    EXPECT_TRUE(IsRecorderFile("rec.z0f"));
    EXPECT_FALSE(IsRecorderFile("rec.z10"));
    EXPECT_FALSE(IsRecorderFile("rec.cfg"));
}
