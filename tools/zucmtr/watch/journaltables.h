// The tables of the journal of 'zucmtr watch', by version, and those of its copy in a catalogue;
// docs/watch.md describes them for those who ask.
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

/// Where the tables are: in the journal's own file, or among those of other journals in a catalogue.
struct Home
{
    sql::Database& database;
    qint64 journal = 0; ///< its number in the catalogue; 0: the file is its own
};

void Read(const Home& home, WatchJournal::Contents& contents);

/// Writes the entries and tasks; the rows of those that are over are removed.
void Write(const Home& home, const WatchJournal::Contents& contents);

/// Makes the tables have these entries and tasks and no others. What is the same already is left alone.
void Replace(const Home& home, const WatchJournal::Contents& contents);

/// The time for a note, in UTC.
QString Now();

} // namespace journaltables
