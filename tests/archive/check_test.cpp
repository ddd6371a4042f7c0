// The catalogue held against the files.
#include "archiveplace.h"

#include "zucmtr/archive/check.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

class Checked : public ArchivePlace
{
public:
    Checked()
    {
        MakeDirectory("below");
        Record("a.ZU", 1);
        Record("below/b.ZU", 2);
        Comtrade("below/c");
    }

    // What is found, as "word path", sorted.
    QStringList Findings(bool isFast = false, const QString& below = QString())
    {
        QStringList findings;
        const QDir root(Path());
        archive::CheckOrder order;
        order.catalogue = Address();
        order.below = below;
        order.searched = below.isEmpty() ? Path() : below;
        order.isFast = isFast;
        counts = archive::Check(
            order, {[&](const archive::CheckFinding& finding) {
                        findings << QString(finding.reason) + ' ' +
                                        (finding.path.isEmpty() ? "-" : root.relativeFilePath(finding.path));
                    },
                    [](size_t, size_t) {}, [] { return false; }});
        findings.sort();
        return findings;
    }

    void Change(const QString& command) const { catalogue::Catalogue(Address()).Database().Run(command); }

    // Gives the file the times of a moment ago, when it was catalogued.
    void KeepTime(const QString& name, const std::function<void()>& change) const
    {
        struct stat before = {};
        const QByteArray path = QFile::encodeName(Path(name));
        ASSERT_EQ(stat(path.constData(), &before), 0);
        change();
        const timespec times[] = {before.st_atim, before.st_mtim};
        ASSERT_EQ(utimensat(AT_FDCWD, path.constData(), times, 0), 0);
    }

    archive::CheckCounts counts;
};

} // namespace

TEST(Check, FindsNothingAfterAnUpdate)
{
    Checked place;
    place.Record("gone.ZU", 3);
    place.Write("bad.ZU", "no recording");
    place.Update();
    QFile::remove(place.Path("gone.ZU"));
    place.Update();
    EXPECT_EQ(place.Findings(), QStringList());
    EXPECT_EQ(place.counts.entries, 4);
    EXPECT_EQ(place.counts.gone, 1);
    EXPECT_EQ(place.counts.files, 5);
    EXPECT_EQ(place.counts.findings, 0);
}

TEST(Check, FindsContinuationsThatBelongToNoRecordingAsAFileBeforeThemIsMissing)
{
    Checked place;
    place.Record("whole.ZU", 5);
    place.Record("whole.Z01", 5);
    place.Record("torn.ZU", 6);
    place.Record("torn.Z02", 6);
    place.Record("below/lost.Z01", 7);
    place.Write("below/plan.Z99", "no continuation's name");
    place.Update();
    EXPECT_EQ(place.Findings(), QStringList({"notCatalogued below/lost.Z01", "notCatalogued torn.Z02"}));
    EXPECT_EQ(place.Findings(true, place.Path("below")), QStringList{"notCatalogued below/lost.Z01"});
}

TEST(Check, FindsWhatHasChangedSince)
{
    Checked place;
    place.Update();
    QFile::remove(place.Path("a.ZU"));
    place.Record("below/b.Z01", 2);
    place.Write("below/c.dat", "1,0,0\n2,1000,0\n2,2000,0\n");
    place.Record("new.ZU", 4);
    EXPECT_EQ(place.Findings(), QStringList({"fileAdded below/b.Z01", "fileChanged below/c.dat",
                                             "fileMissing a.ZU", "notCatalogued new.ZU"}));
    EXPECT_EQ(place.counts.findings, 4);
    place.Update();
    EXPECT_EQ(place.Findings(), QStringList());
}

TEST(Check, FindsAnotherContentOfTheSameSizeAndTimeUnlessItIsToBeFast)
{
    Checked place;
    place.Update();
    place.KeepTime("a.ZU", [&] { place.Record("a.ZU", 5); });
    EXPECT_EQ(place.Findings(true), QStringList());
    EXPECT_EQ(place.Findings(), QStringList({"contentChanged a.ZU"}));
}

TEST(Check, FindsAnotherTime)
{
    Checked place;
    place.Update();
    const timespec times[] = {{1, 0}, {1, 0}};
    utimensat(AT_FDCWD, QFile::encodeName(place.Path("a.ZU")).constData(), times, 0);
    EXPECT_EQ(place.Findings(true), QStringList({"fileChanged a.ZU"}));
}

TEST(Check, WhatIsMarkedAsGoneIsGone)
{
    Checked place;
    place.Update();
    place.Change("UPDATE entries SET gone = '2024-01-01T00:00:00Z' WHERE path = 'a.ZU'");
    EXPECT_EQ(place.Findings(), QStringList({"notGone a.ZU"}));
}

