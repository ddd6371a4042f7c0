// Entries put, moved, marked and found again.
#include "anycatalogue.h"

#include <cmath>

namespace {

using catalogue::Catalogue;

class CatalogueTest : public AnyCatalogue
{
protected:
    CatalogueTest() : one(address) {}

    QStringList Entries() const
    {
        return Rows("SELECT path, CASE WHEN gone IS NULL THEN 'there' ELSE 'gone' END, substr(trigger_time, "
                    "18, 2), reason "
                    "FROM entries ORDER BY path, id");
    }
    QStringList KnownNames(const QString& below)
    {
        QStringList names = one.KnownBelow(below).keys();
        names.sort();
        return names;
    }

    Catalogue one;
};

} // namespace

TEST_P(CatalogueTest, WhatIsPutIsInAllTables)
{
    catalogue::Entry entry = FaultAt(Path("a.ZU"), "x", 5, "AG", 0.0625);
    entry.pieces.push_back({"a.Z01", 7, 1700000000123456789, "02"});
    one.Put({entry});
    EXPECT_EQ(
        Rows("SELECT kind, path, bytes, reason, station, recorder, trigger_time, utc_offset, moment, "
             "circuit, duration, "
             "samples, analog, digital, events, fault_kind, fault_duration, fault_current, distance_percent, "
             "trip_after, "
             "reclosed, length(print) FROM entries"),
        QStringList{"recording|" + Stored("a.ZU") +
                    QString::fromUtf8(
                        "|8|-|Восточная|R1|2024-03-01T10:00:05+03:00|180|1709276405000000|ВЛ-110 кВ Южная|"
                        "1.5|3600|2|2|2|AG|0.0625|1234.5|42.5|0.03|-|64")});
    EXPECT_EQ(Rows("SELECT name, bytes, modified, sha256 FROM pieces ORDER BY name"),
              (QStringList{"a.Z01|7|1700000000123456789|02", "a.ZU|1|1005|78"}));
    EXPECT_EQ(Rows("SELECT name, phase, unit, least, greatest FROM named_extremes ORDER BY name"),
              (QStringList{"3U0|N|kV|-|-", "Ia|A|A|-10.5|20.25"}));
    EXPECT_EQ(Rows("SELECT c.name, h.changes, h.first FROM changes h JOIN channels c ON c.id = h.channel"),
              QStringList{QString::fromUtf8("Откл. Q1|2|0.125")});
    EXPECT_EQ(Rows("SELECT place, time, name, kind, state, active FROM named_events ORDER BY place"),
              (QStringList{QString::fromUtf8("0|0.125|Откл. Q1|trip|1|1"),
                           QString::fromUtf8("1|0.25|Откл. Q1|trip|0|0")}));
}

TEST_P(CatalogueTest, PuttingAgainChangesTheEntry)
{
    one.Put({RecordingAt(Path("a.ZU"), "x")});
    catalogue::Entry entry = RecordingAt(Path("a.ZU"), "x");
    entry.analog.pop_back();
    entry.events.pop_back();
    entry.digital[0].changes = 0;
    entry.events.clear();
    entry.duration = 3;
    one.Put({entry, entry});
    EXPECT_EQ(Rows("SELECT id, duration, analog, events FROM entries"), QStringList{"1|3|1|0"});
    EXPECT_EQ(Rows("SELECT (SELECT count(*) FROM extremes), (SELECT count(*) FROM changes), (SELECT count(*) "
                   "FROM events), "
                   "(SELECT count(*) FROM pieces), (SELECT count(*) FROM search)"),
              QStringList{"1|0|0|1|1"});
}

TEST_P(CatalogueTest, ContinuationThatArrivesUpdatesTheEntryOfItsRecording)
{
    one.Put({RecordingAt(Path("a.ZU"), "x")});
    catalogue::Entry grown = RecordingAt(Path("a.ZU"), "x");
    grown.pieces.push_back({"a.Z01", 7, 1, "02"});
    grown.duration = 9;
    one.Put({grown});
    EXPECT_EQ(Rows("SELECT id, duration, bytes FROM entries"), QStringList{"1|9|8"});
}

TEST_P(CatalogueTest, AnotherRecordingWithTheSameNameLeavesTheFirstMarkedAsGone)
{
    one.Put({RecordingAt(Path("a.ZU"), "x", 1)});
    one.Put({RecordingAt(Path("a.ZU"), "y", 2)});
    EXPECT_EQ(Entries(), (QStringList{Stored("a.ZU") + "|gone|01|-", Stored("a.ZU") + "|there|02|-"}));
    one.Put({RecordingAt(Path("a.ZU"), "x", 1)}); // put back
    EXPECT_EQ(Entries(), (QStringList{Stored("a.ZU") + "|there|01|-", Stored("a.ZU") + "|gone|02|-"}));
}

