// The views for others' questions, on both databases.
#include "anycatalogue.h"

#include <QDateTime>

namespace {

class ViewsTest : public AnyCatalogue
{
protected:
    ViewsTest()
    {
        catalogue::Catalogue one(address);
        std::vector<catalogue::Entry> entries = {FaultAt(Path("1.ZU"), "1", 1, "AG", 0.0625),
                                                 FaultAt(Path("2.ZU"), "2", 2, "AG", 0.5),
                                                 FaultAt(Path("3.ZU"), "3", 3, "ABC", 0.25),
                                                 RecordingAt(Path("4.ZU"), "4", 4),
                                                 UnreadAt(Path("5.ZU"), "5"),
                                                 FaultAt(Path("6.ZU"), "6", 6, "BC", 9)};
        entries[1].trigger = "2024-04-01T00:00:00+03:00";
        entries[1].fault->circuit = QString::fromUtf8("Т-1");
        entries[2].fault->clearing.reset();
        entries[3].recorder = "R2";
        entries[3].moment = 0;
        catalogue::Entry record = FaultAt(Path("1.cfg"), "11", 1, "AG", 0.0625); // of the first
        record.kind = catalogue::Kind::Record;
        entries.push_back(record);
        one.Put(entries);
        one.MarkGone({Path("6.ZU")});
    }
};

} // namespace

TEST_P(ViewsTest, FaultsAreThoseWhoseFilesAreThere)
{
    EXPECT_EQ(
        Rows("SELECT kind, path, month, line, fault_kind FROM faults ORDER BY moment, kind"),
        (QStringList{"record|" + Stored("1.cfg") + QString::fromUtf8("|2024-03|ВЛ-110 кВ Южная|AG"),
                     "recording|" + Stored("1.ZU") + QString::fromUtf8("|2024-03|ВЛ-110 кВ Южная|AG"),
                     "recording|" + Stored("2.ZU") + QString::fromUtf8("|2024-04|Т-1|AG"),
                     "recording|" + Stored("3.ZU") + QString::fromUtf8("|2024-03|ВЛ-110 кВ Южная|ABC")}));
    EXPECT_EQ(Rows("SELECT count(*) FROM present"), QStringList{"6"});
}

TEST_P(ViewsTest, NumbersCountARecordingAndItsRecordOnce)
{
    EXPECT_EQ(Rows("SELECT * FROM faults_by_month"), (QStringList{"2024-03|2", "2024-04|1"}));
    EXPECT_EQ(Rows("SELECT * FROM faults_by_kind"), (QStringList{"AG|2", "ABC|1"}));
    EXPECT_EQ(Rows("SELECT * FROM faults_by_line"),
              (QStringList{QString::fromUtf8("ВЛ-110 кВ Южная|2|0.0625|1234.5|2024-03-01T10:00:03+03:00"),
                           QString::fromUtf8("Т-1|1|0.5|1234.5|2024-04-01T00:00:00+03:00")}));
}

TEST_P(ViewsTest, SlowestClearingComesFirst)
{
    EXPECT_EQ(Rows("SELECT path, fault_duration, trip_after FROM slowest_clearings LIMIT 1"),
              QStringList{Stored("2.ZU") + "|0.5|0.03"});
    EXPECT_EQ(Rows("SELECT count(*) FROM slowest_clearings"), QStringList{"3"});
}

TEST_P(ViewsTest, RecorderThatIsSilentForLongestComesFirst)
{
    EXPECT_EQ(
        Rows("SELECT recorder, last_time FROM silent_recorders"),
        (QStringList{"R2|2024-03-01T10:00:04+03:00", "R1|2024-03-01T10:00:06+03:00"})); // the last is gone
    EXPECT_EQ(Rows("SELECT recorder FROM recorders ORDER BY recorder"), (QStringList{"R1", "R2"}));
    const double days = static_cast<double>(QDateTime::currentSecsSinceEpoch()) / 86400;
    EXPECT_NEAR(Rows("SELECT days_silent FROM silent_recorders WHERE recorder = 'R2'")[0].toDouble(), days,
                0.01);
}

TEST_P(ViewsTest, UnreadAndDuplicatesAreListed)
{
    EXPECT_EQ(Rows("SELECT path, reason, error FROM unread"),
              QStringList{Stored("5.ZU") + QString::fromUtf8("|recordingUnreadable|нет данных")});
    EXPECT_EQ(Rows("SELECT * FROM duplicates"), QStringList());
}

FOR_BOTH(ViewsTest);
