// The program's own texts in Russian, chosen by the locale; the library's messages and file names stay as
// they are.
#include "program.h"
#include "words.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

using recorderfile::Encode;

Finished InRussian(const QString& directory, const QStringList& arguments)
{
    return RunProgram(directory, arguments, {{"LC_ALL", "ru_RU.UTF-8"}, {"LANGUAGE", ""}});
}

// The program and all its commands; the names are the same in every language.
std::vector<QStringList> Helps()
{
    std::vector<QStringList> helps = {{"--help"}};
    for (const char* command : {"archive", "check", "convert", "dictionary", "events", "export", "info",
                                "sample", "validate", "verify", "view", "watch", "help"})
        helps.push_back({command, "--help"});
    for (const char* below : {"update", "check", "find", "stats", "page"})
        helps.push_back({"archive", below, "--help"});
    return helps;
}

// A help without the command lines of its example, which are the same in every language.
QString WithoutExample(const QString& help)
{
    return QString(help).remove(
        QRegularExpression("^  (zucmtr|mkdir|sed) .*$", QRegularExpression::MultilineOption));
}

} // namespace

TEST(Russian, HelpHasRussianTextsAndHeadings)
{
    const Finished run = InRussian(QString(), {"--help"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.section('\n', 0, 5),
              "Преобразует осциллограммы цифровых регистраторов аварийных событий (.ZU) в записи COMTRADE "
              "(IEEE C37.111).\n"
              "Вызов: zucmtr [КЛЮЧИ] [КОМАНДА]\n"
              "\n"
              "Ключи:\n"
              "  -h,--help                   Показать эту справку и завершить работу\n"
              "  --version                   Показать версию и завершить работу");
    EXPECT_TRUE(run.out.contains("\nКоманды:\n")) << run.out;
}

TEST(Russian, HelpOfEveryCommandIsRussianThroughout)
{
    const QString help = InRussian(QString(), {"--help"}).out;
    const QStringList commands = help.section("Команды:\n", 1).section("\n\n", 0, 0).split('\n');
    for (const QString& line : commands) {
        const QString command = line.trimmed().section(' ', 0, 0);
        const Finished run = InRussian(QString(), {command, "--help"});
        EXPECT_EQ(run.code, 0);
        for (const char* heading : {"Вызов: ", "Ключи:\n", "Пример"})
            EXPECT_TRUE(run.out.contains(heading)) << command;
        for (const QString& option : run.out.split('\n').filter(QRegularExpression("^  -.{25}  ")))
            EXPECT_TRUE(option.contains(QRegularExpression("[а-я]"))) << option;
    }
}

TEST(Russian, HelpHasNoEnglishWord)
{
    for (const QStringList& help : Helps())
        EXPECT_EQ(EnglishWords(WithoutExample(InRussian(QString(), help).out)), QStringList())
            << help.first();
}

TEST(English, HelpHasNoRussianWordButTheKeyOfTheIniFile)
{
    for (const QStringList& help : Helps()) {
        QString text = WithoutExample(RunProgram(QString(), help).out);
        text.remove("'Время ожидания'");
        EXPECT_FALSE(HasRussianLetter(text)) << text;
    }
}

// The columns count letters, not bytes.
TEST(Russian, DescriptionsOfTheHelpStandBelowEachOther)
{
    const QString help = InRussian(QString(), {"dictionary", "--help"}).out;
    for (const char* line :
         {"  ФАЙЛ ОБЯЗАТЕЛЬНО            Первый файл", "  --complete                  Целый",
          "  --section ИМЯ               Имя секции"})
        EXPECT_TRUE(help.contains("\n" + QString(line))) << help;
}

TEST(Russian, UnitsAreRussian)
{
    const Workplace place;
    recorderfile::Recording recording;
    recording.Add(recorderfile::AnalogChannel{"Q1:Ia", "А", std::vector<int16_t>(600, 1)});
    place.Write("a.ZU", Encode(recording));
    const QString text = InRussian(place.Path(), {"info", "a.ZU"}).out;
    for (const char* part : {" с\n", " Гц\n", "байтов: 1200 (1.2 кБ)\n"})
        EXPECT_TRUE(text.contains(part)) << text;
}

TEST(Russian, FailuresAreReported)
{
    const Workplace place;
    const Finished run = InRussian(place.Path(), {"convert", "--out", "out", "запись.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "zucmtr: запись.ZU: не преобразована: такого файла нет; проверьте путь\n");
}

TEST(Russian, CommandLinesThatCannotBeUnderstoodAreReported)
{
    const QString hint = "\nКлючи и пример: «zucmtr convert --help».\n";
    EXPECT_EQ(InRussian(QString(), {"convert"}).err, "zucmtr: не указано: ФАЙЛ" + hint);
    EXPECT_EQ(InRussian(QString(), {"convert", "a.ZU", "--quick"}).err,
              "zucmtr: у «zucmtr convert» нет ключа --quick; может быть, --quiet?" + hint);
    EXPECT_EQ(InRussian(QString(), {"convert", "a.ZU", "--continue", "--fail-fast"}).err,
              "zucmtr: --continue и --fail-fast вместе нельзя; уберите один из них" + hint);
    EXPECT_EQ(InRussian(QString(), {"convert", "a.ZU", "--out"}).err,
              "zucmtr: --out: нет значения (КАТАЛОГ)" + hint);
}

TEST(Russian, RecordsAndJsonKeysAreTheSame)
{
    const Workplace place;
    place.Write("a.ZU", Encode(ShortRecording()));
    const Finished run = InRussian(place.Path(), {"convert", "--out", "out", "--json", "a.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(run.out.contains("\"status\":\"converted\"")) << run.out;
    EXPECT_EQ(place.Names("out").filter(ShortRecordName()).size(), 4);
}

TEST(Russian, OtherLocalesAreEnglish)
{
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        const Finished run = RunProgram(QString(), {"--help"}, {{"LC_ALL", locale}, {"LANGUAGE", ""}});
        EXPECT_TRUE(run.out.contains("Usage: zucmtr [OPTIONS] [SUBCOMMAND]")) << locale;
    }
}
