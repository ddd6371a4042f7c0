// What is said of command lines and files that the program cannot take: the whole of standard error, in
// English and in Russian, and the exit code.
#include "program.h"
#include "words.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// A command line, and what comes of it. A line of its own with the command's help belongs to some.
struct Wrong
{
    QStringList arguments;
    int code;
    QString english;
    QString russian;
    QString helpOf = QString();
};

void PrintTo(const Wrong& wrong, std::ostream* out)
{
    *out << "zucmtr " << wrong.arguments.join(' ').left(80).toStdString();
}

// Files of all the kinds that somebody may hand in.
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
        Write("number.cfg", "ПС,РАС,1999\nx,1A,1D\n");
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

class WrongTest : public testing::TestWithParam<Wrong>
{};

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

namespace {

const QString longName = QString(300, 'x') + ".ZU";

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Convert, WrongTest,
    testing::Values(
        Wrong{{"convert", "nosuch.ZU"},
              1,
              "nosuch.ZU: not converted: there is no such file; check the path",
              "nosuch.ZU: не преобразована: такого файла нет; проверьте путь"},
        Wrong{
            {"convert", "x.cfg"},
            1,
            "x.cfg: not converted: it is a COMTRADE record, not a recording; 'zucmtr info' and 'zucmtr view' "
            "take it",
            "x.cfg: не преобразована: это запись COMTRADE, а не осциллограмма; её принимают «zucmtr info» и "
            "«zucmtr view»"},
        Wrong{{"convert", "empty/"},
              0,
              "empty/: there is no recording (.ZU) in this directory; --recursive looks into the directories "
              "below it, too",
              "empty/: в этом каталоге нет осциллограмм (.ZU); --recursive ищет и во вложенных каталогах"},
        Wrong{{"convert", "d.ZU"},
              0,
              "d.ZU: there is no recording (.ZU) in this directory; --recursive looks into the directories "
              "below it, too",
              "d.ZU: в этом каталоге нет осциллограмм (.ZU); --recursive ищет и во вложенных каталогах"},
        Wrong{
            {"convert", "rec.ZU"},
            2,
            "there is no ZuDrv.ini in the current directory; name the recorders' ini file by --ini, or have "
            "'zucmtr dictionary --complete' make one",
            "в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или составьте "
            "его: «zucmtr dictionary --complete»"},
        Wrong{{"convert", "nosuch.ZU", "in/b.ZU"},
              2,
              "there is no ZuDrv.ini in 'in' or in the current directory; name the recorders' ini file by "
              "--ini, or have 'zucmtr dictionary --complete' make one",
              "в «in» и в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или "
              "составьте его: «zucmtr dictionary --complete»"},
        Wrong{{"convert", "my.ini"},
              1,
              "my.ini: not converted: it is an ini file, not a recording; name it by --ini, or look at it "
              "with 'zucmtr check'",
              "my.ini: не преобразована: это ini-файл, а не осциллограмма; укажите его ключом --ini или "
              "проверьте командой «zucmtr check»"},
        Wrong{{"convert", "lone.Z01"},
              1,
              "lone.Z01: not converted: it continues a recording whose first file lone.ZU is not there; "
              "bring that back",
              "lone.Z01: не преобразована: файл продолжает осциллограмму, первого файла которой (lone.ZU) "
              "нет; верните его"},
        Wrong{{"convert", "rec.bin"},
              1,
              "rec.bin: not converted: the name of a recording ends in .ZU or .zu; rename the file",
              "rec.bin: не преобразована: имя осциллограммы должно кончаться на .ZU или .zu; переименуйте "
              "файл"},
        Wrong{{"convert", "/dev/zero"},
              1,
              "/dev/zero: not converted: it is a device or a socket; give a file",
              "/dev/zero: не преобразована: это устройство или сокет; укажите файл"},
        Wrong{{"convert", "fifo.ZU"},
              1,
              "fifo.ZU: not converted: it is a pipe; save what comes out of it in a file, and give that",
              "fifo.ZU: не преобразована: это канал; сохраните данные из него в файл и укажите этот файл"},
        Wrong{{"convert", "loop.ZU"},
              1,
              "loop.ZU: not converted: it is a link that leads back to itself; remove it",
              "loop.ZU: не преобразована: это ссылка, ведущая на саму себя; удалите её"},
        Wrong{{"convert", "no\nsuch\033[31m.ZU"},
              1,
              "no?such?[31m.ZU: not converted: there is no such file; check the path",
              "no?such?[31m.ZU: не преобразована: такого файла нет; проверьте путь"},
        Wrong{{"convert", longName},
              1,
              longName + ": not converted: the path is too long; shorten the names",
              longName + ": не преобразована: слишком длинный путь; сократите имена"},
        Wrong{{"convert", ""},
              2,
              "FILE: the path is empty; give one",
              "ФАЙЛ: пустой путь; укажите его",
              "zucmtr convert"},
        Wrong{{"convert", "--ini", "nosuch.ini", "rec.ZU"},
              2,
              "--ini: nosuch.ini: there is no such file; check the path",
              "--ini: nosuch.ini: такого файла нет; проверьте путь"},
        Wrong{{"convert", "--ini", "my.ini", "--defaults", "No", "rec.ZU"},
              2,
              "--defaults: 'my.ini' has no section [No]; it has [Default], [Vostochnaya]",
              "--defaults: в «my.ini» нет секции [No]; есть [Default], [Vostochnaya]"},
        Wrong{{"convert", "--ini", "my.ini", "--out", "rec.ZU", "rec.ZU"},
              2,
              "--out: 'rec.ZU' is a file; give a directory to write into",
              "--out: «rec.ZU» — файл; укажите каталог"},
        Wrong{{"convert", "--ini", "my.ini", "--out", "rec.ZU/a", "--make-out", "rec.ZU"},
              2,
              "--out: the directory 'rec.ZU/a' cannot be made, since 'rec.ZU' is a file; choose another one",
              "--out: каталог «rec.ZU/a» не создаётся: «rec.ZU» — файл; выберите другой"}));

