// What a recorder file's header becomes in memory.
#include "support/loadedfile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>

using recorderfile::CodePage;
using recorderfile::Encode;
using recorderfile::Recording;

TEST(FileHeader, FileOfTheHeaderAloneLoadsWithoutChannels)
{
    const QByteArray bytes = Encode(Recording());
    ASSERT_EQ(bytes.size(), 263);
    LoadedFile file(bytes);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_TRUE(file->AnChannels.empty());
    EXPECT_TRUE(file->DiChannels.empty());
    EXPECT_TRUE(file->ErrorText.isNull());
    EXPECT_EQ(file->ErrorDetail, QString());
}

TEST(FileHeader, BytesAfterTheLastSectionAreIgnored)
{
    LoadedFile file(Encode(Recording()) + QByteArray(100, '\x55'));
    EXPECT_TRUE(file.Ok()) << file->ErrorText;
}

TEST(FileHeader, FieldsAreTakenFromTheirPlaces)
{
    Recording recording;
    recording.comment = "Пуск РАС";
    recording.identity = "Источник 1";
    recording.duration = 123456;
    recording.Add(recorderfile::OtherSection{2});
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->Title, QStringLiteral("Данные РАС           "));
    EXPECT_EQ(file->Comment, QStringLiteral("Пуск РАС"));
    EXPECT_EQ(file->Identity, QStringLiteral("Источник 1"));
    EXPECT_EQ(file->SegmentDuration, 123456u);
    EXPECT_EQ(file->ChannelCount, 1);
    EXPECT_EQ(file->StartMicroseconds, 750000);
    EXPECT_EQ(file->TrigMicroseconds, 250000);
    EXPECT_EQ(file->StartTime.toString(Qt::ISODate), QStringLiteral("2024-01-31T11:59:59+03:00"));
    EXPECT_EQ(file->TrigTime.toString(Qt::ISODate), QStringLiteral("2024-01-31T12:00:00+03:00"));
}

TEST(FileHeader, IsReadAloneWhateverFollows)
{
    Recording recording;
    recording.identity = "id";
    recording.trigMicroseconds = -250000;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", {1}});
    const TestDirectory directory;
    const QString path = directory.Write("rec.ZU", Encode(recording).left(300)); // within the first section
    ZuFileFormat file;
    EXPECT_FALSE(file.Load(path));
    ASSERT_TRUE(file.LoadHeader(path)) << file.ErrorText;
    EXPECT_EQ(file.Identity, QString("id"));
    EXPECT_EQ(file.ChannelCount, 1);
    EXPECT_EQ(file.TrigMicroseconds, 750000);
    EXPECT_EQ(file.TrigTime.toString(Qt::ISODate), QString("2024-01-31T11:59:59+03:00"));
    EXPECT_TRUE(file.AnChannels.empty());
}

TEST(FileHeader, AloneIsRefusedAsInAWholeFile)
{
    const TestDirectory directory;
    QByteArray bytes = Encode(Recording());
    bytes[0] = '3';
    ZuFileFormat whole;
    ZuFileFormat header;
    for (const QString& path : {directory.Write("a.ZU", bytes), directory.Write("b.ZU", bytes.left(262)),
                                directory.Path("missing.ZU"), directory.Path()}) {
        EXPECT_FALSE(whole.Load(path));
        EXPECT_FALSE(header.LoadHeader(path));
        EXPECT_EQ(header.ErrorText, whole.ErrorText);
        EXPECT_FALSE(header.ErrorText.isEmpty());
    }
}

TEST(FileHeader, TitleKeepsAllItsBytesANulToo)
{
    QByteArray bytes = Encode(Recording());
    bytes[3 + 12] = '\0';
    LoadedFile file(bytes);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->Title.size(), 21);
    EXPECT_EQ(file->Title[12], QChar(0));
}

TEST(FileHeader, Cp1251IsTakenIfCp866DoesNotGiveTheTitle)
{
    Recording recording;
    recording.codePage = CodePage::Cp1251;
    recording.comment = "Пуск";
    recording.identity = "Узел";
    recording.Add(recorderfile::DiscreteChannel{"Q1:Реле"});
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->Title, QStringLiteral("Данные РАС           "));
    EXPECT_EQ(file->Comment, QStringLiteral("Пуск"));
    EXPECT_EQ(file->Identity, QStringLiteral("Узел"));
    EXPECT_EQ(file.Di().Name, QStringLiteral("Q1:Реле"));
}

