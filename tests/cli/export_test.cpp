// zucmtr export: names of what is written, what is there already, wrong usage, and standard output.
#include "program.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

class Exports : public testing::Test
{
protected:
    Exports() { place.Write("a.ZU", Encode(ShortRecording(0))); }

    Finished Run(const QStringList& arguments) const
    {
        return RunProgram(place.Path(), QStringList{"export"} + arguments);
    }

    // The record of the recording, under the name b.
    void MakeRecord() const { Run({"a.ZU", "-o", "b.cfg"}); }

    QStringList Names() const { return place.Names().filter(QRegularExpression("\\A[^Z]")); }

    const Workplace place;
};

TEST_F(Exports, GoBesideTheFileUnderItsName)
{
    const Finished run = Run({"a.ZU"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(
        run.out,
        "a.ZU -> ./a.cfg (cfg 2013 binary utf8): samples: 3, channels: 1 + 1; read back and compared\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Names(), (QStringList{"a.ZU", "a.cfg", "a.dat", "a.hdr", "a.inf"}));
}

TEST_F(Exports, TakeTheFormFromTheEnding)
{
    EXPECT_EQ(Run({"a.ZU", "-o", "out/x.CSV"}).code, 0);
    EXPECT_EQ(Run({"a.ZU", "-o", "out/x.cff"}).code, 0);
    EXPECT_EQ(Run({"a.ZU", "-o", "out/x.mat"}).code, 0);
    EXPECT_EQ(Run({"a.ZU", "-o", "out/y", "--form", "csv"}).code, 0);
    EXPECT_EQ(place.Names("out"), (QStringList{"x.cff", "x.csv", "x.mat", "y.csv"}));
}

TEST_F(Exports, ReplaceNothingUnlessAsked)
{
    place.Write("out/a.dat", "mine");
    const Finished run = Run({"a.ZU", "-o", "out"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "zucmtr: a.ZU: 'out/a.dat' is there already; --replace replaces it\n");
    EXPECT_EQ(place.Names("out"), QStringList{"a.dat"});
    EXPECT_EQ(ReadBytes(place.Path("out/a.dat")), "mine");
    EXPECT_EQ(Run({"a.ZU", "-o", "out", "--replace"}).code, 0);
    EXPECT_EQ(place.Names("out"), (QStringList{"a.cfg", "a.dat", "a.hdr", "a.inf"}));
}

TEST_F(Exports, NeverReplaceWhatIsRead)
{
    MakeRecord();
    const QByteArray data = ReadBytes(place.Path("b.dat"));
    for (const QStringList& more : {QStringList{}, {"--data", "ascii"}, {"-o", "B.cfg"}, {"-o", "./"}}) {
        const Finished run = Run(QStringList{"b.cfg", "--replace"} + more);
        EXPECT_EQ(run.code, 2);
        EXPECT_TRUE(run.err.contains("would take the place of what is read")) << run.err;
    }
    EXPECT_EQ(ReadBytes(place.Path("b.dat")), data);
    EXPECT_EQ(Run({"b.cfg", "--form", "cff"}).code, 0);
}

TEST_F(Exports, OfSeveralFilesNeedADirectory)
{
    place.Write("c.ZU", Encode(ShortRecording(1)));
    EXPECT_EQ(Run({"a.ZU", "c.ZU", "-o", "x.csv"}).err,
              "zucmtr: --out 'x.csv' is one name for 2 files; give a directory, with / at its end\n");
    EXPECT_EQ(Run({"a.ZU", "c.ZU", "-o", "out/", "--form", "csv"}).code, 0);
    EXPECT_EQ(place.Names("out"), (QStringList{"a.csv", "c.csv"}));
    place.Write("in/a.ZU", Encode(ShortRecording(1)));
    EXPECT_EQ(Run({"a.ZU", "in/a.ZU", "-o", "out/"}).err,
              "zucmtr: 'a.ZU' and 'in/a.ZU' would both become 'out/a.cfg'; export them into different "
              "directories\n");
}

TEST_F(Exports, GoOnAfterAFileThatIsBad)
{
    place.Write("bad.ZU", "junk");
    const Finished run = Run({"bad.ZU", "a.ZU", "--form", "csv"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.startsWith("zucmtr: bad.ZU: ")) << run.err;
    EXPECT_TRUE(Names().contains("a.csv"));
}

TEST_F(Exports, ToStandardOutputAreTheTableAlone)
{
    const Finished run = Run({"a.ZU", "--form", "csv", "-o", "-"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(run.out.startsWith("time [s],")) << run.out;
    EXPECT_EQ(run.out.count('\n'), 4);
    EXPECT_EQ(Names(), (QStringList{"a.ZU"}));
    EXPECT_EQ(Run({"a.ZU", "-o", "-"}).code, 2);
}

TEST_F(Exports, FollowALinkAndKeepIt)
{
    place.Write("out/real.csv", "old");
    ASSERT_TRUE(QFile::link(place.Path("out/real.csv"), place.Path("link.csv")));
    EXPECT_EQ(Run({"a.ZU", "-o", "link.csv", "--replace"}).code, 0);
    EXPECT_TRUE(QFileInfo(place.Path("link.csv")).isSymLink());
    EXPECT_TRUE(ReadBytes(place.Path("out/real.csv")).startsWith("time [s],"));
}

TEST_F(Exports, AskForTheNearestName)
{
    MakeRecord();
    const Finished run = Run({"b.cfg", "--form", "csv", "--channels", "Q1:Iaa"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.startsWith("zucmtr: b.cfg: no channel has the name, circuit or number 'Q1:Iaa'"))
        << run.err;
}

TEST_F(Exports, RefuseOptionsThatContradictEachOther)
{
    const std::vector<std::pair<QStringList, QString>> rows = {
        {{"--form", "cff", "--revision", "1999"}, "--form cff and --revision 1999: "},
        {{"--data", "float32", "--revision", "1999"}, "--data float32 and --revision 1999: "},
        {{"--form", "csv", "--data", "ascii"}, "--data is for COMTRADE"},
        {{"--time", "iso"}, "--time is for --form csv"},
        {{"--form", "csv", "-o", "x.mat"}, "--form csv and 'x.mat': "},
        {{"--from", "soon"}, "--from: 'soon' is no moment"},
        {{"--window", "all"}, "--window: 'all' is wrong"},
        {{"-o", "nowhere/x.csv"}, "--out: the directory 'nowhere' does not exist"}};
    for (const auto& [options, text] : rows) {
        const Finished run = Run(QStringList{"a.ZU"} + options);
        EXPECT_EQ(run.code, 2);
        EXPECT_TRUE(run.err.startsWith("zucmtr: " + text)) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(Exports, OfTheSampleStationHoldEveryForm)
{
    RunProgram(place.Path(), {"sample", "--out", "station", "--seconds", "0.1"});
    const QString recording = "station/Vostochnaya_000123.ZU";
    for (const char* form : {"cfg", "cff", "csv", "mat"})
        EXPECT_EQ(Run({recording, "-o", "out/", "--form", form}).code, 0) << form;
    for (const char* data : {"ascii", "binary", "binary32", "float32"}) {
        EXPECT_EQ(
            Run({"out/Vostochnaya_000123.cff", "-o", QString("out/") + data + ".cfg", "--data", data}).code,
            0);
        const Finished back = Run(
            {QString("out/") + data + ".cfg", "-o", QString("out/") + data + "-b.cfg", "--data", "binary"});
        EXPECT_EQ(back.err, "") << data;
        EXPECT_EQ(ReadBytes(place.Path(QString("out/") + data + "-b.dat")),
                  ReadBytes(place.Path("out/Vostochnaya_000123.dat")))
            << data;
    }
}

} // namespace
