// The catalogue of an archive: a database with an entry for every recording and record.
#pragma once

#include "catalogue/details.h"
#include "catalogue/entry.h"
#include "sql/database.h"

#include <QDir>
#include <QHash>

#include <functional>
#include <memory>

namespace catalogue {

/// An entry as far as its files go.
struct Known
{
    qint64 id = 0;
    QByteArray print;
    std::vector<Piece> pieces; ///< by name, without their contents' hashes
    bool isRead = false;       ///< it could be read
    bool isPlain = false;      ///< but without its ini file, which was of no use
};

/// For one thread. Several catalogues may have the same database open, in other processes too.
class Catalogue
{
public:
    /// Opens it, makes it if it is not there, and brings it to this program's version. `address` is a path or
    /// that of a PostgreSQL database. Throws text::Error with a message that names it, as all below.
    explicit Catalogue(const QString& address);
    ~Catalogue();
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    /// Opens one that is there and changes nothing in it.
    static std::unique_ptr<Catalogue> ForReading(const QString& address);

    /// The entries that are not marked as gone, of the directory and of those below it; by absolute path.
    QHash<QString, Known> KnownBelow(const QString& directory);

    /// Those of them that have one of these paths.
    QHash<QString, Known> KnownAt(const QStringList& paths);

    /// Writes the entries, all of them or none: a new one, a new state of the one with this path if that is
    /// of the same recording, or one that was gone and has come back. Another recording's is marked as gone.
    /// Nothing is written twice, whoever else is writing.
    void Put(const std::vector<Entry>& entries);

    /// Whether files with this content are known at a place where they are not any more, so that they have
    /// moved here: then the entry gets its new path and pieces, and true is returned.
    bool Move(const QString& path, const std::vector<Piece>& pieces);

    /// Notes that the record at the absolute path was compared with the recording at the other, and is right;
    /// with its entry if there is one. Nothing is done if the record has no entry.
    void NoteRight(const QString& record, const QString& recording);

    /// Marks the entries with these absolute paths as gone, unless the files are there after all. Returns how
    /// many were marked.
    qint64 MarkGone(const QStringList& paths);

    /// The path as it is stored, and the absolute one again.
    QString Stored(const QString& path) const;
    QString Absolute(const QString& stored) const;

    /// Runs it; the message of what it throws then names the catalogue.
    void Guard(const std::function<void()>& work) const;

    sql::Database& Database() { return *database; }
    const QString& Address() const { return address; }

private:
    Catalogue(const QString& address_, bool isReadOnly);
    void Write(const std::function<void()>& work);
    void AddKnown(QHash<QString, Known>& known, const QString& condition, const sql::Values& values);
    QString Locking() const;
    std::optional<qint64> AtPath(const QString& stored);
    std::optional<qint64> GoneWith(const Entry& entry, const QString& stored);
    bool IsUnread(qint64 id);
    bool IsOfSame(qint64 id, const Entry& entry);
    void PutOne(const Entry& entry);
    std::optional<qint64> Insert(const Entry& entry, const QString& stored);
    void Update(qint64 id, const Entry& entry, const QString& stored);
    void Remove(qint64 id);

    const QString address;
    QDir root; // of relative paths
    bool hasRoot = false;
    bool isWritten = false;
    std::unique_ptr<sql::Database> database;
    std::unique_ptr<Details> details;
};

} // namespace catalogue
