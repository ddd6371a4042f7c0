// The CFG file as a whole: its rows, its codec and what it leaves on the first segment.
#include "resorter/ResorterZuCmtrConv.h"
#include "support/readyrecording.h"
#include "unit/writers/stoppingcodec.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;

// 2 s at 2400 samples a second: one analog and one discrete channel.
Recording Example()
{
    AnalogChannel channel{"Q1:Ia", "A", std::vector<int16_t>(4800, 0)};
    channel.primary = 1000;
    channel.scale = 0.0625F;
    return Recording().Add(channel).Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}});
}

constexpr char ExampleHead[] = "Object,Source,2013\n"
                               "2,1A,1D\n"
                               "1,Ia Q1,A,Q1,A,62.5,0,0,-32767,32767,1000,1,P\n"
                               "1,x Q1,,Q1,0\n"
                               "50\n"
                               "1\n"
                               "2400,4800\n"
                               "31/01/2024,11:59:59.750000\n"
                               "31/01/2024,12:00:00.250000\n";

QList<QByteArray> CfgRows(const Recording& recording, const QByteArray& deviceLines = QByteArray())
{
    TestStation station(deviceLines);
    return ReadyRecording(station, recording).Cfg().split('\n');
}

} // namespace

TEST(CfgFile, OfRevision2013IsExact)
{
    TestStation station;
    ASSERT_TRUE(station.Convert(recorderfile::Encode(Example())));
    EXPECT_EQ(station.Output("cfg"), QByteArray(ExampleHead) + "ASCII\n1\n+3,+3\n0,3\n");
}

TEST(CfgFile, OfRevision1999EndsWithTheTimeMultiplier)
{
    TestStation station("Тип Comtrade 1999=1");
    ASSERT_TRUE(station.Convert(recorderfile::Encode(Example())));
    EXPECT_EQ(station.Output("cfg"), QByteArray(ExampleHead).replace("2013", "1999") + "ASCII\n1\n");
}

TEST(CfgFile, OfBinaryDataSaysSo)
{
    TestStation station("Тип Comtrade BIN=1");
    ASSERT_TRUE(station.Convert(recorderfile::Encode(Example())));
    EXPECT_EQ(station.Output("cfg"), QByteArray(ExampleHead) + "Binary\n1\n+3,+3\n0,3\n");
}

TEST(CfgFile, WithoutAnalogChannelsGoesOnWithTheDiscreteOnes)
{
    const QList<QByteArray> rows = CfgRows(Recording().Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}}));
    EXPECT_EQ(rows[1], "1,0A,1D");
    EXPECT_EQ(rows[2], "1,,,,0"); // no analog name, so that the discrete one is not taken apart
    EXPECT_EQ(rows[3], "50");
}

TEST(CfgFile, WithoutChannelsCountsNone)
{
    const QList<QByteArray> rows = CfgRows(Recording());
    EXPECT_EQ(rows[1], "0,0A,0D");
    EXPECT_EQ(rows[2], "50");
}

TEST(CfgFile, CountsEveryKind)
{
    Recording recording;
    for (int i = 0; i < 12; ++i)
        recording.Add(AnalogChannel{QStringLiteral("Q1:I%1").arg(i), "A", {1}});
    for (int i = 0; i < 3; ++i)
        recording.Add(DiscreteChannel{QStringLiteral("Q1:x%1").arg(i)});
    EXPECT_EQ(CfgRows(recording)[1], "15,12A,3D");
}

TEST(CfgFile, MarkerInTheStationNameIsFilledByTheNextValue)
{
    EXPECT_EQ(CfgRows(Recording(), "Объект=St%2on\nИсточник=Dev%3")[0], "StDev2013on,Dev2013,2013");
}

TEST(CfgFile, Cp1251NameOutsideTheCodePageGetsTheSubstitute)
{
    const QList<QByteArray> rows = CfgRows(Recording().Add(AnalogChannel{"Q1:I─Ж", "A", {1}}));
    EXPECT_EQ(rows[2], "1,I?\xC6 Q1,?\xC6,Q1,A,1,0,0,-32767,32767,1,1,P");
}

TEST(CfgFile, Utf8NameIsWrittenWhole)
{
    const QList<QByteArray> rows =
        CfgRows(Recording().Add(AnalogChannel{"Q1:I─Ж", "A", {1}}), "Кодировка Comtrade UTF8=1");
    EXPECT_EQ(rows[2], "1,I─Ж Q1,─Ж,Q1,A,1,0,0,-32767,32767,1,1,P");
}

