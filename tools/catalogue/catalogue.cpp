#include "catalogue/catalogue.h"

#include "catalogue/columns.h"
#include "catalogue/schema.h"
#include "sql/address.h"
#include "text/texts.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <set>

namespace catalogue {

namespace {

void Append(sql::Values& values, const sql::Values& more)
{
    values.insert(values.end(), more.begin(), more.end());
}

QString Now()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

// Paths from the catalogue's directory on are stored without it, so that both may be moved together.
QDir RootOf(const QString& address)
{
    return QFileInfo(address).absoluteDir();
}

} // namespace

Catalogue::Catalogue(const QString& address_, bool isReadOnly) : address(address_)
{
    if (!sql::IsServer(address)) {
        root = RootOf(address);
        hasRoot = true;
    }
    Guard([&] {
        database = sql::Open(address, isReadOnly);
        if (isReadOnly)
            CheckVersion(*database);
        else
            Prepare(*database);
        details = std::make_unique<Details>(*database);
    });
}

Catalogue::Catalogue(const QString& address_) : Catalogue(address_, false) {}

// What the database knows of its tables helps it to choose indexes; it looks only at what has grown a lot.
// Others that are at work need not wait for that.
Catalogue::~Catalogue()
{
    if (!isWritten || database->Kind() != sql::Dialect::Sqlite)
        return; // a server does it itself
    try {
        database->SetPatience(0);
        database->RunScript(QStringLiteral("PRAGMA analysis_limit=1000; PRAGMA optimize"));
    } catch (const std::exception&) {
        return; // the next one does it
    }
}

std::unique_ptr<Catalogue> Catalogue::ForReading(const QString& address)
{
    return std::unique_ptr<Catalogue>(new Catalogue(address, true));
}

void Catalogue::Guard(const std::function<void()>& work) const
{
    QString reason;
    try {
        work();
        return;
    } catch (const sql::Failure& failure) {
        reason =
            failure.trouble == sql::Trouble::Damaged
                ? Tr("catalogue",
                     "it is damaged (%1); put a copy in its place, or move it away: 'zucmtr archive update' "
                     "makes a new one")
                      .arg(failure.Message())
                : failure.Message();
    } catch (const text::Error& error) {
        reason = error.Message();
    }
    throw text::Error(Tr("catalogue", "the catalogue '%1': %2").arg(sql::Shown(address), reason));
}

QString Catalogue::Stored(const QString& path) const
{
    if (!hasRoot)
        return path;
    const QString relative = root.relativeFilePath(path);
    return relative.startsWith(QLatin1String("../")) || relative == QLatin1String("..") ? path : relative;
}

QString Catalogue::Absolute(const QString& stored) const
{
    return hasRoot ? QDir::cleanPath(root.absoluteFilePath(stored)) : stored;
}

void Catalogue::AddKnown(QHash<QString, Known>& known, const QString& condition, const sql::Values& values)
{
    database->Run(
        QStringLiteral(
            "SELECT e.path, e.id, e.print, e.reason, e.error, p.name, p.bytes, p.modified FROM entries e "
            "JOIN pieces p ON p.entry = e.id WHERE e.gone IS NULL AND %1 "
            "ORDER BY e.id, p.name")
            .arg(condition),
        values, [&](const sql::Row& row) {
            Known& one = known[Absolute(row.Text(0))];
            one.id = row.Integer(1);
            one.print = row.Text(2).toLatin1();
            one.isRead = row.IsNull(3);
            one.isPlain = one.isRead && !row.IsNull(4);
            one.pieces.push_back({row.Text(5), row.Integer(6), row.Integer(7)});
        });
}

// Those of the catalogue's own directory have no "/" at the start. "0" comes after "/": no name is between
// them.
QHash<QString, Known> Catalogue::KnownBelow(const QString& directory)
{
    QHash<QString, Known> known;
    const QString below = Stored(directory);
    const bool isRoot = below.isEmpty() || below == QLatin1String(".");
    const QString rootPath = root.absolutePath() + QLatin1Char('/');
    Guard([&] {
        if (!isRoot) {
            const QString begin = below.endsWith(QLatin1Char('/')) ? below : below + QLatin1Char('/');
            AddKnown(known, QStringLiteral("e.path >= ? AND e.path < ?"),
                     {begin, begin.chopped(1) + QLatin1Char('0')});
        }
        if (hasRoot && (isRoot || rootPath.startsWith(QDir(directory).absolutePath() + QLatin1Char('/')) ||
                        directory == QLatin1String("/")))
            AddKnown(known, QStringLiteral("(e.path < '/' OR e.path >= '0')"), {});
    });
    return known;
}

QHash<QString, Known> Catalogue::KnownAt(const QStringList& paths)
{
    QHash<QString, Known> known;
    Guard([&] {
        for (const QString& path : paths)
            AddKnown(known, QStringLiteral("e.path = ?"), {Stored(path)});
    });
    return known;
}

void Catalogue::Write(const std::function<void()>& work)
{
    Guard([&] {
        database->Together([&] {
            details->Begin();
            CheckVersion(*database); // a newer program may have come
            work();
        });
        details->Keep();
        isWritten = true;
    });
}

void Catalogue::Put(const std::vector<Entry>& entries)
{
    // In one order, so that of several that put the same none waits for one that waits for it.
    std::vector<const Entry*> sorted;
    sorted.reserve(entries.size());
    for (const Entry& entry : entries)
        sorted.push_back(&entry);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Entry* a, const Entry* b) { return a->path < b->path; });
    Write([&] {
        details->PutChannels(sorted);
        for (const Entry* entry : sorted)
            PutOne(*entry);
    });
}

