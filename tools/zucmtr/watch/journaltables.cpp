#include "zucmtr/watch/journaltables.h"

#include "catalogue/columns.h"

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

// A table, as it is named in the journal's own file. The first column is the key.
struct Table
{
    const char* name;
    QStringList columns;
};

const Table& Recordings()
{
    static const Table table = {
        "recordings",
        {"file", "fingerprint", "state", "record", "access", "unended", "failures", "kills", "noted"}};
    return table;
}

const Table& Commands()
{
    static const Table table = {"commands", {"number", "file", "state", "input", "failures", "noted"}};
    return table;
}

QString NameOf(const Home& home, const Table& table)
{
    return QLatin1String(home.journal == 0 ? "" : "journal_") + QLatin1String(table.name);
}

sql::Values Own(const Home& home, sql::Values values = {})
{
    if (home.journal != 0)
        values.insert(values.begin(), home.journal);
    return values;
}

void ReadRows(const Home& home, const Table& table, const sql::Database::RowFunction& row)
{
    home.database.Run(QStringLiteral("SELECT %1 FROM %2%3")
                          .arg(table.columns.join(QLatin1String(", ")), NameOf(home, table),
                               QLatin1String(home.journal == 0 ? "" : " WHERE journal = ?")),
                      Own(home), row);
}

// A new row, or other values in the one with this key. In the words of both databases.
void Put(const Home& home, const Table& table, const sql::Values& values)
{
    const QString prefix = QLatin1String(home.journal == 0 ? "" : "journal, ");
    QStringList changes;
    for (const QString& column : table.columns.mid(1))
        changes << QStringLiteral("%1 = excluded.%1").arg(column);
    const QString command =
        QStringLiteral("INSERT INTO %1 (%2%3) VALUES (%4) ON CONFLICT (%2%5) DO UPDATE SET %6")
            .arg(NameOf(home, table), prefix, table.columns.join(QLatin1String(", ")),
                 catalogue::PlaceHolders(static_cast<int>(Own(home, values).size())), table.columns.first(),
                 changes.join(QLatin1String(", ")));
    home.database.Run(command, Own(home, values));
}

void Remove(const Home& home, const Table& table, const sql::Value& key)
{
    home.database.Run(QStringLiteral("DELETE FROM %1 WHERE %2%3 = ?")
                          .arg(NameOf(home, table),
                               QLatin1String(home.journal == 0 ? "" : "journal = ? AND "),
                               table.columns.first()),
                      Own(home, {key}));
}

void WriteEntry(const Home& home, const QString& file, const WatchJournal::Entry& entry)
{
    if (entry.verdict == Verdict::PutAway)
        Remove(home, Recordings(), file);
    else
        Put(home, Recordings(),
            {file, QString::fromLatin1(entry.print),
             QString::fromLatin1(states.at(static_cast<size_t>(entry.verdict))), entry.record, entry.access,
             qint64{entry.unended}, qint64{entry.failures}, qint64{entry.kills}, entry.noted});
}

void WriteTask(const Home& home, qint64 number, const Task& task)
{
    if (task.state == Task::State::Done)
        Remove(home, Commands(), number);
    else
        Put(home, Commands(),
            {number, task.file, QString::fromLatin1(task.state == Task::State::GivenUp ? GivenUp : Waiting),
             task.input, qint64{task.failures}, task.noted});
}

// What leads from one to the other.
template <class Map, class Value>
Map Difference(const Map& from, const Map& to, const Value& over)
{
    Map difference;
    for (auto one = to.begin(); one != to.end(); ++one) {
        const auto before = from.find(one.key());
        if (before == from.end() || !(*before == *one))
            difference[one.key()] = *one;
    }
    for (auto one = from.begin(); one != from.end(); ++one) {
        if (!to.contains(one.key()))
            difference[one.key()] = over;
    }
    return difference;
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

void Read(const Home& home, WatchJournal::Contents& contents)
{
    ReadRows(home, Recordings(), [&contents](const sql::Row& row) {
        contents.entries[row.Text(0)] = {
            row.Text(1).toLatin1(), VerdictOf(row.Text(2)), row.Text(3),  row.Text(4), row.Text(8),
            Count(row, 5),          Count(row, 6),          Count(row, 7)};
    });
    ReadRows(home, Commands(), [&contents](const sql::Row& row) {
        const bool isGivenUp = row.Text(2) == QLatin1String(GivenUp);
        contents.tasks[row.Integer(0)] = {row.Text(1), row.Text(3), row.Text(5), Count(row, 4),
                                          isGivenUp ? Task::State::GivenUp : Task::State::Waiting};
    });
}

void Write(const Home& home, const WatchJournal::Contents& contents)
{
    for (auto one = contents.entries.begin(); one != contents.entries.end(); ++one)
        WriteEntry(home, one.key(), *one);
    for (auto one = contents.tasks.begin(); one != contents.tasks.end(); ++one)
        WriteTask(home, one.key(), *one);
}

void Replace(const Home& home, const WatchJournal::Contents& contents)
{
    WatchJournal::Contents there;
    Read(home, there);
    WatchJournal::Entry putAway;
    putAway.verdict = Verdict::PutAway;
    Task done;
    done.state = Task::State::Done;
    Write(home, {Difference(there.entries, contents.entries, putAway),
                 Difference(there.tasks, contents.tasks, done)});
}

QString Now()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

} // namespace journaltables
