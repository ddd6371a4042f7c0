// What is wanted is found, the same in both databases, and counted.
#include "catalogue/find.h"
#include "catalogue/foundcolumns.h"
#include "catalogue/statistics.h"

#include "anycatalogue.h"

namespace {

using catalogue::Instant;
using catalogue::Sort;
using catalogue::Wanted;

QString Cyrillic(const char* text)
{
    return QString::fromUtf8(text);
}

class FindTest : public AnyCatalogue
{
protected:
    FindTest() : one(address)
    {
        catalogue::Entry quiet = RecordingAt(Path("A/quiet.ZU"), "1", 1);
        catalogue::Entry single = FaultAt(Path("A/single.ZU"), "2", 2, "AG", 0.09);
        single.fault->circuit = Cyrillic("ВЛ 110 кВ Восточная");
        catalogue::Entry three = FaultAt(Path("a/three.ZU"), "3", 3, "ABC", 0.25);
        three.station = Cyrillic("Ёлкино");
        three.recorder = "R2";
        three.fault->current = 9000;
        three.fault->kilometres = 40;
        catalogue::Entry uncleared = FaultAt(Path("a/uncleared.ZU"), "4", 4, "BCG", 0);
        uncleared.fault->clearing = std::nullopt;
        uncleared.kind = catalogue::Kind::Record;
        uncleared.utcOffset = std::nullopt;
        uncleared.digital.front().name = Cyrillic("АПВ Q1");
        one.Put({quiet, single, three, uncleared, UnreadAt(Path("a/unread.ZU"), "5"),
                 FaultAt(Path("gone.ZU"), "6", 6, "CA", 0.5)});
        one.MarkGone({Path("gone.ZU")});
    }

    /// Base names without extension, in the order in which they are found.
    QString Found(const Wanted& wanted)
    {
        QStringList names;
        catalogue::Find(one, wanted, [&](const sql::Row& row) {
            names << QFileInfo(row.Text(catalogue::FoundPlace("path"))).completeBaseName();
        });
        return names.join(' ');
    }

    catalogue::Catalogue one;
};

Wanted With(const std::function<void(Wanted&)>& change)
{
    Wanted wanted;
    change(wanted);
    return wanted;
}

} // namespace

TEST_P(FindTest, AllThatIsThereTheNewestFirstAndWithoutATimeLast)
{
    EXPECT_EQ(Found({}), "uncleared three single quiet unread");
    EXPECT_EQ(Found(With([](Wanted& w) { w.isReverse = true; })), "quiet single three uncleared unread");
    EXPECT_EQ(Found(With([](Wanted& w) { w.limit = 2; })), "uncleared three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.isGone = true; })), "gone");
    EXPECT_EQ(Found(With([](Wanted& w) { w.isUnread = true; })), "unread");
    EXPECT_EQ(Found(With([](Wanted& w) { w.kind = "record"; })), "uncleared");
}

TEST_P(FindTest, NamesInAnyCaseOrTheWhole)
{
    EXPECT_EQ(Found(With([](Wanted& w) { w.circuits = QStringList{Cyrillic("восточ")}; })), "single");
    EXPECT_EQ(Found(With([](Wanted& w) { w.circuits = QStringList{Cyrillic("=ВЛ-110 кВ Южная")}; })),
              "uncleared three quiet");
    EXPECT_EQ(Found(With([](Wanted& w) { w.circuits = QStringList{Cyrillic("=Южная")}; })), "");
    EXPECT_EQ(Found(With([](Wanted& w) { w.stations = QStringList{Cyrillic("ЕЛКИНО"), "nowhere"}; })),
              "three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.recorders = QStringList{"r2"}; })), "three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.changed = QStringList{Cyrillic("апв")}; })), "uncleared");
    EXPECT_EQ(Found(With([](Wanted& w) { w.changed = QStringList{"KQC"}; })), ""); // it did not change
    EXPECT_EQ(Found(With([](Wanted& w) { w.stations = QStringList{"' OR 1=1 --"}; })), "");
}

TEST_P(FindTest, TimesOnTheClockOfTheRecorderOrInUtc)
{
    const qint64 own = (qint64{1709276400} + 3 * 3600 + 3) * 1000000; // 10:00:03 there
    EXPECT_EQ(Found(With([&](Wanted& w) { w.since = Instant{own, true}; })), "three");
    EXPECT_EQ(Found(With([&](Wanted& w) { w.until = Instant{own, true}; })), "uncleared single quiet");
    const qint64 utc = (qint64{1709276400} + 3) * 1000000;
    EXPECT_EQ(Found(With([&](Wanted& w) { w.since = Instant{utc, false}; })), "uncleared three");
    EXPECT_EQ(Found(With([&](Wanted& w) { w.until = Instant{utc, false}; })), "single quiet");
}

