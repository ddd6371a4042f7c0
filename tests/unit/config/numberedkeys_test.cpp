// The numbered keys of a section: which numbers are there, whatever the highest number searched for.
#include "config/QSettingsRu.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace {

using Numbers = std::vector<unsigned int>;

Numbers NumbersIn(const QByteArray& lines, unsigned int highest)
{
    const TestDirectory directory;
    QSettingsRu ini(directory.Write(QStringLiteral("a.ini"), "[S]\n" + lines), nullptr);
    ini.group = QStringLiteral("S");
    Numbers numbers = ini.NumberedKeys(QStringLiteral("A"), highest);
    QSettingsRu::Clear();
    return numbers;
}

} // namespace

TEST(NumberedKeys, ComeInNumberOrder)
{
    EXPECT_EQ(NumbersIn("A100=\nA02=x\nA99=x\nA10=x\nA01=x\n", 1000), (Numbers{1, 2, 10, 99, 100}));
}

TEST(NumberedKeys, StopAtTheHighest)
{
    EXPECT_EQ(NumbersIn("A01=x\nA03=x\nA04=x\n", 3), (Numbers{1, 3}));
    EXPECT_EQ(NumbersIn("A01=x\n", 0), Numbers{});
}

TEST(NumberedKeys, AreFoundAtOnceUnderAHighestOfBillions)
{
    EXPECT_EQ(NumbersIn("A01=x\nA-294967297=x\nA1000000=x\n", 4000000000U),
              (Numbers{1, 1000000, 3999999999U}));
}

TEST(NumberedKeys, OtherSpellingsOfANumberAreNotFound)
{
    EXPECT_EQ(
        NumbersIn("A1=x\nA001=x\nA+1=x\nA 01=x\nA01x=x\nA=x\nA00=x\nA0=x\na01=x\nB01=x\nA4294967297=x\n", 99),
        Numbers{});
}

TEST(NumberedKeys, OfAnotherSectionAreNotFound)
{
    EXPECT_EQ(NumbersIn("A01=x\n[SA]\nA02=x\n[T]\nA03=x\n[R]\nA04=x\n", 99), Numbers{1});
}

TEST(NumberedKeys, HaveTwoDigitsAtLeast)
{
    EXPECT_EQ(QSettingsRu::NumberedKey(QStringLiteral("A"), 1), "A01");
    EXPECT_EQ(QSettingsRu::NumberedKey(QStringLiteral("D"), 10), "D10");
    EXPECT_EQ(QSettingsRu::NumberedKey(QStringLiteral("BAY"), 100), "BAY100");
}
