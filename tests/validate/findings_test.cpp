// What the findings say, how many of a kind are kept, and records that nobody has written on purpose.
#include "support/files.h"
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// A record of revision 2013 in one file, with so many analog channels, all with a multiplier a.
QByteArray Container(int channels, const char* a)
{
    QByteArray text = "--- file type: CFG ---\r\nStation,Recorder,2013\r\n" + QByteArray::number(channels) +
                      "," + QByteArray::number(channels) + "A,0D\r\n";
    for (int i = 1; i <= channels; ++i)
        text += QByteArray::number(i) + ",I,A,Line,A," + a + ",0,0,-9,9,1,1,P\r\n";
    text += "50\r\n1\r\n1000,2\r\n31/01/2024,12:00:00.000000\r\n31/01/2024,12:00:00.001000\r\nASCII\r\n1\r\n"
            "+3,+3\r\n0,3\r\n--- file type: INF ---\r\n[Public Record_Information]\r\nSource=R\r\n"
            "[Public File_Description]\r\nStation_Name=Station\r\n--- file type: HDR ---\r\nreport\r\n"
            "--- file type: DAT ASCII ---\r\n";
    for (const char* start : {"1,0", "2,1000"})
        text += start + QByteArray(",7").repeated(channels) + "\r\n";
    return text;
}

std::vector<comtrade::Finding> FindingsOf(const QByteArray& container)
{
    const TestDirectory directory;
    return validate::Validate(directory.Write("rec.cff", container));
}

QByteArray Spoilt(QByteArray bytes, std::mt19937& random)
{
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    for (int change = 1 + below(3); change > 0 && !bytes.isEmpty(); --change) {
        const int place = below(bytes.size());
        const int kind = below(3);
        if (kind == 0)
            bytes[place] = static_cast<char>(below(256));
        else if (kind == 1)
            bytes.remove(place, 1 + below(20));
        else
            bytes.insert(place, bytes.mid(below(bytes.size()), 1 + below(20)));
    }
    return bytes;
}

} // namespace

TEST(Findings, SayTheRuleWhatIsThereAndWhatToDo)
{
    const std::vector<comtrade::Finding> findings = FindingsOf(Container(1, "0"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(findings[0].file.endsWith("/rec.cff"));
    EXPECT_EQ(findings[0].line, 4);
    EXPECT_EQ(findings[0].column, 15);
    EXPECT_EQ(findings[0].severity, Severity::Warning);
    EXPECT_STREQ(findings[0].reason, "zeroMultiplier");
    EXPECT_EQ(findings[0].text,
              "the multiplier a is 0, so that all values of the channel are b; give the value "
              "of one unit of the data");
}

TEST(Findings, PercentSignsOfTheRecordStay)
{
    QByteArray container = Container(1, "1");
    container.replace("Station_Name=Station", "Station_Name=%2 %3");
    const std::vector<comtrade::Finding> findings = FindingsOf(container);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].text,
              "Station_Name is '%2 %3', but the configuration says 'Station'; they must be the same");
}

TEST(Findings, OfAKindTheFirstTenAreKeptAndTheLastSaysHowManyThereAre)
{
    const std::vector<comtrade::Finding> findings = FindingsOf(Container(25, "0"));
    ASSERT_EQ(findings.size(), 10U);
    EXPECT_EQ(findings.back().line, 13);
    EXPECT_TRUE(findings.back().text.endsWith(" (and 15 more of this kind in the file)"))
        << findings.back().text.toStdString();
    EXPECT_FALSE(findings.front().text.contains("more of this kind"));
}

TEST(Findings, AFileThatIsNoRecordIsAnError)
{
    const TestDirectory directory;
    directory.Write("rec.cfg", "no configuration");
    for (const auto& [name, word] :
         {std::make_pair("none.cfg", "doesNotExist"), std::make_pair("rec.cfg", "recordUnreadable")}) {
        const std::vector<comtrade::Finding> findings = validate::Validate(directory.Path(name));
        ASSERT_EQ(findings.size(), 1U) << name;
        EXPECT_STREQ(findings[0].reason, word);
        EXPECT_EQ(findings[0].severity, Severity::Error);
    }
}

TEST(Findings, AreMadeOfAnythingWithoutACrash)
{
    const QByteArray record = Container(3, "0.5");
    std::mt19937 random(20240131);
    int wrong = 0;
    for (int i = 0; i < 1000; ++i)
        wrong += FindingsOf(Spoilt(record, random)).empty() ? 0 : 1;
    EXPECT_GT(wrong, 500);
}
