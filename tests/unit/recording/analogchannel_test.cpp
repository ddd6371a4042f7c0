// Loading an analog channel from a recorder file.
#include "allocations.h"
#include "support/loadedfile.h"

#include "recorderfile/compress.h"

#include <gtest/gtest.h>

using namespace recorderfile;

namespace {

using Codes = std::vector<int16_t>;

AnalogChannel Plain(const Codes& samples = {1, -2, 3})
{
    return {"Q1:Ia", "А", samples};
}

AnalogChannel Compressed(const Codes& samples, uint16_t blockSamples)
{
    AnalogChannel channel = Plain(samples);
    channel.compressed = 1;
    channel.blockSamples = blockSamples;
    return channel;
}

// A compressed channel whose data area is given as bytes.
AnalogChannel CompressedRaw(const QByteArray& area, uint32_t points)
{
    AnalogChannel channel = Compressed({}, 0);
    channel.rawData = area;
    channel.points = points;
    return channel;
}

// The text that a channel leaves when it does not load.
QString TextOf(const AnalogChannel& channel)
{
    Recording recording;
    recording.duration = 1;
    LoadedFile file(recording.Add(channel));
    EXPECT_FALSE(file.Ok());
    return file->ErrorDetail;
}

const QString noData = "канал Q1:Ia не содержит данных";
const QString shortData = "чтение файла (данные AnChannel)";
const QString wrongLength = "плохой формат AnChannel (sizeof(WORD)*m_HeaderAn.points!=m_DataLength)";
const QString noMemory = "чтение файла, ошибка выделения памяти";
const QString badArea = "ошибка распаковки сжатых данных";

// Areas of up to this size may be allocated in tests of lengths that the file does not hold.
constexpr size_t smallEnough = 1 << 20;

} // namespace

TEST(AnalogChannel, PlainSamplesAreTheDataArea)
{
    const Codes codes = {0, 1, -1, 32767, -32768};
    LoadedFile file(Recording().Add(Plain(codes)));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(CodesOf(file.An()), codes);
    EXPECT_EQ(static_cast<void*>(file.An().Samples), static_cast<void*>(file.An().m_pData));
    EXPECT_EQ(file.An().m_DataLength, 10u);
    EXPECT_TRUE(file.An().ErrorText.isNull());
}

TEST(AnalogChannel, HeaderFieldsAreTakenFromTheirPlaces)
{
    AnalogChannel channel = Plain();
    channel.rate = 1200;
    channel.zeroCode = -7;
    channel.primary = 600.5F;
    channel.secondary = 5.25F;
    channel.scale = 0.125F;
    channel.skewSeconds = 1e-3F;
    channel.offset = -4.5F;
    channel.codeRange = 65535;
    channel.remark = "Примечание";
    LoadedFile file(Recording().Add(channel));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    const ZuAnChannelHeader header = file.An().m_HeaderAn;
    EXPECT_EQ(uint32_t(header.points), 3u);
    EXPECT_EQ(float(header.Rate), 1200.0F);
    EXPECT_EQ(int16_t(header.ZeroCode), -7);
    EXPECT_EQ(float(header.Primary), 600.5F);
    EXPECT_EQ(float(header.Secondary), 5.25F);
    EXPECT_EQ(float(header.Scale), 0.125F);
    EXPECT_EQ(float(header.SkewSeconds), 1e-3F);
    EXPECT_EQ(float(header.Offset), -4.5F);
    EXPECT_EQ(uint16_t(header.CodeRange), 65535);
    EXPECT_EQ(file.An().Name, QString("Q1:Ia"));
    EXPECT_EQ(file.An().Unit, QString("А"));
    EXPECT_EQ(file.An().Remark, QString("Примечание"));
    EXPECT_EQ(file.An().descrLength, 130u);
}

TEST(AnalogChannel, DataStartsWhereTheDescriptionEnds)
{
    AnalogChannel channel = Plain({5, 6});
    channel.extraDescription = 11;
    LoadedFile file(Recording().Add(channel).Add(Plain({7})));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(CodesOf(file.An(0)), (Codes{5, 6}));
    EXPECT_EQ(CodesOf(file.An(1)), (Codes{7}));
}

TEST(AnalogChannel, ShortDescriptionTakesTheHeaderForData)
{
    AnalogChannel channel = Plain({5, 6});
    channel.descrLength = 76;
    LoadedFile file(Recording().Add(channel));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(CodesOf(file.An()), (Codes{2, 0})) << "the number of points";
}

TEST(AnalogChannel, AnyCompressionFlagButZeroMeansCompressed)
{
    for (const int flag : {1, 2, 0x100, 0xFFFF}) {
        AnalogChannel channel = Compressed({5, 6, 7, 8, 9}, 2);
        channel.compressed = static_cast<uint16_t>(flag);
        LoadedFile file(Recording().Add(channel));
        ASSERT_TRUE(file.Ok()) << file->ErrorText;
        EXPECT_EQ(CodesOf(file.An()), (Codes{5, 6, 7, 8, 9}));
        EXPECT_EQ(static_cast<void*>(file.An().Samples), static_cast<void*>(file.An().m_pData));
    }
}

TEST(AnalogChannelFailure, WithoutPointsOrDataTheNameIsReported)
{
    AnalogChannel channel = Plain();
    for (const int flag : {0, 1}) {
        channel.compressed = static_cast<uint16_t>(flag);
        channel.points = 0;
        channel.dataLength = std::nullopt;
        EXPECT_EQ(TextOf(channel), noData);
        channel.points = 3;
        channel.dataLength = 0;
        EXPECT_EQ(TextOf(channel), noData);
    }
}

