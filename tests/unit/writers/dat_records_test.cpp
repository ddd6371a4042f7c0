// The records of the DAT file: layout, times and the walk over the segments.
#include "resorter/ResorterZuCmtrConv.h"
#include "support/readyrecording.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;

const QByteArray Binary("Тип Comtrade BIN=1");

// A channel that is on from the start.
DiscreteChannel On(const QString& name)
{
    return DiscreteChannel{name, 0, {{0, 1}}};
}

QByteArray Dat(const std::vector<Recording>& segments, const QByteArray& deviceLines = QByteArray())
{
    TestStation station(deviceLines);
    return ReadyRecording(station, segments).Dat();
}

// A recording of one analog channel with this many samples and the rate.
Recording OfRate(float rate, size_t samples)
{
    AnalogChannel channel{"Q1:Ia", "A", std::vector<int16_t>(samples, 7)};
    channel.rate = rate;
    return Recording().Add(channel);
}

// Two codes at 2400 samples per second, and a channel that turns on at the second sample.
Recording Example()
{
    return Recording()
        .Add(AnalogChannel{"Q1:Ia", "A", {123, 130}})
        .Add(DiscreteChannel{"Q1:x", 0, {{0, 0}, {417, 1}}});
}

// One analog sample and count channels, of which only the given one is on.
Recording WithChannelOn(int count, int on)
{
    Recording recording;
    recording.Add(AnalogChannel{"Q1:Ia", "A", {1}});
    for (int i = 0; i < count; ++i)
        recording.Add(DiscreteChannel{QStringLiteral("Q1:x%1").arg(i), 0, {{0, uint8_t(i == on)}}});
    return recording;
}

} // namespace

TEST(DatAscii, RecordIsNumberTimeCodesAndStates)
{
    EXPECT_EQ(Dat({Example()}), "1,0,123,0\n2,417,130,1\n");
}

TEST(DatBinary, RecordIsNumberTimeCodesAndWords)
{
    TestStation station(Binary);
    EXPECT_EQ(ReadyRecording(station, Example()).Dat().toHex(' '),
              "01 00 00 00 00 00 00 00 7b 00 00 00 02 00 00 00 a1 01 00 00 82 00 01 00");
    EXPECT_EQ(station.Device().DatBytes, 24);
    EXPECT_FALSE(station.Device().FileDat.isOpen());
}

TEST(DatBinary, BytesAreCountedAnew)
{
    TestStation station(Binary);
    station.Device().DatBytes = 999;
    ReadyRecording recording(station, Example());
    recording.Dat();
    EXPECT_EQ(station.Device().DatBytes, 24);
}

TEST(DatAscii, BytesAreNotCounted)
{
    TestStation station;
    station.Device().DatBytes = 999;
    ReadyRecording(station, Example()).Dat();
    EXPECT_EQ(station.Device().DatBytes, 999);
}

TEST(DatAscii, CodesOfAllSizesAreWhole)
{
    EXPECT_EQ(Dat({Recording().Add(AnalogChannel{"Q1:Ia", "A", {-32768, 32767, 0, -1, 10}})}),
              "1,0,-32768\n2,417,32767\n3,833,0\n4,1250,-1\n5,1667,10\n");
}

TEST(DatBinary, SixteenChannelsFillOneWord)
{
    EXPECT_EQ(Dat({WithChannelOn(16, 15)}, Binary).mid(8).toHex(' '), "01 00 00 80");
    EXPECT_EQ(Dat({WithChannelOn(16, 0)}, Binary).mid(8).toHex(' '), "01 00 01 00");
    EXPECT_EQ(Dat({WithChannelOn(16, 8)}, Binary).mid(8).toHex(' '), "01 00 00 01");
}

TEST(DatBinary, SeventeenthChannelStartsASecondWord)
{
    EXPECT_EQ(Dat({WithChannelOn(17, 16)}, Binary).mid(8).toHex(' '), "01 00 00 00 01 00");
    EXPECT_EQ(Dat({WithChannelOn(17, 15)}, Binary).mid(8).toHex(' '), "01 00 00 80 00 00");
}

