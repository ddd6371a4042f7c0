// A database that understands SQL, whichever it is, with failures in the user's language.
//
//     const std::unique_ptr<sql::Database> database = sql::Open("archive.db"); // or postgresql://...
//     database->Together([&] {
//         database->Run("INSERT INTO lines (name, length) VALUES (?, ?)", {QStringLiteral("L1"), 60.5});
//     });
//     database->Run("SELECT name FROM lines", {}, [&](const sql::Row& row) { names << row.Text(0); });
#pragma once

#include "text/error.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace sql {

enum class Trouble {
    Other,
    Damaged, ///< it is no database, or something in it is missing
    Busy,    ///< others keep it from the work; the same may succeed later
    NoRoom,  ///< the disk is full
    Gone     ///< the server or the file system cannot be reached
};

/// The message is only the reason, without the name of the database.
class Failure : public text::Error
{
public:
    Failure(const QString& reason, Trouble trouble_) : text::Error(reason), trouble(trouble_) {}
    const Trouble trouble;
};

/// What a column or a place holder has; the first alternative is NULL.
using Value = std::variant<std::monostate, qint64, double, QString, QByteArray>;
using Values = std::vector<Value>;

template <class Number>
Value ValueOf(const std::optional<Number>& value)
{
    return value ? Value(*value) : Value();
}

/// A text, or NULL for an empty one.
Value TextOrNull(const QString& text);

/// A row of a result, as long as the function that gets it runs. Columns count from 0.
class Row
{
public:
    virtual ~Row() = default;
    virtual int Columns() const = 0;
    virtual QString NameOf(int column) const = 0;
    virtual bool IsNull(int column) const = 0;
    virtual qint64 Integer(int column) const = 0;
    virtual double Real(int column) const = 0;
    virtual QString Text(int column) const = 0; ///< numbers too; empty for NULL
    virtual QByteArray Bytes(int column) const = 0;
    virtual Value Of(int column) const = 0; ///< in the type that the database has for it
};

enum class Dialect { Sqlite, Postgres };

/// For the thread that opened it.
class Database
{
public:
    virtual ~Database() = default;

    using RowFunction = std::function<void(const Row& row)>;

    /// Runs one command with a value for each "?" and gives each row of its result. Waits some seconds while
    /// others keep it from that. Throws Failure, as all below; what `row` throws ends the command.
    virtual void Run(const QString& command, const Values& values, const RowFunction& row) = 0;
    void Run(const QString& command, const Values& values = {}) { Run(command, values, {}); }

    /// Runs commands without values and results, each ended by a semicolon.
    virtual void RunScript(const QString& commands) = 0;

    /// What the work runs is on the disk when this returns; nothing of it is done if this throws. Others do
    /// not write meanwhile (SQLite), or their conflicting work fails as Busy (PostgreSQL).
    void Together(const std::function<void()>& work);

    virtual Dialect Kind() const = 0;

    /// The first column of the first row of the result; NULL if there is none.
    Value One(const QString& command, const Values& values = {});

protected:
    virtual const char* Begin() const = 0; ///< the command that begins a transaction which writes
    virtual void Undo() noexcept = 0;      ///< ends a transaction without a trace
};

} // namespace sql
