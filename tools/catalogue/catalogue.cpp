#include "catalogue/catalogue.h"

#include "catalogue/columns.h"
#include "catalogue/schema.h"
#include "sql/address.h"
#include "text/texts.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace catalogue {

namespace {

QString Now()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

QString PlaceHolders(int count)
{
    return QStringList(QVector<QString>(count, QStringLiteral("?")).toList()).join(QLatin1String(", "));
}

// Paths from the catalogue's directory on are stored without it, so that both may be moved together.
QDir RootOf(const QString& address)
{
    return QFileInfo(address).absoluteDir();
}

// Everything at or below it, as a pattern of LIKE whose escape character is "!".
QString PatternBelow(QString stored)
{
    if (stored.isEmpty() || stored == QLatin1String("."))
        return QStringLiteral("%");
    for (const char* special : {"!", "%", "_"})
        stored.replace(QLatin1String(special), QLatin1Char('!') + QLatin1String(special));
    return (stored.endsWith(QLatin1Char('/')) ? stored : stored + QLatin1Char('/')) + QLatin1Char('%');
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
    });
}

Catalogue::Catalogue(const QString& address_) : Catalogue(address_, false) {}

std::unique_ptr<Catalogue> Catalogue::ForReading(const QString& address)
{
    return std::unique_ptr<Catalogue>(new Catalogue(address, true));
}