// What is known at this path stays if it is of another recording, marked as gone; so does what is known of
// one that cannot be read any more. Of one that could not be read nothing is known.
void Catalogue::PutOne(const Entry& entry)
{
    const QString stored = Stored(entry.path);
    std::optional<qint64> there = AtPath(stored);
    const std::optional<qint64> back = GoneWith(entry, stored);
    if (there && !IsOfSame(*there, entry)) {
        database->Run(QStringLiteral("UPDATE entries SET gone = ? WHERE id = ?"), {Now(), *there});
        there.reset();
    } else if (there && back && IsUnread(*there)) { // its files were incomplete for a while
        Remove(*there);
        there.reset();
    }
    if (!there)
        there = back;
    while (!there) {
        const std::optional<qint64> made = Insert(entry, stored);
        if (made) {
            details->Put(*made, entry, true);
            return;
        }
        there = AtPath(stored); // somebody else has just put it, or put it and marked it as gone
    }
    Update(*there, entry, stored);
    details->Put(*there, entry, false);
}

// What is read to be changed stays as it is meanwhile.
QString Catalogue::Locking() const
{
    return QLatin1String(database->Kind() == sql::Dialect::Postgres ? " FOR UPDATE" : "");
}

std::optional<qint64> Catalogue::AtPath(const QString& stored)
{
    return database->Number(
        QStringLiteral("SELECT id FROM entries WHERE path = ? AND gone IS NULL") + Locking(), {stored});
}

// One that is gone and has the same contents: they have come back.
std::optional<qint64> Catalogue::GoneWith(const Entry& entry, const QString& stored)
{
    return database->Number(
        QStringLiteral("SELECT id FROM entries WHERE print = ? AND gone IS NOT NULL AND reason IS NULL "
                       "ORDER BY CASE WHEN path = ? THEN 0 ELSE 1 END, id LIMIT 1") +
            Locking(),
        {QString::fromLatin1(PrintOf(entry.pieces)), stored});
}

bool Catalogue::IsUnread(qint64 id)
{
    return database
        ->Number(QStringLiteral("SELECT id FROM entries WHERE id = ? AND reason IS NOT NULL"), {id})
        .has_value();
}

// A recording that grows by a continuation, a record that is written again: the same recorder was started at
// the same time.
bool Catalogue::IsOfSame(qint64 id, const Entry& entry)
{
    bool isSame = false;
    database->Run(
        QStringLiteral("SELECT print, reason, kind, station, recorder, moment FROM entries WHERE id = ?"),
        {id}, [&](const sql::Row& row) {
            const bool isSameStart = entry.reason.isEmpty() &&
                                     row.Text(2) == QLatin1String(NameOf(entry.kind)) &&
                                     row.Text(3) == entry.station && row.Text(4) == entry.recorder &&
                                     row.Integer(5) == entry.moment;
            isSame = row.Text(0).toLatin1() == PrintOf(entry.pieces) || !row.IsNull(1) || isSameStart;
        });
    return isSame;
}

