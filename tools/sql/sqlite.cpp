#include "sql/sqlite.h"

#include "explain/filesystem.h"
#include "explain/system.h"
#include "sql/permission.h"
#include "text/numbers.h"
#include "text/texts.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <sqlite3.h>

#include <cerrno>
#include <new>
#include <unistd.h>

namespace sql {

namespace {

constexpr int BetweenTries = 10; // ms

class SqliteRow : public Row
{
public:
    explicit SqliteRow(sqlite3_stmt* statement_) : statement(statement_) {}
    int Columns() const override { return sqlite3_column_count(statement); }
    QString NameOf(int column) const override
    {
        return QString::fromUtf8(sqlite3_column_name(statement, column));
    }
    bool IsNull(int column) const override { return sqlite3_column_type(statement, column) == SQLITE_NULL; }
    qint64 Integer(int column) const override { return sqlite3_column_int64(statement, column); }
    double Real(int column) const override { return sqlite3_column_double(statement, column); }
    QString Text(int column) const override
    {
        if (sqlite3_column_type(statement, column) == SQLITE_FLOAT) // all its digits
            return text::ShortestNumber(Real(column));
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
    }
    QByteArray Bytes(int column) const override
    {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
        return {bytes, sqlite3_column_bytes(statement, column)};
    }
    Value Of(int column) const override
    {
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
            return Integer(column);
        case SQLITE_FLOAT:
            return Real(column);
        case SQLITE_TEXT:
            return Text(column);
        case SQLITE_BLOB:
            return Bytes(column);
        default:
            return {};
        }
    }

private:
    sqlite3_stmt* const statement;
};

// The system's error that made the library fail; 0 if there was none.
int ErrorOf(sqlite3* handle, int code, const QString& path, Sqlite::Access access)
{
    switch (code & 0xff) {
    case SQLITE_FULL:
        return ENOSPC;
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN: // SQLite has tried to open it for reading since, so errno may be that of the second
                          // try
        if (access != Sqlite::Access::Create && ::access(QFile::encodeName(path).constData(), F_OK) != 0)
            return errno;
        if (::access(QFile::encodeName(QFileInfo(path).path()).constData(), W_OK) != 0)
            return errno;
        return (code & 0xff) == SQLITE_CANTOPEN ? sqlite3_system_errno(handle) : EACCES;
    case SQLITE_IOERR:
        return sqlite3_system_errno(handle) != 0 ? sqlite3_system_errno(handle) : EIO;
    default:
        return 0;
    }
}

int FlagsOf(Sqlite::Access access)
{
    switch (access) {
    case Sqlite::Access::Create:
        return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case Sqlite::Access::ReadOnly:
        return SQLITE_OPEN_READONLY;
    case Sqlite::Access::Existing:
        break;
    }
    return SQLITE_OPEN_READWRITE;
}

// Whether a first look at it succeeds; another failure than that nothing can be written shows again.
bool CanBeRead(sqlite3* handle)
{
    const int code = sqlite3_exec(handle, "PRAGMA schema_version", nullptr, nullptr, nullptr) & 0xff;
    return code != SQLITE_CANTOPEN && code != SQLITE_READONLY;
}

// Copied, since a value may be gone when the command runs.
struct Binder
{
    sqlite3_stmt* statement;
    int place; // from 1

    void operator()(std::monostate) const { sqlite3_bind_null(statement, place); }
    void operator()(qint64 value) const { sqlite3_bind_int64(statement, place, value); }
    void operator()(double value) const { sqlite3_bind_double(statement, place, value); }
    void operator()(const QString& value) const
    {
        QByteArray text = value.toUtf8();
        text.replace('\0', QByteArray()); // PostgreSQL has no such texts
        sqlite3_bind_text(statement, place, text.constData(), text.size(), SQLITE_TRANSIENT);
    }
    void operator()(const QByteArray& value) const
    {
        if (value.isEmpty()) // without an address it would be NULL
            sqlite3_bind_zeroblob(statement, place, 0);
        else
            sqlite3_bind_blob(statement, place, value.constData(), value.size(), SQLITE_TRANSIENT);
    }
};

} // namespace

Sqlite::Sqlite(const QString& path_, Access access_)
    : path(QFileInfo(path_).absoluteFilePath()), access(access_), handle(nullptr, sqlite3_close)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) // a pipe would wait for somebody who writes
        throw Failure(Tr("sql", "it is no regular file"), Trouble::Other);
    Open(QFile::encodeName(path), FlagsOf(access));
    if (access == Access::ReadOnly && !CanBeRead(handle.get()))
        OpenUnchanging();
}

