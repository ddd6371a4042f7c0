// The tables of a catalogue, which others may read too (docs/archive.md lists them).
#pragma once

#include "sql/database.h"

namespace catalogue {

/// Version of the schema that this program writes and reads.
constexpr int SchemaVersion = 1;

/// Makes the tables of an empty database, or brings older ones to this version, all of it or nothing. Several
/// programs may try at once. Throws Failure, and text::Error if it is another program's database or that of
/// a newer version.
void Prepare(sql::Database& database);

/// Throws the same unless the database has this version.
void CheckVersion(sql::Database& database);

} // namespace catalogue
