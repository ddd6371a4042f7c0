// What a conversion reports about its arguments, before and while it loads the first file.
#include "support/recordings.h"

#include <gtest/gtest.h>

namespace {

// A station with the recording rec.ZU in its directory, which is the current one.
class Arguments : public testing::Test
{
protected:
    Arguments() : current(station.Directory().Path()) { station.Directory().Write("rec.ZU", SmallFile()); }

    bool Convert(const QString& name, const QString& outDir = QStringLiteral("out"))
    {
        return station.Converter().ConvertToComtrade(name, outDir, 0);
    }

    TestStation station;
    CurrentDirectory current;
};

// A name that is refused although there is such a file.
class RefusedNames : public Arguments, public testing::WithParamInterface<const char*>
{};

INSTANTIATE_TEST_SUITE_P(Names, RefusedNames,
                         testing::Values(".ZU", ".zu", "rec.Zu", "rec.zU", "recZU", "rec.ZU1", "rec.Z01",
                                         "ZU", "rec.zu "));

} // namespace

TEST_F(Arguments, BadNumberGoesToTheConverterAndLeavesTheDeviceAlone)
{
    station.Device().LogMessages = {"note"};
    station.Device().LastError = "why";
    EXPECT_FALSE(station.Converter().ConvertToComtrade("rec.ZU", "out", 1));
    EXPECT_EQ(station.Converter().LastError, "ConvertToComtrade: DevID>=m_DevParams.size()");
    EXPECT_EQ(Notes(station.Device()), QStringList{"note"});
    EXPECT_EQ(station.Device().LastError, "why");
}

TEST_F(Arguments, MissingFileComesBeforeTheOtherTests)
{
    EXPECT_FALSE(Convert("missing.txt", "missing"));
    EXPECT_EQ(station.Device().LastError, "Файл не существует [missing.txt]");
}

TEST_F(Arguments, MissingDirectoryIsReportedWithTheNameOfTheRecording)
{
    EXPECT_FALSE(Convert("rec.ZU", "missing"));
    EXPECT_EQ(station.Device().LastError, "Каталог не существует [rec.ZU]");
}

TEST_F(Arguments, MissingDirectoryComesBeforeABadName)
{
    station.Directory().Write("rec.txt", "");
    EXPECT_FALSE(Convert("rec.txt", "missing"));
    EXPECT_EQ(station.Device().LastError, "Каталог не существует [rec.txt]");
}

TEST_P(RefusedNames, EndInBadNameText)
{
    station.Directory().Write(GetParam(), SmallFile());
    EXPECT_FALSE(Convert(GetParam()));
    EXPECT_EQ(station.Device().LastError, QStringLiteral("Плохое имя файла [%1]").arg(GetParam()));
    EXPECT_TRUE(station.Device().LogMessages.empty());
    EXPECT_TRUE(station.Directory().Names("out").isEmpty());
}

TEST_F(Arguments, NameOfFourCharactersIsAccepted)
{
    for (const char* name : {"a.ZU", "b.zu"}) {
        station.Directory().Write(name, SmallFile());
        EXPECT_TRUE(Convert(name)) << name;
    }
}

TEST_F(Arguments, FirstFileThatDoesNotLoadGivesItsOwnText)
{
    station.Directory().Write("bad.ZU", "");
    EXPECT_FALSE(Convert("bad.ZU"));
    EXPECT_EQ(station.Device().LastError, "Ошибка при чтении файла [ZuFileHeader]");
    EXPECT_TRUE(station.Device().LogMessages.empty());
}

TEST_F(Arguments, EarlierNotesAndErrorGoAtTheStart)
{
    station.Device().LogMessages = {"note"};
    EXPECT_FALSE(Convert("missing.ZU"));
    EXPECT_TRUE(station.Device().LogMessages.empty());
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_TRUE(station.Device().LastError.isNull());
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}

TEST_F(Arguments, NotesOfEachConversionReplaceThoseOfTheOneBefore)
{
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_TRUE(Convert("rec.ZU"));
    EXPECT_EQ(Notes(station.Device()), QStringList{SuccessNote()});
}
