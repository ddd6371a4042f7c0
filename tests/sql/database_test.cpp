// What both databases do alike.
#include "sql/address.h"

#include "support/files.h"
#include "support/postgresserver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using sql::Dialect;
using sql::Value;
using sql::Values;

class AnyDatabase : public testing::TestWithParam<Dialect>
{
protected:
    AnyDatabase()
        : address(GetParam() == Dialect::Sqlite ? directory.Path("test.db")
                                                : PostgresServer::Own().FreshSchema()),
          database(sql::Open(address))
    {
        if (GetParam() == Dialect::Sqlite)
            database->Run("PRAGMA synchronous=OFF");
    }

    // A column of a type of both.
    Value Kept(const char* type, const Value& value)
    {
        table = QStringLiteral("kept%1").arg(++tables); // a prepared command knows the types of its table
        database->Run(QStringLiteral("CREATE TABLE %1 (it %2)").arg(table, QLatin1String(type)));
        database->Run(QStringLiteral("INSERT INTO %1 VALUES (?)").arg(table), {value});
        return database->One(QStringLiteral("SELECT it FROM %1").arg(table));
    }
    const char* BytesType() const { return GetParam() == Dialect::Sqlite ? "BLOB" : "BYTEA"; }
    const char* RealType() const { return "DOUBLE PRECISION"; }

    std::vector<qint64> Numbers() const
    {
        std::vector<qint64> numbers;
        database->Run("SELECT n FROM t ORDER BY n", {},
                      [&](const sql::Row& row) { numbers.push_back(row.Integer(0)); });
        return numbers;
    }
    void MakeNumbers(const std::vector<qint64>& numbers) const
    {
        database->Run("CREATE TABLE t (n BIGINT UNIQUE)");
        for (const qint64 number : numbers)
            database->Run("INSERT INTO t VALUES (?)", {number});
    }

    TestDirectory directory;
    const QString address;
    const std::unique_ptr<sql::Database> database;
    QString table; // of the value that was kept last
    int tables = 0;
};

using List = std::vector<qint64>;

} // namespace

TEST_P(AnyDatabase, KeepsTexts)
{
    for (const char* text : {"", "it's", "back\\slash\\", "a?b", "ВЛ-110 кВ Восточная – Ёлка, №5",
                             "line\nand\ttab", "\\x41", "NULL", "\xF0\x9F\x98\x80"})
        EXPECT_EQ(Kept("TEXT", QString::fromUtf8(text)), Value(QString::fromUtf8(text))) << text;
    EXPECT_EQ(Kept("TEXT", QString()), Value(QString("")));
    EXPECT_EQ(Kept("TEXT", QString("a") + QChar(0) + QString("b")), Value(QString("ab")));
}

TEST_P(AnyDatabase, KeepsNull)
{
    for (const char* type : {"TEXT", "INTEGER", "BIGINT", RealType(), BytesType()}) {
        EXPECT_EQ(Kept(type, Value()), Value()) << type;
        database->Run("SELECT it FROM " + table, {}, [&](const sql::Row& row) {
            EXPECT_TRUE(row.IsNull(0)) << type;
            EXPECT_EQ(row.Text(0), "") << type;
            EXPECT_EQ(row.Integer(0), 0) << type;
            EXPECT_EQ(row.Real(0), 0) << type;
            EXPECT_EQ(row.Bytes(0), QByteArray()) << type;
        });
    }
}

TEST_P(AnyDatabase, KeepsIntegers)
{
    for (const qint64 number : {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(),
                                qint64{0}, qint64{-1}, qint64{9007199254740993}})
        EXPECT_EQ(Kept("BIGINT", number), Value(number)) << number;
    EXPECT_EQ(Kept("INTEGER", qint64{-5}), Value(qint64{-5}));
}

TEST_P(AnyDatabase, KeepsRealNumbersToTheLastBit)
{
    std::vector<double> numbers = {0.1,  1.0 / 3, 5e-324, std::numeric_limits<double>::max(),     -2.5,
                                   1e22, 1e-17,   3,      std::numeric_limits<double>::infinity()};
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int i = 0; i < 50; ++i)
        numbers.push_back(std::pow(10, exponent(random)));
    for (const double number : numbers)
        EXPECT_EQ(Kept(RealType(), number), Value(number)) << number;
    EXPECT_EQ(Kept(RealType(), std::nan("")), Value());
}

TEST_P(AnyDatabase, KeepsBytes)
{
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    for (const QByteArray& bytes : {all, QByteArray("'\\"), QByteArray("")})
        EXPECT_EQ(Kept(BytesType(), bytes), Value(bytes));
    EXPECT_EQ(Kept(BytesType(), QByteArray()), Value(QByteArray("")));
}