TEST(AnalogChannelFailure, PlainDataOfAnotherLengthThanThePoints)
{
    AnalogChannel channel = Plain();
    for (const uint32_t points : {2u, 4u, 6u}) {
        channel.points = points;
        EXPECT_EQ(TextOf(channel), wrongLength);
    }
    channel.points = 3;
    channel.rawData = QByteArray(7, '\0');
    EXPECT_EQ(TextOf(channel), wrongLength);
}

TEST(AnalogChannelFailure, PointsOfPlainDataDoNotWrapAround)
{
    AnalogChannel channel = Plain();
    channel.points = 0x80000000u + 3;
    EXPECT_EQ(TextOf(channel), wrongLength);
}

TEST(AnalogChannelFailure, FileEndsInTheChannelHeader)
{
    const QByteArray bytes = Encode(Recording().Add(Plain()));
    for (const int size : {263 + 76, 263 + 76 + 53}) {
        LoadedFile file(bytes.left(size));
        EXPECT_FALSE(file.Ok());
        EXPECT_EQ(file->ErrorDetail, QString("чтение файла (AnChannelHeader)"));
    }
}

TEST(AnalogChannelFailure, FileEndsInTheData)
{
    for (const AnalogChannel& channel : {Plain({1, 2, 3, 4}), Compressed({1, 2, 3, 4}, 2)}) {
        const QByteArray bytes = Encode(Recording().Add(channel));
        for (const int size : {263 + 130, static_cast<int>(bytes.size()) - 1}) {
            LoadedFile file(bytes.left(size));
            EXPECT_FALSE(file.Ok());
            EXPECT_EQ(file->ErrorDetail, shortData);
        }
    }
}

TEST(AnalogChannelFailure, LengthThatTheFileDoesNotHoldAllocatesNothing)
{
    for (AnalogChannel channel : {Plain(), Compressed({1, 2, 3}, 2)}) {
        channel.points = 0x7FFFFFFF;
        for (const uint32_t dataLength : {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0x00200000u}) {
            channel.dataLength = dataLength;
            const AllocationLimit allocations(smallEnough);
            EXPECT_EQ(TextOf(channel), shortData) << dataLength;
            EXPECT_LT(allocations.LargestRequest(), smallEnough) << dataLength;
        }
    }
}

TEST(AnalogChannelFailure, DescriptionBeyondTheFileDoesNotWrapAround)
{
    AnalogChannel channel = Plain({1});
    for (const uint32_t descrLength : {0xFFFFFFFFu, 0xFFFFFFFFu - 100, 0x80000000u, 4000u}) {
        channel.descrLength = descrLength;
        EXPECT_EQ(TextOf(channel), shortData) << descrLength;
    }
}

TEST(AnalogChannelFailure, NoMemoryForTheDataArea)
{
    LoadedFile enough(Recording().Add(Plain(Codes(60000))));
    EXPECT_TRUE(enough.Ok()) << enough->ErrorText;
    TestDirectory directory;
    const QString name = directory.Write("rec.ZU", Encode(Recording().Add(Plain(Codes(60000)))));
    ZuFileFormat file;
    const AllocationLimit allocations(100000);
    EXPECT_FALSE(file.Load(name));
    EXPECT_EQ(file.ErrorDetail, noMemory);
    EXPECT_EQ(allocations.LargestRequest(), 120000u);
}

TEST(AnalogChannelFailure, BadCompressedAreas)
{
    const QByteArray tooShort = QByteArray::fromHex("0200000001");
    const QByteArray noFirstBlock = QByteArray::fromHex("02000000010005");
    const QByteArray wrongTotal = CompressedArea(6, 2, {1, 2}).Group(0, "").Bytes();
    const QByteArray otherTotal = CompressedArea(10, 2, {1, 2}).Group(0, "").Bytes();
    const QByteArray nothingBehind = CompressedArea(8, 2, {1, 2}).Bytes();
    EXPECT_EQ(TextOf(CompressedRaw(tooShort, 1)), badArea);
    EXPECT_EQ(TextOf(CompressedRaw(noFirstBlock, 1)), badArea);
    EXPECT_EQ(TextOf(CompressedRaw(wrongTotal, 4)), badArea);
    EXPECT_EQ(TextOf(CompressedRaw(otherTotal, 4)), badArea);
    EXPECT_EQ(TextOf(CompressedRaw(nothingBehind, 4)), badArea);
    EXPECT_EQ(TextOf(CompressedRaw(CompressedArea(4, 2, {1, 2}).Bytes(), 1)), badArea);
    EXPECT_EQ(TextOf(CompressedRaw(CompressedArea(0, 0, {}).Raw("\1").Bytes(), 1)), badArea);
}

TEST(AnalogChannelFailure, AreaThatCannotReachThePointsAllocatesNothing)
{
    // Three bytes after the first block could at best be 3 control bytes of 2 blocks.
    const QByteArray area = CompressedArea(0, 100, Codes(100)).Raw(QByteArray(3, '\0')).Bytes();
    for (const uint32_t points : {701u, 600000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        const AllocationLimit allocations(0x80000);
        EXPECT_EQ(TextOf(CompressedRaw(area, points)), badArea) << points;
        EXPECT_LT(allocations.LargestRequest(), 0x80000u) << points;
    }
}

TEST(AnalogChannelFailure, NoMemoryForTheExpandedSamples)
{
    // 17000 control bytes of zero width may stand for two billion samples.
    const QByteArray area = CompressedArea(2, 65535, Codes(65535)).Raw(QByteArray(17000, '\0')).Bytes();
    const AllocationLimit allocations(smallEnough);
    EXPECT_EQ(TextOf(CompressedRaw(area, 0x80000001u)), noMemory);
    EXPECT_EQ(allocations.LargestRequest(), size_t{2} * 0x80000001u);
}