void Catalogue::Remove(qint64 id)
{
    details->RemoveWords(id);
    database->Run(QStringLiteral("DELETE FROM entries WHERE id = ?"), {id});
}

// Nothing if the path is taken, which the database finds out for programs that do this at the same time.
std::optional<qint64> Catalogue::Insert(const Entry& entry, const QString& stored)
{
    static const QString command =
        QStringLiteral("INSERT INTO entries (path, noted, looked, %1) VALUES (?, ?, ?, %2) "
                       "ON CONFLICT (path) WHERE gone IS NULL DO NOTHING RETURNING id")
            .arg(EntryColumns().join(QLatin1String(", ")), PlaceHolders(EntryColumns().size()));
    sql::Values values = {stored, Now(), Now()};
    Append(values, ValuesOf(entry));
    return database->Number(command, values);
}

// What was verified is the record with the earlier contents.
void Catalogue::Update(qint64 id, const Entry& entry, const QString& stored)
{
    static const QString command =
        QStringLiteral("UPDATE entries SET verified = CASE WHEN print = ? THEN verified END, "
                       "verified_time = CASE WHEN print = ? THEN verified_time END, "
                       "recording = CASE WHEN print = ? THEN recording END, "
                       "path = ?, looked = ?, gone = NULL, %1 = ? WHERE id = ?")
            .arg(EntryColumns().join(QLatin1String(" = ?, ")));
    const QString print = QString::fromLatin1(PrintOf(entry.pieces));
    sql::Values values = {print, print, print, stored, Now()};
    Append(values, ValuesOf(entry));
    values.push_back(id);
    database->Run(command, values);
}

bool Catalogue::Move(const QString& path, const std::vector<Piece>& pieces)
{
    bool isMoved = false;
    const QString print = QString::fromLatin1(PrintOf(pieces));
    const QString stored = Stored(path);
    const auto findGone = [&] {
        std::optional<qint64> gone;
        bool isKnown = false; // at this place
        database->Run(
            QStringLiteral(
                "SELECT id, path, gone FROM entries WHERE print = ? AND reason IS NULL ORDER BY id"),
            {print}, [&](const sql::Row& row) {
                isKnown = isKnown || (row.IsNull(2) && row.Text(1) == stored);
                if (!gone && (!row.IsNull(2) || !QFile::exists(Absolute(row.Text(1)))))
                    gone = row.Integer(0);
            });
        return isKnown ? std::nullopt : gone;
    };
    bool isLikely = false; // others may write meanwhile
    Guard([&] { isLikely = findGone().has_value(); });
    if (!isLikely)
        return false;
    Write([&] {
        isMoved = false;
        const std::optional<qint64> gone = findGone();
        if (!gone)
            return;
        database->Run(QStringLiteral("UPDATE entries SET gone = ? WHERE path = ? AND gone IS NULL"),
                      {Now(), stored});
        database->Run(QStringLiteral("UPDATE entries SET path = ?, gone = NULL WHERE id = ?"),
                      {stored, *gone});
        details->PutPieces(*gone, pieces);
        isMoved = true;
    });
    return isMoved;
}

void Catalogue::NoteRight(const QString& record, const QString& recording)
{
    Write([&] {
        database->Run(
            QStringLiteral("UPDATE entries SET verified = 'right', verified_time = ?, recording = "
                           "(SELECT r.id FROM entries r WHERE r.path = ? AND r.gone IS NULL AND r.kind = "
                           "'recording') WHERE path = ? AND gone IS NULL AND kind = 'record'"),
            {Now(), Stored(recording), Stored(record)});
    });
}

qint64 Catalogue::MarkGone(const QStringList& paths)
{
    qint64 marked = 0;
    QStringList sorted = paths;
    sorted.sort(); // as Put does
    Write([&] {
        marked = 0;
        for (const QString& path : qAsConst(sorted)) {
            if (QFile::exists(path))
                continue;
            database->Run(
                QStringLiteral("UPDATE entries SET gone = ? WHERE path = ? AND gone IS NULL RETURNING id"),
                {Now(), Stored(path)}, [&marked](const sql::Row&) { ++marked; });
        }
    });
    return marked;
}

} // namespace catalogue
