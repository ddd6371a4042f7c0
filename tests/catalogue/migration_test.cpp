// Catalogues of older and newer versions, and what is none.
#include "catalogue/schema.h"

#include "anycatalogue.h"

#include <thread>

namespace {

using catalogue::Commands;
using catalogue::Schema;

// What a later version may need: a column, a table that is made again, values that are computed.
Schema Later()
{
    Schema schema = catalogue::ThisSchema();
    schema.migrations.push_back({"ALTER TABLE entries ADD COLUMN weather TEXT;\n"
                                 "UPDATE entries SET weather = 'rain' WHERE circuit IS NOT NULL;",
                                 "", ""});
    schema.migrations.push_back(
        {"ALTER TABLE pieces RENAME TO old_pieces;\n"
         "CREATE TABLE pieces (\n"
         "    entry {big} NOT NULL REFERENCES entries (id) ON DELETE CASCADE,\n"
         "    name TEXT NOT NULL, bytes {big} NOT NULL, modified {real} NOT NULL, sha256 TEXT NOT NULL,\n"
         "    PRIMARY KEY (entry, name)\n"
         ") {rowless};\n"
         "INSERT INTO pieces SELECT entry, name, bytes, modified / 1e9, sha256 FROM old_pieces;\n"
         "DROP TABLE old_pieces;",
         "UPDATE entries SET weather = 'snow' WHERE reason IS NOT NULL;",
         "UPDATE entries SET weather = 'snow' WHERE reason IS NOT NULL;"});
    static const QByteArray views = QByteArray(schema.views.both) +
                                    "CREATE VIEW rainy AS -- wet\n"
                                    "SELECT path, weather FROM entries WHERE weather = 'rain';\n";
    schema.views.both = views.constData();
    return schema;
}

// A connection between whose first two commands something happens.
class Interrupted : public sql::Database
{
public:
    Interrupted(sql::Database& database_, std::function<void()> meanwhile_)
        : database(database_), meanwhile(std::move(meanwhile_))
    {}
    void Run(const QString& command, const sql::Values& values, const RowFunction& row) override
    {
        database.Run(command, values, row);
        if (const auto work = std::exchange(meanwhile, nullptr))
            work();
    }
    void RunScript(const QString& commands) override { database.RunScript(commands); }
    void SetPatience(int milliseconds) override { database.SetPatience(milliseconds); }
    sql::Dialect Kind() const override { return database.Kind(); }

protected:
    const char* Begin() const override { return "BEGIN"; }
    void Undo() noexcept override {}

private:
    sql::Database& database;
    std::function<void()> meanwhile;
};

const QString ThisVersion = QString::number(catalogue::ThisSchema().Version());
const QString LaterVersion = QString::number(catalogue::ThisSchema().Version() + 2);

class MigrationTest : public AnyCatalogue
{
protected:
    void MakeOld() const
    {
        catalogue::Catalogue one(address);
        one.Put({FaultAt(Path("a.ZU"), "x", 1, "AG", 0.1), RecordingAt(Path("b.ZU"), "y", 2),
                 UnreadAt(Path("c.ZU"), "z")});
    }
    QString Refusal(const std::function<void()>& work) const
    {
        try {
            work();
        } catch (const text::Error& error) {
            return error.Message();
        }
        return "none";
    }
    QString OpeningRefusal() const
    {
        return Refusal([&] { catalogue::Catalogue one(address); });
    }
    QString ReadingRefusal() const
    {
        return Refusal([&] { catalogue::Catalogue::ForReading(address); });
    }
    QString Named(const char* reason) const
    {
        return QStringLiteral("the catalogue '%1': ").arg(sql::Shown(address)) + QLatin1String(reason);
    }
    QStringList Everything() const
    {
        return Rows("SELECT * FROM entries ORDER BY id") +
               Rows("SELECT * FROM named_events ORDER BY entry, place") +
               Rows("SELECT * FROM named_extremes ORDER BY entry, name") +
               Rows("SELECT * FROM changes ORDER BY entry");
    }
};

} // namespace

