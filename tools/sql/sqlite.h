// An SQLite database in a file.
#pragma once

#include "sql/database.h"

#include <QHash>

struct sqlite3;
struct sqlite3_stmt;

namespace sql {

class Sqlite : public Database
{
public:
    enum class Access { Existing, Create, ReadOnly };

    /// Opens a file; an empty one is an empty database. Most failures show at the first command. Throws
    /// Failure.
    explicit Sqlite(const QString& path_, Access access = Access::Existing);
    ~Sqlite() override;
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;

    using Database::Run;
    void Run(const QString& command, const Values& values, const RowFunction& row) override;
    void RunScript(const QString& commands) override;
    Dialect Kind() const override { return Dialect::Sqlite; }

    /// How long to wait for others.
    void SetPatience(int milliseconds);

protected:
    const char* Begin() const override { return "BEGIN IMMEDIATE"; }
    void Undo() noexcept override;

private:
    sqlite3_stmt* Prepared(const QString& command);
    [[noreturn]] void Fail(int code) const;

    const QString path;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle;
    QHash<QString, sqlite3_stmt*> statements; // that were run, for the next time
};

} // namespace sql