INSTANTIATE_TEST_SUITE_P(
    Info, WrongTest,
    testing::Values(
        Wrong{{"info", "/etc/passwd"},
              1,
              "/etc/passwd: it is no recording: it does not begin as a recorder's file does",
              "/etc/passwd: это не осциллограмма: начало не такое, как у файлов регистратора"},
        Wrong{{"info", "in"},
              1,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"info", "empty"},
              1,
              "empty: it is a directory; give a file",
              "empty: это каталог; укажите файл"},
        Wrong{{"info", "x.dat"},
              1,
              "x.dat: it is a part of a COMTRADE record; give its configuration 'x.cfg'",
              "x.dat: это часть записи COMTRADE; укажите её конфигурацию «x.cfg»"},
        Wrong{{"info", "lone.dat"},
              1,
              "lone.dat: it is a part of a COMTRADE record, whose .cfg file is not beside it; give the .cfg "
              "file",
              "lone.dat: это часть записи COMTRADE, а её файла .cfg рядом нет; укажите файл .cfg"},
        Wrong{{"info", "fifo.ZU"},
              1,
              "fifo.ZU: it is a pipe; save what comes out of it in a file, and give that",
              "fifo.ZU: это канал; сохраните данные из него в файл и укажите этот файл"},
        Wrong{{"info", "/dev/zero"},
              1,
              "/dev/zero: it is a device or a socket; give a file",
              "/dev/zero: это устройство или сокет; укажите файл"},
        Wrong{{"info", "empty.ZU"},
              1,
              "empty.ZU: the file is empty; was the copy interrupted?",
              "empty.ZU: файл пуст; не прервано ли копирование?"},
        Wrong{{"info", "empty.cfg"},
              1,
              "empty.cfg: the file is empty; was the copy interrupted?",
              "empty.cfg: файл пуст; не прервано ли копирование?"},
        Wrong{{"info", "iscfg.ZU"},
              1,
              "iscfg.ZU: it is no recording: its content is a COMTRADE record's; give it the ending .cfg",
              "iscfg.ZU: это не осциллограмма: по содержимому это запись COMTRADE; дайте файлу расширение "
              ".cfg"},
        Wrong{{"info", "iszu.cfg"},
              1,
              "iszu.cfg: it is no COMTRADE record: its content is a recording's; give it the ending .ZU",
              "iszu.cfg: это не запись COMTRADE: по содержимому это осциллограмма; дайте файлу расширение "
              ".ZU"},
        Wrong{{"info", "number.cfg"},
              1,
              "number.cfg, line 2: channel count is 'x', which is no number",
              "number.cfg, строка 2: число каналов: «x» — не число"},
        Wrong{{"info", "bad.cfg"},
              1,
              "bad.cfg, line 2: 1 channels, but only 0 lines follow",
              "bad.cfg, строка 2: каналов 1, а строк следует только 0"}));