void Sqlite::Open(const QByteArray& name, int flags)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &opened, flags, nullptr);
    handle.reset(opened);
    if (code != SQLITE_OK)
        Fail(code);
    SetPatience(patience);
}

// A database with a write-ahead log needs files beside it even for reading. Where none can be made, nobody
// else can write either, or is not writing now: what is in the log's place shows that.
void Sqlite::OpenUnchanging()
{
    if (QFileInfo(path + QStringLiteral("-wal")).size() > 0)
        throw Failure(
            Tr("sql",
               "part of it is in '%1-wal', which can only be read where files can be written: copy both, or "
               "ask somebody who may write there to open it once")
                .arg(QFileInfo(path).fileName()),
            Trouble::Other);
    const QByteArray name = "file:" + QFile::encodeName(path).toPercentEncoding("/") + "?immutable=1";
    Open(name, FlagsOf(access) | SQLITE_OPEN_URI);
}

Sqlite::~Sqlite()
{
    for (sqlite3_stmt* statement : qAsConst(statements))
        sqlite3_finalize(statement);
}

// The log's index is memory that all programs share, on one machine. Exchanging the journal while others have
// the file open fails at once, whatever the patience, so a log that is in use stays one.
void Sqlite::ChooseJournal(bool isNew)
{
    const bool isLocal = explain::IsLocal(path);
    if (isLocal && !isNew)
        return;
    QElapsedTimer timer;
    timer.start();
    while (true) {
        try {
            Run(isLocal ? QStringLiteral("PRAGMA journal_mode=WAL")
                        : QStringLiteral("PRAGMA journal_mode=DELETE"));
            return;
        } catch (const Failure& failure) {
            if (failure.trouble != Trouble::Busy || timer.elapsed() > patience)
                throw;
        }
        QThread::msleep(BetweenTries);
    }
}

void Sqlite::SetPatience(int milliseconds)
{
    patience = milliseconds;
    sqlite3_busy_timeout(handle.get(), patience);
}

sqlite3_stmt* Sqlite::Prepared(const QString& command)
{
    sqlite3_stmt*& statement = statements[command];
    if (statement == nullptr) {
        const int code =
            sqlite3_prepare_v2(handle.get(), command.toUtf8().constData(), -1, &statement, nullptr);
        if (code != SQLITE_OK) {
            statements.remove(command);
            Fail(code);
        }
    }
    return statement;
}

void Sqlite::Run(const QString& command, const Values& values, const RowFunction& row)
{
    sqlite3_stmt* statement = Prepared(command);
    // However it ends, the next one begins anew. A command within `row` must be another one.
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> ended(statement, sqlite3_reset);
    sqlite3_clear_bindings(statement);
    int place = 0;
    for (const Value& value : values)
        std::visit(Binder{statement, ++place}, value);
    const SqliteRow here(statement);
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        if (row)
            row(here);
    }
    if (code != SQLITE_DONE)
        Fail(code);
}

void Sqlite::RunScript(const QString& commands)
{
    const int code = sqlite3_exec(handle.get(), commands.toUtf8().constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        Fail(code);
}

void Sqlite::Undo() noexcept
{
    sqlite3_exec(handle.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Sqlite::Fail(int code) const
{
    switch (code & 0xff) {
    case SQLITE_NOMEM:
        throw std::bad_alloc();
    case SQLITE_BUSY:
    case SQLITE_PROTOCOL: // many open the log at once
        throw Failure(Tr("system", "another program is at work with it"), Trouble::Busy);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR: // it has no such table
        throw Failure(QString::fromUtf8(sqlite3_errmsg(handle.get())), Trouble::Damaged);
    case SQLITE_CONSTRAINT:
        throw Failure(QString::fromUtf8(sqlite3_errmsg(handle.get())), Trouble::Other);
    default:
        break;
    }
    const int error = ErrorOf(handle.get(), code, path, access);
    const QString permission =
        error == EACCES ? MissingPermission(path, access != Access::ReadOnly) : QString();
    throw Failure(!permission.isEmpty() ? permission
                  : error != 0          ? explain::SystemText(error)
                                        : QString::fromUtf8(sqlite3_errstr(code)),
                  error == ENOSPC || error == EDQUOT ? Trouble::NoRoom
                  : error == EIO || error == ESTALE  ? Trouble::Gone
                                                     : Trouble::Other);
}

} // namespace sql
