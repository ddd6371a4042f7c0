// The catalogue brought up to date.
#include "archiveplace.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

TEST(Update, ReadsWhatIsNewAndNothingTwice)
{
    ArchivePlace place;
    place.MakeDirectory("below");
    place.Record("a.ZU", 1);
    place.Record("below/b.ZU", 2);
    place.Comtrade("below/c");
    EXPECT_EQ(place.Update(), Counts(3, 0, 0, 0));
    EXPECT_EQ(place.Present(), QStringList({"a.ZU", "below/b.ZU", "below/c.cfg"}));
    EXPECT_EQ(place.Update(), Counts(0, 0, 0, 3));
    place.Record("d.ZU", 3);
    EXPECT_EQ(place.Update(), Counts(1, 0, 0, 3));
    EXPECT_TRUE(place.complaints.empty());
}

TEST(Update, ReadsAgainWhatHasChangedOrGrown)
{
    ArchivePlace place;
    place.Record("a.ZU", 1);
    place.Update();
    const QStringList before = place.Rows("SELECT id, print FROM entries");
    place.Record("a.Z01", 1);
    EXPECT_EQ(place.Update(), Counts(1, 0, 0, 0));
    const QStringList after = place.Rows("SELECT id, print FROM entries");
    EXPECT_EQ(after.size(), 1);
    EXPECT_EQ(after[0].section('|', 0, 0), before[0].section('|', 0, 0));
    EXPECT_NE(after, before);
    EXPECT_EQ(place.Rows("SELECT name FROM pieces ORDER BY name"), QStringList({"a.Z01", "a.ZU"}));
}

TEST(Update, AFileThatHasMovedStaysOneEntry)
{
    ArchivePlace place;
    place.MakeDirectory("new");
    place.Record("a.ZU", 1);
    place.Record("b.ZU", 2);
    place.Update();
    const QStringList ids = place.Rows("SELECT id FROM entries WHERE path = 'a.ZU'");
    QFile::rename(place.Path("a.ZU"), place.Path("new/c.ZU"));
    EXPECT_EQ(place.Update(), Counts(0, 1, 0, 1));
    EXPECT_EQ(place.Present(), QStringList({"b.ZU", "new/c.ZU"}));
    EXPECT_EQ(place.Gone(), QStringList());
    EXPECT_EQ(place.Rows("SELECT id FROM entries WHERE path = 'new/c.ZU'"), ids);
    EXPECT_EQ(place.Update(), Counts(0, 0, 0, 2));
}

TEST(Update, ACopyIsAnEntryOfItsOwn)
{
    ArchivePlace place;
    place.Record("a.ZU", 1);
    place.Update();
    place.Record("b.ZU", 1);
    EXPECT_EQ(place.Update(), Counts(1, 0, 0, 1));
    EXPECT_EQ(place.Present(), QStringList({"a.ZU", "b.ZU"}));
}

TEST(Update, WhatIsGoneIsMarkedAndComesBack)
{
    ArchivePlace place;
    place.Record("a.ZU", 1);
    place.Record("b.ZU", 2);
    place.Update();
    QFile::remove(place.Path("a.ZU"));
    EXPECT_EQ(place.Update(), Counts(0, 0, 1, 1));
    EXPECT_EQ(place.Gone(), QStringList({"a.ZU"}));
    EXPECT_EQ(place.Update(), Counts(0, 0, 0, 1));
    place.Record("a.ZU", 1);
    EXPECT_EQ(place.Update(), Counts(0, 1, 0, 1));
    EXPECT_EQ(place.Present(), QStringList({"a.ZU", "b.ZU"}));
    EXPECT_EQ(place.Gone(), QStringList());
}

// As when a file system is not mounted, or this user may not read it.
TEST(Update, WhatCannotBeLookedAtIsNotGone)
{
    ArchivePlace place;
    place.MakeDirectory("far");
    place.Record("far/a.ZU", 1);
    place.Update();
    QDir(place.Path()).rename("far", "near");
    QFile::link("far", place.Path("far")); // a loop
    archive::UpdateOrder order;
    order.catalogue = place.Address();
    order.directories = QStringList{place.Path("far")};
    QStringList complaints;
    const archive::UpdateCounts counts =
        archive::Update(order, {[](size_t, size_t) {}, [] { return false; },
                                [&](const archive::Complaint& complaint) { complaints << complaint.text; }});
    EXPECT_EQ(counts, Counts(0, 0, 0, 0));
    EXPECT_EQ(complaints, QStringList({"Too many levels of symbolic links"}));
    EXPECT_EQ(place.Present(), QStringList({"far/a.ZU"}));
}

