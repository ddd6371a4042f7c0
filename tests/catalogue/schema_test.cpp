// The tables as others see them.
#include "catalogue/schema.h"

#include "anycatalogue.h"

namespace {

class SchemaTest : public AnyCatalogue
{
protected:
    QStringList Views() const
    {
        return Rows(IsServer()
                        ? "SELECT viewname FROM pg_views WHERE schemaname = current_schema() ORDER BY 1"
                        : "SELECT name FROM sqlite_master WHERE type = 'view' ORDER BY 1");
    }
};

} // namespace

TEST(Schema, CommentsAreTakenFromTheScript)
{
    EXPECT_EQ(catalogue::CommentsOf("CREATE TABLE a ( -- the first's\n"
                                    "    x TEXT, -- one; two -- three\n"
                                    "    y TEXT COLLATE \"C\" DEFAULT '--' -- four\n"
                                    "    z TEXT,\n"
                                    "    PRIMARY KEY (x) -- five\n"
                                    ");\n"
                                    "CREATE VIEW b AS -- six\n"
                                    "    SELECT 1 -- seven\n"),
              (QStringList{"COMMENT ON TABLE a IS 'the first''s'", "COMMENT ON COLUMN a.x IS 'three'",
                           "COMMENT ON COLUMN a.y IS 'four'", "COMMENT ON VIEW b IS 'six'"}));
}

TEST_P(SchemaTest, ViewsHaveTheSameNamesInBoth)
{
    const catalogue::Catalogue one(address);
    const QStringList expected = {"duplicates",        "faults",          "faults_by_kind",
                                  "faults_by_line",    "faults_by_month", "named_events",
                                  "named_extremes",    "present",         "silent_recorders",
                                  "slowest_clearings", "unread",          "watched"};
    for (const QString& view : expected)
        EXPECT_TRUE(Views().contains(view)) << view;
    for (const QString& view : Views())
        EXPECT_EQ(Rows("SELECT count(*) FROM " + view), QStringList{"0"});
}

TEST_P(SchemaTest, OpeningAgainChangesNothing)
{
    const catalogue::Catalogue one(address);
    const QString command = "SELECT version, made FROM catalogue";
    const QStringList before = Rows(command);
    const catalogue::Catalogue two(address);
    EXPECT_EQ(Rows(command), before);
    EXPECT_EQ(before.size(), 1);
}

TEST_P(SchemaTest, TextsAreOrderedByTheirCharacters)
{
    catalogue::Catalogue one(address);
    std::vector<catalogue::Entry> entries;
    for (const char* name : {"b", "B", "a_1", "a-2", "А", "Z"})
        entries.push_back(RecordingAt(Path(QString::fromUtf8(name)), name));
    one.Put(entries);
    EXPECT_EQ(Rows("SELECT path FROM entries ORDER BY path").replaceInStrings(Path() + '/', QString()),
              (QStringList{"B", "Z", "a-2", "a_1", "b", QString::fromUtf8("А")}));
}

FOR_BOTH(SchemaTest);

TEST(Schema, EveryTableColumnAndViewHasACommentOnAServer)
{
    const QString address = PostgresServer::Own().FreshSchema();
    const catalogue::Catalogue one(address);
    const auto database = sql::Open(address);
    QStringList without;
    database->Run("SELECT c.relname || coalesce('.' || a.attname, '') FROM pg_class c "
                  "LEFT JOIN LATERAL (SELECT attname, attnum FROM pg_attribute WHERE attrelid = c.oid AND "
                  "attnum > 0 AND c.relkind = "
                  "'r' UNION ALL SELECT NULL, 0) a ON true "
                  "WHERE c.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = current_schema()) "
                  "AND c.relkind IN ('r', 'v') "
                  "AND col_description(c.oid, a.attnum) IS NULL AND (a.attnum > 0 OR obj_description(c.oid, "
                  "'pg_class') IS NULL) "
                  "ORDER BY 1",
                  {}, [&](const sql::Row& row) { without << row.Text(0); });
    EXPECT_EQ(without, QStringList());
    EXPECT_EQ(database->One("SELECT obj_description('entries'::regclass)"),
              sql::Value(QString("a recording or a record, also one that could not be read or is gone")));
}

TEST(Schema, FileKeepsReferencesAndWaitsForTheDisk)
{
    const TestDirectory directory;
    catalogue::Catalogue one(directory.Path("x.db"));
    const auto pragma = [&](const char* name) {
        return one.Database().One(QStringLiteral("PRAGMA ") + name);
    };
    EXPECT_EQ(pragma("foreign_keys"), sql::Value(qint64{1}));
    EXPECT_EQ(pragma("synchronous"), sql::Value(qint64{3}));
    EXPECT_EQ(pragma("journal_mode"), sql::Value(QString("wal")));
    EXPECT_EQ(pragma("busy_timeout"), sql::Value(qint64{60000}));
    EXPECT_THROW(one.Database().Run("INSERT INTO pieces VALUES (5, 'x', 1, 1, '')"), sql::Failure);
}

TEST(Schema, StatisticsForTheFileAreMadeAtTheEnd)
{
    const TestDirectory directory;
    const QString path = directory.Path("x.db");
    {
        catalogue::Catalogue one(path);
        std::vector<catalogue::Entry> entries;
        for (int i = 0; i < 50; ++i)
            entries.push_back(RecordingAt(directory.Path(QString::number(i)), QByteArray::number(i), i));
        one.Put(entries);
    }
    EXPECT_NE(sql::Open(path)->One("SELECT count(*) FROM sqlite_stat1 WHERE tbl = 'entries'"),
              sql::Value(qint64{0}));
    EXPECT_EQ(directory.Names(), QStringList{"x.db"}); // one file
}