TEST_P(CatalogueTest, WhatIsKnownOfARecordingOutlivesItsDamage)
{
    one.Put({RecordingAt(Path("a.ZU"), "x", 1)});
    one.Put({UnreadAt(Path("a.ZU"), "bad")});
    EXPECT_EQ(Entries(),
              (QStringList{Stored("a.ZU") + "|gone|01|-", Stored("a.ZU") + "|there|-|recordingUnreadable"}));
    one.Put({RecordingAt(Path("a.ZU"), "x", 1)});
    EXPECT_EQ(Entries(), QStringList{Stored("a.ZU") + "|there|01|-"});
    EXPECT_EQ(Rows("SELECT count(*) FROM search"), QStringList{"1"});
}

TEST_P(CatalogueTest, WhatCouldNotBeReadBecomesWhatCan)
{
    one.Put({UnreadAt(Path("a.ZU"), "half")});
    one.Put({RecordingAt(Path("a.ZU"), "x", 1)});
    EXPECT_EQ(Entries(), QStringList{Stored("a.ZU") + "|there|01|-"});
}

TEST_P(CatalogueTest, MovedFilesKeepTheirEntry)
{
    const catalogue::Entry entry = RecordingAt(Path("a.ZU"), "x");
    one.Put({entry});
    auto pieces = entry.pieces;
    pieces[0].name = "b.ZU";
    EXPECT_TRUE(one.Move(Path("b.ZU"), pieces));
    EXPECT_EQ(Entries(), QStringList{Stored("b.ZU") + "|there|00|-"});
    EXPECT_EQ(Rows("SELECT id, name FROM entries e JOIN pieces ON entry = id"), QStringList{"1|b.ZU"});
    EXPECT_FALSE(one.Move(Path("b.ZU"), pieces)); // is there already
}

TEST_P(CatalogueTest, CopyIsAnEntryOfItsOwn)
{
    const catalogue::Entry entry = RecordingAt(directory.Write("a.ZU", "x"), "x");
    one.Put({entry});
    EXPECT_FALSE(one.Move(Path("b.ZU"), entry.pieces));
    one.Put({RecordingAt(Path("b.ZU"), "x")});
    EXPECT_EQ(Rows("SELECT path, copies FROM duplicates"),
              (QStringList{Stored("a.ZU") + "|2", Stored("b.ZU") + "|2"}));
}

TEST_P(CatalogueTest, WhatIsGoneIsMarkedAndComesBack)
{
    one.Put({RecordingAt(Path("a.ZU"), "x", 1), RecordingAt(directory.Write("b.ZU", "y"), "y", 2)});
    EXPECT_EQ(one.MarkGone({Path("a.ZU"), Path("b.ZU"), Path("c.ZU")}), 1);
    EXPECT_EQ(Entries(), (QStringList{Stored("a.ZU") + "|gone|01|-", Stored("b.ZU") + "|there|02|-"}));
    EXPECT_EQ(one.MarkGone({Path("a.ZU")}), 0);
    EXPECT_EQ(KnownNames(Path("")), QStringList{Path("b.ZU")});
    one.Put({RecordingAt(Path("d.ZU"), "x", 1)});
    EXPECT_EQ(Rows("SELECT id, path, gone FROM entries ORDER BY id"),
              (QStringList{"1|" + Stored("d.ZU") + "|-", "2|" + Stored("b.ZU") + "|-"}));
}

TEST_P(CatalogueTest, KnownAreThoseBelowADirectoryAlone)
{
    const QStringList names = {"A/1.ZU",  "A/B/2.ZU", "A_/3.ZU", "a/4.ZU",
                               "A-/5.ZU", "A%/6.ZU",  "A0/7.ZU", QString::fromUtf8("А/8.ZU")};
    std::vector<catalogue::Entry> entries;
    for (int i = 0; i < names.size(); ++i)
        entries.push_back(RecordingAt(Path(names[i]), QByteArray::number(i), i));
    entries.push_back(RecordingAt("/elsewhere/9.ZU", "9", 9));
    one.Put(entries);
    EXPECT_EQ(KnownNames(Path("A")), (QStringList{Path("A/1.ZU"), Path("A/B/2.ZU")}));
    EXPECT_EQ(KnownNames(Path("A_")), QStringList{Path("A_/3.ZU")});
    EXPECT_EQ(KnownNames(Path("A%")), QStringList{Path("A%/6.ZU")});
    EXPECT_EQ(KnownNames("/elsewhere"), QStringList{"/elsewhere/9.ZU"});
    EXPECT_EQ(KnownNames(Path()).size(), names.size()); // not what is elsewhere
    EXPECT_EQ(KnownNames(QFileInfo(Path()).path()).size(), names.size());
    EXPECT_EQ(KnownNames("/").size(), names.size() + 1);
    EXPECT_EQ(KnownNames(Path("A/1")), QStringList());
}

