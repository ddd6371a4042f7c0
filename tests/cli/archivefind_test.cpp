// zucmtr archive find and stats: how they are asked, and what they print.
#include "program.h"
#include "terminal.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <memory>

namespace {

// A catalogue of a sample station, with a directory below, a file that is no recording and one whose name has
// a line feed. It is made once for all tests.
class ArchiveFind : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        place = std::make_unique<TestDirectory>();
        RunProgram(place->Path(), {"sample", "--seconds", "1", "--out", "in"});
        RunProgram(place->Path(), {"sample", "--random-fault", "12", "--out", "in/below"});
        place->Write("in/bad.ZU", "no recording");
        place->Write("in/-two\nlines.ZU", "nor this");
        RunProgram(place->Path(), {"archive", "update", "in"});
    }
    static void TearDownTestSuite() { place.reset(); }

    static QString Path(const QString& name) { return place->Path(name); }
    static Finished Find(const QStringList& words, const QString& directory = QStringLiteral("in"))
    {
        return RunProgram(Path(directory), QStringList{"archive", "find"} + words);
    }

    static std::unique_ptr<TestDirectory> place;
};

std::unique_ptr<TestDirectory> ArchiveFind::place;

} // namespace

TEST_F(ArchiveFind, ExitCodesAreThoseOfGrep)
{
    EXPECT_EQ(Find({"--kind", "single"}).code, 0);
    const Finished none = Find({"--kind", "ABCG"});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.out + none.err, "");
    EXPECT_EQ(RunProgram(QString(), {"archive", "find", "--catalogue", "/proc/version"}).code, 2);
}

TEST_F(ArchiveFind, CatalogueIsFoundAboveAndADirectoryNarrowsIt)
{
    EXPECT_EQ(Find({"--paths", "--kind", "BG"}).out, "below/Vostochnaya_fault_0000012.ZU\n");
    EXPECT_EQ(Find({"--paths"}, "in/below").out.count('\n'), 11);
    EXPECT_EQ(Find({"--paths", "."}, "in/below").out, "Vostochnaya_fault_0000012.ZU\n");
    EXPECT_EQ(Find({"--paths", "in/below"}, ".").out, "in/below/Vostochnaya_fault_0000012.ZU\n");
    EXPECT_EQ(Find({"--paths", "--kind", "BG", "--catalogue", "in/zucmtr-archive.db"}, ".").out,
              "in/below/Vostochnaya_fault_0000012.ZU\n");
    EXPECT_EQ(Find({"--paths", "--kind", "BG", "--catalogue", Path("in/zucmtr-archive.db")}, "in/below").out,
              "Vostochnaya_fault_0000012.ZU\n");
}

TEST_F(ArchiveFind, SaysOnATerminalThatNothingWasFound)
{
    const Finished run =
        RunOnTerminal(Path("in"), {"archive", "find", "--kind", "ABCG"}, {{"TERM", "xterm"}});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains("zucmtr: nothing was found")) << run.err;
}

TEST_F(ArchiveFind, TextMayBeTheWholeNameOfAFile)
{
    EXPECT_EQ(Find({"--paths", "--text", "Vostochnaya_fault_0000012.ZU"}).out,
              "below/Vostochnaya_fault_0000012.ZU\n");
}