TEST_P(FindTest, FaultsByKindCurrentDurationAndDistance)
{
    EXPECT_EQ(Found(With([](Wanted& w) { w.kinds = QStringList{"AG", "ABC"}; })), "three single");
    EXPECT_EQ(Found(With([](Wanted& w) { w.kinds = QStringList{""}; })), "quiet");
    EXPECT_EQ(Found(With([](Wanted& w) { w.kinds = QStringList{"", "AG"}; })), "single quiet");
    EXPECT_EQ(Found(With([](Wanted& w) { w.minCurrent = 9000; })), "three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.longerThan = 0.09; })), "three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.longerThan = 0.08; })), "three single");
    EXPECT_EQ(Found(With([](Wanted& w) { w.isUncleared = true; })), "uncleared");
    EXPECT_EQ(Found(With([](Wanted& w) { w.kilometres = {21.25, 40}; })), "uncleared three single");
    EXPECT_EQ(Found(With([](Wanted& w) { w.kilometres = {std::nullopt, 21.25}; })), "uncleared single");
    EXPECT_EQ(Found(With([](Wanted& w) { w.percent = {43, std::nullopt}; })), "");
}

TEST_P(FindTest, Words)
{
    EXPECT_EQ(Found(With([](Wanted& w) { w.text = Cyrillic("ВОСТОЧНАЯ q1"); })), "uncleared single quiet");
    EXPECT_EQ(Found(With([](Wanted& w) { w.text = Cyrillic("вост"); })), "");
    EXPECT_EQ(Found(With([](Wanted& w) { w.text = Cyrillic("елк*"); })), "three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.text = "-"; })), "");
}

TEST_P(FindTest, BelowADirectoryOfThisVeryName)
{
    EXPECT_EQ(Found(With([&](Wanted& w) { w.below = Stored("A"); })), "single quiet");
    EXPECT_EQ(Found(With([&](Wanted& w) { w.below = Stored("a"); })), "uncleared three unread");
    EXPECT_EQ(Found(With([&](Wanted& w) { w.below = Stored("%"); })), "");
}

TEST_P(FindTest, OrderPutsWhatHasNoValueLast)
{
    EXPECT_EQ(Found(With([](Wanted& w) { w.sort = Sort::Slowest; })).section(' ', 0, 1), "three single");
    EXPECT_EQ(Found(With([](Wanted& w) { w.sort = Sort::Slowest, w.isReverse = true; })).section(' ', 0, 1),
              "single three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.sort = Sort::Current, w.limit = 1; })), "three");
    EXPECT_EQ(Found(With([](Wanted& w) { w.sort = Sort::Path; })), "quiet single three uncleared unread");
    EXPECT_EQ(Found(With([](Wanted& w) { w.sort = Sort::Circuit; })), "single uncleared three quiet unread");
}

TEST_P(FindTest, CountsAndSilentRecorders)
{
    catalogue::Entry record =
        FaultAt(Path("A/single.cfg"), "7", 2, "AG", 0.09); // of a recording that is there
    record.fault->circuit = Cyrillic("ВЛ 110 кВ Восточная");
    record.kind = catalogue::Kind::Record;
    one.Put({record, RecordingAt(Path("a/copy.ZU"), "1", 1)});
    const auto counts = [&](catalogue::By by) {
        QStringList texts;
        for (const catalogue::FaultCount& count : catalogue::FaultCounts(one, {}, by))
            texts << QStringLiteral("%1=%2").arg(count.of).arg(count.count);
        return texts.join(' ');
    };
    EXPECT_EQ(counts(catalogue::By::Month), "2024-03=3");
    EXPECT_EQ(counts(catalogue::By::Kind), "ABC=1 AG=1 BCG=1");
    EXPECT_EQ(counts(catalogue::By::Circuit), Cyrillic("ВЛ-110 кВ Южная=2 ВЛ 110 кВ Восточная=1"));
    const catalogue::Overview overview = catalogue::OverviewOf(one, {});
    EXPECT_EQ(overview.recordings, 5);
    EXPECT_EQ(overview.records, 2);
    EXPECT_EQ(overview.unread, 1);
    EXPECT_EQ(overview.bytes, 7);
    EXPECT_EQ(overview.first, "2024-03-01T10:00:01+03:00");
    EXPECT_EQ(overview.last, "2024-03-01T10:00:04+03:00");
    EXPECT_EQ(catalogue::GoneCount(one, {}), 1);
    EXPECT_EQ(catalogue::DuplicatesOf(one, {}).entries, 1);
    const auto silent = [&](int second) {
        QStringList names;
        const qint64 since = (qint64{1709276400} + second) * 1000000;
        for (const catalogue::Recorder& recorder : catalogue::RecordersOf(one, {}, since))
            names << recorder.name + "@" + recorder.last.mid(17, 2);
        return names.join(' ');
    };
    EXPECT_EQ(silent(3), "");
    EXPECT_EQ(silent(4), "R2@03");
    EXPECT_EQ(silent(7), "R2@03 R1@06"); // what is gone was heard of, too
}

FOR_BOTH(FindTest);
