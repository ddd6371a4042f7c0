#include "zucmtr/watch/journaltables.h"

#include <QDateTime>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <unistd.h>

namespace journaltables {

namespace {

using Verdict = WatchJournal::Verdict;
using Task = WatchJournal::Task;

// "ZUCM" in the file's header: another program's database has something else there.
const char* const ApplicationId = "1515537229";

const char* const First[] = {
    "PRAGMA application_id=1515537229",
    "CREATE TABLE recordings (\n"
    "    file TEXT PRIMARY KEY,      -- absolute path of the recording's first file\n"
    "    fingerprint TEXT NOT NULL,  -- of names, sizes and times of its files\n"
    "    state TEXT NOT NULL,        -- begun, failed, killed, withdrawn, converted, given up\n"
    "    record TEXT NOT NULL,       -- name of the record of a converted one\n"
    "    access TEXT NOT NULL,       -- permissions with which the state holds; empty: with any\n"
    "    unended INTEGER NOT NULL,   -- how often the program came to no end of it\n"
    "    failures INTEGER NOT NULL,  -- how often it failed\n"
    "    kills INTEGER NOT NULL,     -- how often its own process was ended from outside\n"
    "    noted TEXT NOT NULL         -- when, in UTC\n"
    ") WITHOUT ROWID",
    "CREATE TABLE holder (process INTEGER, host TEXT, since TEXT) -- who works with it, or was the last"};

// What came with version 2.
const char* const Second[] = {
    "PRAGMA user_version=2",
    "CREATE TABLE commands (\n"
    "    number INTEGER PRIMARY KEY, -- in the order of the records\n"
    "    file TEXT NOT NULL,         -- first file of the recording whose record the command is for\n"
    "    state TEXT NOT NULL,        -- waiting, given up\n"
    "    input TEXT NOT NULL,        -- what the command gets, as JSON\n"
    "    failures INTEGER NOT NULL,  -- how often it failed\n"
    "    noted TEXT NOT NULL         -- when, in UTC\n"
    ")"};

// In the order of the verdicts.
const std::array<const char*, 8> states = {"unknown",   "begun",     "failed",   "killed",
                                           "withdrawn", "converted", "put away", "given up"};

const char* const Waiting = "waiting";
const char* const GivenUp = "given up";

Verdict VerdictOf(const QString& state)
{
    const auto found = std::find(states.begin(), states.end(), state);
    return found == states.end() ? Verdict::Unknown : static_cast<Verdict>(found - states.begin());
}

int Count(const sql::Row& row, int column)
{
    return static_cast<int>(row.Integer(column));
}

QString Value(sql::Database& database, const char* command)
{
    QString value;
    database.Run(command, {}, [&value](const sql::Row& row) { value = row.Text(0); });
    return value;
}

void Write(sql::Database& database, qint64 number, const Task& task)
{
    if (task.state == Task::State::Done)
        database.Run("DELETE FROM commands WHERE number = ?", {number});
    else
        database.Run("REPLACE INTO commands VALUES (?, ?, ?, ?, ?, ?)",
                     {number, task.file,
                      QString::fromLatin1(task.state == Task::State::GivenUp ? GivenUp : Waiting), task.input,
                      qint64{task.failures}, task.noted});
}

} // namespace

void Create(sql::Database& database)
{
    for (const char* command : First)
        database.Run(command);
    Migrate(database, 1);
}

int VersionOf(sql::Database& database)
{
    if (Value(database, "PRAGMA application_id") != QLatin1String(ApplicationId))
        return 0;
    return Value(database, "PRAGMA user_version").toInt();
}

void Migrate(sql::Database& database, int version)
{
    if (version >= Version)
        return;
    for (const char* command : Second)
        database.Run(command);
}

void WriteHolder(sql::Database& database)
{
    database.Run("DELETE FROM holder"); // a full disk shows at once
    database.Run("INSERT INTO holder VALUES (?, ?, ?)",
                 {qint64{getpid()}, QSysInfo::machineHostName(), Now()});
}

void Read(sql::Database& database, WatchJournal::Entries& entries, WatchJournal::Tasks& tasks)
{
    database.Run("SELECT * FROM recordings", {}, [&entries](const sql::Row& row) {
        entries[row.Text(0)] = {
            row.Text(1).toLatin1(), VerdictOf(row.Text(2)), row.Text(3),  row.Text(4), row.Text(8),
            Count(row, 5),          Count(row, 6),          Count(row, 7)};
    });
    database.Run("SELECT * FROM commands", {}, [&tasks](const sql::Row& row) {
        const bool isGivenUp = row.Text(2) == QLatin1String(GivenUp);
        tasks[row.Integer(0)] = {row.Text(1), row.Text(3), row.Text(5), Count(row, 4),
                                 isGivenUp ? Task::State::GivenUp : Task::State::Waiting};
    });
}

void Write(sql::Database& database, const WatchJournal::Entries& entries, const WatchJournal::Tasks& tasks)
{
    for (auto one = entries.begin(); one != entries.end(); ++one) {
        if (one->verdict == Verdict::PutAway)
            database.Run("DELETE FROM recordings WHERE file = ?", {one.key()});
        else
            database.Run("REPLACE INTO recordings VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                         {one.key(), QString::fromLatin1(one->print),
                          QString::fromLatin1(states.at(static_cast<size_t>(one->verdict))), one->record,
                          one->access, qint64{one->unended}, qint64{one->failures}, qint64{one->kills},
                          one->noted});
    }
    for (auto one = tasks.begin(); one != tasks.end(); ++one)
        Write(database, one.key(), *one);
}

QString Now()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

} // namespace journaltables
