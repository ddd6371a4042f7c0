// The reports about command lines and files that the program cannot take: the whole of standard error, in
// English and in Russian, and the exit code.
#include "program.h"
#include "words.h"
#include "wrong.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Files of all the kinds that a user may give.
class Kinds : public TestDirectory
{
public:
    Kinds()
    {
        const QByteArray recording = recorderfile::Encode(ShortRecording());
        for (const char* name : {"empty", "in", "d.ZU", "station"})
            MakeDirectory(QLatin1String(name));
        for (const char* name : {"rec.ZU", "rec.Z01", "lone.Z01", "in/b.ZU", "iszu.cfg", "rec.bin"})
            Write(QLatin1String(name), recording);
        Write("cut.ZU", recording.left(300));
        Write("number.cfg", "ПС,РАС,1999\nx,1A,1D\n1,I,A,Q,A,1,0,0,-9,9,1,1,P\n1,T,,,0\n");
        Write("empty.ZU", QByteArray());
        Write("empty.cfg", QByteArray());
        for (const char* name : {"x.cfg", "iscfg.ZU", "bad.cfg"})
            Write(QLatin1String(name), "ПС,РАС,1999\n2,1A,1D\n");
        for (const char* name : {"x.dat", "x.DAT", "lone.dat", "text.txt"})
            Write(QLatin1String(name), "1,0,5,1\n");
        for (const char* name : {"my.ini", "station/ZuDrv.ini"})
            Write(QLatin1String(name), PlainIni());
        EXPECT_EQ(mkfifo(QFile::encodeName(Path("fifo.ZU")).constData(), 0600), 0);
        EXPECT_EQ(symlink("loop.ZU", QFile::encodeName(Path("loop.ZU")).constData()), 0);
    }
};

Finished RunIn(const QString& language, const QString& directory, const QStringList& arguments)
{
    return RunProgram(directory, arguments, {{"LC_ALL", language}, {"LANGUAGE", ""}});
}

// The text without what the user has written, and without paths and sections of ini files.
QString WithoutValues(QString text, const QStringList& arguments)
{
    for (const QString& argument : arguments)
        text.remove(QString(argument).replace(QRegularExpression("[\\x00-\\x1f]"), "?"));
    return text.remove(QRegularExpression("«[^»]*»|\\[[^]]*\\]|\\S*[./]\\S*"));
}

const char* const russian = "ru_RU.UTF-8";

} // namespace

TEST_P(WrongTest, SaysWhatIsWrongAndWhatToDo)
{
    const Wrong& wrong = GetParam();
    const Kinds place;
    const QString hint = wrong.helpOf.isEmpty()
                             ? QString()
                             : "Run '" + wrong.helpOf + " --help' for the options and an example.\n";
    const Finished run = RunIn("C.UTF-8", place.Path(), wrong.arguments);
    EXPECT_EQ(run.code, wrong.code);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, "zucmtr: " + wrong.english + "\n" + hint);
    EXPECT_FALSE(HasRussianLetter(run.err));
}

TEST_P(WrongTest, SaysItInRussian)
{
    const Wrong& wrong = GetParam();
    const Kinds place;
    const QString hint =
        wrong.helpOf.isEmpty() ? QString() : "Ключи и пример: «" + wrong.helpOf + " --help».\n";
    const Finished run = RunIn(russian, place.Path(), wrong.arguments);
    EXPECT_EQ(run.code, wrong.code);
    EXPECT_EQ(run.err, "zucmtr: " + wrong.russian + "\n" + hint);
    EXPECT_EQ(EnglishWords(WithoutValues(run.err, wrong.arguments)), QStringList());
}

TEST(Errors, FileWithoutPermissionIsNamedAsThat)
{
    const Kinds place;
    // The superuser may read everything unless this is taken away.
    const QString limit =
        geteuid() == 0 ? "setpriv --bounding-set=-dac_override,-dac_read_search -- " : QString();
    ASSERT_EQ(chmod(QFile::encodeName(place.Path("rec.ZU")).constData(), 0), 0);
    ASSERT_EQ(chmod(QFile::encodeName(place.Path("in")).constData(), 0), 0);
    const QString file = "no permission to read the file; check its permissions\n";
    const QString below = "no permission to look into its directory; check the permissions\n";
    for (const char* command : {"info", "events", "export", "view", "dictionary"}) {
        EXPECT_EQ(RunShell(place.Path(), limit + "zucmtr " + command + " rec.ZU").err,
                  "zucmtr: rec.ZU: " + file);
        EXPECT_EQ(RunShell(place.Path(), limit + "zucmtr " + command + " in/b.ZU").err,
                  "zucmtr: in/b.ZU: " + below);
    }
    EXPECT_EQ(RunShell(place.Path(), limit + "zucmtr convert rec.ZU").err,
              "zucmtr: rec.ZU: not converted: " + file);
    EXPECT_EQ(RunShell(place.Path(), limit + "zucmtr convert in").err,
              "zucmtr: in: not converted: no permission to read this directory; check its permissions\n");
    EXPECT_EQ(
        RunShell(place.Path(), limit + "zucmtr sample --out in/a/b").err,
        "zucmtr: --out: the directory 'in/a/b' cannot be made: Permission denied; choose another one\n");
    EXPECT_EQ(chmod(QFile::encodeName(place.Path("in")).constData(), 0700), 0);
}