TEST_P(CatalogueTest, KnownHasThePiecesByName)
{
    catalogue::Entry entry = RecordingAt(Path("a.ZU"), "x");
    entry.pieces = {{"a.ZU", 1, 11, "aa"}, {"a.Z02", 2, 12, "bb"}, {"a.Z01", 3, 13, "cc"}};
    one.Put({entry, UnreadAt(Path("b.ZU"), "y")});
    const auto known = one.KnownAt({Path("a.ZU"), Path("b.ZU"), Path("c.ZU")});
    ASSERT_EQ(known.size(), 2);
    const catalogue::Known a = known[Path("a.ZU")];
    ASSERT_EQ(a.pieces.size(), 3U);
    EXPECT_TRUE(IsSameState(a.pieces[0], {"a.Z01", 3, 13}));
    EXPECT_TRUE(IsSameState(a.pieces[1], {"a.Z02", 2, 12}));
    EXPECT_TRUE(IsSameState(a.pieces[2], {"a.ZU", 1, 11}));
    EXPECT_TRUE(a.isRead);
    EXPECT_EQ(a.print, PrintOf(entry.pieces));
    EXPECT_FALSE(known[Path("b.ZU")].isRead);
}

TEST_P(CatalogueTest, EntriesThatFailLeaveNothingAndNoChannels)
{
    catalogue::Entry bad = RecordingAt(Path("b.ZU"), "y");
    bad.analog.push_back({"", "only here", "", "", 1, 2});
    bad.events.push_back({std::nan(""), 0, "trip", true, true}); // NULL, which the table does not take
    EXPECT_THROW(one.Put({RecordingAt(Path("a.ZU"), "x"), bad}), text::Error);
    EXPECT_EQ(Rows("SELECT count(*) FROM entries"), QStringList{"0"});
    EXPECT_EQ(Rows("SELECT count(*) FROM channels"), QStringList{"0"});
    bad.events.pop_back();
    one.Put({bad}); // its channels are made anew
    EXPECT_EQ(Rows("SELECT count(*) FROM named_extremes"), QStringList{"3"});
    EXPECT_EQ(Rows("SELECT greatest FROM named_extremes WHERE name = 'only here'"), QStringList{"2"});
}

TEST_P(CatalogueTest, ManyChannelsAndEventsAreAllThere)
{
    catalogue::Entry entry = RecordingAt(Path("a.ZU"), "x");
    for (int i = 0; i < 99; ++i) {
        entry.analog.push_back({"", QStringLiteral("I%1").arg(i), "", "A", -i, i});
        entry.digital.push_back({"", QStringLiteral("D%1").arg(i), "", i + 1, 0.5});
        entry.events.push_back({1.0 + i, static_cast<size_t>(i + 2), "other", true, true});
    }
    entry.analog.push_back({"", "I7", "", "A", 0, 1000}); // the same name again
    one.Put({entry, entry});
    EXPECT_EQ(Rows("SELECT (SELECT count(*) FROM extremes), (SELECT count(*) FROM changes), (SELECT count(*) "
                   "FROM events)"),
              QStringList{"101|100|101"});
    EXPECT_EQ(Rows("SELECT greatest FROM named_extremes WHERE name = 'I7'"), QStringList{"7"});
    EXPECT_EQ(
        Rows("SELECT count(*) FROM named_events WHERE time = place - 1.0 AND name = 'D' || (place - 2)"),
        QStringList{"99"});
}

TEST_P(CatalogueTest, PathsMayHaveAnyCharacters)
{
    const QString name = QString::fromUtf8("it's \"?\" %_!\\ Ёлка;--.ZU");
    one.Put({RecordingAt(Path(name), "x")});
    EXPECT_EQ(KnownNames(Path()), QStringList{Path(name)});
    EXPECT_EQ(Rows("SELECT path FROM entries"), QStringList{Stored(name)});
}

TEST_P(CatalogueTest, ReaderSeesWhatOthersPut)
{
    const auto reader = Catalogue::ForReading(address);
    one.Put({RecordingAt(Path("a.ZU"), "x")});
    EXPECT_EQ(reader->KnownBelow(Path()).size(), 1);
    if (!IsServer()) {
        EXPECT_THROW(reader->Put({RecordingAt(Path("b.ZU"), "y")}), text::Error);
    }
}

FOR_BOTH(CatalogueTest);
