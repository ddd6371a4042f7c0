#include "stationchannels.h"
#include "support/slowdecoder.h"
#include "support/stationfiles.h"

#include "recording/zufilelayout.h"

#include <QCryptographicHash>

#include <cstring>

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;
using station::Fault;
using station::MakeFiles;
using station::MakeRecording;
using station::StartKind;
using station::StationOptions;

TEST(Station, HasTheChannelsAskedFor)
{
    for (const int analog : {0, 1, 8, 9, 32, 200})
        for (const int discrete : {0, 1, 64, 200}) {
            StationOptions options;
            options.analogChannels = analog;
            options.discreteChannels = discrete;
            options.seconds = 0.02;
            const Recording recording = MakeRecording(options, StartKind::External).front();
            EXPECT_EQ(ChannelsOf<AnalogChannel>(recording).size(), static_cast<size_t>(analog));
            EXPECT_EQ(ChannelsOf<DiscreteChannel>(recording).size(), static_cast<size_t>(discrete));
        }
}

TEST(Station, ChainWithAnalogChannelsHasADiscreteOne)
{
    StationOptions options;
    options.discreteChannels = 0;
    options.segments = 2;
    options.seconds = 0.02;
    EXPECT_EQ(ChannelsOf<DiscreteChannel>(MakeRecording(options, StartKind::External)[1]).size(), 1u);
    EXPECT_TRUE(station::MakeIni(options).contains("\nnDiMax=1\n"));
}

