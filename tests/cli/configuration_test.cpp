// zucmtr convert with unsuitable paths and sections: exit code 2, nothing written.
#include "program.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

QStringList Arguments(const QString& ini, const QString& defaults, const QString& device, const QString& out)
{
    return {"convert", "--ini", ini, "--defaults", defaults, "--device", device, "--out", out, "a.ZU"};
}

void ExpectRefused(const Finished& run, const QString& error)
{
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, QLatin1String("zucmtr: ") + error);
}

// Goes before a command so that it does not see /proc; empty if the user may not hide it.
QString WithoutProc()
{
    for (const char* unshare : {"unshare -m", "unshare -r -m"}) {
        const QString hiding =
            QLatin1String(unshare) + QLatin1String(" sh -c 'mount -t tmpfs none /proc && exec \"$@\"' sh ");
        if (RunShell(QString(), hiding + "true").code == 0)
            return hiding;
    }
    return QString();
}

const char* const missingKeyText = "--defaults: section [Vostochnaya] of 'ZuDrv.ini' does not load\n"
                                   "The log says:\n"
                                   "  >Параметры по умолчанию для преобразования ZU в Comtrade\n"
                                   "  Отсутствует необходимый параметр: Энергосистема\n"
                                   "'zucmtr check --ini ZuDrv.ini' explains it line by line.\n";

} // namespace

TEST(Configuration, MissingIniFileIsNamed)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("no.ini", "Default", "Vostochnaya", "out")),
                  "--ini: no.ini: there is no such file; check the path\n");
}

TEST(Configuration, DirectoryInPlaceOfTheIniFileIsRefused)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("out", "Default", "Vostochnaya", "out")),
                  "--ini: 'out' is not a file; give the path of the recorders' ini file\n");
}

TEST(Configuration, MissingOutDirectoryIsNotMade)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("ZuDrv.ini", "Default", "Vostochnaya", "my records")),
                  "--out: the directory 'my records' does not exist; make it first: mkdir -p 'my records'\n");
    EXPECT_FALSE(QFileInfo::exists(place.Path("my records")));
}

TEST(Configuration, FileInPlaceOfTheOutDirectoryIsRefused)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("ZuDrv.ini", "Default", "Vostochnaya", "ZuDrv.ini")),
                  "--out: 'ZuDrv.ini' is a file; give a directory to write into\n");
}

TEST(Configuration, LogThatCannotBeWrittenIsRefused)
{
    const Workplace place;
    for (const QString& log : {QStringLiteral("no/a.log"), QStringLiteral("out")})
        ExpectRefused(
            place.Convert({"--log", log, "a.ZU"}),
            QStringLiteral("--log: cannot write the file '%1'; give a file in a directory that exists "
                           "and can be written to\n")
                .arg(log));
}

TEST(Configuration, DefaultsSectionThatIsNotThereShowsTheSections)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("ZuDrv.ini", "Нет", "Vostochnaya", "out")),
                  "--defaults: 'ZuDrv.ini' has no section [Нет]; it has [Default], [Vostochnaya]\n");
}

TEST(Configuration, DefaultsSectionThatDoesNotLoadShowsTheLog)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("ZuDrv.ini", "Vostochnaya", "Vostochnaya", "out")),
                  QString::fromUtf8(missingKeyText));
}

TEST(Configuration, OlderLogIsKeptAndNotShown)
{
    const Workplace place;
    place.Write("a.log", "old line\n");
    const QStringList arguments = Arguments("ZuDrv.ini", "Vostochnaya", "Vostochnaya", "out");
    ExpectRefused(RunProgram(place.Path(), arguments + QStringList{"--log", "a.log"}),
                  QString::fromUtf8(missingKeyText));
    EXPECT_EQ(ReadLines(place.Path("a.log")),
              (QStringList{"old line", ">Параметры по умолчанию для преобразования ZU в Comtrade",
                           "Отсутствует необходимый параметр: Энергосистема"}));
}

TEST(Configuration, DeviceSectionThatIsNotThereIsAnError)
{
    const Workplace place;
    ExpectRefused(RunProgram(place.Path(), Arguments("ZuDrv.ini", "Default", "Западная", "out")),
                  "--device: 'ZuDrv.ini' has no section [Западная]; it has [Default], [Vostochnaya]\n");
}