INSTANTIATE_TEST_SUITE_P(
    View, WrongTest,
    testing::Values(
        Wrong{{"view", "x.DAT"},
              1,
              "x.DAT: it is a part of a COMTRADE record; give its configuration 'x.cfg'",
              "x.DAT: это часть записи COMTRADE; укажите её конфигурацию «x.cfg»"},
        Wrong{{"view", "in"},
              1,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"view", "bad.cfg"},
              1,
              "bad.cfg, line 2: 1 channels, but only 0 lines follow",
              "bad.cfg, строка 2: каналов 1, а строк следует только 0"},
        Wrong{{"view", "iszu.cfg"},
              1,
              "iszu.cfg: it is no COMTRADE record: its content is a recording's; give it the ending .ZU",
              "iszu.cfg: это не запись COMTRADE: по содержимому это осциллограмма; дайте файлу расширение "
              ".ZU"},
        Wrong{{"view", "rec.Z01"},
              1,
              "rec.Z01: it continues a recording; give the first file rec.ZU instead",
              "rec.Z01: файл продолжает осциллограмму; укажите вместо него первый файл rec.ZU"},
        Wrong{{"view", "cut.ZU"},
              1,
              "cut.ZU: the file ends before all the channels that its header promises; was the copy "
              "interrupted?",
              "cut.ZU: файл обрывается раньше, чем кончаются каналы, указанные в заголовке; не прервано ли "
              "копирование?"},
        Wrong{{"view", "--ini", "my.ini", "--device", "No", "rec.ZU"},
              2,
              "--device: 'my.ini' has no section [No]; it has [Default], [Vostochnaya]",
              "--device: в «my.ini» нет секции [No]; есть [Default], [Vostochnaya]"},
        Wrong{{"view", "--window", "nan", "rec.ZU"},
              2,
              "--window: 'nan' is wrong; give a number from 0.001 to 1000000",
              "--window: «nan» не годится; дайте число от 0.001 до 1000000",
              "zucmtr view"},
        Wrong{{"view", "rec.ZU", "x.cfg"},
              2,
              "'x.cfg' is too much: 'zucmtr view' takes one FILE",
              "«x.cfg» — лишнее: у «zucmtr view» только один аргумент (ФАЙЛ)",
              "zucmtr view"}));

