// zucmtr convert --layout.
#include "program.h"

#include "zucmtr/host/recordlayout.h"
#include "zucmtr/terminal/command.h"

#include "verify/recordname.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>

using recorderfile::Encode;

namespace {

class Layout : public testing::Test
{
protected:
    void SetUp() override { place.Write("rec.ZU", Encode(ShortRecording())); }

    Finished Convert(const QString& pattern, const QStringList& arguments = {"rec.ZU"}) const
    {
        return place.Convert(QStringList{"--layout", pattern} + arguments);
    }

    // All files below out, sorted.
    QStringList Files() const
    {
        QStringList files;
        QDirIterator below(place.Path("out"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (below.hasNext())
            files << QDir(place.Path("out")).relativeFilePath(below.next());
        files.sort();
        return files;
    }

    static QStringList Pieces(const QString& name)
    {
        return {name + ".cfg", name + ".dat", name + ".hdr", name + ".inf"};
    }

    const Workplace place;
};

verify::RecordHead Head()
{
    return {"NAME", "ПС 110/10 \"Узловая\"", "РАС-1.", "Сети: восток",
            verify::Moment{QDate(2024, 1, 31), (qint64{12} * 3600 + 5) * 1000000 + 250999}};
}

QString PlaceIn(const QString& pattern, const QString& folder = QString())
{
    const RecordPlace place = RecordLayout(pattern).PlaceOf(Head(), "archive/rec.1.ZU", folder);
    return place.below + '|' + place.name;
}

struct BadLayout
{
    const char* pattern;
    QString reason;
};

void PrintTo(const BadLayout& layout, std::ostream* out)
{
    *out << layout.pattern;
}

class BadLayouts : public Layout, public testing::WithParamInterface<BadLayout>
{};

} // namespace

TEST_F(Layout, DirectoriesAreMadeAndAllPiecesGetTheName)
{
    const Finished run = Convert("{station}/{year}/{month}/{day}/{time} {source}");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "rec.ZU -> ПС Узловая/2024/01/31/12-00-00.250 rec\n");
    EXPECT_EQ(Files(), Pieces("ПС Узловая/2024/01/31/12-00-00.250 rec"));
}

TEST_F(Layout, ContainerPageAndEventsGetTheName)
{
    const Finished run = Convert("{date}/{source}", {"--form", "cff", "--view", "--events", "rec.ZU"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "rec.ZU -> 2024-01-31/rec (cff 2013 ascii utf8)\n");
    EXPECT_EQ(Files(), (QStringList{"2024-01-31/rec.cff", "2024-01-31/rec.events.json",
                                    "2024-01-31/rec.events.txt", "2024-01-31/rec.html"}));
}

TEST_F(Layout, RecordThatIsThereIsKnownAgain)
{
    ASSERT_EQ(Convert("{date}/{source}").code, 0);
    const Finished again = Convert("{date}/{source}");
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_EQ(again.out, "rec.ZU -> 2024-01-31/rec; it was there already\n");
}

TEST_F(Layout, DamagedRecordOfTheRecordingIsReplaced)
{
    ASSERT_EQ(Convert("{date}/{source}").code, 0);
    const QByteArray good = ReadBytes(place.Path("out/2024-01-31/rec.dat"));
    QFile::resize(place.Path("out/2024-01-31/rec.dat"), good.size() / 2);
    const Finished again = Convert("{date}/{source}");
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_EQ(again.out, "rec.ZU -> 2024-01-31/rec\n");
    EXPECT_EQ(ReadBytes(place.Path("out/2024-01-31/rec.dat")), good);
}

TEST_F(Layout, PutsAwayWhatIsThereUnderItsName)
{
    ASSERT_EQ(Convert("{date}/{source}").code, 0);
    const Finished again = Convert("{date}/{source}", {"--remove-source", "rec.ZU"});
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_FALSE(QFile::exists(place.Path("rec.ZU")));
    EXPECT_EQ(Files(), Pieces("2024-01-31/rec"));
}

TEST_F(Layout, TwoRecordingsWithOneNameAreCaught)
{
    place.Write("b.ZU", Encode(ShortRecording(5)));
    for (const QStringList& jobs : {QStringList{"-j", "1"}, QStringList{"-j", "2"}}) {
        const Finished run = Convert("{station}", jobs + QStringList{"rec.ZU", "b.ZU"});
        EXPECT_EQ(run.code, 1);
        EXPECT_TRUE(
            run.err.contains("b.ZU: not converted: 'out/ПС Узловая.cfg' is there already and is not the "
                             "record of this recording"))
            << run.err;
        EXPECT_EQ(Files(), Pieces("ПС Узловая"));
    }
    const Finished replaced = Convert("{station}", {"--replace", "b.ZU"});
    EXPECT_EQ(replaced.code, 0) << replaced.err;
}

TEST_F(Layout, DryRunNamesThePlacesAndWarnsOfEqualOnes)
{
    place.Write("b.ZU", Encode(ShortRecording(5)));
    const Finished run = Convert("{date}/{device}", {"--dry-run", "rec.ZU", "b.ZU"});
    EXPECT_EQ(run.out, "rec.ZU -> out/2024-01-31/РАС-1\nb.ZU -> out/2024-01-31/РАС-1\n");
    EXPECT_TRUE(run.err.contains("b.ZU: its record would have the name of that of rec.ZU")) << run.err;
    EXPECT_EQ(Files(), QStringList());
}

TEST_F(Layout, FolderStandsForTheDirectoryOfTheRecording)
{
    place.Write("archive/north/a.ZU", Encode(ShortRecording(1)));
    place.Write("archive/b.ZU", Encode(ShortRecording(2)));
    const Finished run = Convert("{folder}/{year}/{source}", {"-r", "archive"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Files(), Pieces("2024/b") + Pieces("north/2024/a"));
}

TEST_F(Layout, LeftoversOfAKilledRunAreRemovedFromTheDirectory)
{
    place.Write("out/2024-01-31/.zucmtr-abcdef/zucmtr-staging", "");
    place.Write("out/2024-01-31/.zucmtr-abcdef/rec.dat", "half");
    EXPECT_EQ(Convert("{date}/{source}").code, 0);
    EXPECT_EQ(Files(), Pieces("2024-01-31/rec"));
}

TEST_F(Layout, RecordsThatTheLibraryWritesToTheirPlaceAreRefused)
{
    place.Write("ZuDrv.ini", PlainIni({{"Удалять исходные", "1"}}));
    const Finished run = Convert("{date}/{source}", {"--trust-writer", "rec.ZU"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.contains("where --layout cannot be")) << run.err;
    EXPECT_TRUE(QFile::exists(place.Path("rec.ZU")));
}

TEST(LayoutPlace, ValuesFillThePlaceholders)
{
    EXPECT_EQ(PlaceIn("{name}"), "|NAME");
    EXPECT_EQ(PlaceIn("{year}-{month}-{day} {hour}{minute}{second}"), "|2024-01-31 120005");
    EXPECT_EQ(PlaceIn("{date}/{time}"), "2024-01-31|12-00-05.250");
    EXPECT_EQ(PlaceIn("{source}"), "|rec.1");
}

TEST(LayoutPlace, CharactersThatNamesCannotHaveAreReplaced)
{
    EXPECT_EQ(PlaceIn("{station}/{subject}/{device}"), "ПС 110_10 _Узловая_/Сети_ восток|РАС-1_");
}

TEST(LayoutPlace, FolderMayHaveLevelsOrBeEmpty)
{
    EXPECT_EQ(PlaceIn("{folder}/{name}", "a/b"), "a/b|NAME");
    EXPECT_EQ(PlaceIn("{folder}/{name}"), "|NAME");
    EXPECT_EQ(PlaceIn("x {folder}/{name}", "a/b"), "x a/b|NAME");
}

INSTANTIATE_TEST_SUITE_P(
    All, BadLayouts,
    testing::Values(
        BadLayout{"{statoin}/{name}",
                  "there is no {statoin}; there are {date}, {day}, {device}, {folder}, {hour}, {minute}, "
                  "{month}, {name}, {second}, {source}, {station}, {subject}, {time}, {year}"},
        BadLayout{"{}", "there is no {}; there are {date}, {day}, {device}, {folder}, {hour}, {minute}, "
                        "{month}, {name}, {second}, {source}, {station}, {subject}, {time}, {year}"},
        BadLayout{"{name", "a brace has no other one; placeholders are written as {station}"},
        BadLayout{"/tmp/{name}", "it is a place below the directory of --out; leave out the '/' in front"},
        BadLayout{"{station}/", "the name of the record is missing after the last '/'; {name} is its own"},
        BadLayout{"{station}//{name}", "there is nothing between two '/'"},
        BadLayout{"../{name}", "no name may start with a '.'"},
        BadLayout{"a:b/{name}", "names of files cannot have a ':'"},
        BadLayout{"a/{folder}", "{folder} is a directory; write it before a '/'"}));

TEST_P(BadLayouts, AreRefusedBeforeAnythingIsDone)
{
    const Finished run = Convert(GetParam().pattern);
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              QString("zucmtr: --layout '%1': %2\nRun 'zucmtr convert --help' for the options and an "
                      "example.\n")
                  .arg(QString(GetParam().pattern), GetParam().reason));
    EXPECT_EQ(Files(), QStringList());
}
