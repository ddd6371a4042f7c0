// How the sections of a recorder file load, and every way in which loading fails.
#include "support/loadedfile.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace recorderfile;

namespace {

AnalogChannel GoodAnalog(const QString& name = "Q1:Ia")
{
    return {name, "А", {1, -2}};
}

// A recording that fails to load, and the text of its failure.
struct Failure
{
    const char* name;
    QByteArray bytes;
    QString detail;
    QString text;
};

void PrintTo(const Failure& row, std::ostream* out)
{
    *out << row.name;
}

template <class Change>
QByteArray Changed(Change change)
{
    Recording recording;
    change(recording);
    return Encode(recording);
}

std::vector<Failure> Failures()
{
    const QString readFailure = "Ошибка при чтении файла";
    const QString formatFailure = "Ошибка формата файла";
    const QString valueFailure = "Ошибка значения параметра";
    const QString startTime = "время начала данных";
    const QString trigTime = "время начала аварии";
    const QString duration = "продолжительность процесса в микросекундах";
    const QString channels = "количество каналов";
    const QByteArray good = Encode(Recording());
    return {
        {"Empty", "", "ZuFileHeader", readFailure},
        {"ShortHeader", good.left(262), "ZuFileHeader", readFailure},
        {"Version", Changed([](auto& r) { r.version = QByteArray("41\0", 3); }), "Ver", formatFailure},
        {"VersionWithoutNul", Changed([](auto& r) { r.version = "400"; }), "Ver", formatFailure},
        {"TitleOther", Changed([](auto& r) { r.title = "Данное "; }), "не определить TextCodec",
         formatFailure},
        {"TitleWithoutBlank", Changed([](auto& r) { r.title = "ДанныеРАС"; }), "не определить TextCodec",
         formatFailure},
        {"TitleCapitals", Changed([](auto& r) { r.title = "ДАННЫЕ "; }), "не определить TextCodec",
         formatFailure},
        {"TitleLater", Changed([](auto& r) { r.title = " Данные "; }), "не определить TextCodec",
         formatFailure},
        {"Zone", Changed([](auto& r) { r.timeZone = 31; }), "не определить TimeZone", formatFailure},
        {"StartTooLow", Changed([](auto& r) { r.startMicroseconds = -1000001; }), startTime, valueFailure},
        {"StartTooHigh", Changed([](auto& r) { r.startMicroseconds = 1000000; }), startTime, valueFailure},
        {"StartLowest", Changed([](auto& r) { r.startMicroseconds = INT32_MIN; }), startTime, valueFailure},
        {"StartHighest", Changed([](auto& r) { r.startMicroseconds = INT32_MAX; }), startTime, valueFailure},
        {"TrigTooLow", Changed([](auto& r) { r.trigMicroseconds = -1000001; }), trigTime, valueFailure},
        {"TrigTooHigh", Changed([](auto& r) { r.trigMicroseconds = 1000000; }), trigTime, valueFailure},
        {"Duration", Changed([](auto& r) { r.duration = 0x10000000; }), duration, valueFailure},
        {"DurationHighest", Changed([](auto& r) { r.duration = 0xFFFFFFFF; }), duration, valueFailure},
        {"Channels", Changed([](auto& r) { r.channelCount = uint16_t(4096); }), channels, valueFailure},
        {"ChannelsHighest", Changed([](auto& r) { r.channelCount = uint16_t(65535); }), channels,
         valueFailure},
        {"HeaderSizeBelow", Changed([](auto& r) { r.hdrSize = 262; }), "hdrSize", valueFailure},
        {"HeaderSizeAbove", Changed([](auto& r) { r.hdrSize = 264; }), "hdrSize", valueFailure},
        {"NoSection", Changed([](auto& r) { r.channelCount = uint16_t(1); }), "ZuFileSectionHeader",
         readFailure},
        {"EndInSectionHeader", Changed([](auto& r) { r.Add(OtherSection{}); }).left(263 + 75),
         "ZuFileSectionHeader", readFailure},
        {"DescriptionLength", Changed([](auto& r) { r.Add(OtherSection{2, "", "", {}, 75u}); }),
         "плохой m_SecHeader.descrLength", formatFailure},
        {"AnalogDescriptionLength", Changed([](auto& r) {
             r.Add(GoodAnalog());
             std::get<AnalogChannel>(r.sections[0]).descrLength = 75;
         }),
         "плохой m_SecHeader.descrLength", formatFailure},
        {"SectionType", Changed([](auto& r) { r.Add(OtherSection{4}); }), "тип секции (канала)",
         valueFailure},
        {"SectionTypeHighest", Changed([](auto& r) { r.Add(OtherSection{65535}); }), "тип секции (канала)",
         valueFailure},
        {"Analog", Changed([](auto& r) { r.Add(AnalogChannel{"Q1:Ia"}); }), "канал Q1:Ia не содержит данных",
         "Ошибка загрузки параметров аналогового канала"},
        {"Discrete", Changed([](auto& r) { r.Add(OtherSection{1}); }), "чтение файла (DiChannelHeader)",
         "Ошибка загрузки параметров дискретного канала"},
    };
}

class FailedLoad : public testing::TestWithParam<Failure>
{};

} // namespace