TEST(CfgFile, StampsHaveSixDigitsOfMicroseconds)
{
    Recording recording = Example();
    recording.startMicroseconds = 42;
    recording.trigMicroseconds = 0;
    const QList<QByteArray> rows = CfgRows(recording);
    EXPECT_EQ(rows[7], "31/01/2024,11:59:59.000042");
    EXPECT_EQ(rows[8], "31/01/2024,12:00:00.000000");
}

struct Rate
{
    double rate;
    const char* text;
};

class CfgRate : public testing::TestWithParam<Rate>
{};

TEST_P(CfgRate, HasSixSignificantDigits)
{
    TestStation station;
    ReadyRecording recording(station, Example());
    station.Device().SampleRate = GetParam().rate;
    station.Device().TotalSamples = 5000000000;
    EXPECT_EQ(recording.Cfg().split('\n')[6], QByteArray(GetParam().text) + ",5000000000");
}

INSTANTIATE_TEST_SUITE_P(OfDevice, CfgRate,
                         testing::Values(Rate{1000, "1000"}, Rate{2400, "2400"}, Rate{1000000, "1e+06"},
                                         Rate{999999, "999999"}, Rate{1234567, "1.23457e+06"},
                                         Rate{2400.5, "2400.5"}, Rate{0.5, "0.5"}, Rate{1e-5, "1e-05"},
                                         Rate{333.3333, "333.333"}));

struct Zone
{
    qint32 seconds;
    const char* field;
};

class CfgZone : public testing::TestWithParam<Zone>
{};

TEST_P(CfgZone, IsTruncatedToMinutes)
{
    TestStation station("Кодировка Comtrade UTF8=1");
    ReadyRecording recording(station, Example());
    recording.First().TimeZoneSeconds = GetParam().seconds;
    EXPECT_EQ(recording.Cfg().split('\n')[11], QByteArray(GetParam().field) + ",+3");
}

INSTANTIATE_TEST_SUITE_P(OfRecordings, CfgZone,
                         testing::Values(Zone{0, "0"}, Zone{59, "0"}, Zone{60, "+00ч01"},
                                         Zone{1800, "+00ч30"}, Zone{3600, "+1"}, Zone{3659, "+1"},
                                         Zone{10800, "+3"}, Zone{12600, "+03ч30"}, Zone{18000, "+5"},
                                         Zone{19800, "+05ч30"}, Zone{43200, "+12"}, Zone{45900, "+12ч45"},
                                         Zone{-59, "0"}, Zone{-7200, "-2"}, Zone{-12600, "-03ч30"}));

TEST(CfgFile, LetterOfTheZoneGoesThroughTheCodec)
{
    Recording recording = Example();
    recording.timeZone = 330; // minutes
    EXPECT_EQ(CfgRows(recording)[11], "+05\xF7"
                                      "30,+3");
}

TEST(CfgFile, LeavesItsTextsOnTheFirstSegment)
{
    TestStation station;
    ReadyRecording recording(station, {Example(), Example()});
    recording.Cfg();
    const ZuFileFormat& first = recording.First();
    EXPECT_EQ(first.CfgAnLines, std::vector<QString>{"1,Ia Q1,A,Q1,A,62.5,0,0,-32767,32767,1000,1,P"});
    EXPECT_EQ(first.CfgDiLines, std::vector<QString>{"1,x Q1,,Q1,0"});
    EXPECT_EQ(first.CfgStartStamp, "31/01/2024,11:59:59.750000");
    EXPECT_EQ(first.CfgTrigStamp, "31/01/2024,12:00:00.250000");
    EXPECT_EQ(first.CfgDataType, "ASCII");
    EXPECT_EQ(first.CfgTimeMult, "1");
    EXPECT_EQ(first.CfgSamples, "9600");
    EXPECT_TRUE(recording.Files()->at(1)->CfgAnLines.empty());
    EXPECT_FALSE(station.Device().FileCfg.isOpen());
}

