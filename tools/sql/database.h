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
    Failure(const QString& reason, Trouble trouble_, const QString& state_ = QString())
        : text::Error(reason), trouble(trouble_), state(state_)
    {}
    const Trouble trouble;
    const QString state; ///< the server's SQLSTATE; empty: it has said none, or there is no server
};

/// What a column or a place holder has; the first alternative is NULL. A number that is not one (NaN) is
/// stored as NULL, and a text without its characters U+0000.
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

    /// Runs one command with a value for each "?" and gives each row of its result; `row` may run other
    /// commands, but not the same. Waits for others as long as SetPatience says. Throws Failure, as all
    /// below; what `row` throws ends the command.
    virtual void Run(const QString& command, const Values& values, const RowFunction& row) = 0;
    void Run(const QString& command, const Values& values = {}) { Run(command, values, {}); }

    /// Runs commands without values and results, separated by semicolons.
    virtual void RunScript(const QString& commands) = 0;

    /// What the work runs is on the disk when this returns; nothing of it is done if this throws, except that
    /// nobody knows if the server goes away at the very end (Gone). Others do not write meanwhile (SQLite),
    /// or only what does not get in its way (PostgreSQL). The work is called again, after all that it did was
    /// undone, if the server ended it for a conflict with others or went away: what it keeps outside the
    /// database must bear that.
    void Together(const std::function<void()>& work);

    /// How long to wait for others before failing as Busy; 2 s without a call of this.
    virtual void SetPatience(int milliseconds) = 0;

    /// In a file: a journal by which many can read while one writes, if no other machine can have the file
    /// open; else one that works on network file systems too. For a database that is new; in another, only
    /// the former is exchanged for the latter.
    virtual void ChooseJournal(bool isNew) { static_cast<void>(isNew); }

    virtual Dialect Kind() const = 0;

    /// The first column of the first row of the result; NULL if there is none.
    Value One(const QString& command, const Values& values = {});

protected:
    static constexpr int UsualPatience = 2000; ///< ms

    virtual const char* Begin() const = 0; ///< the command that begins a transaction which writes
    virtual void Undo() noexcept = 0;      ///< ends a transaction without a trace

    /// Whether work that has failed so, and of which nothing is left, may succeed if it is done again at
    /// once. May connect again.
    virtual bool MayRepeat(const Failure& failure);

    bool IsTogether() const { return isTogether; }

private:
    void TryTogether(const std::function<void()>& work);

    bool isTogether = false;
    bool isEnding = false; ///< the transaction's last command was sent
};

} // namespace sql