TEST_P(FailedLoad, SaysWhyWithTheDetailInBrackets)
{
    LoadedFile file(GetParam().bytes);
    EXPECT_FALSE(file.Ok());
    EXPECT_EQ(file->ErrorDetail, GetParam().detail);
    EXPECT_EQ(file->ErrorText, QStringLiteral("%1 [%2]").arg(GetParam().text).arg(GetParam().detail));
}

INSTANTIATE_TEST_SUITE_P(Recorded, FailedLoad, testing::ValuesIn(Failures()));

TEST(FileLoading, MissingFileLeavesTheDetailAlone)
{
    TestDirectory directory;
    ZuFileFormat file;
    file.ErrorDetail = "before";
    EXPECT_FALSE(file.Load(directory.Path("none.ZU")));
    EXPECT_EQ(file.ErrorText, QStringLiteral("Файл не найден"));
    EXPECT_EQ(file.ErrorDetail, QString("before"));
}

TEST(FileLoading, DirectoryCannotBeOpened)
{
    TestDirectory directory;
    ZuFileFormat file;
    file.ErrorDetail = "before";
    EXPECT_FALSE(file.Load(directory.MakeDirectory("rec.ZU")));
    EXPECT_EQ(file.ErrorText, QStringLiteral("Ошибка открытия файла"));
    EXPECT_EQ(file.ErrorDetail, QString("before"));
}

TEST(FileLoading, PipeIsRefusedWithoutWaitingForAWriter)
{
    TestDirectory directory;
    const QString pipe = directory.Path("rec.ZU");
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    ZuFileFormat file;
    EXPECT_FALSE(file.Load(pipe));
    EXPECT_EQ(file.ErrorText, QStringLiteral("Ошибка открытия файла"));
}

TEST(FileLoading, ChecksComeInTheirOrder)
{
    TestDirectory directory;
    Recording recording;
    recording.version = "xx";
    recording.title = "x";
    recording.timeZone = 31;
    recording.startMicroseconds = recording.trigMicroseconds = 1000000;
    recording.duration = 0x10000000;
    recording.channelCount = uint16_t(4096);
    recording.hdrSize = 1;
    recording.Add(OtherSection{9, "", "", {}, 75u});
    const auto detail = [&] {
        LoadedFile file(recording);
        EXPECT_FALSE(file.Ok());
        return file->ErrorDetail;
    };
    EXPECT_EQ(detail(), QString("Ver"));
    recording.version = QByteArray("40\0", 3);
    EXPECT_EQ(detail(), QString("не определить TextCodec"));
    recording.title = "Данные ";
    EXPECT_EQ(detail(), QString("не определить TimeZone"));
    recording.timeZone = 3;
    EXPECT_EQ(detail(), QString("время начала данных"));
    recording.startMicroseconds = 0;
    EXPECT_EQ(detail(), QString("время начала аварии"));
    recording.trigMicroseconds = 0;
    EXPECT_EQ(detail(), QString("продолжительность процесса в микросекундах"));
    recording.duration = 1;
    EXPECT_EQ(detail(), QString("количество каналов"));
    recording.channelCount = uint16_t(1);
    EXPECT_EQ(detail(), QString("hdrSize"));
    recording.hdrSize = 263;
    EXPECT_EQ(detail(), QString("плохой m_SecHeader.descrLength"));
    recording.sections = {OtherSection{9}};
    EXPECT_EQ(detail(), QString("тип секции (канала)"));
}