TEST(FileHeader, LargestCountsAndDurationsPass)
{
    Recording recording;
    recording.duration = 0x0FFFFFFF;
    for (int i = 0; i < 4095; ++i)
        recording.Add(recorderfile::OtherSection{3});
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->SegmentDuration, 0x0FFFFFFFu);
    EXPECT_EQ(file->ChannelCount, 4095);
}

TEST(FileHeader, ReservedBytesAreNotRead)
{
    QByteArray bytes = Encode(Recording());
    bytes.replace(257, 2, "\xff\xff");
    LoadedFile file(bytes);
    EXPECT_TRUE(file.Ok()) << file->ErrorText;
}

TEST(FileHeader, LoadingResetsTheStartTextsButNotTheSignal)
{
    TestDirectory directory;
    ZuFileFormat file;
    file.StartCircuit = file.StartCondition = file.StartSetting = file.StartSignal = "old";
    ASSERT_TRUE(file.Load(directory.Write("rec.ZU", Encode(Recording()))));
    EXPECT_TRUE(file.StartCircuit.isNull());
    EXPECT_TRUE(file.StartCondition.isNull());
    EXPECT_TRUE(file.StartSetting.isNull());
    EXPECT_EQ(file.StartSignal, QString("old"));
}

namespace {

struct ZoneCase
{
    int16_t stored;
    qint32 seconds; // -1: not understood
};

void PrintTo(const ZoneCase& row, std::ostream* out)
{
    *out << row.stored;
}

class TimeZone : public testing::TestWithParam<ZoneCase>
{};

} // namespace

TEST_P(TimeZone, UnitFollowsFromTheValue)
{
    Recording recording;
    recording.timeZone = GetParam().stored;
    LoadedFile file(recording);
    if (GetParam().seconds < 0) {
        EXPECT_FALSE(file.Ok());
        EXPECT_EQ(file->ErrorText, QStringLiteral("Ошибка формата файла [не определить TimeZone]"));
        return;
    }
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->TimeZoneSeconds, GetParam().seconds);
    EXPECT_EQ(file->StartTime.offsetFromUtc(), GetParam().seconds);
    EXPECT_EQ(file->TrigTime.offsetFromUtc(), GetParam().seconds);
    EXPECT_EQ(file->TrigTime.toSecsSinceEpoch(), 1706691600);
}

INSTANTIATE_TEST_SUITE_P(Recorded, TimeZone,
                         testing::Values(ZoneCase{0, 0}, ZoneCase{3, 10800}, ZoneCase{-3, 10800},
                                         ZoneCase{180, 10800}, ZoneCase{-180, 10800}, ZoneCase{10800, 10800},
                                         ZoneCase{-10800, 10800}, ZoneCase{1800, 1800}, ZoneCase{30, 1800},
                                         ZoneCase{29, 104400}, ZoneCase{-29, 104400}, ZoneCase{1, 3600},
                                         ZoneCase{330, 19800}, ZoneCase{1770, 106200}, ZoneCase{1830, 109800},
                                         ZoneCase{32400, 32400}, ZoneCase{31, -1}, ZoneCase{-31, -1},
                                         ZoneCase{59, -1}, ZoneCase{181, -1}, ZoneCase{10801, -1},
                                         ZoneCase{32767, -1}, ZoneCase{-32768, -1}));

namespace {

struct MicrosecondsCase
{
    int32_t stored;
    qint32 microseconds;
    int secondsTaken;
};

void PrintTo(const MicrosecondsCase& row, std::ostream* out)
{
    *out << row.stored;
}

class Microseconds : public testing::TestWithParam<MicrosecondsCase>
{};

} // namespace

TEST_P(Microseconds, NegativeOnesAreTakenOutOfTheStart)
{
    Recording recording;
    recording.startMicroseconds = GetParam().stored;
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->StartMicroseconds, GetParam().microseconds);
    EXPECT_EQ(file->StartTime.toSecsSinceEpoch(), 1706691599 - GetParam().secondsTaken);
    EXPECT_EQ(uint32_t(file->Header.startTime), 1706691599u - unsigned(GetParam().secondsTaken));
    EXPECT_EQ(uint32_t(file->Header.trigTime), 1706691600u);
    EXPECT_EQ(int32_t(file->Header.startMicroseconds), GetParam().stored);
}