TEST_P(MigrationTest, OlderCatalogueIsBroughtUpWithoutLoss)
{
    MakeOld();
    const QStringList before = Everything();
    const auto database = sql::Open(address);
    catalogue::Prepare(*database, Later());
    EXPECT_EQ(Rows("SELECT version FROM catalogue"), QStringList{LaterVersion});
    EXPECT_EQ(Rows("SELECT weather FROM entries ORDER BY path"), (QStringList{"rain", "rain", "snow"}));
    EXPECT_EQ(Rows("SELECT path FROM rainy ORDER BY path"), (QStringList{Stored("a.ZU"), Stored("b.ZU")}));
    EXPECT_EQ(
        Rows("SELECT name, bytes, modified > 1e-7 AND modified < 2e-6, sha256 FROM pieces ORDER BY entry"),
        IsServer() ? (QStringList{"a.ZU|1|true|78", "b.ZU|1|true|79", "c.ZU|1|true|7a"})
                   : (QStringList{"a.ZU|1|1|78", "b.ZU|1|1|79", "c.ZU|1|1|7a"}));
    EXPECT_EQ(Rows("SELECT fault_kind FROM faults"), QStringList{"AG"});
    QStringList after = Everything();
    for (int i = 0; i < 3; ++i)
        after[i] = after[i].left(after[i].lastIndexOf('|')); // without the new column
    EXPECT_EQ(after, before);
    if (IsServer()) {
        EXPECT_EQ(Rows("SELECT obj_description('rainy'::regclass)"), QStringList{"wet"});
    }
}

// Version 2 came with the journals.
TEST_P(MigrationTest, CatalogueOfTheFirstVersionGetsTheTablesOfANewOne)
{
    const auto columns = [this](const char* table) {
        return Rows(
            IsServer()
                ? "SELECT column_name || ' ' || data_type || ' ' || is_nullable || coalesce("
                  "col_description((table_schema || '.' || table_name)::regclass, ordinal_position), '') "
                  "FROM information_schema.columns WHERE table_schema = current_schema() AND "
                  "table_name = ? ORDER BY ordinal_position"
                : "SELECT sql FROM sqlite_master WHERE name = ?",
            {QString(table)});
    };
    const std::vector<const char*> tables = {"journals", "journal_recordings", "journal_commands", "watched"};
    MakeOld();
    const QStringList before = Everything();
    std::vector<QStringList> expected;
    for (const char* table : tables)
        expected.push_back(columns(table));
    EXPECT_GT(expected[1].join(' ').count("NOT NULL") + expected[1].size(), 9);
    sql::Open(address)->RunScript(
        "DROP VIEW watched; DROP TABLE journal_commands; DROP TABLE journal_recordings; "
        "DROP TABLE journals; UPDATE catalogue SET version = 1");
    EXPECT_EQ(OpeningRefusal(), "none");
    EXPECT_EQ(Rows("SELECT version FROM catalogue"), QStringList{ThisVersion});
    for (size_t i = 0; i < tables.size(); ++i)
        EXPECT_EQ(columns(tables[i]), expected[i]);
    EXPECT_EQ(Everything(), before);
}

TEST_P(MigrationTest, FailureOnTheWayLeavesTheOldCatalogue)
{
    MakeOld();
    const QStringList before = Everything();
    Schema schema = Later();
    schema.migrations.push_back({"ALTER TABLE entries ADD COLUMN weather TEXT;", "", ""}); // is there already
    const auto database = sql::Open(address);
    EXPECT_THROW(catalogue::Prepare(*database, schema), sql::Failure);
    EXPECT_EQ(Rows("SELECT version FROM catalogue"), QStringList{ThisVersion});
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(OpeningRefusal(), "none");
}

