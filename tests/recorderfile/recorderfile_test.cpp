#include "recorderfile/compress.h"
#include "recorderfile/recorderfile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstring>

using namespace recorderfile;

namespace {

constexpr int headerSize = 263;

template <typename Number>
Number At(const QByteArray& bytes, int offset)
{
    Number number;
    std::memcpy(&number, bytes.constData() + offset, sizeof number);
    return number;
}

} // namespace

TEST(RecorderFile, EmptyRecordingIsTheHeaderAlone)
{
    const QByteArray file = Encode(Recording{});
    ASSERT_EQ(file.size(), headerSize);
    EXPECT_EQ(file.mid(0, 3), QByteArray("40\0", 3));
    EXPECT_EQ(file.mid(3, 21), QByteArray::fromHex("84a0adadeba520908091") + QByteArray(11, ' '));
    EXPECT_EQ(file.mid(24, 128 + 81), QByteArray(128 + 81, '\0'));
    EXPECT_EQ(At<uint32_t>(file, 233), 1706691599u);
    EXPECT_EQ(At<int32_t>(file, 237), 750000);
    EXPECT_EQ(At<uint32_t>(file, 241), 1706691600u);
    EXPECT_EQ(At<int32_t>(file, 245), 250000);
    EXPECT_EQ(At<uint32_t>(file, 249), 1000000u);
    EXPECT_EQ(At<uint16_t>(file, 253), 0);
    EXPECT_EQ(At<int16_t>(file, 255), 3);
    EXPECT_EQ(At<uint16_t>(file, 257), 0);
    EXPECT_EQ(At<uint32_t>(file, 259), 263u);
}

TEST(RecorderFile, HeaderHoldsWhatWasAskedFor)
{
    Recording recording;
    recording.codePage = CodePage::Cp1251;
    recording.version = QByteArray("41\1", 3);
    recording.comment = "Пуск";
    recording.identity = "РАС 1";
    recording.startTime = 1;
    recording.startMicroseconds = -1;
    recording.trigTime = 2;
    recording.trigMicroseconds = -2;
    recording.duration = 77;
    recording.channelCount = 4095;
    recording.timeZone = -180;
    recording.hdrSize = 262;
    const QByteArray file = Encode(recording);
    EXPECT_EQ(file.mid(0, 3), QByteArray("41\1", 3));
    EXPECT_EQ(file.mid(3, 10), QByteArray::fromHex("c4e0ededfbe520d0c0d1"));
    EXPECT_EQ(file.mid(24, 5), QByteArray::fromHex("cff3f1ea00"));
    EXPECT_EQ(file.mid(152, 6), QByteArray::fromHex("d0c0d1203100"));
    EXPECT_EQ(At<uint32_t>(file, 233), 1u);
    EXPECT_EQ(At<int32_t>(file, 237), -1);
    EXPECT_EQ(At<uint32_t>(file, 241), 2u);
    EXPECT_EQ(At<int32_t>(file, 245), -2);
    EXPECT_EQ(At<uint32_t>(file, 249), 77u);
    EXPECT_EQ(At<uint16_t>(file, 253), 4095);
    EXPECT_EQ(At<int16_t>(file, 255), -180);
    EXPECT_EQ(At<uint32_t>(file, 259), 262u);
}

TEST(RecorderFile, TextLongerThanItsFieldFillsItWithoutNul)
{
    Recording recording;
    recording.comment = QString(200, 'c');
    recording.identity = "i";
    const QByteArray file = Encode(recording);
    EXPECT_EQ(file.mid(24, 130), QByteArray(128, 'c') + QByteArray("i\0", 2));
}

TEST(RecorderFile, AnalogSectionIsAtItsOffsets)
{
    AnalogChannel channel{"Q1:Ia", "А", {1, -2, 3}};
    channel.rate = 1200;
    channel.zeroCode = -5;
    channel.primary = 600;
    channel.secondary = 5;
    channel.scale = 0.25f;
    channel.skewSeconds = 0.5f;
    channel.offset = -1;
    channel.codeRange = 4096;
    channel.remark = "r";
    const QByteArray file = Encode(Recording().Add(channel));
    const QByteArray section = file.mid(headerSize);
    ASSERT_EQ(section.size(), 76 + 54 + 6);
    EXPECT_EQ(At<uint32_t>(file, 249), 2500u) << "duration of three samples";
    EXPECT_EQ(At<uint16_t>(file, 253), 1);
    EXPECT_EQ(At<uint16_t>(section, 0), 0);
    EXPECT_EQ(section.mid(2, 66), QByteArray("Q1:Ia") + QByteArray(61, '\0'));
    EXPECT_EQ(At<uint32_t>(section, 68), 130u);
    EXPECT_EQ(At<uint32_t>(section, 72), 6u);
    EXPECT_EQ(At<uint32_t>(section, 76), 3u);
    EXPECT_EQ(At<float>(section, 80), 1200.0f);
    EXPECT_EQ(At<int16_t>(section, 84), -5);
    EXPECT_EQ(At<float>(section, 86), 600.0f);
    EXPECT_EQ(At<float>(section, 90), 5.0f);
    EXPECT_EQ(At<float>(section, 94), 0.25f);
    EXPECT_EQ(At<float>(section, 98), 0.5f);
    EXPECT_EQ(section.mid(102, 8), QByteArray::fromHex("8000000000000000"));
    EXPECT_EQ(At<uint16_t>(section, 110), 0);
    EXPECT_EQ(At<float>(section, 112), -1.0f);
    EXPECT_EQ(At<uint16_t>(section, 116), 4096);
    EXPECT_EQ(section.mid(118, 12), QByteArray("r") + QByteArray(11, '\0'));
    EXPECT_EQ(section.mid(130), QByteArray::fromHex("0100feff0300"));
}

