// The tables of the journal of 'zucmtr watch', by version; docs/watch.md describes them for those who ask it.
#pragma once

#include "sql/database.h"
#include "zucmtr/watch/watchjournal.h"

namespace journaltables {

/// Makes the tables in an empty database.
void Create(sql::Database& database);

/// Whether the database is a journal, and of which version. 0: it is something else.
int VersionOf(sql::Database& database);

/// The version that Create makes. A program refuses newer ones.
constexpr int Version = 2;

/// Brings a journal of an earlier version up to date. Nothing in it is lost.
void Migrate(sql::Database& database, int version);

/// Notes who works with the journal.
void WriteHolder(sql::Database& database);

void Read(sql::Database& database, WatchJournal::Entries& entries, WatchJournal::Tasks& tasks);

/// Writes the entries and tasks; the rows of those that are over are removed.
void Write(sql::Database& database, const WatchJournal::Entries& entries, const WatchJournal::Tasks& tasks);

/// The time for a note, in UTC.
QString Now();

} // namespace journaltables
