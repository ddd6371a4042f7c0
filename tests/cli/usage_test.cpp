// Help, version and command lines that cannot be understood.
#include "program.h"

#include <gtest/gtest.h>

namespace {

struct WrongUsage
{
    QStringList arguments;
    QString error;
};

void PrintTo(const WrongUsage& usage, std::ostream* out)
{
    *out << "zucmtr " << usage.arguments.join(' ').toStdString();
}

class WrongUsageTest : public testing::TestWithParam<WrongUsage>
{};

QString Hint(const QString& command)
{
    return QStringLiteral("Run '%1 --help' for the options and an example.\n").arg(command);
}

// The command lines that a help text shows, as a script.
QString ExampleOf(const QString& help)
{
    QString script = QStringLiteral("set -e\n");
    for (const QString& line : help.split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("  mkdir")) || line.startsWith(QLatin1String("  zucmtr")))
            script += line + QLatin1Char('\n');
    return script;
}

} // namespace

TEST(Usage, VersionIsThatOfTheProject)
{
    const Finished run = RunProgram(QString(), {"--version"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, QStringLiteral("zucmtr " ZUCMTR_VERSION "\n"));
    EXPECT_EQ(run.err, QString());
}

TEST(Usage, HelpNamesTheCommandsAndHowToStart)
{
    const Finished run = RunProgram(QString(), {"--help"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(
        run.out,
        QStringLiteral(
            "Converts the recordings of digital fault recorders (.ZU) into COMTRADE records (IEEE C37.111).\n"
            "Usage: zucmtr [OPTIONS] [SUBCOMMAND]\n"
            "\n"
            "Options:\n"
            "  -h,--help                   Print this help and exit\n"
            "  --version                   Print the version and exit\n"
            "\n"
            "Subcommands:\n"
            "  archive                     Keep a catalogue of many recordings and records, and search it\n"
            "  check                       Explain what is wrong with an ini file\n"
            "  convert                     Convert recordings into COMTRADE records\n"
            "  dictionary                  Write a first sorting dictionary for the channels of a recording\n"
            "  events                      Say what happened: the fault, the events, what the protection "
            "did\n"
            "  export                      Write recordings and COMTRADE records in another form\n"
            "  info                        Show what is in recordings and COMTRADE records\n"
            "  sample                      Write a sample station: recordings and their ini file\n"
            "  validate                    Check whether COMTRADE records keep to the standard\n"
            "  verify                      Compare a record with its recording, or with itself\n"
            "  view                        Show a recording or COMTRADE record as a page for the browser, or "
            "as a "
            "picture\n"
            "  watch                       Convert recordings as they arrive in directories\n"
            "  help                        Print the help of the program or of a command\n"
            "\n"
            "'zucmtr help COMMAND' says more about a command. To try the program:\n"
            "\n"
            "  zucmtr sample --out station\n"
            "  zucmtr convert --out station/comtrade --make-out station\n"));
}

TEST(Usage, HelpOfConvertNamesItsOptions)
{
    const Finished run = RunProgram(QString(), {"convert", "--help"});
    EXPECT_EQ(run.code, 0);
    for (const char* option : {"--ini FILE",       "--defaults SECTION",
                               "--device SECTION", "--out DIR",
                               "--make-out",       "-r,--recursive",
                               "-j,--jobs N",      "--continue",
                               "--fail-fast",      "--dry-run",
                               "--verify",         "--no-verify",
                               "--trust-writer",   "--remove-source",
                               "--archive DIR",    "-q,--quiet",
                               "--flat",           "--again",
                               "--replace",        "--sync",
                               "--no-sync",        "--json",
                               "--log FILE",       "--max-memory SIZE",
                               "--events",         "--lines FILE",
                               "--salvage",        "FILE ... REQUIRED"})
        EXPECT_TRUE(run.out.contains(QLatin1String("\n  ") + QLatin1String(option))) << option;
}

TEST(Usage, HelpOfSampleNamesItsOptions)
{
    const Finished run = RunProgram(QString(), {"sample", "--help"});
    EXPECT_EQ(run.code, 0);
    for (const char* option :
         {"--out DIR REQUIRED", "--analog N", "--discrete N", "--rate HZ", "--seconds S", "--segments N",
          "--compressed", "--plain", "--code-page NAME", "--fault KIND", "--seed N", "--force"})
        EXPECT_TRUE(run.out.contains(QLatin1String("\n  ") + QLatin1String(option))) << option;
}

TEST(Usage, ExampleOfTheHelpConvertsEightRecordings)
{
    for (const QStringList& help : {QStringList{"--help"}, QStringList{"convert", "--help"}}) {
        const TestDirectory directory;
        const QString script = ExampleOf(RunProgram(QString(), help).out);
        ASSERT_EQ(script.count(QLatin1String("  zucmtr ")), help.size() + 1);
        const Finished run = RunShell(directory.Path(), script);
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(directory.Names("station/comtrade").filter(".cfg").size(), 8);
    }
}

TEST(Usage, ExampleOfTheSampleHelpWritesSegments)
{
    const TestDirectory directory;
    const Finished run =
        RunShell(directory.Path(), ExampleOf(RunProgram(QString(), {"sample", "--help"}).out));
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(directory.Names("station").filter(".Z01").size(), 8);
}

TEST(Usage, ArgumentThatIsNotUtf8IsRefused)
{
    const Finished run = RunShell(QString(), "zucmtr convert \"$(printf 'a\\377')\"");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              QStringLiteral("zucmtr: argument 2 ('a\uFFFD') is not UTF-8; rename the file, or run the "
                             "program from a UTF-8 terminal\n"));
}

TEST_P(WrongUsageTest, EndsWithTwoAndSaysWhatIsWrong)
{
    const Finished run = RunProgram(QString(), GetParam().arguments);
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, QString());
    EXPECT_EQ(run.err, QLatin1String("zucmtr: ") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Usage, WrongUsageTest,
    testing::Values(
        WrongUsage{{}, "no command is given\n" + Hint("zucmtr")},
        WrongUsage{{"convrt"}, "there is no command 'convrt'; did you mean 'convert'?\n" + Hint("zucmtr")},
        WrongUsage{{"--verbose"}, "'zucmtr' has no option --verbose\n" + Hint("zucmtr")},
        WrongUsage{{"convert"}, "FILE is required\n" + Hint("zucmtr convert")},
        WrongUsage{{"convert", "--ini"}, "--ini: the value is missing (FILE)\n" + Hint("zucmtr convert")},
        WrongUsage{{"convert", "--ini", "a", "--defaults", "b", "--device", "c", "--out", "d"},
                   "FILE is required\n" + Hint("zucmtr convert")},
        WrongUsage{{"convert", "--ini", "a", "--defaults", "b", "--device", "c", "--out", "d", "--cff", "e"},
                   "'zucmtr convert' has no option --cff\n" + Hint("zucmtr convert")},
        WrongUsage{{"sample"}, "--out is required\n" + Hint("zucmtr sample")},
        WrongUsage{{"sample", "--out", "a", "b"},
                   "'b' is too much: 'zucmtr sample' takes nothing but options\n" + Hint("zucmtr sample")}));