TEST_P(AnyDatabase, RowHasNamesAndValuesInAnyForm)
{
    int rows = 0;
    database->Run("SELECT 7 AS seven, 2.5 AS half, 'x' AS letter", {}, [&](const sql::Row& row) {
        ++rows;
        EXPECT_EQ(row.Columns(), 3);
        EXPECT_EQ(row.NameOf(1), "half");
        EXPECT_EQ(row.Text(0), "7");
        EXPECT_EQ(row.Real(0), 7.0);
        EXPECT_EQ(row.Real(1), 2.5);
        EXPECT_EQ(row.Text(2), "x");
        EXPECT_EQ(row.Of(0), Value(qint64{7}));
    });
    EXPECT_EQ(rows, 1);
}

TEST_P(AnyDatabase, RealNumbersHaveAllTheirDigitsAsTextAndNoMore)
{
    for (const auto& [number, text] :
         {std::pair(3.0, "3"), std::pair(0.1, "0.1"), std::pair(0.1 + 0.2, "0.30000000000000004"),
          std::pair(1e22, "1e+22")}) {
        Kept(RealType(), number);
        database->Run("SELECT it FROM " + table, {},
                      [&, expected = text](const sql::Row& row) { EXPECT_EQ(row.Text(0), expected); });
    }
}

TEST_P(AnyDatabase, RowMayRunOtherCommands)
{
    MakeNumbers({1, 2, 3});
    List seen;
    database->Run("SELECT n FROM t ORDER BY n", {}, [&](const sql::Row& row) {
        seen.push_back(std::get<qint64>(database->One("SELECT max(n) - ? FROM t", {row.Integer(0)})));
    });
    EXPECT_EQ(seen, (List{2, 1, 0}));
}

TEST_P(AnyDatabase, WhatARowThrowsEndsTheCommand)
{
    MakeNumbers({1, 2, 3});
    int rows = 0;
    EXPECT_THROW(database->Run("SELECT n FROM t", {},
                               [&](const sql::Row&) {
                                   ++rows;
                                   throw std::runtime_error("enough");
                               }),
                 std::runtime_error);
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(Numbers(), (List{1, 2, 3}));
}

TEST_P(AnyDatabase, ScriptIsRunToItsFirstFailure)
{
    MakeNumbers({});
    database->RunScript("INSERT INTO t VALUES (1); -- one; two\nINSERT INTO t VALUES (2);");
    EXPECT_EQ(Numbers(), (List{1, 2}));
    EXPECT_THROW(
        database->RunScript("INSERT INTO t VALUES (3); INSERT INTO t VALUES (1); INSERT INTO t VALUES (4)"),
        sql::Failure);
    EXPECT_EQ(Numbers(), (List{1, 2, 3}));
}

TEST_P(AnyDatabase, FailureInTogetherUndoesAllAndPreparedCommandsWorkOn)
{
    MakeNumbers({1});
    const QString command = "INSERT INTO t VALUES (?)";
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW(database->Together([&] {
            database->Run(command, {qint64{2}});
            EXPECT_EQ(database->One("SELECT count(*) FROM t WHERE n > ?", {qint64{0}}),
                      Value(qint64{2})); // prepared here
            database->Run(command, {qint64{1}});
        }),
                     sql::Failure);
        EXPECT_EQ(Numbers(), List{1});
    }
    EXPECT_THROW(database->Together([&] {
        database->Run(command, {qint64{2}});
        throw std::runtime_error("the work's own");
    }),
                 std::runtime_error);
    database->Together([&] { database->Run(command, {qint64{3}}); });
    EXPECT_EQ(Numbers(), (List{1, 3}));
    EXPECT_EQ(database->One("SELECT count(*) FROM t WHERE n > ?", {qint64{1}}), Value(qint64{1}));
}

TEST_P(AnyDatabase, MissingTableCountsAsDamage)
{
    for (const char* command : {"SELECT * FROM nothing", "SELECT none FROM (SELECT 1 AS one) AS x"}) {
        try {
            database->One(command);
            ADD_FAILURE() << command;
        } catch (const sql::Failure& failure) {
            EXPECT_EQ(failure.trouble, sql::Trouble::Damaged) << command;
        }
    }
}

TEST_P(AnyDatabase, WhoWaitsTooLongIsToldSo)
{
    MakeNumbers({1});
    const auto other = sql::Open(address);
    other->SetPatience(50);
    database->Together([&] {
        database->Run("UPDATE t SET n = 2");
        try {
            other->Together([&] { other->Run("UPDATE t SET n = 3"); });
            ADD_FAILURE();
        } catch (const sql::Failure& failure) {
            EXPECT_EQ(failure.trouble, sql::Trouble::Busy);
        }
    });
    other->Together([&] { other->Run("UPDATE t SET n = n + 1"); });
    EXPECT_EQ(Numbers(), List{3});
}

INSTANTIATE_TEST_SUITE_P(Sql, AnyDatabase, testing::Values(Dialect::Sqlite, Dialect::Postgres),
                         [](const auto& one) {
                             return one.param == Dialect::Sqlite ? "Sqlite" : "Postgres";
                         });
