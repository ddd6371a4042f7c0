// Numbers as texts, which are the same with every Qt.
#include "text/numbers.h"

#include <gtest/gtest.h>

#include <QJsonArray>

using text::JsonText;
using text::ShortestNumber;

namespace {

QByteArray Compact(const QJsonArray& values)
{
    return JsonText(QJsonDocument(values), QJsonDocument::Compact);
}

} // namespace

TEST(Numbers, OfOneDigitHaveNoExponentWhereQt5HasNone)
{
    EXPECT_EQ(ShortestNumber(0.0007), "0.0007");
    EXPECT_EQ(ShortestNumber(-0.0001), "-0.0001");
    EXPECT_EQ(ShortestNumber(100000), "100000");
    EXPECT_EQ(ShortestNumber(-700000), "-700000");
}

TEST(Numbers, OfMoreDigitsAndOtherSizesAreAsTheyAre)
{
    EXPECT_EQ(ShortestNumber(0.00012), "0.00012");
    EXPECT_EQ(ShortestNumber(0.00007), "7e-05");
    EXPECT_EQ(ShortestNumber(1e6), "1e+06");
    EXPECT_EQ(ShortestNumber(1.5e-7), "1.5e-07");
    EXPECT_EQ(ShortestNumber(0.1), "0.1");
}

TEST(JsonTexts, HaveTheSameNumbersWithEveryQt)
{
    EXPECT_EQ(Compact({0.0007, -0.0001, 0.00012, 100000.0, 0.5, 7}), "[0.0007,-0.0001,0.00012,100000,0.5,7]");
}

TEST(JsonTexts, KeepWhatLooksLikeANumberInATextAsItIs)
{
    EXPECT_EQ(Compact({0.0007, "7e-04", "\"7e-04", "1e+05\\", 0.0001}),
              R"([0.0007,"7e-04","\"7e-04","1e+05\\",0.0001])");
}