TEST(FileLoading, SectionsOfOtherTypesAreSkippedAndCounted)
{
    Recording recording;
    recording.Add(OtherSection{2, "some bytes", "", {}, {}})
        .Add(GoodAnalog("a"))
        .Add(OtherSection{3, "12345678", "", 4u, 80u})
        .Add(DiscreteChannel{"d"});
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file->ChannelCount, 4);
    ASSERT_EQ(file->AnChannels.size(), 1u);
    ASSERT_EQ(file->DiChannels.size(), 1u);
    EXPECT_EQ(file.An().Name, QString("a"));
    EXPECT_EQ(file.Di().Name, QString("d"));

    recording.channelCount = uint16_t(3);
    LoadedFile shorter(recording);
    ASSERT_TRUE(shorter.Ok()) << shorter->ErrorText;
    EXPECT_TRUE(shorter->DiChannels.empty());
}

TEST(FileLoading, ChannelsKeepTheirOrderInTheFile)
{
    Recording recording;
    recording.Add(GoodAnalog("a1"))
        .Add(DiscreteChannel{"d1"})
        .Add(GoodAnalog("a2"))
        .Add(DiscreteChannel{"d2"});
    LoadedFile file(recording);
    ASSERT_TRUE(file.Ok()) << file->ErrorText;
    EXPECT_EQ(file.An(0).Name, QString("a1"));
    EXPECT_EQ(file.An(1).Name, QString("a2"));
    EXPECT_EQ(file.Di(0).Name, QString("d1"));
    EXPECT_EQ(file.Di(1).Name, QString("d2"));
}

TEST(FileLoading, GoodChannelsStayWhenALaterSectionFails)
{
    Recording recording;
    recording.Add(GoodAnalog("good")).Add(DiscreteChannel{"good too"}).Add(AnalogChannel{"bad"});
    LoadedFile file(recording);
    EXPECT_FALSE(file.Ok());
    EXPECT_EQ(file->ErrorText, QString("Ошибка загрузки параметров аналогового канала "
                                       "[канал bad не содержит данных]"));
    ASSERT_EQ(file->AnChannels.size(), 1u);
    ASSERT_EQ(file->DiChannels.size(), 1u);
    EXPECT_EQ(file.An().Name, QString("good"));
    EXPECT_EQ(CodesOf(file.An()), (std::vector<int16_t>{1, -2}));
}

TEST(FileLoading, LastSectionMayEndBeyondTheFile)
{
    LoadedFile file(Recording().Add(OtherSection{2, "", "", 0xFFFFFFFFu, 0xFFFFFFFFu}));
    EXPECT_TRUE(file.Ok()) << file->ErrorText;
}

TEST(FileLoading, LengthsOfASectionAddUpWithoutWrappingAround)
{
    // In 32 bits the lengths would add up to the section's true end.
    Recording recording;
    recording.Add(OtherSection{2, "", "", 76u + 0x80000000u, 0x80000000u}).Add(GoodAnalog());
    LoadedFile file(recording);
    EXPECT_FALSE(file.Ok());
    EXPECT_EQ(file->ErrorText, QString("Ошибка при чтении файла [ZuFileSectionHeader]"));
}
