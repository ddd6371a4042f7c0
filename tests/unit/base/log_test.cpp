// The log file.
#include "base/codecs.h"
#include "base/log.h"
#include "support/recordings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextCodec>

#include <functional>
#include <sys/stat.h>

namespace {

QStringList* debugTexts = nullptr;

// Collects what goes to the debug output for as long as the object lives.
class DebugOutput
{
public:
    DebugOutput() : before(qInstallMessageHandler(Take)) { debugTexts = &texts; }
    ~DebugOutput()
    {
        debugTexts = nullptr;
        qInstallMessageHandler(before);
    }
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    // How often the message about a log that cannot be written was printed.
    int LogFailures() const { return texts.count(QStringLiteral("Ошибка записи в лог")); }

private:
    static void Take(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
    {
        if (type == QtDebugMsg)
            debugTexts->append(text);
    }

    QStringList texts;
    QtMessageHandler before;
};

// Creates files with no more than these permissions for as long as the object lives.
class Umask
{
public:
    explicit Umask(mode_t mask) : before(umask(mask)) {}
    ~Umask() { umask(before); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t before;
};

mode_t PermissionsOf(const QString& path)
{
    struct stat status{};
    stat(QFile::encodeName(path).constData(), &status);
    return status.st_mode & mode_t{0777};
}

class Log : public testing::Test
{
protected:
    Log() { zu::LogFilePath = path; }
    ~Log() override { zu::LogFilePath = QString(); }

    TestDirectory directory;
    QString path = directory.Path("log.txt");
};

// The two ways of writing, and a load that logs: all must have the same result.
struct Form
{
    const char* name;
    std::function<void()> write;
};

std::ostream& operator<<(std::ostream& out, const Form& form)
{
    return out << form.name;
}

const Form OneLine{"OneLine", [] { zu::WriteToLog(QStringLiteral("text")); }};
const Form Lines{"Lines", [] { zu::WriteToLog(std::vector<QString>{"text"}); }};
const Form NoLines{"NoLines", [] { zu::WriteToLog(std::vector<QString>()); }};

class LogForms : public Log, public testing::WithParamInterface<Form>
{};

INSTANTIATE_TEST_SUITE_P(Forms, LogForms, testing::Values(OneLine, Lines, NoLines),
                         [](const auto& form) { return form.param.name; });

} // namespace

TEST_P(LogForms, NullPathEndsInTheDebugText)
{
    const CurrentDirectory current(directory.Path());
    zu::LogFilePath = QString();
    const DebugOutput output;
    GetParam().write();
    EXPECT_EQ(output.LogFailures(), 1);
    EXPECT_TRUE(directory.Names().isEmpty());
}

TEST_P(LogForms, MissingDirectoryEndsInTheDebugText)
{
    zu::LogFilePath = directory.Path("missing/log.txt");
    const DebugOutput output;
    GetParam().write();
    EXPECT_EQ(output.LogFailures(), 1);
    EXPECT_FALSE(QFile::exists(directory.Path("missing")));
}

TEST_P(LogForms, DirectoryForAFileEndsInTheDebugTextAndKeepsItsPermissions)
{
    zu::LogFilePath = directory.MakeDirectory("log");
    QFile::setPermissions(directory.Path("log"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const DebugOutput output;
    GetParam().write();
    EXPECT_EQ(output.LogFailures(), 1);
    EXPECT_EQ(PermissionsOf(directory.Path("log")), mode_t{0700});
}

TEST_P(LogForms, WritingSaysNothingToTheDebugOutput)
{
    const DebugOutput output;
    GetParam().write();
    EXPECT_EQ(output.LogFailures(), 0);
}

TEST_P(LogForms, NewFileIsOpenToItsGroup)
{
    const Umask mask(077);
    GetParam().write();
    EXPECT_EQ(PermissionsOf(path), mode_t{0660});
}

TEST_P(LogForms, PermissionsOfAnEarlierFileStay)
{
    directory.Write("log.txt", "");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    GetParam().write();
    EXPECT_EQ(PermissionsOf(path), mode_t{0600});
}

TEST_P(LogForms, FileIsMadeAnewWhenItIsRemovedBetweenCalls)
{
    GetParam().write();
    const QByteArray first = ReadBytes(path);
    QFile::remove(path);
    GetParam().write();
    EXPECT_EQ(ReadBytes(path), first);
}

TEST_F(Log, LineEndsInALineFeedAfterWhatWasThere)
{
    directory.Write("log.txt", "before\n");
    zu::WriteToLog(QStringLiteral("one"));
    zu::WriteToLog(std::vector<QString>{"two", "", "three"});
    EXPECT_EQ(ReadBytes(path), "before\none\ntwo\n\nthree\n");
}

TEST_F(Log, EmptyListCreatesAnEmptyFile)
{
    zu::WriteToLog(std::vector<QString>());
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(ReadBytes(path), "");
}

TEST_F(Log, EmptyListLeavesAnEarlierFileAsItIs)
{
    directory.Write("log.txt", "before\n");
    zu::WriteToLog(std::vector<QString>());
    EXPECT_EQ(ReadBytes(path), "before\n");
}

TEST_F(Log, OneLineIsInTheEncodingOfTheLocaleAndListsAreUtf8)
{
    QTextCodec::setCodecForLocale(zu::CodecCP1251);
    zu::WriteToLog(QStringLiteral("Да"));
    zu::WriteToLog(std::vector<QString>{"Да"});
    QTextCodec::setCodecForLocale(nullptr);
    EXPECT_EQ(ReadBytes(path), QByteArray::fromHex("c4e00a") + "Да\n");
}

TEST_F(Log, LoadingSucceedsWithoutALog)
{
    const QString ini = directory.Write("ZuDrv.ini", DefaultsSection() + "[Device]\n");
    zu::LogFilePath = directory.Path("missing/log.txt");
    const DebugOutput output;
    ZuCmtrConverter converter;
    unsigned int number = 99;
    EXPECT_TRUE(converter.LoadFromIniDefault(ini, "Defaults"));
    EXPECT_TRUE(converter.LoadFromIni(ini, "Device", &number));
    EXPECT_EQ(number, 0U);
    EXPECT_TRUE(converter.LastError.isNull());
    EXPECT_EQ(output.LogFailures(), 5); // two heads, two sets of keys, one dictionary
    converter.Clear();
}

TEST_F(Log, ConversionDoesNotLog)
{
    TestStation station;
    QFile::remove(path);
    EXPECT_TRUE(station.Convert(SmallFile()));
    EXPECT_FALSE(station.Convert("", "bad.ZU"));
    EXPECT_FALSE(QFile::exists(path));
}