TEST(Check, AnotherRecordingMayHaveThePlaceOfOneThatIsGone)
{
    Checked place;
    place.Update();
    QFile::remove(place.Path("a.ZU"));
    place.Update();
    QFile::rename(place.Path("below/b.ZU"), place.Path("a.ZU"));
    place.Update();
    EXPECT_EQ(place.Gone(), QStringList({"a.ZU"}));
    EXPECT_EQ(place.Present(), QStringList({"a.ZU", "below/c.cfg"}));
    EXPECT_EQ(place.Findings(), QStringList());
}

TEST(Check, FindsEntriesThatLackAPart)
{
    const std::pair<const char*, QStringList> cases[] = {
        {"DELETE FROM pieces WHERE entry = 1", {"entryInconsistent a.ZU", "fileAdded a.ZU"}},
        {"UPDATE pieces SET sha256 = '00' WHERE entry = 1",
         {"contentChanged a.ZU", "entryInconsistent a.ZU"}},
        {"UPDATE entries SET bytes = 1 WHERE id = 1", {"entryInconsistent a.ZU"}},
        {"UPDATE entries SET events = 7 WHERE id = 1", {"entryInconsistent a.ZU"}},
        {"UPDATE entries SET moment = NULL WHERE id = 1", {"entryInconsistent a.ZU"}},
        {"DELETE FROM extremes WHERE entry = 1", {"entryInconsistent a.ZU"}},
        {"DELETE FROM words WHERE entry = 1", {"entryInconsistent a.ZU"}},
        {"UPDATE entries SET recording = 77 WHERE path LIKE '%c.cfg'", {"linkBroken below/c.cfg"}},
        {"UPDATE entries SET verified = 'perhaps', verified_time = '2024' WHERE path LIKE '%c.cfg'",
         {"linkBroken below/c.cfg"}},
        {"UPDATE entries SET recording = 1 WHERE id = 1", {"linkBroken a.ZU"}},
    };
    for (const auto& one : cases) {
        Checked place;
        place.Update();
        ASSERT_EQ(place.Rows("SELECT path FROM entries WHERE id = 1"), QStringList({"a.ZU"}));
        place.Change(one.first);
        EXPECT_EQ(place.Findings(), one.second) << one.first;
    }
}

TEST(Check, FindsRowsThatBelongToNothing)
{
    Checked place;
    place.Update();
    catalogue::Catalogue catalogue(place.Address());
    catalogue.Database().RunScript("PRAGMA foreign_keys=OFF; DELETE FROM channels");
    const QStringList findings = place.Findings();
    EXPECT_EQ(findings.count("databaseDamaged -"), findings.size());
    EXPECT_FALSE(findings.isEmpty());
}

TEST(Check, FindsDamagedPages)
{
    Checked place;
    place.Update();
    for (const char* name : {"extremes", "entries_station", "pieces"}) {
        const int root = place.Rows(QString("SELECT rootpage FROM sqlite_master WHERE name = '%1'").arg(name))
                             .value(0)
                             .toInt();
        ASSERT_GT(root, 1) << name;
        QFile file(place.Address());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek((root - 1) * 4096);
        const QByteArray before = file.read(100);
        file.seek((root - 1) * 4096);
        file.write(QByteArray(100, '\x55'));
        file.flush();
        EXPECT_TRUE(place.Findings().contains("databaseDamaged -")) << name;
        file.seek((root - 1) * 4096);
        file.write(before);
    }
    EXPECT_EQ(place.Findings(), QStringList());
}

TEST(Check, OfADirectoryLooksAtNothingElse)
{
    Checked place;
    place.Update();
    QFile::remove(place.Path("a.ZU"));
    EXPECT_EQ(place.Findings(false, place.Path("below")), QStringList());
    EXPECT_EQ(place.counts.entries, 2);
}

TEST(Check, ARecordThatWasWrittenAgainIsNotVerifiedAnyMore)
{
    Checked place;
    place.Update();
    place.Change(
        "UPDATE entries SET verified = 'right', verified_time = '2024', recording = 1 WHERE kind = 'record'");
    place.Write("below/c.dat", "1,0,0\n2,1000,0\n");
    place.Update();
    EXPECT_EQ(
        place.Rows(
            "SELECT coalesce(verified, '-'), coalesce(recording, '-') FROM entries WHERE kind = 'record'"),
        QStringList({"-|-"}));
    EXPECT_EQ(place.Findings(), QStringList());
}
