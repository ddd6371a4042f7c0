// Which files make up a recording.
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <QFile>

namespace {

class Chain : public testing::Test
{
protected:
    // Writes a segment whose samples all have this code.
    void Write(const QString& name, int16_t code = 1) { station.Directory().Write(name, SmallFile(code)); }

    // Converts and returns the codes of the segments in the DAT file, one per segment.
    QString Codes(const QString& name)
    {
        EXPECT_TRUE(station.Converter().ConvertToComtrade(station.Directory().Path(name),
                                                          station.Directory().Path("out"), 0));
        QStringList codes;
        const QStringList records = ReadLines(station.Directory().Path(OutFile(".dat")));
        for (int i = 0; i < records.size(); i += 24)
            codes.append(records.at(i).section(',', 2, 2));
        return codes.join(' ');
    }

    TestStation station;
};

} // namespace

TEST_F(Chain, FirstFileAloneIsARecording)
{
    Write("rec.ZU", 5);
    EXPECT_EQ(Codes("rec.ZU"), "5");
    EXPECT_EQ(station.Device().TotalSamples, 24);
    EXPECT_EQ(station.Device().TotalTime, 10000U);
}

TEST_F(Chain, CapitalFirstFileContinuesInCapitals)
{
    Write("rec.ZU", 5);
    Write("rec.Z01", 6);
    Write("rec.z02", 7);
    EXPECT_EQ(Codes("rec.ZU"), "5 6");
}

TEST_F(Chain, SmallFirstFileContinuesInSmallLetters)
{
    Write("rec.zu", 5);
    Write("rec.z01", 6);
    Write("rec.Z02", 7);
    EXPECT_EQ(Codes("rec.zu"), "5 6");
}

TEST_F(Chain, GapEndsTheChainUnseen)
{
    Write("rec.zu", 5);
    station.Directory().Write("rec.z02", "not a recorder file");
    EXPECT_EQ(Codes("rec.zu"), "5");
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST_F(Chain, GapAfterASecondFileEndsTheChainToo)
{
    Write("rec.ZU", 5);
    Write("rec.Z01", 6);
    station.Directory().Write("rec.Z03", "not a recorder file");
    EXPECT_EQ(Codes("rec.ZU"), "5 6");
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST_F(Chain, FifteenContinuationsAreReadAndNothingBeyond)
{
    const QStringList extensions = {"01", "02", "03", "04", "05", "06", "07", "08",
                                    "09", "0a", "0b", "0c", "0d", "0e", "0f"};
    Write("rec.ZU", 100);
    int16_t code = 100;
    for (const QString& extension : extensions)
        Write("rec.Z" + extension, ++code);
    for (const char* beyond : {"rec.Z10", "rec.Z0g", "rec.Z16"})
        station.Directory().Write(beyond, "not a recorder file");
    EXPECT_EQ(Codes("rec.ZU"), "100 101 102 103 104 105 106 107 108 109 110 111 112 113 114 115");
    EXPECT_EQ(station.Device().TotalSamples, 16 * 24);
    EXPECT_EQ(station.Device().TotalTime, 16U * 10000U);
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST_F(Chain, HexadecimalExtensionsAreInSmallLetters)
{
    Write("rec.ZU", 0);
    for (int16_t n = 1; n <= 9; ++n)
        Write(QStringLiteral("rec.Z0%1").arg(n), n);
    Write("rec.Z0A", 10);
    EXPECT_EQ(Codes("rec.ZU"), "0 1 2 3 4 5 6 7 8 9");
}

TEST_F(Chain, ContinuationsAreSearchedForBesideTheFirstFile)
{
    Write("a/rec.ZU", 5);
    Write("rec.Z01", 6);
    Write("a/rec.Z01", 7);
    EXPECT_EQ(Codes("a/rec.ZU"), "5 7");
}

TEST_F(Chain, OnlyTheFirstSegmentGivesNameAndTimes)
{
    recorderfile::Recording later = SmallRecording(6);
    later.trigTime += 3600;
    Write("rec.ZU", 5);
    station.Directory().Write("rec.Z01", recorderfile::Encode(later));
    EXPECT_EQ(Codes("rec.ZU"), "5 6");
    EXPECT_EQ(station.Directory().Names("out"), OutNames({".cfg", ".dat", ".hdr", ".inf"}));
}