TEST(DatRecords, WithoutDiscreteChannelsEndWithTheCodes)
{
    EXPECT_EQ(Dat({OfRate(1000, 1)}), "1,0,7\n");
    EXPECT_EQ(Dat({OfRate(1000, 1)}, Binary).toHex(' '), "01 00 00 00 00 00 00 00 07 00");
}

TEST(DatRecords, WithoutAnalogChannelsHoldStatesOnly)
{
    // 1001 microseconds at 2400 samples per second hold 2 samples.
    Recording recording;
    recording.duration = 1000;
    recording.Add(On("Q1:x")).Add(DiscreteChannel{"Q1:y", 0, {{0, 0}, {833, 1}}});
    TestStation ascii;
    ASSERT_TRUE(ascii.Convert(recorderfile::Encode(recording)));
    EXPECT_EQ(ascii.Output("dat"), "1,0,1,0\n2,417,1,0\n");
    TestStation binary(Binary);
    ASSERT_TRUE(binary.Convert(recorderfile::Encode(recording)));
    EXPECT_EQ(binary.Output("dat").toHex(' '), "01 00 00 00 00 00 00 00 01 00 02 00 00 00 a1 01 00 00 01 00");
}

TEST(DatRecords, WithoutAnyChannelHoldNumberAndTime)
{
    TestStation station;
    ReadyRecording recording(station, Recording());
    station.Device().TotalSamples = 2;
    EXPECT_EQ(recording.Dat(), "1,0\n2,417\n");
}

TEST(DatRecords, OfNoSamplesAreNone)
{
    for (const QByteArray& form : {QByteArray(), Binary}) {
        for (const qint64 samples : {0, -1}) {
            TestStation station(form);
            ReadyRecording recording(station, Example());
            station.Device().TotalSamples = samples;
            EXPECT_EQ(recording.Dat(), "");
        }
    }
}

TEST(DatTimes, RunInWholeMicroseconds)
{
    EXPECT_EQ(Dat({OfRate(1000, 3)}), "1,0,7\n2,1000,7\n3,2000,7\n");
    EXPECT_EQ(Dat({OfRate(3000, 4)}), "1,0,7\n2,333,7\n3,667,7\n4,1000,7\n");
}

TEST(DatTimes, HalvesAreRoundedUp)
{
    Recording recording = OfRate(400000, 4);
    recording.duration = 100;
    EXPECT_EQ(Dat({recording}), "1,0,7\n2,3,7\n3,5,7\n4,8,7\n");
}

TEST(DatTimes, BeyondThirtyTwoBitsWrapInBinaryOnly)
{
    // One sample in 256 s: the 18th comes after 2^32 microseconds, in a segment that starts before that.
    const auto write = [](const QByteArray& form) {
        std::vector<Recording> segments = {OfRate(1.0F / 256.0F, 16), OfRate(1.0F / 256.0F, 2)};
        segments[0].duration = segments[1].duration = 1;
        TestStation station(form);
        ReadyRecording recording(station, segments);
        recording.First().SegmentDuration = 4096000000U; // more than a header may say
        recording.Files()->back()->SegmentTimeBase = 4096000000;
        recording.Files()->back()->SegmentDuration = 512000000;
        return recording.Dat();
    };
    EXPECT_TRUE(write(QByteArray()).endsWith("\n17,4096000000,7\n18,4352000000,7\n"));
    const QByteArray binary = write(Binary);
    EXPECT_EQ(binary.size(), 180);
    EXPECT_EQ(binary.mid(164, 4).toHex(), "000024f4"); // 4096000000
    EXPECT_EQ(binary.mid(174, 4).toHex(), "00406603"); // 4352000000 - 2^32
}

