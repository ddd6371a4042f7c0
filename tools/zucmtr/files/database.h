// An SQLite database in a file, with failures in the user's language.
#pragma once

#include "text/error.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

struct sqlite3;

class Database
{
public:
    /// The message is only the reason, without the name of the file.
    class Failure : public text::Error
    {
    public:
        Failure(const QString& reason, bool isDamaged_) : text::Error(reason), isDamaged(isDamaged_) {}
        const bool isDamaged; // it is no database, or something in it is missing
    };

    /// Opens a file that is there; an empty one is an empty database. Most failures show at the first
    /// command. Throws Failure, as all below.
    explicit Database(const QString& path_);

    /// Runs one command with its values and gives the columns of each row of its result. Waits some seconds
    /// while another program keeps it from that.
    using Row = std::function<void(const QStringList& columns)>;
    void Run(const char* command, const QStringList& values = {}, const Row& row = {});

    /// What the work runs is on the disk when this returns; nothing of it is done if this throws.
    void Together(const std::function<void()>& work);

private:
    [[noreturn]] void Fail(int code) const;

    const QString path;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle;
};
