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

    /// Opens a file; an empty one is an empty database. Most failures show at the first command. One that is
    /// only to be read may be where nothing can be written, and of another user. Throws Failure.
    explicit Sqlite(const QString& path_, Access access = Access::Existing);
    ~Sqlite() override;
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;

    using Database::Run;
    void Run(const QString& command, const Values& values, const RowFunction& row) override;
    void RunScript(const QString& commands) override;
    Dialect Kind() const override { return Dialect::Sqlite; }

    void SetPatience(int milliseconds) override;

    void ChooseJournal(bool isNew) override;

protected:
    const char* Begin() const override { return "BEGIN IMMEDIATE"; }
    void Undo() noexcept override;

private:
    void Open(const QByteArray& name, int flags);
    void OpenUnchanging();
    sqlite3_stmt* Prepared(const QString& command);
    [[noreturn]] void Fail(int code) const;

    const QString path;
    const Access access;
    int patience = UsualPatience;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle;
    QHash<QString, sqlite3_stmt*> statements; // that were run, for the next time
};

} // namespace sql