TEST(DatOrder, IsThatOfTheCfgFileForCodesAndStates)
{
    const QByteArray order = "nAnMax=1\nA01=Q2:Ia,V_L=110 E_G=L S_G=CT\n"
                             "nDiMax=1\nD01=Q2:x,V_L=110 E_G=L D_G=RP S_T=FD\n";
    const Recording recording = Recording()
                                    .Add(AnalogChannel{"Q1:Ia", "A", {1}})
                                    .Add(AnalogChannel{"Q2:Ia", "A", {2}})
                                    .Add(DiscreteChannel{"Q1:x"})
                                    .Add(On("Q2:x"));
    EXPECT_EQ(Dat({recording}, order), "1,0,2,1,1,0\n");
    EXPECT_EQ(Dat({recording}, order + Binary).mid(8).toHex(' '), "02 00 01 00 01 00");
}

TEST(DatSegments, NumberAndTimeRunOnWhileTheSampleRestarts)
{
    const Recording first = Recording()
                                .Add(AnalogChannel{"Q1:Ia", "A", {1, 2}, 1000})
                                .Add(DiscreteChannel{"Q1:x", 0, {{0, 0}, {1000, 1}}});
    const Recording second = Recording()
                                 .Add(AnalogChannel{"Q1:Ia", "A", {3, 4}, 1000})
                                 .Add(DiscreteChannel{"Q1:x", 0, {{0, 0}, {1000, 1}}});
    EXPECT_EQ(Dat({first, second}), "1,0,1,0\n2,1000,2,1\n3,2000,3,0\n4,3000,4,1\n");
}

TEST(DatSegments, EndWithTheLastOfThemThoughMoreSamplesAreCounted)
{
    TestStation station;
    ReadyRecording recording(station, {OfRate(1000, 2), OfRate(1000, 2)});
    station.Device().TotalSamples = 100;
    EXPECT_EQ(recording.Dat(), "1,0,7\n2,1000,7\n3,2000,7\n4,3000,7\n");
}

TEST(DatSegments, ShorterThanTheirSamplesGiveWayToTheNext)
{
    Recording first = OfRate(1000, 4);
    first.duration = 2000;
    Recording second = OfRate(1000, 2);
    std::get<AnalogChannel>(second.sections[0]).samples = {8, 9};
    EXPECT_EQ(Dat({first, second}), "1,0,7\n2,1000,7\n3,2000,8\n4,3000,9\n");
}

TEST(DatSegments, OneIsPassedOverForOneRecordAtMost)
{
    Recording empty = OfRate(1000, 1);
    std::get<AnalogChannel>(empty.sections[0]).samples = {5};
    empty.duration = 0;
    // The third record is in the first empty segment, whatever its time, and the fourth in the next.
    EXPECT_EQ(Dat({OfRate(1000, 2), empty, empty, OfRate(1000, 2)}),
              "1,0,7\n2,1000,7\n3,2000,5\n4,3000,5\n5,4000,7\n");
}

TEST(DatSegments, TimeThatFallsWithinASegmentAsksTheStatesAnew)
{
    // Records 2200 s apart: the second is 2199999900 microseconds into the last segment, and the third, in 32
    // bits, 105032604.
    Recording first = OfRate(1000, 1);
    first.duration = 100;
    first.Add(DiscreteChannel{"Q1:x"});
    Recording last = OfRate(1000, 2);
    last.duration = 200000000;
    last.Add(DiscreteChannel{"Q1:x", 0, {{0, 0}, {100000000, 1}, {150000000, 0}}});
    TestStation station;
    ReadyRecording recording(station, {first, last});
    station.Device().SampleRate = 1e6 / 2.2e9;
    EXPECT_EQ(recording.Dat(), "1,0,7,0\n2,2200000000,7,0\n3,4400000000,7,1\n");
}

TEST(DatMissing, SamplesAreMarked)
{
    // The duration requires four samples of the first segment, which has two.
    Recording first =
        Recording().Add(AnalogChannel{"Q1:Ia", "A", {1, 2}, 1000}).Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}});
    first.duration = 4000;
    const Recording second =
        Recording().Add(AnalogChannel{"Q1:Ia", "A", {3, 4}, 1000}).Add(DiscreteChannel{"Q1:x", 0, {{0, 1}}});
    EXPECT_EQ(Dat({first, second}), "1,0,1,1\n2,1000,2,1\n3,2000,,1\n4,3000,,1\n");
    EXPECT_EQ(Dat({first, second}, Binary).mid(24).toHex(' '),
              "03 00 00 00 d0 07 00 00 00 80 01 00 04 00 00 00 b8 0b 00 00 00 80 01 00");
}

