// An analog channel as an object: its texts, its ownership, and what stays after a failure.
#include "support/loadedfile.h"

#include "recorderfile/compress.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextCodec>

#include <cstring>
#include <new>

namespace {

// A channel that reads its own header and data from a file of these bytes.
class LoadedChannel
{
public:
    LoadedChannel(const ZuFileSectionHeader& section, const QByteArray& bytes)
    {
        QFile file(directory.Write(QStringLiteral("channel"), bytes));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        header.section = section;
        std::memset(header.after, 'x', sizeof header.after);
        loaded = channel.Load(file, &header.section, QTextCodec::codecForName("CP866"));
    }
    ~LoadedChannel() { channel.Clear(); }
    LoadedChannel(const LoadedChannel&) = delete;
    LoadedChannel& operator=(const LoadedChannel&) = delete;

    bool Ok() const { return loaded; }
    AnChannelData* operator->() { return &channel; }

private:
    struct
    {
        ZuFileSectionHeader section;
        char after[8]; // must not get into the name
    } header;
    TestDirectory directory;
    AnChannelData channel;
    bool loaded;
};

ZuFileSectionHeader Section(uint32_t dataLength)
{
    ZuFileSectionHeader section = {ZuSectionAnalog, "Q1:Ia", 130, dataLength};
    return section;
}

QByteArray HeaderBytes(const ZuAnChannelHeader& header)
{
    return {reinterpret_cast<const char*>(&header), static_cast<int>(sizeof header)};
}

ZuAnChannelHeader Header(uint32_t points, uint16_t compressed)
{
    ZuAnChannelHeader header = {};
    header.points = points;
    header.compressed = compressed;
    return header;
}

} // namespace

TEST(AnalogTexts, NameWithoutNulRunsOnIntoTheLengths)
{
    ZuFileSectionHeader section = Section(2);
    std::memset(section.name, 'n', sizeof section.name);
    LoadedChannel channel(section, HeaderBytes(Header(1, 0)) + "ab");
    ASSERT_TRUE(channel.Ok()) << channel->ErrorText;
    EXPECT_EQ(channel->Name, QString(66, 'n') + QStringLiteral("В")) << "130 is В";
}

TEST(AnalogTexts, NameEndsWithTheSectionHeader)
{
    ZuFileSectionHeader section;
    std::memset(&section, 'n', sizeof section);
    LoadedChannel channel(section, HeaderBytes(Header(0, 0)));
    EXPECT_FALSE(channel.Ok());
    EXPECT_EQ(channel->Name, QString(66 + 8, 'n'));
    EXPECT_EQ(channel->ErrorText, QStringLiteral("канал %1 не содержит данных").arg(QString(74, 'n')));
}

TEST(AnalogTexts, UnitWithoutNulRunsOnAndEndsWithTheChannelHeader)
{
    ZuAnChannelHeader header = Header(1, 0);
    std::memset(header.unit, 'u', sizeof header.unit);
    EXPECT_EQ(LoadedChannel(Section(2), HeaderBytes(header) + "ab")->Unit, QString(8, 'u'));

    std::memset(header.unit, 'u', sizeof header - offsetof(ZuAnChannelHeader, unit));
    EXPECT_EQ(LoadedChannel(Section(2), HeaderBytes(header) + "ab")->Unit, QString(28, 'u'));
}

TEST(AnalogTexts, RemarkEndsWithTheChannelHeader)
{
    ZuAnChannelHeader header = Header(1, 0);
    std::memset(header.remark, 'r', sizeof header.remark);
    LoadedChannel channel(Section(2), HeaderBytes(header) + "ab");
    ASSERT_TRUE(channel.Ok()) << channel->ErrorText;
    EXPECT_EQ(channel->Remark, QString(12, 'r'));
}

TEST(AnalogObject, SecondLoadIsRefusedAndKeepsTheSamples)
{
    LoadedChannel channel(Section(2), HeaderBytes(Header(1, 0)) + "ab");
    ASSERT_TRUE(channel.Ok()) << channel->ErrorText;
    QFile file;
    ZuFileSectionHeader section = Section(4);
    EXPECT_FALSE(channel->Load(file, &section, QTextCodec::codecForName("CP866")));
    EXPECT_EQ(channel->ErrorText, QString("m_pData!=nullptr"));
    EXPECT_EQ(channel->m_DataLength, 2u);
    EXPECT_EQ(channel->Samples[0], 'b' * 256 + 'a');
}