TEST(Errors, CatalogueThatCannotBeSeenIsNotCalledMissing)
{
    const TestDirectory place;
    RunProgram(place.Path(), {"sample", "--seconds", "1", "--out", "in/below"});
    RunProgram(place.Path(), {"archive", "update", "in/below"});
    const QString limit =
        geteuid() == 0 ? "setpriv --bounding-set=-dac_override,-dac_read_search -- " : QString();
    ASSERT_EQ(chmod(QFile::encodeName(place.Path("in")).constData(), 0), 0);
    const QString closed = QString("' may not enter the directory '%1'; its owner '").arg(place.Path("in"));
    for (const char* words :
         {"in", "in/below", "--catalogue in/zucmtr-archive.db", "--catalogue in/below/x.db"}) {
        const Finished run = RunShell(place.Path(), limit + "zucmtr archive find --paths " + words);
        EXPECT_TRUE(run.err.contains(closed)) << run.err;
        EXPECT_EQ(run.code, 2);
    }
    EXPECT_EQ(chmod(QFile::encodeName(place.Path("in")).constData(), 0700), 0);
}

TEST(Errors, LinkToNothingIsNamedWithWhatIsMissing)
{
    const Kinds place;
    ASSERT_EQ(symlink("gone.ZU", QFile::encodeName(place.Path("link.ZU")).constData()), 0);
    EXPECT_EQ(RunProgram(place.Path(), {"info", "link.ZU"}).err,
              "zucmtr: link.ZU: it is a link to '" + place.Path("gone.ZU") + "', which is not there\n");
}

TEST(Errors, IniFileGivenToCheckAsAFileIsChecked)
{
    const Kinds place;
    const Finished run = RunProgram(place.Path(), {"check", "station/ZuDrv.ini"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out.endsWith("station/ZuDrv.ini: nothing is wrong with [Vostochnaya]\n")) << run.out;
    EXPECT_EQ(run.err, QString());
}

TEST(Errors, IniFileOfViewIsNamedByItsOwnPath)
{
    const Kinds place;
    place.Write("bad.ini", PlainIni({{"Версия ZU", "3"}}));
    const Finished run = RunProgram(place.Path(), {"view", "--ini", "bad.ini", "rec.ZU"});
    EXPECT_EQ(run.code, 2);
    const QStringList lines = run.err.split('\n');
    EXPECT_EQ(lines.first(), "zucmtr: --device: section [Vostochnaya] of 'bad.ini' does not load");
    EXPECT_EQ(lines.value(lines.size() - 2), "'zucmtr check --ini bad.ini' explains it line by line.");
}

TEST(Errors, NothingToConvertNeedsNoIniFileInJsonEither)
{
    const Kinds place;
    const Finished run = RunProgram(place.Path(), {"convert", "--json", "nosuch.ZU"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.out.contains("\"error\":\"not converted: there is no such file; check the path\""))
        << run.out;
    EXPECT_EQ(run.err, QString());
}

TEST(HelpCommand, PrintsWhatTheOptionPrints)
{
    const QStringList commands = {"archive", "check",    "convert", "dictionary", "events", "export", "info",
                                  "sample",  "validate", "verify",  "view",       "watch",  "help"};
    for (const QString& command : commands) {
        const Finished help = RunProgram(QString(), {"help", command});
        EXPECT_EQ(help.code, 0);
        EXPECT_EQ(help.err, QString());
        EXPECT_EQ(help.out, RunProgram(QString(), {command, "--help"}).out);
    }
    for (const char* below : {"update", "check", "find", "stats", "page"}) {
        EXPECT_EQ(RunProgram(QString(), {"help", "archive", below}).out,
                  RunProgram(QString(), {"archive", below, "--help"}).out);
    }
    EXPECT_EQ(RunProgram(QString(), {"help"}).out, RunProgram(QString(), {"--help"}).out);
}