TEST(CfgFile, WrittenAgainHasTheSameLines)
{
    TestStation station;
    ReadyRecording recording(station, Example());
    const QByteArray once = recording.Cfg();
    EXPECT_EQ(recording.Cfg(), once);
    EXPECT_EQ(recording.First().CfgAnLines.size(), 1U);
    EXPECT_EQ(recording.First().CfgDiLines.size(), 1U);
}

TEST(CfgFile, ThatCannotBeOpenedFailsAndLeavesNothing)
{
    TestStation station;
    ReadyRecording recording(station, Example());
    station.Device().FileCfg.setFileName(station.Directory().Path("no/such/cfg"));
    EXPECT_FALSE(station.Converter().WriteCfg(recording.Files(), &station.Device()));
    EXPECT_TRUE(recording.First().CfgAnLines.empty());
    EXPECT_TRUE(recording.First().CfgStartStamp.isNull());
}

class CfgStopped : public testing::TestWithParam<int>
{};

TEST_P(CfgStopped, AtALineFailsAndStaysOpen)
{
    const int lines = GetParam();
    TestStation station;
    ReadyRecording recording(station, Example());
    {
        const StoppedWriting stopped(lines);
        EXPECT_FALSE(station.Converter().WriteCfg(recording.Files(), &station.Device()));
    }
    const ZuFileFormat& first = recording.First();
    EXPECT_TRUE(station.Device().FileCfg.isOpen());
    EXPECT_EQ(first.CfgAnLines.size(), lines >= 2 ? 1U : 0U);
    EXPECT_EQ(first.CfgDiLines.size(), lines >= 3 ? 1U : 0U);
    EXPECT_EQ(first.CfgTimeMult, lines >= 11 ? "1" : QString());
    EXPECT_EQ(first.CfgSamples, lines >= 11 ? "4800" : QString());
    station.Device().FileCfg.close();
    EXPECT_EQ(ReadBytes(station.Directory().Path("cfg")).count('\n'), lines);
}

INSTANTIATE_TEST_SUITE_P(AtEveryLine, CfgStopped, testing::Range(0, 13));

TEST(CfgFile, WithoutSegmentsIsOutOfRange)
{
    TestStation station;
    const ReadyRecording recording(station, Example());
    std::vector<ZuFileFormat*> none;
    EXPECT_THROW(station.Converter().WriteCfg(&none, &station.Device()), std::out_of_range);
}

TEST(CfgFile, WithAnOrderThatDoesNotFitIsOutOfRange)
{
    for (const std::vector<unsigned int>& order : {std::vector<unsigned int>{}, {1U}}) {
        TestStation station;
        ReadyRecording recording(station, Example());
        station.Device().Resorter->PrevFileAnIndexes = order;
        EXPECT_THROW(station.Converter().WriteCfg(recording.Files(), &station.Device()), std::out_of_range);
        station.Device().FileCfg.close();
        station.Device().Resorter->PrevFileAnIndexes = {0};
        station.Device().Resorter->PrevFileDiIndexes = order;
        EXPECT_THROW(station.Converter().WriteCfg(recording.Files(), &station.Device()), std::out_of_range);
    }
}

TEST(LineWriter, AppendsALineFeedAlone)
{
    const TestDirectory directory;
    QFile file(directory.Path("text"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Text));
    EXPECT_TRUE(ZuCmtrConverter::WriteStringToOutFile(file, "№", ZuCmtrConverter::codec_CP1251));
    EXPECT_TRUE(ZuCmtrConverter::WriteStringToOutFile(file, "", ZuCmtrConverter::codec_UTF8));
    EXPECT_TRUE(ZuCmtrConverter::WriteStringToOutFile(file, "№", ZuCmtrConverter::codec_UTF8));
    file.close();
    EXPECT_EQ(ReadBytes(directory.Path("text")), "\xB9\n\n№\n");
}

TEST(LineWriter, FailedWriteCountsAsSuccess)
{
    QFile full("/dev/full");
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_EQ(full.write("x", 1), -1);
    EXPECT_TRUE(ZuCmtrConverter::WriteStringToOutFile(full, "x", ZuCmtrConverter::codec_UTF8));
}

TEST(LineWriter, WriteOfNothingIsAFailure)
{
    const TestDirectory directory;
    QFile file(directory.Path("text"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const StoppedWriting stopped(0);
    EXPECT_FALSE(ZuCmtrConverter::WriteStringToOutFile(file, "x", ZuCmtrConverter::codec_CP1251));
}