TEST(DatMissing, ChannelAloneIsMarked)
{
    const Recording recording = Recording()
                                    .Add(AnalogChannel{"Q1:Ia", "A", {1, 2, 3}, 1000})
                                    .Add(AnalogChannel{"Q1:Ib", "A", {4}, 1000})
                                    .Add(AnalogChannel{"Q1:Ic", "A", {5, 6, 7}, 1000});
    EXPECT_EQ(Dat({recording}), "1,0,1,4,5\n2,1000,2,,6\n3,2000,3,,7\n");
    EXPECT_EQ(Dat({recording}, Binary).mid(14 + 8, 6).toHex(' '), "02 00 00 80 06 00");
}

TEST(DatFile, ThatCannotBeOpenedFails)
{
    for (const QByteArray& form : {QByteArray(), Binary}) {
        TestStation station(form);
        ReadyRecording recording(station, Example());
        station.Device().FileDat.setFileName(station.Directory().Path("no/such/dat"));
        EXPECT_FALSE(station.Converter().WriteDat(recording.Files(), &station.Device()));
    }
}

TEST(DatFile, BinaryWriteToAFullDiskFailsAndStaysOpen)
{
    TestStation station(Binary);
    ReadyRecording recording(station, OfRate(1000, 100000));
    station.Device().FileDat.setFileName("/dev/full");
    EXPECT_FALSE(station.Converter().WriteDat(recording.Files(), &station.Device()));
    EXPECT_TRUE(station.Device().FileDat.isOpen());
    EXPECT_EQ(station.Device().DatBytes, 0);
}

TEST(DatFile, LastBinaryBlockOnAFullDiskFails)
{
    TestStation station(Binary);
    ReadyRecording recording(station, OfRate(1000, 4000)); // 40000 bytes, written at the end
    station.Device().FileDat.setFileName("/dev/full");
    EXPECT_FALSE(station.Converter().WriteDat(recording.Files(), &station.Device()));
    EXPECT_TRUE(station.Device().FileDat.isOpen());
}

TEST(DatFile, AsciiWriteToAFullDiskCountsAsSuccess)
{
    TestStation station;
    ReadyRecording recording(station, OfRate(1000, 100000));
    station.Device().FileDat.setFileName("/dev/full");
    EXPECT_TRUE(station.Converter().WriteDat(recording.Files(), &station.Device()));
    EXPECT_FALSE(station.Device().FileDat.isOpen());
}

TEST(DatFile, WithoutSegmentsIsOutOfRange)
{
    TestStation station;
    const ReadyRecording recording(station, Example());
    std::vector<ZuFileFormat*> none;
    EXPECT_THROW(station.Converter().WriteDat(&none, &station.Device()), std::out_of_range);
}

TEST(DatFile, WithAnOrderThatDoesNotFitIsOutOfRange)
{
    for (const std::vector<unsigned int>& order : {std::vector<unsigned int>{}, {1U}}) {
        for (const bool analog : {true, false}) {
            TestStation station;
            ReadyRecording recording(station, Example());
            ResorterZuCmtrConv& resorter = *station.Device().Resorter;
            (analog ? resorter.PrevFileAnIndexes : resorter.PrevFileDiIndexes) = order;
            EXPECT_THROW(station.Converter().WriteDat(recording.Files(), &station.Device()),
                         std::out_of_range);
        }
    }
}

TEST(DatFile, SegmentWithFewerChannelsThanTheFirstIsOutOfRange)
{
    TestStation station;
    ReadyRecording recording(station, {Example(), OfRate(2400, 2)});
    EXPECT_THROW(station.Converter().WriteDat(recording.Files(), &station.Device()), std::out_of_range);
}
