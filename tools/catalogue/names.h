// The names in a catalogue, and which of them the user means. They are compared here and not by the database:
// SQLite knows the case of Latin letters alone.
#pragma once

#include "sql/database.h"

#include <QPair>
#include <QStringList>
#include <QVector>

namespace catalogue {

/// Whether a name has one of the parts in it, in whatever case ("ё" counts as "е"), or is the one after "=".
bool IsMeant(const QString& name, const QStringList& parts);

/// The values of a column that has an index, without NULL, in the database's order, of the entries that are
/// gone or of the others; for the latter as fast for a million rows as for a thousand.
QStringList NamesIn(sql::Database& database, const QString& column, bool isGone);

/// Station and name of every recorder.
QVector<QPair<QString, QString>> Recorders(sql::Database& database);

} // namespace catalogue