INSTANTIATE_TEST_SUITE_P(
    Check, WrongTest,
    testing::Values(
        Wrong{
            {"check"},
            2,
            "there is no ZuDrv.ini in the current directory; name the recorders' ini file by --ini, or have "
            "'zucmtr dictionary --complete' make one",
            "в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или составьте "
            "его: «zucmtr dictionary --complete»"},
        Wrong{{"check", "nosuch.ini"},
              2,
              "nosuch.ini: there is no such file; check the path",
              "nosuch.ini: такого файла нет; проверьте путь"},
        Wrong{{"check", "--ini", "my.ini", "station/ZuDrv.ini"},
              2,
              "there are two ini files, 'my.ini' and 'station/ZuDrv.ini'; check one after the other",
              "даны два ini-файла, «my.ini» и «station/ZuDrv.ini»; проверьте их по одному"},
        Wrong{{"check", "my.ini", "in"},
              2,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"check", "my.ini", "fifo.ZU"},
              2,
              "fifo.ZU: it is a pipe; save what comes out of it in a file, and give that",
              "fifo.ZU: это канал; сохраните данные из него в файл и укажите этот файл"}));

INSTANTIATE_TEST_SUITE_P(
    Others, WrongTest,
    testing::Values(
        Wrong{{"dictionary", "x.cfg"},
              1,
              "x.cfg: it is a COMTRADE record, not a recording; 'zucmtr info' and 'zucmtr view' take it",
              "x.cfg: это запись COMTRADE, а не осциллограмма; её принимают «zucmtr info» и «zucmtr view»"},
        Wrong{{"dictionary", "in"},
              1,
              "in: it is a directory; give a file in it, such as 'in/b.ZU'",
              "in: это каталог; укажите файл в нём, например «in/b.ZU»"},
        Wrong{{"sample", "--out", "rec.ZU"},
              2,
              "--out: the directory 'rec.ZU' cannot be made, since 'rec.ZU' is a file; choose another one",
              "--out: каталог «rec.ZU» не создаётся: «rec.ZU» — файл; выберите другой"},
        Wrong{{"sample", "--out", ""},
              2,
              "--out: the value is empty; give one, or leave the option out",
              "--out: пустое значение; укажите его или уберите ключ",
              "zucmtr sample"},
        Wrong{{"watch", "--out", "empty", "nosuch"},
              2,
              "there is no directory 'nosuch'; make it first: mkdir -p nosuch",
              "каталога «nosuch» нет; создайте его: mkdir -p nosuch"},
        Wrong{{"watch", "--out", "empty", "rec.ZU"},
              2,
              "'rec.ZU' is no directory; give the one in which recordings arrive",
              "«rec.ZU» — не каталог; укажите каталог, в который поступают осциллограммы"},
        Wrong{{"watch", "--out", "empty", "in"},
              2,
              "there is no ZuDrv.ini in 'in' or in the current directory; name the recorders' ini file by "
              "--ini, or have 'zucmtr dictionary --complete' make one",
              "в «in» и в текущем каталоге нет ZuDrv.ini; укажите ini-файл регистраторов ключом --ini или "
              "составьте его: «zucmtr dictionary --complete»"}));

