#include "catalogue/details.h"

#include "catalogue/columns.h"
#include "catalogue/words.h"
#include "text/texts.h"

#include <set>

namespace catalogue {

namespace {

ChannelKey KeyOf(const AnalogFacts& channel)
{
    return {QStringLiteral("analog"), channel.circuit, channel.name, channel.phase, channel.unit};
}

ChannelKey KeyOf(const DigitalFacts& channel)
{
    return {QStringLiteral("digital"), channel.circuit, channel.name, channel.phase, QString()};
}

void Append(sql::Values& values, const sql::Values& more)
{
    values.insert(values.end(), more.begin(), more.end());
}

} // namespace

void Details::Begin()
{
    fresh.clear(); // of a transaction that was undone
}

void Details::Keep()
{
    for (auto one = fresh.constBegin(); one != fresh.constEnd(); ++one)
        channels.insert(one.key(), *one);
    fresh.clear();
}

void Details::PutChannels(const std::vector<const Entry*>& entries)
{
    std::set<ChannelKey> keys;
    for (const Entry* entry : entries) {
        for (const AnalogFacts& one : entry->analog)
            keys.insert(KeyOf(one));
        for (const DigitalFacts& one : entry->digital) {
            if (one.changes > 0)
                keys.insert(KeyOf(one));
        }
        for (const EventFacts& one : entry->events)
            keys.insert(KeyOf(entry->digital.at(one.channel)));
    }
    for (const ChannelKey& key : keys)
        ChannelId(key);
}

void Details::Put(qint64 id, const Entry& entry, bool isNew)
{
    if (!isNew) {
        for (const char* table : {"extremes", "changes", "events", "pictures"})
            database.Run(QStringLiteral("DELETE FROM %1 WHERE entry = ?").arg(QLatin1String(table)), {id});
    }
    PutPieces(id, entry.pieces);
    sql::Values extremes;
    for (const AnalogFacts& one : entry.analog)
        Append(extremes, {id, ChannelId(KeyOf(one)), sql::ValueOf(one.least), sql::ValueOf(one.greatest)});
    InsertRows("extremes", 4, extremes);
    sql::Values changes;
    for (const DigitalFacts& one : entry.digital) {
        if (one.changes > 0)
            Append(changes, {ChannelId(KeyOf(one)), id, one.changes, sql::ValueOf(one.first)});
    }
    InsertRows("changes", 4, changes);
    sql::Values events;
    qint64 place = 0;
    for (const EventFacts& event : entry.events)
        Append(events, {id, place++, event.time, ChannelId(KeyOf(entry.digital.at(event.channel))),
                        event.kind, qint64{event.state}, qint64{event.isActive}});
    InsertRows("events", 7, events);
    if (entry.picture)
        database.Run(QStringLiteral("INSERT INTO pictures VALUES (?, ?, ?, ?, ?, ?)"),
                     {id, entry.picture->from, entry.picture->to, sql::ValueOf(entry.picture->current),
                      sql::ValueOf(entry.picture->voltage), entry.picture->waves});
    PutWords(id, entry, isNew);
}

// Several at a time, since a server may be far away; of two with one key the first counts. Few sizes, so that
// each command is prepared once.
void Details::InsertRows(const char* table, int columns, const sql::Values& values)
{
    const QString row = QStringLiteral("(%1)").arg(PlaceHolders(columns));
    auto next = values.begin();
    while (next != values.end()) {
        const std::ptrdiff_t left = (values.end() - next) / columns;
        const int rows = left >= 32 ? 32 : left >= 8 ? 8 : 1;
        const std::ptrdiff_t count = std::ptrdiff_t{rows} * columns;
        const QStringList places = QVector<QString>(rows, row).toList();
        database.Run(QStringLiteral("INSERT INTO %1 VALUES %2 ON CONFLICT DO NOTHING")
                         .arg(QLatin1String(table), places.join(QLatin1String(", "))),
                     {next, next + count});
        next += count;
    }
}

void Details::PutPieces(qint64 id, const std::vector<Piece>& pieces)
{
    database.Run(QStringLiteral("DELETE FROM pieces WHERE entry = ?"), {id});
    sql::Values values;
    for (const Piece& piece : pieces)
        Append(values, {id, piece.name, piece.size, piece.modified, QString::fromLatin1(piece.sha256)});
    InsertRows("pieces", 5, values);
}

void Details::PutWords(qint64 id, const Entry& entry, bool isNew)
{
    const QStringList words = WordsIn(WordsOf(entry));
    if (!isNew)
        RemoveWords(id);
    if (database.Kind() == sql::Dialect::Postgres) {
        database.Run(
            QStringLiteral("INSERT INTO search VALUES (?, array_to_tsvector(string_to_array(?, ' ')))"),
            {id, words.join(QLatin1Char(' '))});
        return;
    }
    const sql::Values values = {id, words.join(QLatin1Char(' '))};
    database.Run(QStringLiteral("INSERT INTO words VALUES (?, ?)"), values);
    database.Run(QStringLiteral("INSERT INTO search (rowid, words) VALUES (?, ?)"), values);
}

void Details::RemoveWords(qint64 id)
{
    if (database.Kind() == sql::Dialect::Postgres) {
        database.Run(QStringLiteral("DELETE FROM search WHERE entry = ?"), {id});
        return;
    }
    database.Run(
        QStringLiteral("INSERT INTO search (search, rowid, words) SELECT 'delete', entry, words FROM words "
                       "WHERE entry = ?"),
        {id});
    database.Run(QStringLiteral("DELETE FROM words WHERE entry = ?"), {id});
}

qint64 Details::ChannelId(const ChannelKey& key)
{
    for (const auto* ids : {&channels, &fresh}) {
        const auto known = ids->constFind(key);
        if (known != ids->constEnd())
            return *known;
    }
    const sql::Values values(key.begin(), key.end());
    const QString find = QStringLiteral(
        "SELECT id FROM channels WHERE kind = ? AND circuit = ? AND name = ? AND phase = ? AND "
        "unit = ?");
    std::optional<qint64> id = database.Number(find, values);
    if (!id)
        id = database.Number(
            QStringLiteral("INSERT INTO channels (kind, circuit, name, phase, unit) VALUES (?, ?, ?, ?, "
                           "?) ON CONFLICT DO "
                           "NOTHING RETURNING id"),
            values);
    if (!id) // somebody else has just made it
        id = database.Number(find, values);
    if (!id) // and taken it away again
        throw sql::Failure(Tr("system", "another program is at work with it"), sql::Trouble::Busy);
    fresh.insert(key, *id);
    return *id;
}

} // namespace catalogue
