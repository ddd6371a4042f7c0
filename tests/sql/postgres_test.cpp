// What only a server does.
#include "sql/postgres.h"

#include "sql/address.h"
#include "support/files.h"
#include "support/postgresserver.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>

namespace {

using sql::Trouble;
using sql::Value;

PostgresServer& Server()
{
    return PostgresServer::Own();
}

class PostgresTest : public testing::Test
{
protected:
    PostgresTest() : database(address) { database.Run("CREATE TABLE t (k BIGINT PRIMARY KEY, n BIGINT)"); }

    qint64 Sum()
    {
        return database.One("SELECT coalesce(sum(n), 0)::bigint FROM t") == Value()
                   ? 0
                   : std::get<qint64>(database.One("SELECT coalesce(sum(n), 0)::bigint FROM t"));
    }

    const QString address = Server().FreshDatabase();
    sql::Postgres database;
};

// The failure of the work.
template <class Work>
sql::Failure FailureOf(Work work)
{
    try {
        work();
    } catch (const sql::Failure& failure) {
        return failure;
    }
    ADD_FAILURE() << "no failure";
    return {QString(), Trouble::Other};
}

sql::Failure OpeningFailure(const QString& address)
{
    return FailureOf([&] { sql::Postgres database(address); });
}

} // namespace

TEST_F(PostgresTest, FailureHasTheServersStateAndItsFirstLineAlone)
{
    const sql::Failure failure =
        FailureOf([&] { database.Run("INSERT INTO t VALUES (?, ?)", {QString("x"), qint64{1}}); });
    EXPECT_EQ(failure.state, "22P02");
    EXPECT_EQ(failure.trouble, Trouble::Other);
    EXPECT_EQ(failure.Message(), "invalid input syntax for type bigint: \"x\"");
}

TEST_F(PostgresTest, WrongNumberOfValuesFails)
{
    EXPECT_EQ(FailureOf([&] { database.One("SELECT n FROM t WHERE k = ? AND n = ?", {qint64{1}}); }).state,
              "42601");
}

TEST_F(PostgresTest, MoreCommandsThanTheServerIsToRememberWork)
{
    for (qint64 i = 0; i < 1100; ++i)
        ASSERT_EQ(database.One(QStringLiteral("SELECT %1 + ?::bigint").arg(i), {i}), Value(2 * i));
}

TEST_F(PostgresTest, PermissionIsExplained)
{
    Server().Psql("CREATE ROLE reader LOGIN");
    sql::Postgres reader(QString(address).replace("zucmtr@", "reader@"));
    const sql::Failure failure = FailureOf([&] { reader.One("SELECT count(*) FROM t"); });
    EXPECT_EQ(
        failure.Message(),
        "the role 'reader' lacks a permission on the server (permission denied for table t); the owner of "
        "the "
        "tables or the server's administrator can give it with GRANT, or name another role in the address");
    EXPECT_EQ(failure.trouble, Trouble::Other);
}

TEST_F(PostgresTest, SessionThatMayNotWriteIsExplained)
{
    database.Run("SET default_transaction_read_only = on");
    EXPECT_EQ(
        FailureOf([&] { database.Run("INSERT INTO t VALUES (1, 1)"); }).Message(),
        "the server lets nobody write; it may be the copy of another (cannot execute INSERT in a read-only "
        "transaction)");
}

// Two that change two rows in different order wait for each other; the server ends one of them.
TEST_F(PostgresTest, DeadlockedWorkIsDoneAgain)
{
    database.Run("INSERT INTO t VALUES (1, 0), (2, 0)");
    std::atomic<int> waiting{0};
    std::atomic<int> calls{0};
    const auto add = [&](int first, int second) {
        sql::Postgres own(address);
        own.SetPatience(20000);
        own.Together([&] {
            ++calls;
            own.Run("UPDATE t SET n = n + 1 WHERE k = ?", {qint64{first}});
            ++waiting;
            while (waiting < 2)
                std::this_thread::yield();
            own.Run("UPDATE t SET n = n + 1 WHERE k = ?", {qint64{second}});
        });
    };
    std::thread other([&] { add(2, 1); });
    add(1, 2);
    other.join();
    EXPECT_GE(calls, 3);
    EXPECT_EQ(Sum(), 4);
}

TEST_F(PostgresTest, ConnectionThatIsLostIsMadeAgainForReading)
{
    database.Run("INSERT INTO t VALUES (?, ?)", {qint64{1}, qint64{5}});
    Server().Disconnect();
    EXPECT_EQ(Sum(), 5);
}