INSTANTIATE_TEST_SUITE_P(
    Words, WrongTest,
    testing::Values(
        Wrong{{}, 2, "no command is given", "не указана команда", "zucmtr"},
        Wrong{{"convrt", "a.ZU"},
              2,
              "there is no command 'convrt'; did you mean 'convert'?",
              "нет команды «convrt»; может быть, «convert»?",
              "zucmtr"},
        Wrong{
            {"help", "nosuch"},
            2,
            "there is no command 'nosuch'; there are check, convert, dictionary, info, sample, view, watch, "
            "help",
            "нет команды «nosuch»; есть check, convert, dictionary, info, sample, view, watch, help",
            "zucmtr"},
        Wrong{{"rec.ZU"},
              2,
              "'rec.ZU' is no command; say first what to do with it, as in: zucmtr info rec.ZU",
              "«rec.ZU» — не команда; укажите сначала, что делать, например: zucmtr info rec.ZU",
              "zucmtr"},
        Wrong{{"--json", "info", "rec.ZU"},
              2,
              "--json stands before the command; put it after",
              "--json стоит перед командой; поставьте его после неё",
              "zucmtr info"},
        Wrong{{"convert", "--recursiv"},
              2,
              "'zucmtr convert' has no option --recursiv; did you mean --recursive?",
              "у «zucmtr convert» нет ключа --recursiv; может быть, --recursive?",
              "zucmtr convert"},
        Wrong{{"convert", "-json", "rec.ZU"},
              2,
              "'-json' has one dash only; did you mean --json?",
              "в «-json» только один дефис; может быть, --json?",
              "zucmtr convert"},
        Wrong{{"info", "--recursive", "rec.ZU"},
              2,
              "'zucmtr info' has no option --recursive; it is one of 'zucmtr convert', 'zucmtr watch'",
              "у «zucmtr info» нет ключа --recursive; он есть у «zucmtr convert», «zucmtr watch»",
              "zucmtr info"},
        Wrong{{"convert"}, 2, "FILE is required", "не указано: ФАЙЛ", "zucmtr convert"},
        Wrong{{"convert", "--log"},
              2,
              "--log: the value is missing (FILE)",
              "--log: нет значения (ФАЙЛ)",
              "zucmtr convert"},
        Wrong{{"convert", "--out=", "rec.ZU"},
              2,
              "--out= has no value after the '='",
              "--out=: после «=» нет значения",
              "zucmtr convert"},
        Wrong{{"convert", "--json=maybe", "rec.ZU"},
              2,
              "--json takes no value; leave 'maybe' out",
              "--json — ключ без значения; уберите «maybe»",
              "zucmtr convert"},
        Wrong{{"convert", "--out", "a", "--out", "b", "rec.ZU"},
              2,
              "--out is given 2 times; give it once",
              "--out: указано раз: 2; укажите один раз",
              "zucmtr convert"},
        Wrong{{"convert", "--archive", "a", "--remove-source", "rec.ZU"},
              2,
              "--remove-source and --archive exclude each other; leave one out",
              "--remove-source и --archive вместе нельзя; уберите один из них",
              "zucmtr convert"},
        Wrong{{"convert", "-j", "0x10", "rec.ZU"},
              2,
              "--jobs: '0x10' is wrong; give a whole number from 0 to 256",
              "--jobs: «0x10» не годится; дайте целое число от 0 до 256",
              "zucmtr convert"},
        Wrong{{"convert", "--max-memory", "5X", "rec.ZU"},
              2,
              "--max-memory: '5X' is wrong; give a size as 800M or 2G, or 0 for no limit",
              "--max-memory: «5X» не годится; дайте размер, как 800M или 2G, или 0 — без предела",
              "zucmtr convert"},
        Wrong{{"convert", "--max-memory", "99999999999G", "rec.ZU"},
              2,
              "--max-memory: '99999999999G' is wrong; give a size as 800M or 2G, or 0 for no limit",
              "--max-memory: «99999999999G» не годится; дайте размер, как 800M или 2G, или 0 — без предела",
              "zucmtr convert"},
        Wrong{{"watch", "--out", "a", "--attempts", "0", "in"},
              2,
              "--attempts: '0' is wrong; give a whole number from 1 to 1000",
              "--attempts: «0» не годится; дайте целое число от 1 до 1000",
              "zucmtr watch"},
        Wrong{{"sample", "--out", "a", "--fault", "four"},
              2,
              "--fault: 'four' is wrong; give one of single, two, three, none",
              "--fault: «four» не годится; дайте одно из: single, two, three, none",
              "zucmtr sample"}));

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
    for (const char* command : {"info", "view", "dictionary"}) {
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
    const QStringList commands = {"check",  "convert", "dictionary", "info",
                                  "sample", "view",    "watch",      "help"};
    for (const QString& command : commands) {
        const Finished help = RunProgram(QString(), {"help", command});
        EXPECT_EQ(help.code, 0);
        EXPECT_EQ(help.err, QString());
        EXPECT_EQ(help.out, RunProgram(QString(), {command, "--help"}).out);
    }
    EXPECT_EQ(RunProgram(QString(), {"help"}).out, RunProgram(QString(), {"--help"}).out);
}