TEST(Update, WhatCannotBeReadIsAnEntryThatSaysWhy)
{
    ArchivePlace place;
    place.Write("bad.ZU", "no recording");
    place.Record("good.ZU", 1);
    EXPECT_EQ(place.Update(), Counts(2, 0, 0, 0, 1));
    EXPECT_EQ(place.complaints.size(), 1u);
    EXPECT_EQ(place.Rows("SELECT reason FROM entries WHERE path = 'bad.ZU'"),
              QStringList({"recordingUnreadable"}));
    EXPECT_EQ(place.Update(), Counts(0, 0, 0, 2));
    place.Record("bad.ZU", 2);
    EXPECT_EQ(place.Update(), Counts(1, 0, 0, 1));
    EXPECT_EQ(place.Rows("SELECT coalesce(reason, 'good') FROM entries WHERE path = 'bad.ZU'"),
              QStringList({"good"}));
}

TEST(Update, AnIniFileThatIsOfNoUseIsReportedOnceAndItsRecordingsAreReadAgain)
{
    ArchivePlace place;
    place.Record("a.ZU", 1);
    place.Record("b.ZU", 2);
    place.Write("ZuDrv.ini", "[Default]\n[One]\n[Two]\n");
    const QString error =
        "'" + place.Path("ZuDrv.ini") +
        "' describes 2 recorders; name the section of the one by --device: it has [One], [Two]";
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(place.Update(2), Counts(2, 0, 0, 0));
        EXPECT_EQ(place.all, QStringList{error});
        EXPECT_EQ(place.Rows("SELECT path, reason IS NULL, error = '" + QString(error).replace('\'', "''") +
                             "', station FROM entries ORDER BY path"),
                  QStringList({"a.ZU|1|1|", "b.ZU|1|1|"}));
    }
    QFile::remove(place.Path("ZuDrv.ini"));
    EXPECT_EQ(place.Update(), Counts(2, 0, 0, 0));
    EXPECT_EQ(place.Rows("SELECT count(*) FROM entries WHERE error IS NOT NULL"), QStringList{"0"});
    EXPECT_EQ(place.Update(), Counts(0, 0, 0, 2));
}

TEST(Update, SeveralProcessesMakeTheSameCatalogue)
{
    ArchivePlace place;
    ArchivePlace other;
    for (int16_t i = 0; i < 100; ++i) {
        place.Record(QString::number(i) + ".ZU", i);
        other.Record(QString::number(i) + ".ZU", i);
    }
    EXPECT_EQ(place.Update(1), Counts(100, 0, 0, 0));
    EXPECT_EQ(other.Update(3), Counts(100, 0, 0, 0));
    const QString query = "SELECT e.path, e.print, e.duration, c.name, x.least FROM entries e JOIN extremes "
                          "x ON x.entry = e.id "
                          "JOIN channels c ON c.id = x.channel ORDER BY e.path";
    EXPECT_EQ(place.Rows(query), other.Rows(query));
    EXPECT_EQ(place.Rows(query).size(), 100);
}

TEST(Update, MayBeMovedWithItsCatalogue)
{
    ArchivePlace place;
    place.MakeDirectory("old");
    place.Record("old/a.ZU", 1);
    archive::UpdateOrder order;
    const auto update = [&](const QString& directory) {
        order.catalogue = directory + "/zucmtr-archive.db";
        order.directories = QStringList{directory};
        return archive::Update(
            order, {[](size_t, size_t) {}, [] { return false; }, [](const archive::Complaint&) {}});
    };
    EXPECT_EQ(update(place.Path("old")), Counts(1, 0, 0, 0));
    QDir(place.Path()).rename("old", "new");
    EXPECT_EQ(update(place.Path("new")), Counts(0, 0, 0, 1));
}