TEST(Configuration, FileWithoutSectionsIsNoIniFile)
{
    const Workplace place;
    place.Write("a.txt", "text\n");
    const Finished run = RunProgram(place.Path(), Arguments("a.txt", "Default", "Vostochnaya", "out"));
    ExpectRefused(run, "--defaults: 'a.txt' has no section at all; is it the recorders' ini file?\n");
}

TEST(Configuration, BadDeviceKeyShowsTheLinesOfItsSectionOnly)
{
    const Workplace place({{"Версия ZU", "3"}});
    ExpectRefused(place.Convert({"a.ZU"}), "--device: section [Vostochnaya] of 'ZuDrv.ini' does not load\n"
                                           "The log says:\n"
                                           "  >Vostochnaya\n"
                                           "  Энергосистема: Энергосистема Востока [принято по умолчанию]\n"
                                           "  Субъект: Восточные сети [принято по умолчанию]\n"
                                           "  Объект: ПС Узловая [принято по умолчанию]\n"
                                           "  Источник: РАС-1 \n"
                                           "  Версия ПО: 4.0 [принято по умолчанию]\n"
                                           "  Версия аппаратной части: 2 [принято по умолчанию]\n"
                                           "  Модель: MK7.06 [принято по умолчанию]\n"
                                           "  Ошибка значения параметра: Версия ZU\n"
                                           "'zucmtr check --ini ZuDrv.ini' explains it line by line.\n");
}

TEST(Configuration, LongLogIsCutToItsEnd)
{
    const Workplace place;
    QByteArray dictionary = "nAnMax=31\nA31=,\n"; // the last entry has no name, which fails the load
    for (int i = 1; i <= 30; ++i)
        dictionary += QString::asprintf("A%02d=noColon,\n", i).toUtf8();
    place.Write("ZuDrv.ini", PlainIni() + dictionary);
    const Finished run = place.Convert({"--log", "a.log", "a.ZU"});
    const QStringList log = ReadLines(place.Path("a.log"));
    const QStringList section = log.mid(log.indexOf(">Vostochnaya"));
    ASSERT_GT(section.size(), 60);
    ExpectRefused(run, QStringLiteral("--device: section [Vostochnaya] of 'ZuDrv.ini' does not load\n"
                                      "The log says:\n"
                                      "  ... (%1 lines before)\n  ")
                               .arg(section.size() - 25) +
                           section.mid(section.size() - 25).join("\n  ") +
                           "\n'zucmtr check --ini ZuDrv.ini' explains it line by line.\n");
    EXPECT_EQ(section.last(), QStringLiteral("Ошибка значения параметра: A31"));
}

TEST(Configuration, TemporaryLogIsRemoved)
{
    const Workplace place;
    const QString temporary = place.MakeDirectory("tmp");
    const QMap<QString, QString> environment = {{"TMPDIR", temporary}};
    RunProgram(place.Path(), Arguments("ZuDrv.ini", "Нет", "Vostochnaya", "out"), environment);
    RunProgram(place.Path(), Arguments("ZuDrv.ini", "Default", "Vostochnaya", "out"), environment);
    EXPECT_EQ(place.Names("tmp"), QStringList());
    EXPECT_EQ(place.Names(), QStringList{"ZuDrv.ini"});
}

// A log without a name in any directory needs /proc.
TEST(Configuration, LogWithoutProcIsATemporaryFile)
{
    const Workplace place;
    place.Write("a.ZU", recorderfile::Encode(ShortRecording()));
    place.MakeDirectory("tmp");
    const QString hiding = WithoutProc();
    const QString convert = QStringLiteral(" zucmtr convert --out out a.ZU");
    const Finished run = RunShell(place.Path(), hiding + "env TMPDIR=tmp" + convert);
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(place.Names("tmp"), QStringList());
    const Finished without = RunShell(place.Path(), hiding + "env TMPDIR=no" + convert);
    if (hiding.isEmpty()) {
        EXPECT_EQ(without.code, 0) << without.err;
        return;
    }
    ExpectRefused(without, "cannot make a temporary log file in 'no'; set TMPDIR to a directory that can be "
                           "written to, or name a log file by --log\n");
}
