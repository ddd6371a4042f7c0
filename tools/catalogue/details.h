// What belongs to an entry, in the other tables.
#pragma once

#include "catalogue/entry.h"
#include "sql/database.h"

#include <QHash>
#include <QStringList>

namespace catalogue {

/// Kind, circuit, name, phase and unit of a channel.
using ChannelKey = QStringList;

class Details
{
public:
    explicit Details(sql::Database& database_) : database(database_) {}

    /// A transaction begins, or begins again.
    void Begin();
    /// It has succeeded.
    void Keep();

    /// The channels of all these entries, in one order, so that of several programs that make the same ones
    /// none waits for one that waits for it.
    void PutChannels(const std::vector<const Entry*>& entries);

    /// All of an entry's rows; those that were there go.
    void Put(qint64 id, const Entry& entry, bool isNew);
    void PutPieces(qint64 id, const std::vector<Piece>& pieces);

    /// The words of an entry, which no reference removes with it.
    void RemoveWords(qint64 id);

private:
    void InsertRows(const char* table, int columns, const sql::Values& values);
    void PutWords(qint64 id, const Entry& entry, bool isNew);
    qint64 ChannelId(const ChannelKey& key);

    sql::Database& database;
    QHash<ChannelKey, qint64> channels; // that were asked for
    QHash<ChannelKey, qint64> fresh;    // likewise, in the transaction that is not at its end
};

} // namespace catalogue