void Catalogue::Guard(const std::function<void()>& work) const
{
    try {
        work();
    } catch (const text::Error& error) {
        throw text::Error(
            Tr("catalogue", "the catalogue '%1': %2").arg(sql::Shown(address), error.Message()));
    }
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

void Catalogue::AddKnown(QHash<QString, Known>& known, const QString& condition, const QString& value)
{
    database->Run(
        QStringLiteral("SELECT e.path, e.id, e.print, e.reason, p.name, p.bytes, p.modified FROM entries e "
                       "JOIN pieces p ON p.entry = e.id WHERE e.gone IS NULL AND e.path %1 "
                       "ORDER BY e.id, p.name")
            .arg(condition),
        {value}, [&](const sql::Row& row) {
            Known& one = known[Absolute(row.Text(0))];
            one.id = row.Integer(1);
            one.print = row.Text(2).toLatin1();
            one.isRead = row.IsNull(3);
            one.pieces.push_back({row.Text(4), row.Integer(5), row.Integer(6)});
        });
}

QHash<QString, Known> Catalogue::KnownBelow(const QString& directory)
{
    QHash<QString, Known> known;
    Guard([&] { AddKnown(known, QStringLiteral("LIKE ? ESCAPE '!'"), PatternBelow(Stored(directory))); });
    return known;
}

QHash<QString, Known> Catalogue::KnownAt(const QStringList& paths)
{
    QHash<QString, Known> known;
    Guard([&] {
        for (const QString& path : paths)
            AddKnown(known, QStringLiteral("= ?"), Stored(path));
    });
    return known;
}

void Catalogue::Put(const std::vector<Entry>& entries)
{
    Guard([&] {
        database->Together([&] {
            for (const Entry& entry : entries)
                PutOne(entry);
        });
    });
}

void Catalogue::PutOne(const Entry& entry)
{
    const QString stored = Stored(entry.path);
    const sql::Value there =
        database->One(QStringLiteral("SELECT id FROM entries WHERE path = ? AND gone IS NULL"), {stored});
    const bool isNew = !std::holds_alternative<qint64>(there);
    const qint64 id = isNew ? Insert(entry, stored) : std::get<qint64>(there);
    if (!isNew)
        Update(id, entry, stored);
    PutDetails(id, entry, isNew);
}

qint64 Catalogue::Insert(const Entry& entry, const QString& stored)
{
    static const QString command =
        QStringLiteral("INSERT INTO entries (path, noted, looked, %1) VALUES (?, ?, ?, %2) RETURNING id")
            .arg(EntryColumns().join(QLatin1String(", ")), PlaceHolders(EntryColumns().size()));
    sql::Values values = {stored, Now(), Now()};
    const sql::Values more = ValuesOf(entry);
    values.insert(values.end(), more.begin(), more.end());
    return std::get<qint64>(database->One(command, values));
}

void Catalogue::Update(qint64 id, const Entry& entry, const QString& stored)
{
    static const QString command =
        QStringLiteral("UPDATE entries SET path = ?, looked = ?, gone = NULL, %1 = ? WHERE id = ?")
            .arg(EntryColumns().join(QLatin1String(" = ?, ")));
    sql::Values values = {stored, Now()};
    const sql::Values more = ValuesOf(entry);
    values.insert(values.end(), more.begin(), more.end());
    values.push_back(id);
    database->Run(command, values);
}

void Catalogue::PutDetails(qint64 id, const Entry& entry, bool isNew)
{
    if (!isNew) {
        for (const char* table : {"extremes", "changes", "events"})
            database->Run(QStringLiteral("DELETE FROM %1 WHERE entry = ?").arg(QLatin1String(table)), {id});
    }
    PutPieces(id, entry.pieces);
    const QString analog = QStringLiteral("analog");
    for (const AnalogFacts& one : entry.analog) {
        const qint64 channel = ChannelId(analog, one.circuit, one.name, one.phase, one.unit);
        database->Run(QStringLiteral("INSERT INTO extremes VALUES (?, ?, ?, ?) ON CONFLICT DO NOTHING"),
                      {id, channel, sql::ValueOf(one.least), sql::ValueOf(one.greatest)});
    }
    const QString digital = QStringLiteral("digital");
    for (const DigitalFacts& one : entry.digital) {
        if (one.changes == 0)
            continue;
        const qint64 channel = ChannelId(digital, one.circuit, one.name, one.phase, QString());
        database->Run(QStringLiteral("INSERT INTO changes VALUES (?, ?, ?, ?) ON CONFLICT DO NOTHING"),
                      {channel, id, one.changes, sql::ValueOf(one.first)});
    }
    qint64 place = 0;
    for (const EventFacts& event : entry.events) {
        const DigitalFacts& of = entry.digital.at(event.channel);
        database->Run(QStringLiteral("INSERT INTO events VALUES (?, ?, ?, ?, ?, ?, ?)"),
                      {id, place++, event.time, ChannelId(digital, of.circuit, of.name, of.phase, QString()),
                       event.kind, qint64{event.state}, qint64{event.isActive}});
    }
    PutWords(id, entry, isNew);
}

void Catalogue::PutPieces(qint64 id, const std::vector<Piece>& pieces)
{
    database->Run(QStringLiteral("DELETE FROM pieces WHERE entry = ?"), {id});
    for (const Piece& piece : pieces)
        database->Run(QStringLiteral("INSERT INTO pieces VALUES (?, ?, ?, ?, ?)"),
                      {id, piece.name, piece.size, piece.modified, QString::fromLatin1(piece.sha256)});
}

void Catalogue::PutWords(qint64 id, const Entry& entry, bool isNew)
{
    const QString words = WordsOf(entry);
    if (database->Kind() == sql::Dialect::Postgres) {
        database->Run(
            QStringLiteral(
                "INSERT INTO search VALUES (?, to_tsvector('simple', ?)) ON CONFLICT (entry) DO UPDATE "
                "SET words = excluded.words"),
            {id, words});
        return;
    }
    if (!isNew) {
        database->Run(
            QStringLiteral(
                "INSERT INTO search (search, rowid, words) SELECT 'delete', entry, words FROM words "
                "WHERE entry = ?"),
            {id});
        database->Run(QStringLiteral("DELETE FROM words WHERE entry = ?"), {id});
    }
    database->Run(QStringLiteral("INSERT INTO words VALUES (?, ?)"), {id, words});
    database->Run(QStringLiteral("INSERT INTO search (rowid, words) VALUES (?, ?)"), {id, words});
}

qint64 Catalogue::ChannelId(const QString& kind, const QString& circuit, const QString& name,
                            const QString& phase, const QString& unit)
{
    const QString key = QStringList{kind, circuit, name, phase, unit}.join(QLatin1Char('\n'));
    const auto known = channels.constFind(key);
    if (known != channels.constEnd())
        return *known;
    const sql::Values values = {kind, circuit, name, phase, unit};
    database->Run(
        QStringLiteral(
            "INSERT INTO channels (kind, circuit, name, phase, unit) VALUES (?, ?, ?, ?, ?) ON CONFLICT DO "
            "NOTHING"),
        values);
    const sql::Value id = database->One(
        QStringLiteral("SELECT id FROM channels WHERE kind = ? AND circuit = ? AND name = ? AND "
                       "phase = ? AND unit = ?"),
        values);
    return channels[key] = std::get<qint64>(id);
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
    Guard([&] {
        if (!findGone()) // usually; others may write meanwhile
            return;
        database->Together([&] {
            const std::optional<qint64> gone = findGone();
            if (!gone)
                return;
            database->Run(QStringLiteral("UPDATE entries SET gone = ? WHERE path = ? AND gone IS NULL"),
                          {Now(), stored});
            database->Run(QStringLiteral("UPDATE entries SET path = ?, gone = NULL WHERE id = ?"),
                          {stored, *gone});
            PutPieces(*gone, pieces);
            isMoved = true;
        });
    });
    return isMoved;
}

qint64 Catalogue::MarkGone(const QStringList& paths)
{
    qint64 marked = 0;
    Guard([&] {
        database->Together([&] {
            for (const QString& path : paths) {
                if (QFile::exists(path))
                    continue;
                database->Run(QStringLiteral(
                                  "UPDATE entries SET gone = ? WHERE path = ? AND gone IS NULL RETURNING id"),
                              {Now(), Stored(path)}, [&marked](const sql::Row&) { ++marked; });
            }
        });
    });
    return marked;
}

} // namespace catalogue
