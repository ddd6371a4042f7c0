// The columns of an entry that are not keys, with their values, in one order.
#pragma once

#include "catalogue/entry.h"
#include "sql/database.h"

#include <QStringList>

namespace catalogue {

/// "?, ?, ?".
QString PlaceHolders(int count);

/// Their names.
const QStringList& EntryColumns();

/// Their values for an entry, in the order of EntryColumns.
sql::Values ValuesOf(const Entry& entry);

/// What an entry is found by: names, circuits, causes, and the channels that changed.
QString WordsOf(const Entry& entry);

} // namespace catalogue