// What cannot be read has its entry: the catalogue is up to date.
TEST_F(ArchiveFind, UpdateReportsWhatCannotBeReadByTheSamePathAndIsDone)
{
    const Finished run = RunProgram(place->Path(), {"archive", "update", "--catalogue", "other.db", "in"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.err.contains("zucmtr: in/bad.ZU: it is no recording: ")) << run.err;
    EXPECT_EQ(run.out, "11 read (2 unreadable), 0 moved, 0 gone, 0 unchanged\n");
}

TEST_F(ArchiveFind, UpdateReportsAnIniFileThatIsNotThereOnce)
{
    const Finished run = RunProgram(place->Path(), {"archive", "update", "--ini", "none.ini", "in"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "zucmtr: --ini: none.ini: there is no such file; check the path\n");
}

TEST_F(ArchiveFind, TableIsForPeople)
{
    EXPECT_EQ(
        Find({"--kind", "BG"}).out,
        QString::fromUtf8(
            "  Trigger                  Station     Circuit            Fault   Cleared  Current  Distance  "
            "File\n"
            "  2024-01-31 12:12:00.233  ПС Узловая  ВЛ 110 кВ Луговая  BG     439.6 ms    542 A  137.7 km  "
            "below/Vostochnaya_fault_0000012.ZU\n"));
    EXPECT_EQ(
        Find({"--unread", "--sort", "path"}).out,
        "./-two?lines.ZU: it is no recording: it does not start like a recorder's file; give a recording's "
        "first "
        "file (.ZU)\n"
        "bad.ZU: it is no recording: it does not start like a recorder's file; give a recording's first file "
        "(.ZU)\n");
}

TEST_F(ArchiveFind, LimitEndsTheTable)
{
    const Finished run = Find({"--limit", "3"});
    EXPECT_EQ(run.out.count('\n'), 4);
    EXPECT_EQ(run.err, "");
}

TEST_F(ArchiveFind, PathsForPipesAreWholeAndNoOptions)
{
    EXPECT_EQ(RunShell(Path("in"), "zucmtr archive find --unread -0 --sort path | tr '\\0' '|'").out,
              "./-two\nlines.ZU|bad.ZU|");
    const Finished piped = RunShell(Path("in"), "zucmtr archive find --kind BG -0 | xargs -0 zucmtr events");
    EXPECT_EQ(piped.code, 0);
    EXPECT_TRUE(piped.out.contains("BG") || piped.out.contains("circuit B")) << piped.out;
}

TEST_F(ArchiveFind, CsvHasAHeadAndTheColumnsOfTheTable)
{
    const QStringList lines = Find({"--csv", "--kind", "BG"}).out.split("\r\n");
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(
        lines[0].startsWith("path,kind,station,recorder,start_time,trigger_time,circuit,cause,setting,"));
    EXPECT_TRUE(lines[1].startsWith(Path("in/below/Vostochnaya_fault_0000012.ZU") + ",recording,"));
    EXPECT_EQ(lines[2], "");
}

TEST_F(ArchiveFind, TimesMeanTheWholeOfWhatIsWritten)
{
    const auto count = [](const QStringList& words) {
        return Find(words + QStringList{"--paths"}).out.count('\n');
    };
    EXPECT_EQ(count({"--since", "2024", "--until", "2024"}), 9);
    EXPECT_EQ(count({"--until", "2024-01-30"}), 0);
    EXPECT_EQ(count({"--since", "2024-01-31T12:10", "--until", "2024-01-31T12:10"}), 1);
    EXPECT_EQ(count({"--since", "2024-01-31T09:10Z", "--until", "2024-01-31T12:10+03:00"}), 1);
    EXPECT_EQ(count({"--since", "30d"}), 0);
    EXPECT_EQ(count({"--until", "30d"}), 9);
}

TEST_F(ArchiveFind, NarrowTerminalGetsANarrowTable)
{
    const Finished run = RunOnTerminal(Path("in"), {"archive", "find"}, {{"TERM", "xterm"}});
    EXPECT_EQ(run.code, 0);
    for (const QString& line : run.out.split('\n'))
        EXPECT_LE(line.trimmed().size(), 80) << line;
}

TEST_F(ArchiveFind, StatsCountFaultsAndNameSilentRecorders)
{
    const QString text = RunProgram(Path("in"), {"archive", "stats"}).out;
    EXPECT_TRUE(text.startsWith("Recordings: 11, records: 0; unreadable: 2, gone: 0\n")) << text;
    EXPECT_TRUE(text.contains("\nFaults by month:\n  2024-01  6\n")) << text;
    EXPECT_TRUE(text.contains("\nFaults by kind:\n  AG  5\n  BG  1\n")) << text;
    EXPECT_TRUE(text.contains(QString::fromUtf8("\n  ПС Узловая  РАС-1  2024-01-31\n"))) << text;
    const Finished part = RunProgram(Path("in"), {"archive", "stats", "--only", "kinds", "below"});
    EXPECT_EQ(part.out, "Faults by kind:\n  BG  1\n");
}
