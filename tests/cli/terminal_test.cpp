// Every subcommand on a terminal: what is on standard error, to the letter.
#include "terminal.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

using recorderfile::Encode;

struct Case
{
    const char* name;
    QStringList arguments;
    int code;
    QString error; // "" means that nothing at all is written
};

std::ostream& operator<<(std::ostream& out, const Case& one)
{
    return out << one.name;
}

class OnTerminal : public testing::TestWithParam<Case>
{
protected:
    OnTerminal()
    {
        place.Write("a.ZU", Encode(ShortRecording(0)));
        place.Write("b.ZU", Encode(ShortRecording(1)));
        place.Write("bad/bad.ZU", "no recording");
        place.Write("bad/ZuDrv.ini", ReadBytes(place.Path("ZuDrv.ini")));
        place.Write("in/c.ZU", Encode(ShortRecording(2)));
        place.Write("in/ZuDrv.ini", PlainIni({{"Время ожидания", "10"}}));
        place.MakeDirectory("station");
        RunProgram(place.Path(), {"convert", "-q", "--out", "out", "b.ZU"});
    }

    const Workplace place{{{"Время ожидания", "10"}}};
};

const QString badFile =
    "it is no recording: it does not start like a recorder's file; give a recording's first file (.ZU)";

const Case cases[] = {
    {"Help", {"--help"}, 0, ""},
    {"Version", {"--version"}, 0, ""},
    {"HelpOfConvert", {"convert", "--help"}, 0, ""},
    {"HelpOfWatch", {"watch", "--help"}, 0, ""},
    {"HelpOfInfo", {"info", "--help"}, 0, ""},
    {"HelpOfEvents", {"events", "--help"}, 0, ""},
    {"HelpOfExport", {"export", "--help"}, 0, ""},
    {"HelpOfVerify", {"verify", "--help"}, 0, ""},
    {"HelpOfView", {"view", "--help"}, 0, ""},
    {"HelpOfCheck", {"check", "--help"}, 0, ""},
    {"HelpOfValidate", {"validate", "--help"}, 0, ""},
    {"HelpOfDictionary", {"dictionary", "--help"}, 0, ""},
    {"HelpOfSample", {"sample", "--help"}, 0, ""},
    {"HelpOfArchive", {"archive", "--help"}, 0, ""},
    {"HelpOfArchiveCheck", {"archive", "check", "--help"}, 0, ""},
    {"HelpOfArchiveFind", {"archive", "find", "--help"}, 0, ""},
    {"HelpOfArchiveStats", {"archive", "stats", "--help"}, 0, ""},
    {"HelpOfArchivePage", {"archive", "page", "--help"}, 0, ""},
    {"HelpOfArchiveUpdate", {"archive", "update", "--help"}, 0, ""},
    {"NoCommand",
     {},
     2,
     "zucmtr: no command is given\nRun 'zucmtr --help' for the options and an example.\n"},
    {"Convert", {"convert", "--out", "out", "a.ZU"}, 0, ""},
    {"ConvertWithAPage", {"convert", "--view", "--out", "out", "a.ZU"}, 0, ""},
    {"ConvertSeveral",
     {"convert", "--out", "out", "a.ZU", "b.ZU"},
     0,
     "zucmtr: 2 recordings: 1 converted and verified, 1 there already; # s\n"},
    {"ConvertSeveralQuietly", {"convert", "-q", "--out", "out", "a.ZU", "b.ZU"}, 0, ""},
    {"ConvertDry",
     {"convert", "--dry-run", "--out", "out", "a.ZU", "b.ZU"},
     0,
     "zucmtr: 2 recordings: 2 to convert; # s\n"},
    {"ConvertForPrograms",
     {"convert", "--json", "--out", "out", "a.ZU", "b.ZU"},
     0,
     "zucmtr: 2 recordings: 1 converted and verified, 1 there already; # s\n"},
    {"ConvertWithALog", {"convert", "--log", "-", "--out", "out", "a.ZU"}, 0, ""},
    {"ConvertBad",
     {"convert", "--out", "out", "bad/bad.ZU"},
     1,
     "zucmtr: bad/bad.ZU: not converted: " + badFile + "\n"},
    {"ConvertBadQuietly",
     {"convert", "-q", "--out", "out", "bad/bad.ZU"},
     1,
     "zucmtr: bad/bad.ZU: not converted: " + badFile + "\n"},
    {"Watch", {"watch", "--once", "--rescan", "0.01", "--out", "out", "in"}, 0, ""},
    {"WatchBad", {"watch", "--once", "--rescan", "0.01", "--out", "out", "bad"}, 1, ""},
    {"Info", {"info", "a.ZU"}, 0, ""},
    {"InfoForPrograms", {"info", "--json", "--no-channels", "a.ZU"}, 0, ""},
    {"InfoBad", {"info", "bad/bad.ZU"}, 1, "zucmtr: bad/bad.ZU: " + badFile + "\n"},
    {"Events", {"events", "a.ZU", "b.ZU"}, 0, ""},
    {"EventsForPrograms", {"events", "--json", "a.ZU"}, 0, ""},
    {"EventsBad", {"events", "bad/bad.ZU"}, 1, "zucmtr: bad/bad.ZU: " + badFile + "\n"},
    {"Export", {"export", "a.ZU", "b.ZU"}, 0, ""},
    {"ExportToStandardOutput", {"export", "a.ZU", "--form", "csv", "-o", "-"}, 0, ""},
    {"ExportForPrograms", {"export", "--json", "a.ZU"}, 0, ""},
    {"ExportBad", {"export", "bad/bad.ZU"}, 1, "zucmtr: bad/bad.ZU: " + badFile + "\n"},
    {"Verify", {"verify", "out"}, 0, ""},
    {"VerifyPair", {"verify", "b.ZU", "out/" + ShortRecordName(1) + ".cfg"}, 0, ""},
    {"VerifyForPrograms", {"verify", "--json", "out"}, 0, ""},
    {"VerifyBad",
     {"verify", "bad/bad.cfg"},
     1,
     "zucmtr: bad/bad.cfg: wrong: there is no such file; check the path\n"},
    {"View", {"view", "a.ZU"}, 0, ""},
    {"ViewToStandardOutput", {"view", "a.ZU", "-o", "-"}, 0, ""},
    {"ViewPictures", {"view", "a.ZU", "--svg", "a.svg", "--png", "a.png"}, 0, ""},
    {"ViewBad", {"view", "--plain", "bad/bad.ZU"}, 1, "zucmtr: bad/bad.ZU: " + badFile + "\n"},
    {"Check", {"check", "--ini", "ZuDrv.ini"}, 0, ""},
    {"CheckBad", {"check", "a.ZU"}, 1, ""},
    {"ValidateBad", {"validate", "bad/bad.ZU"}, 1, ""},
    {"Dictionary", {"dictionary", "a.ZU"}, 0, ""},
    {"DictionaryIntoAFile", {"dictionary", "-o", "new.ini", "a.ZU"}, 0, ""},
    {"DictionaryBad", {"dictionary", "bad/bad.ZU"}, 1, "zucmtr: bad/bad.ZU: " + badFile + "\n"},
    {"ArchiveUpdate", {"archive", "update", "out"}, 0, ""},
    {"Sample", {"sample", "--seconds", "0.5", "--out", "station"}, 0, ""},
};

} // namespace

TEST_P(OnTerminal, StandardErrorIsWhatItMustBe)
{
    const Finished run = RunOnTerminal(place.Path(), GetParam().arguments, {{"TERM", "xterm"}});
    EXPECT_EQ(run.code, GetParam().code) << run.err;
    EXPECT_EQ(Untimed(Seen(run.err)), GetParam().error);
    EXPECT_FALSE(run.out.contains('\033'));
    // Nothing else may be written but a bar that comes and goes.
    static const QRegularExpression bar("\r\033\\[K(\\[[#.]{24}\\] [0-9]+/[0-9]+(  [0-9.]+ a second, "
                                        "[0-9:]+ left)?)?");
    EXPECT_EQ(Untimed(QString(run.err).remove(bar)), GetParam().error);
}

TEST_P(OnTerminal, DumbTerminalGetsNoBar)
{
    const Finished run =
        RunOnTerminal(place.Path(), GetParam().arguments, {{"TERM", "dumb"}, {"NO_COLOR", "1"}});
    EXPECT_EQ(run.code, GetParam().code) << run.err;
    EXPECT_EQ(Untimed(run.err), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(Commands, OnTerminal, testing::ValuesIn(cases),
                         [](const auto& one) { return one.param.name; });
