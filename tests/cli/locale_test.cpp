// Cyrillic paths, sections and messages under every locale of the user.
#include "program.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

class LocaleTest : public testing::TestWithParam<const char*>
{
protected:
    Finished Run(const QStringList& arguments) const
    {
        return RunProgram(directory.Path(), arguments, {{"LC_ALL", GetParam()}});
    }

    TestDirectory directory;
};

} // namespace

TEST_P(LocaleTest, CyrillicPathsAndSectionsWork)
{
    directory.Write("станция №1/Настройки.ini", PlainIni().replace("[Vostochnaya]", "[Восточная]"));
    directory.Write("станция №1/запись.ZU", recorderfile::Encode(ShortRecording(0)));
    directory.MakeDirectory("записи Комтрейд");
    const Finished run =
        Run({"convert", "--ini", "станция №1/Настройки.ini", "--defaults", "Default", "--device", "Восточная",
             "--out", "записи Комтрейд", "--log", "журнал.log", "станция №1/запись.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(run.out, "станция №1/запись.ZU -> " + ShortRecordName(0) + "\n");
    EXPECT_EQ(directory.Names("записи Комтрейд").filter(ShortRecordName(0)).size(), 4);
    EXPECT_EQ(ReadLines(directory.Path("журнал.log")).filter(QRegularExpression("^>")),
              (QStringList{">Параметры по умолчанию для преобразования ZU в Comtrade", ">Восточная"}));
}

TEST_P(LocaleTest, MessagesAreUtf8)
{
    const Workplace place;
    const Finished run = RunProgram(place.Path(),
                                    {"convert", "--ini", "ZuDrv.ini", "--defaults", "Default", "--device",
                                     "Vostochnaya", "--out", "out", "запись.ZU"},
                                    {{"LC_ALL", GetParam()}});
    EXPECT_EQ(run.code, 1);
    const QString own = QByteArray(GetParam()).startsWith("ru")
                            ? "не преобразована: такого файла нет; проверьте путь"
                            : "not converted: there is no such file; check the path";
    EXPECT_EQ(run.err, "zucmtr: запись.ZU: " + own + "\n");
}

TEST_P(LocaleTest, SampleGoesIntoACyrillicDirectory)
{
    directory.MakeDirectory("станция");
    const Finished run = Run({"sample", "--out", "станция", "--seconds", "0.5"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.section('\n', 0, 0), QStringLiteral("станция/ZuDrv.ini"));
    EXPECT_EQ(directory.Names("станция").size(), 9);
}

INSTANTIATE_TEST_SUITE_P(Locale, LocaleTest, testing::Values("C", "POSIX", "C.UTF-8", "ru_RU.CP1251"));