TEST_P(Microseconds, NegativeOnesAreTakenOutOfTheTrigger)
{
    Recording recording;
    recording.trigMicroseconds = GetParam().stored;
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->TrigMicroseconds, GetParam().microseconds);
    EXPECT_EQ(file->TrigTime.toSecsSinceEpoch(), 1706691600 - GetParam().secondsTaken);
    EXPECT_EQ(uint32_t(file->Header.trigTime), 1706691600u - unsigned(GetParam().secondsTaken));
    EXPECT_EQ(uint32_t(file->Header.startTime), 1706691599u);
}

INSTANTIATE_TEST_SUITE_P(Recorded, Microseconds,
                         testing::Values(MicrosecondsCase{0, 0, 0}, MicrosecondsCase{999999, 999999, 0},
                                         MicrosecondsCase{-1, 999999, 1}, MicrosecondsCase{-1000000, 0, 1}));

TEST(FileHeader, SecondTakenFromTheEpochWrapsAround)
{
    Recording recording;
    recording.startTime = 0;
    recording.startMicroseconds = -1;
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->StartTime.toSecsSinceEpoch(), 0xFFFFFFFFll);
}

TEST(FileHeader, TimesAfter2038Load)
{
    Recording recording;
    recording.startTime = 0xF0000000;
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->StartTime.toSecsSinceEpoch(), 0xF0000000ll);
}

TEST(FileHeader, CommentWithoutNulRunsOnIntoTheIdentity)
{
    Recording recording;
    recording.comment = QString(128, 'c');
    recording.identity = "id";
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->Comment, QString(128, 'c') + "id");
    EXPECT_EQ(file->Identity, QString("id"));
}

TEST(FileHeader, TextsWithoutAnyNulEndWithTheHeader)
{
    QByteArray bytes = Encode(Recording());
    bytes.replace(24, 263 - 24, QByteArray(263 - 24, 'c'));
    LoadedFile file(bytes + QByteArray(400, 'x'));
    EXPECT_FALSE(file.Ok());
    EXPECT_EQ(file->Comment, QString(263 - 24, 'c'));
    EXPECT_EQ(file->Identity, QString(263 - 152, 'c'));
}

TEST(FileHeader, NewObjectHasNothingUnset)
{
    alignas(ZuFileFormat) unsigned char memory[sizeof(ZuFileFormat)];
    std::memset(memory, 0xFF, sizeof memory);
    auto* file = new (memory) ZuFileFormat;
    const QByteArray header(reinterpret_cast<const char*>(&file->Header), sizeof file->Header);
    EXPECT_EQ(header, QByteArray(263, '\0'));
    const QByteArray section(reinterpret_cast<const char*>(&file->m_SecHeader), sizeof file->m_SecHeader);
    EXPECT_EQ(section, QByteArray(76, '\0'));
    EXPECT_EQ(file->SampleRate, 2400.0);
    EXPECT_EQ(file->StartMicroseconds, 0);
    EXPECT_EQ(file->TrigMicroseconds, 0);
    EXPECT_EQ(file->TimeZoneSeconds, 0);
    EXPECT_EQ(file->SegmentDuration, 0u);
    EXPECT_EQ(file->ChannelCount, 0);
    EXPECT_EQ(file->SegmentTimeBase, 0);
    EXPECT_EQ(file->SamplesPerPeriod, 0u);
    EXPECT_EQ(file->ShiftOneThird, 0u);
    EXPECT_EQ(file->ShiftTwoThirds, 0u);
    EXPECT_FALSE(file->StartTime.isValid());
    EXPECT_FALSE(file->TrigTime.isValid());
    for (const QString* text :
         {&file->Title, &file->Comment, &file->Identity, &file->ErrorText, &file->ErrorDetail,
          &file->CfgSamples, &file->CfgStartStamp, &file->CfgTrigStamp, &file->CfgDataType,
          &file->CfgTimeMult, &file->OutName, &file->StartCircuit, &file->StartCondition, &file->StartSetting,
          &file->StartSignal})
        EXPECT_TRUE(text->isNull());
    EXPECT_TRUE(file->AnChannels.empty() && file->DiChannels.empty());
    EXPECT_TRUE(file->CfgAnLines.empty() && file->CfgDiLines.empty());
    file->~ZuFileFormat();
}

TEST(FileHeader, ClearReleasesTheChannelsAndNothingElse)
{
    Recording recording;
    recording.identity = "id";
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", {1}}).Add(recorderfile::DiscreteChannel{"Q1:x"});
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    file->Clear();
    EXPECT_TRUE(file->AnChannels.empty());
    EXPECT_TRUE(file->DiChannels.empty());
    EXPECT_EQ(file->Identity, QString("id"));
    EXPECT_EQ(file->ChannelCount, 2);
    file->Clear();
}
