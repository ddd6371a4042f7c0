#include "zucmtr/files/database.h"

#include "explain/system.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <cerrno>
#include <new>
#include <unistd.h>

namespace {

constexpr int Patience = 2000; // ms

// The system's error that made the library fail; 0 if there was none.
int ErrorOf(sqlite3* handle, int code, const QString& path)
{
    switch (code & 0xff) {
    case SQLITE_FULL:
        return ENOSPC;
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN: // SQLite has tried to open it for reading since, so errno may be that of the second
                          // try
        if (access(QFile::encodeName(QFileInfo(path).path()).constData(), W_OK) != 0)
            return errno;
        return (code & 0xff) == SQLITE_CANTOPEN ? sqlite3_system_errno(handle) : EACCES;
    case SQLITE_IOERR:
        return sqlite3_system_errno(handle) != 0 ? sqlite3_system_errno(handle) : EIO;
    default:
        return 0;
    }
}

} // namespace

Database::Database(const QString& path_)
    : path(QFileInfo(path_).absoluteFilePath()), handle(nullptr, sqlite3_close)
{
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(QFile::encodeName(path).constData(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    handle.reset(opened);
    if (code != SQLITE_OK)
        Fail(code);
    sqlite3_busy_timeout(opened, Patience);
}

void Database::Run(const char* command, const QStringList& values, const Row& row)
{
    sqlite3_stmt* prepared = nullptr;
    int code = sqlite3_prepare_v2(handle.get(), command, -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
    if (code != SQLITE_OK)
        Fail(code);
    for (int i = 0; i < values.size(); ++i) {
        const QByteArray text = values[i].toUtf8();
        sqlite3_bind_text(prepared, i + 1, text.constData(), text.size(), SQLITE_TRANSIENT);
    }
    while ((code = sqlite3_step(prepared)) == SQLITE_ROW) {
        QStringList columns;
        for (int i = 0; i < sqlite3_column_count(prepared); ++i)
            columns << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(prepared, i)));
        if (row)
            row(columns);
    }
    if (code != SQLITE_DONE)
        Fail(code);
}

void Database::Together(const std::function<void()>& work)
{
    Run("BEGIN IMMEDIATE");
    try {
        work();
        Run("COMMIT");
    } catch (...) {
        sqlite3_exec(handle.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void Database::Fail(int code) const
{
    switch (code & 0xff) {
    case SQLITE_NOMEM:
        throw std::bad_alloc();
    case SQLITE_BUSY:
        throw Failure(Tr("system", "another program is at work with it"), false);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR: // it has no such table
        throw Failure(QString::fromUtf8(sqlite3_errmsg(handle.get())), true);
    default:
        break;
    }
    const int error = ErrorOf(handle.get(), code, path);
    throw Failure(error != 0 ? explain::SystemText(error) : QString::fromUtf8(sqlite3_errstr(code)), false);
}
