// Loading a discrete channel from a recorder file.
#include "allocations.h"
#include "support/loadedfile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextCodec>

#include <cstring>
#include <new>

using namespace recorderfile;

namespace {

// The text that a channel leaves when it does not load.
QString TextOf(const DiscreteChannel& channel)
{
    LoadedFile file(Recording().Add(channel));
    EXPECT_FALSE(file.Ok());
    return file->ErrorDetail;
}

const QString wrongLength = "чтение файла (дискреты, ошибка длины данных)";
const QString shortData = "чтение файла (данные DiChannel)";
const QString noMemory = "чтение файла, ошибка выделения памяти";

} // namespace

TEST(DiscreteChannel, RecordsAreKeptAsStored)
{
    LoadedFile file(Recording().Add(DiscreteChannel{"Q1:Реле", 2, {{100, 0}, {200, 5}}}));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file.Di().Name, QString("Q1:Реле"));
    EXPECT_EQ(file.Di().descrLength, 81u);
    EXPECT_EQ(file.Di().m_DataLength, 10u);
    EXPECT_EQ(file.Di().ChangeCount, 2u);
    EXPECT_TRUE(file.Di().Inverted);
    EXPECT_EQ(file.Di().m_HeaderDi.inverted, 2);
    const QByteArray records(reinterpret_cast<const char*>(file.Di().m_pData), 10);
    EXPECT_EQ(records, QByteArray::fromHex("0064000000"
                                           "05c8000000"));
    EXPECT_TRUE(file.Di().ErrorText.isNull());
}

TEST(DiscreteChannel, StartsAtTheFirstRecordsState)
{
    const auto firstState = [](uint8_t value, uint8_t inverted) {
        LoadedFile file(Recording().Add(DiscreteChannel{"d", inverted, {{100, value}}}));
        EXPECT_TRUE(file.Ok()) << file->ErrorText;
        EXPECT_EQ(file.Di().CurrentIndex, 0u);
        return int(file.Di().CurrentValue);
    };
    EXPECT_EQ(firstState(0, 0), 0);
    EXPECT_EQ(firstState(1, 0), 1);
    EXPECT_EQ(firstState(255, 0), 1);
    EXPECT_EQ(firstState(0, 1), 1);
    EXPECT_EQ(firstState(5, 1), 0);
    EXPECT_EQ(firstState(5, 255), 0);
}

TEST(DiscreteChannel, WithoutRecordsLoadsAndKeepsNothing)
{
    LoadedFile file(Recording().Add(DiscreteChannel{"d", 1}));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file.Di().ChangeCount, 0u);
    EXPECT_EQ(file.Di().m_pData, nullptr);
    EXPECT_EQ(file.Di().CurrentValue, 0);
}

TEST(DiscreteChannel, SpareBytesWithoutARecordAreDropped)
{
    for (int spare = 1; spare <= 4; ++spare) {
        DiscreteChannel channel{"d"};
        channel.spareBytes = QByteArray(spare, '\1');
        LoadedFile file(Recording().Add(channel).Add(DiscreteChannel{"next"}));
        ASSERT_TRUE(file.Ok()) << file->ErrorText;
        EXPECT_EQ(file.Di(0).m_pData, nullptr);
        EXPECT_EQ(file.Di(0).ChangeCount, 0u);
        EXPECT_EQ(file.Di(1).Name, QString("next"));
    }
}

TEST(DiscreteChannel, UpToFourSpareBytesPassAfterTheRecords)
{
    DiscreteChannel channel{"d", 0, {{100, 1}}};
    for (int spare = 0; spare <= 4; ++spare) {
        channel.spareBytes = QByteArray(spare, '\1');
        LoadedFile file(Recording().Add(channel).Add(DiscreteChannel{"next"}));
        ASSERT_TRUE(file.Ok()) << file->ErrorText;
        EXPECT_EQ(file.Di(0).m_DataLength, 5u + static_cast<unsigned int>(spare));
        EXPECT_EQ(file.Di(0).ChangeCount, 1u);
        EXPECT_EQ(file.Di(1).Name, QString("next"));
    }
    channel.spareBytes = QByteArray(5, '\1');
    EXPECT_EQ(TextOf(channel), wrongLength);
}

TEST(DiscreteChannel, DescriptionLengthLeadsToTheNextSectionAndNotToTheRecords)
{
    // Header, one record and ten more bytes, as 15 of description after the section header and 5 of data.
    const QByteArray body = QByteArray::fromHex("0100000000"
                                                "0164000000") +
                            QByteArray(10, '\xEE');
    const OtherSection section{ZuSectionDiscrete, body, "d", 5u, 76u + 15};
    LoadedFile file(Recording().Add(section).Add(DiscreteChannel{"next"}));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file.Di(0).descrLength, 91u);
    EXPECT_TRUE(file.Di(0).GetVal(100));
    EXPECT_EQ(file.Di(1).Name, QString("next"));
}

TEST(DiscreteChannelFailure, FileEndsInTheChannelHeader)
{
    const QByteArray bytes = Encode(Recording().Add(DiscreteChannel{"d"}));
    for (int missing = 1; missing <= 5; ++missing) {
        LoadedFile file(bytes.left(bytes.size() - missing));
        EXPECT_FALSE(file.Ok());
        EXPECT_EQ(file->ErrorDetail, QString("чтение файла (DiChannelHeader)"));
    }
}