TEST_F(PostgresTest, CommandThatWritesIsNotRepeatedBehindTheCallersBack)
{
    const QString command = "INSERT INTO t VALUES (?, ?)";
    database.Run(command, {qint64{1}, qint64{5}});
    Server().Disconnect();
    EXPECT_EQ(FailureOf([&] { database.Run(command, {qint64{2}, qint64{5}}); }).trouble, Trouble::Gone);
    database.Together([&] { database.Run(command, {qint64{3}, qint64{5}}); });
    EXPECT_EQ(Sum(), 10);
}

TEST_F(PostgresTest, WorkIsDoneAgainOnAServerThatRestarts)
{
    int calls = 0;
    database.Together([&] {
        database.Run("INSERT INTO t VALUES (?, ?)", {qint64{1}, qint64{5}});
        if (++calls == 1) {
            Server().Stop();
            Server().Start();
        }
        database.Run("INSERT INTO t VALUES (?, ?)", {qint64{2}, qint64{5}});
    });
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(Sum(), 10);
}

TEST_F(PostgresTest, SettingsOfTheSessionComeBackWithTheConnection)
{
    database.SetPatience(777);
    Server().Disconnect();
    EXPECT_EQ(database.One("SELECT current_setting('lock_timeout')"), Value(QString("777ms")));
}

TEST(Postgres, PasswordIsTakenFromTheAddress)
{
    Server().Psql("CREATE ROLE secret LOGIN PASSWORD 'p@ss/w''%: ж\\'; CREATE DATABASE secret OWNER secret");
    const QString file = Server().Psql("SHOW hba_file");
    const QByteArray before = ReadBytes(file);
    QFile hba(file);
    ASSERT_TRUE(hba.open(QIODevice::WriteOnly));
    hba.write("local secret secret scram-sha-256\n" + before);
    hba.close();
    Server().Psql("SELECT pg_reload_conf()");
    const QString wrong = OpeningFailure(Server().AddressOf("secret", "secret:wrong")).Message();
    EXPECT_TRUE(wrong.endsWith("password authentication failed for user \"secret\"")) << wrong;
    sql::Postgres database(Server().AddressOf("secret", "secret:p%40ss%2Fw%27%25%3A%20%D0%B6%5C"));
    EXPECT_EQ(database.One("SELECT current_user::text"), Value(QString("secret")));
}

TEST(Postgres, OptionsOfTheAddressReachTheConnection)
{
    const QString address = Server().FreshDatabase();
    EXPECT_EQ(OpeningFailure(address + "&sslmode=nonsense").Message(), "invalid sslmode value: \"nonsense\"");
    sql::Postgres database(address + "&application_name=it%27s%20me&options=-csearch_path%3Drelays");
    EXPECT_EQ(database.One("SELECT current_setting('application_name')"), Value(QString("it's me")));
    EXPECT_EQ(database.One("SELECT current_setting('search_path')"), Value(QString("relays")));
}

TEST(Postgres, MissingDatabaseAndServerAreReported)
{
    const QString missing = OpeningFailure(Server().AddressOf("missing")).Message();
    EXPECT_TRUE(missing.endsWith("database \"missing\" does not exist")) << missing;
    const sql::Failure nobody = OpeningFailure("postgresql:///x?host=/nowhere");
    EXPECT_EQ(nobody.trouble, Trouble::Gone);
    EXPECT_TRUE(nobody.Message().contains("No such file or directory")) << nobody.Message();
    EXPECT_FALSE(nobody.Message().contains('\n'));
}

TEST(Postgres, OtherEncodingIsRefused)
{
    const QString address = Server().FreshDatabase("ENCODING 'LATIN1' TEMPLATE template0 LOCALE 'C'");
    EXPECT_EQ(OpeningFailure(address).Message(),
              "its encoding is LATIN1; make a database with ENCODING 'UTF8' TEMPLATE template0");
}

TEST(Postgres, MissingDriverIsReported)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto open = [] {
        QCoreApplication::setLibraryPaths({});
        try {
            sql::Postgres database("postgresql:///x");
        } catch (const sql::Failure& failure) {
            std::fputs(failure.what(), stderr);
            std::exit(3);
        }
    };
    EXPECT_EXIT(open(), testing::ExitedWithCode(3),
                "^Qt's driver for PostgreSQL is missing; install the package " +
                    std::string(QT_VERSION_MAJOR == 5 ? "libqt5sql5-psql" : "libqt6sql6-psql") + "$");
}