TEST(AnalogObject, SamplesWrittenBeforeABadEndStayUntilClear)
{
    // The copies stop at the total of 6 samples.
    const QByteArray area = recorderfile::CompressedArea(12, 2, {5, -6}).Raw(QByteArray(2, '\0')).Bytes();
    const auto length = static_cast<uint32_t>(area.size());
    LoadedChannel channel(Section(length), HeaderBytes(Header(8, 1)) + area);
    EXPECT_FALSE(channel.Ok());
    EXPECT_EQ(channel->ErrorText, QString("ошибка распаковки сжатых данных"));
    ASSERT_NE(channel->m_pData, nullptr);
    const std::vector<int16_t> begin(channel->Samples, channel->Samples + 6);
    EXPECT_EQ(begin, (std::vector<int16_t>{5, -6, 5, -6, 5, -6}));
    channel->Clear();
    EXPECT_EQ(channel->m_pData, nullptr);
}

TEST(AnalogObject, PlainSamplesOfAWrongLengthAreNotKept)
{
    LoadedChannel channel(Section(2), HeaderBytes(Header(2, 0)) + "ab");
    EXPECT_FALSE(channel.Ok());
    EXPECT_EQ(channel->m_pData, nullptr);
    EXPECT_EQ(channel->Samples, nullptr);
}

TEST(AnalogObject, ClearLeavesSamplesAsItIsAndMayComeTwice)
{
    LoadedChannel channel(Section(2), HeaderBytes(Header(1, 0)) + "ab");
    ASSERT_TRUE(channel.Ok()) << channel->ErrorText;
    channel->Clear();
    EXPECT_EQ(channel->m_pData, nullptr);
    EXPECT_NE(channel->Samples, nullptr);
    channel->Clear();
    EXPECT_EQ(channel->m_pData, nullptr);
}

TEST(AnalogObject, NothingExpandsWithoutSamplesToExpandInto)
{
    AnChannelData channel;
    channel.m_DataLength = 8;
    channel.m_HeaderAn.points = 1;
    QByteArray area = recorderfile::CompressedArea(2, 1, {5}).Bytes();
    EXPECT_FALSE(channel.UnCompressData(reinterpret_cast<unsigned char*>(area.data())));
}

TEST(AnalogObject, UncompressedAreaIsAsLongAsTheDataLength)
{
    AnChannelData channel;
    channel.m_HeaderAn.points = 1;
    channel.m_pData = new quint16[1]{};
    channel.Samples = reinterpret_cast<qint16*>(channel.m_pData);
    QByteArray area = recorderfile::CompressedArea(2, 1, {5}).Bytes();
    auto* bytes = reinterpret_cast<unsigned char*>(area.data());
    channel.m_DataLength = 7;
    EXPECT_FALSE(channel.UnCompressData(bytes));
    channel.m_DataLength = 8;
    EXPECT_TRUE(channel.UnCompressData(bytes));
    EXPECT_EQ(channel.Samples[0], 5);
    channel.Clear();
}

TEST(AnalogObject, NewObjectHasNothingUnset)
{
    alignas(AnChannelData) unsigned char memory[sizeof(AnChannelData)];
    std::memset(memory, 0xFF, sizeof memory);
    auto* channel = new (memory) AnChannelData;
    for (const QString* text :
         {&channel->Name, &channel->Unit, &channel->Remark, &channel->ErrorText, &channel->CfgName,
          &channel->CfgCircuit, &channel->CfgPhase, &channel->CfgSignal})
        EXPECT_TRUE(text->isNull());
    EXPECT_EQ(HeaderBytes(channel->m_HeaderAn), QByteArray(54, '\0'));
    EXPECT_EQ(channel->descrLength, 0u);
    EXPECT_EQ(channel->m_DataLength, 0u);
    EXPECT_EQ(channel->m_pData, nullptr);
    EXPECT_EQ(channel->Samples, nullptr);
    EXPECT_EQ(channel->AddIndexPos, 0);
    EXPECT_EQ(channel->BayParam, nullptr);
    EXPECT_FALSE(channel->IsVoltage);
    EXPECT_FALSE(channel->IsCurrent);
    EXPECT_EQ(channel->ExtremeScale, 1.0F);
    for (const float number : {channel->ExtremeMin, channel->ExtremeMax, channel->CoefA, channel->CoefB,
                               channel->SkewMicroseconds})
        EXPECT_EQ(number, 0.0F);
    channel->~AnChannelData();
}