TEST(RecorderFile, CompressedChannelHoldsTheCompressedArea)
{
    AnalogChannel channel{"Q1:Ia", "А", {5, 6, 7, 8}};
    channel.compressed = 2;
    channel.blockSamples = 2;
    const QByteArray section = Encode(Recording().Add(channel)).mid(headerSize);
    EXPECT_EQ(At<uint16_t>(section, 110), 2);
    EXPECT_EQ(section.mid(130), CompressSamples({5, 6, 7, 8}, 2));
    EXPECT_EQ(At<uint32_t>(section, 72), static_cast<uint32_t>(section.size() - 130));
}

TEST(RecorderFile, AnalogOverridesReplaceLengthsAndData)
{
    AnalogChannel channel{"Q1:Ia", "А", {1, 2}};
    channel.points = 9;
    channel.rawData = QByteArray("abc");
    channel.extraDescription = 4;
    QByteArray section = Encode(Recording().Add(channel)).mid(headerSize);
    EXPECT_EQ(At<uint32_t>(section, 68), 134u);
    EXPECT_EQ(At<uint32_t>(section, 72), 3u);
    EXPECT_EQ(At<uint32_t>(section, 76), 9u);
    EXPECT_EQ(section.mid(130), QByteArray::fromHex("eeeeeeee") + "abc");

    channel.descrLength = 75;
    channel.dataLength = 1000;
    section = Encode(Recording().Add(channel)).mid(headerSize);
    EXPECT_EQ(At<uint32_t>(section, 68), 75u);
    EXPECT_EQ(At<uint32_t>(section, 72), 1000u);
}

TEST(RecorderFile, DiscreteSectionHoldsPackedRecords)
{
    const DiscreteChannel channel{"Q1:x", 1, {{0, 0}, {0x01020304, 5}}};
    const QByteArray section = Encode(Recording().Add(channel)).mid(headerSize);
    EXPECT_EQ(At<uint16_t>(section, 0), 1);
    EXPECT_EQ(At<uint32_t>(section, 68), 81u);
    EXPECT_EQ(At<uint32_t>(section, 72), 10u);
    EXPECT_EQ(section.mid(76), QByteArray::fromHex("0200000001"
                                                   "0000000000"
                                                   "0504030201"));
}

TEST(RecorderFile, DiscreteOverridesReplaceCountAndLengths)
{
    DiscreteChannel channel{"Q1:x", 0, {{1, 1}}};
    channel.spareBytes = "zz";
    QByteArray section = Encode(Recording().Add(channel)).mid(headerSize);
    EXPECT_EQ(At<uint32_t>(section, 72), 7u);
    EXPECT_EQ(section.mid(81), QByteArray::fromHex("01010000007a7a"));

    channel.count = 3;
    channel.dataLength = 15;
    channel.descrLength = 90;
    section = Encode(Recording().Add(channel)).mid(headerSize);
    EXPECT_EQ(At<uint32_t>(section, 68), 90u);
    EXPECT_EQ(At<uint32_t>(section, 72), 15u);
    EXPECT_EQ(At<uint32_t>(section, 76), 3u);
}

TEST(RecorderFile, SectionsKeepTheirOrderAndOthersAreBytes)
{
    const QByteArray file = Encode(
        Recording().Add(OtherSection{3, "abcd"}).Add(DiscreteChannel{"d"}).Add(AnalogChannel{"a", "", {1}}));
    EXPECT_EQ(At<uint16_t>(file, 253), 3);
    EXPECT_EQ(At<uint16_t>(file, headerSize), 3);
    EXPECT_EQ(At<uint32_t>(file, headerSize + 68), 76u);
    EXPECT_EQ(At<uint32_t>(file, headerSize + 72), 4u);
    EXPECT_EQ(file.mid(headerSize + 76, 4), QByteArray("abcd"));
    EXPECT_EQ(At<uint16_t>(file, headerSize + 80), 1);
    EXPECT_EQ(At<uint16_t>(file, headerSize + 80 + 81), 0);
}

TEST(RecorderFile, IsWrittenIntoADirectoryThatIsThere)
{
    QTemporaryDir directory;
    QFile file(directory.filePath("a.Z01"));
    ASSERT_TRUE(WriteFile(file.fileName(), "second"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("second"));
    EXPECT_FALSE(WriteFile(directory.filePath("none/a.ZU"), "first"));
}