TEST(Station, ChannelNamesAreUniqueAndFitTheirField)
{
    StationOptions options;
    options.analogChannels = 200;
    options.discreteChannels = 300;
    options.seconds = 0.02;
    const Recording recording = MakeRecording(options, StartKind::External).front();
    QStringList names;
    for (const AnalogChannel& channel : ChannelsOf<AnalogChannel>(recording))
        names << channel.name;
    for (const DiscreteChannel& channel : ChannelsOf<DiscreteChannel>(recording))
        names << channel.name;
    for (const QString& name : names) {
        EXPECT_EQ(name.count(':'), 1) << name.toStdString();
        EXPECT_LE(recorderfile::EncodeText(name, recorderfile::CodePage::Cp866).size(), 65);
    }
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST(Station, StartCommentsAreThoseOfTheRecorder)
{
    const std::pair<StartKind, const char*> expected[] = {
        {StartKind::PositiveSequence,
         "Пуск ПП (ВЛ-110 Восточная:I,12.0,11.4,0) I1 больше 31.01.24 12:00:00.250000 (GPS)"},
        {StartKind::NegativeSequence,
         "Пуск ОП (ВЛ-110 Восточная:I,3.0,0) I2 больше 31.01.24 12:10:00.250000 (GPS)"},
        {StartKind::ZeroSequence,
         "Пуск НП (ВЛ-110 Восточная:I,2.5,2.25,0) 3I0 больше 31.01.24 12:20:00.250000 (GPS)"},
        {StartKind::Channel,
         "Пуск ДЗ (ВЛ-110 Восточная:Ia,10.0,9.5,0) больше 31.01.24 12:30:00.250000 (GPS)"},
        {StartKind::Discrete, "Пуск ДП (1,0) ВЛ-110 Восточная:Пуск защит 31.01.24 12:40:00.250000 (GPS)"},
        {StartKind::Frequency,
         "Пуск Ч (Частота 1СШ-110:Fa,49.9,0,49.95,0) снижение 31.01.24 12:50:00.250000 (GPS)"},
        {StartKind::Harmonic, "Пуск Г (ВЛ-110 Восточная:Ia,5,0.4,0) больше 31.01.24 13:00:00.250000 (GPS)"},
        {StartKind::External, "Пуск внешний, 31.01.24 13:10:00.250000 (GPS)"}};
    EXPECT_EQ(station::PossibleStarts({}).size(), 8u);
    for (const auto& [start, comment] : expected) {
        const Recording recording = FirstSegment(Fault::SinglePhase, start);
        EXPECT_EQ(recording.comment, QString(comment)) << comment;
        EXPECT_LT(recording.comment.size(), 128);
    }
}

TEST(Station, StartsNeedTheirChannels)
{
    StationOptions options;
    options.analogChannels = 0;
    EXPECT_EQ(station::PossibleStarts(options),
              (std::vector<StartKind>{StartKind::Discrete, StartKind::External}));
    options.discreteChannels = 0;
    EXPECT_EQ(station::PossibleStarts(options), std::vector<StartKind>{StartKind::External});
    options.analogChannels = 8;
    EXPECT_EQ(station::PossibleStarts(options).size(), 6u) << "neither frequency nor discrete";
}

TEST(Station, SegmentsCarryOnWithoutASeam)
{
    StationOptions options;
    options.fault = Fault::TwoPhase;
    options.seconds = 4;
    const Recording whole = MakeRecording(options, StartKind::Channel).front();
    options.seconds = 2;
    options.segments = 2;
    const std::vector<Recording> parts = MakeRecording(options, StartKind::Channel);
    ASSERT_EQ(parts.size(), 2u);

    const auto expected = ChannelsOf<AnalogChannel>(whole);
    const auto first = ChannelsOf<AnalogChannel>(parts[0]);
    const auto second = ChannelsOf<AnalogChannel>(parts[1]);
    for (size_t i = 0; i < expected.size(); ++i) {
        std::vector<int16_t> joined = first[i].samples;
        joined.insert(joined.end(), second[i].samples.begin(), second[i].samples.end());
        EXPECT_EQ(joined, expected[i].samples) << expected[i].name.toStdString();
    }
    EXPECT_EQ(parts[1].identity, parts[0].identity);
    EXPECT_EQ(parts[1].startTime, parts[0].startTime + 2);
    EXPECT_EQ(parts[1].startMicroseconds, parts[0].startMicroseconds);
    EXPECT_EQ(parts[1].trigTime, parts[0].trigTime);
    EXPECT_EQ(parts[1].duration, 2000000u);
}

TEST(Station, DiscreteRecordsOfEverySegmentStartWithTheStateAtItsStart)
{
    StationOptions options;
    options.seconds = 0.2; // trigger at 0.05 s, the breaker is open from about 0.15 s to 0.7 s
    options.segments = 5;
    const std::vector<Recording> segments = MakeRecording(options, StartKind::Channel);
    const auto records = [&](size_t segment) {
        return Find<DiscreteChannel>(segments[segment], line + "Выключатель включен").changes;
    };
    ASSERT_EQ(records(0).size(), 2u);
    EXPECT_EQ(records(0)[0].value, 1);
    EXPECT_EQ(records(0)[1].value, 0);
    for (const size_t open : {1u, 2u}) {
        ASSERT_EQ(records(open).size(), 1u);
        EXPECT_EQ(records(open)[0].time, 0u);
        EXPECT_EQ(records(open)[0].value, 0);
    }
    ASSERT_EQ(records(3).size(), 2u);
    EXPECT_EQ(records(3)[0].value, 0);
    EXPECT_EQ(records(3)[1].value, 1);
    EXPECT_EQ(records(3)[1].time, records(0)[1].time + 560000u - 600000u);
    ASSERT_EQ(records(4).size(), 1u);
    EXPECT_EQ(records(4)[0].value, 1);
}

TEST(Station, CompressedAndPlainFilesHoldTheSameSamples)
{
    StationOptions options;
    options.seconds = 0.333; // the last block is cut
    const AnalogChannel channel = ChannelsOf<AnalogChannel>(MakeRecording(options, StartKind::Channel)[0])[0];
    constexpr int area = sizeof(ZuFileHeader) + sizeof(ZuFileSectionHeader) + sizeof(ZuAnChannelHeader);
    const QByteArray packed = MakeFiles(options, StartKind::Channel)[0].bytes;
    options.compressed = false;
    const QByteArray plain = MakeFiles(options, StartKind::Channel)[0].bytes;
    EXPECT_LT(packed.size(), plain.size());

    uint32_t length = 0;
    std::memcpy(&length, packed.constData() + sizeof(ZuFileHeader) + 72, sizeof length);
    const auto decoded = DecodeSlowly(packed.mid(area, static_cast<int>(length)), 799);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(*decoded, channel.samples);
    EXPECT_EQ(std::memcmp(plain.constData() + area, channel.samples.data(), 2 * 799), 0);
}

TEST(Station, TheSeedAloneDecidesTheBytes)
{
    StationOptions options;
    options.seconds = 0.5;
    const QByteArray first = MakeFiles(options, StartKind::Channel)[0].bytes;
    EXPECT_EQ(MakeFiles(options, StartKind::Channel)[0].bytes, first);
    options.seed = 2;
    EXPECT_NE(MakeFiles(options, StartKind::Channel)[0].bytes, first);
}

TEST(Station, BytesAreTheSameOnEveryPlatform)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const recorderfile::NamedFile& file : AllStationFiles({}))
        hash.addData(file.bytes);
    EXPECT_EQ(hash.result().toHex(), QByteArray("dfd382c60773b63f7790f2bcfb6c9d6867921a98"));
}

TEST(Station, FilesAreNamedByNumberAndContinuation)
{
    StationOptions options;
    options.seconds = 0.02;
    options.segments = 2;
    const auto files = AllStationFiles(options);
    ASSERT_EQ(files.size(), 16u);
    EXPECT_EQ(files[0].name, "Vostochnaya_000123.ZU");
    EXPECT_EQ(files[1].name, "Vostochnaya_000123.Z01");
    EXPECT_EQ(files[15].name, "Vostochnaya_000130.Z01");
}