TEST_P(MigrationTest, TwoProgramsAtOnceDoItOnce)
{
    MakeOld();
    std::vector<std::thread> programs;
    std::atomic<int> failures{0};
    for (int i = 0; i < 4; ++i) {
        programs.emplace_back([&] {
            try {
                catalogue::Prepare(*sql::Open(address), Later());
            } catch (const std::exception&) {
                ++failures;
            }
        });
    }
    for (std::thread& program : programs)
        program.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(Rows("SELECT version FROM catalogue"), QStringList{LaterVersion});
    EXPECT_EQ(Rows("SELECT count(*) FROM pieces"), QStringList{"3"});
}

TEST_P(MigrationTest, ManyProgramsMakeOneCatalogue)
{
    std::vector<std::thread> programs;
    std::atomic<int> failures{0};
    for (int i = 0; i < 8; ++i) {
        programs.emplace_back([&] {
            try {
                catalogue::Catalogue one(address);
            } catch (const std::exception& error) {
                ++failures;
                ADD_FAILURE() << error.what();
            }
        });
    }
    for (std::thread& program : programs)
        program.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(Rows("SELECT version FROM catalogue"), QStringList{ThisVersion});
}

// One program looks whether there is a catalogue, in more than one step, while another makes it.
TEST_P(MigrationTest, CatalogueThatIsMadeMeanwhileIsTakenForOne)
{
    const auto database = sql::Open(address);
    Interrupted interrupted(*database, [&] { catalogue::Catalogue one(address); });
    EXPECT_NO_THROW(catalogue::Prepare(interrupted));
}

TEST_P(MigrationTest, OlderCatalogueIsNotRead)
{
    MakeOld();
    const auto database = sql::Open(address);
    EXPECT_EQ(Refusal([&] { catalogue::CheckVersion(*database, Later()); }),
              "it was made by an older version of the program; 'zucmtr archive update' brings it up to date");
}

TEST_P(MigrationTest, NewerCatalogueIsRefused)
{
    MakeOld();
    catalogue::Prepare(*sql::Open(address), Later());
    const QString refusal = Named("it was made by a newer version of the program; install that");
    EXPECT_EQ(OpeningRefusal(), refusal);
    EXPECT_EQ(ReadingRefusal(), refusal);
}

TEST_P(MigrationTest, ProgramThatIsAtWorkNoticesANewerOne)
{
    catalogue::Catalogue one(address);
    one.Put({RecordingAt(Path("a.ZU"), "x", 1)});
    catalogue::Prepare(*sql::Open(address), Later());
    EXPECT_EQ(Refusal([&] { one.Put({RecordingAt(Path("b.ZU"), "y", 1)}); }),
              Named("it was made by a newer version of the program; install that"));
    EXPECT_EQ(Rows("SELECT count(*) FROM entries"), QStringList{"1"});
}

TEST_P(MigrationTest, AnotherProgramsDatabaseIsRefusedAndLeftAlone)
{
    const auto other = sql::Open(address);
    other->RunScript("CREATE TABLE catalogue (version INTEGER); INSERT INTO catalogue VALUES (1)");
    EXPECT_EQ(OpeningRefusal(), Named("it is no catalogue"));
    EXPECT_EQ(ReadingRefusal(), Named("it is no catalogue"));
    EXPECT_EQ(Rows("SELECT count(*) FROM catalogue"), QStringList{"1"});
    if (!IsServer()) {
        EXPECT_EQ(Rows("PRAGMA journal_mode"), QStringList{"delete"});
    }
}

TEST_P(MigrationTest, CatalogueWithoutItsVersionIsRefused)
{
    MakeOld();
    sql::Open(address)->Run("DELETE FROM catalogue");
    EXPECT_EQ(OpeningRefusal(), Named("it is no catalogue"));
    EXPECT_EQ(ReadingRefusal(), Named("it is no catalogue"));
}

TEST_P(MigrationTest, EmptyDatabaseBecomesACatalogueOnlyForWriting)
{
    if (!IsServer())
        directory.Write("zucmtr-archive.db", "");
    EXPECT_EQ(ReadingRefusal(), Named("it is empty; 'zucmtr archive update' fills it"));
    EXPECT_EQ(OpeningRefusal(), "none");
    EXPECT_EQ(ReadingRefusal(), "none");
}

FOR_BOTH(MigrationTest);