TEST(DiscreteChannelFailure, DataLengthDoesNotFitTheCount)
{
    DiscreteChannel channel{"d", 0, {{100, 1}}};
    for (const uint32_t dataLength : {0u, 4u, 10u, 0xFFFFFFFFu}) {
        channel.dataLength = dataLength;
        EXPECT_EQ(TextOf(channel), wrongLength) << dataLength;
    }
    channel.dataLength = std::nullopt;
    for (const uint32_t count : {0u, 2u, 0x33333334u, 0xFFFFFFFFu}) {
        channel.count = count;
        EXPECT_EQ(TextOf(channel), wrongLength) << count;
    }
}

TEST(DiscreteChannelFailure, FileEndsInTheRecords)
{
    DiscreteChannel channel{"d", 0, {{100, 1}, {200, 0}}};
    channel.spareBytes = "xy";
    const QByteArray bytes = Encode(Recording().Add(channel));
    for (int missing = 1; missing <= 12; ++missing) {
        LoadedFile file(bytes.left(bytes.size() - missing));
        EXPECT_FALSE(file.Ok());
        EXPECT_EQ(file->ErrorDetail, shortData) << missing;
    }
}

TEST(DiscreteChannelFailure, FileEndsInSpareBytesWithoutARecord)
{
    DiscreteChannel channel{"d"};
    channel.dataLength = 4;
    EXPECT_EQ(TextOf(channel), shortData);
}

TEST(DiscreteChannelFailure, LengthThatTheFileDoesNotHoldAllocatesNothing)
{
    DiscreteChannel channel{"d", 0, {{100, 1}}};
    for (const uint32_t dataLength : {0xFFFFFFFFu, 0x80000000u, 0x00200000u}) {
        channel.dataLength = dataLength;
        channel.count = dataLength / 5;
        const AllocationLimit allocations(0x100000);
        EXPECT_EQ(TextOf(channel), shortData) << dataLength;
        EXPECT_LT(allocations.LargestRequest(), 0x100000u) << dataLength;
    }
}

TEST(DiscreteChannelFailure, NoMemoryForTheRecords)
{
    TestDirectory directory;
    const DiscreteChannel channel{"d", 0, std::vector<Change>(30000)};
    const QString name = directory.Write("rec.ZU", Encode(Recording().Add(channel)));
    ZuFileFormat file;
    const AllocationLimit allocations(100000);
    EXPECT_FALSE(file.Load(name));
    EXPECT_EQ(file.ErrorDetail, noMemory);
    EXPECT_EQ(allocations.LargestRequest(), 150000u);
}

TEST(DiscreteObject, NameWithoutNulRunsOnIntoTheLengthsAndEndsWithTheSectionHeader)
{
    TestDirectory directory;
    QFile file(directory.Write("channel", QByteArray(5, '\0')));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ZuFileSectionHeader sections[2];
    std::memset(&sections, 'n', sizeof sections);
    DiChannelData channel;
    EXPECT_FALSE(channel.Load(file, &sections[0], QTextCodec::codecForName("CP866")));
    EXPECT_EQ(channel.Name, QString(74, 'n'));
    EXPECT_EQ(channel.ErrorText, wrongLength);
}

TEST(DiscreteObject, SecondLoadIsRefusedAndKeepsTheRecords)
{
    LoadedFile file(Recording().Add(DiscreteChannel{"d", 0, {{100, 1}}}));
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    QFile other;
    ZuFileSectionHeader section = {ZuSectionDiscrete, "other", 81, 0};
    EXPECT_FALSE(file.Di().Load(other, &section, QTextCodec::codecForName("CP866")));
    EXPECT_EQ(file.Di().ErrorText, QString("m_pData!=nullptr"));
    EXPECT_EQ(file.Di().Name, QString("d"));
    EXPECT_EQ(file.Di().ChangeCount, 1u);
}

TEST(DiscreteObject, ClearMayComeTwiceAndWithoutRecords)
{
    DiChannelData empty;
    empty.Clear();
    EXPECT_EQ(empty.m_pData, nullptr);
    LoadedFile file(Recording().Add(DiscreteChannel{"d", 0, {{100, 1}}}));
    ASSERT_NE(file.Di().m_pData, nullptr);
    file.Di().Clear();
    file.Di().Clear();
    EXPECT_EQ(file.Di().m_pData, nullptr);
}

TEST(DiscreteObject, NewObjectHasNothingUnset)
{
    alignas(DiChannelData) unsigned char memory[sizeof(DiChannelData)];
    std::memset(memory, 0xFF, sizeof memory);
    auto* channel = new (memory) DiChannelData;
    for (const QString* text : {&channel->Name, &channel->ErrorText, &channel->CfgName, &channel->CfgCircuit})
        EXPECT_TRUE(text->isNull());
    EXPECT_EQ(channel->m_pData, nullptr);
    EXPECT_EQ(channel->BayParam, nullptr);
    EXPECT_EQ(channel->CurrentIndex, 0u);
    EXPECT_EQ(channel->CurrentValue, 0);
    EXPECT_EQ(channel->descrLength, 0u);
    EXPECT_EQ(channel->m_DataLength, 0u);
    EXPECT_EQ(uint32_t(channel->m_HeaderDi.count), 0u);
    EXPECT_EQ(channel->m_HeaderDi.inverted, 0);
    EXPECT_EQ(channel->ChangeCount, 0u);
    EXPECT_FALSE(channel->Inverted);
    EXPECT_EQ(channel->AddIndexPos, 0);
    channel->~DiChannelData();
}
