// The tables of a catalogue, which others may read too (docs/catalogue.md lists them).
#pragma once

#include "sql/database.h"

#include <QStringList>

namespace catalogue {

/// Commands that both databases get with their own words for what is in braces, and those that one alone
/// gets.
struct Commands
{
    const char* both;
    const char* sqlite;
    const char* postgres;
};

struct Schema
{
    Commands tables;                  ///< of a new database
    Commands views;                   ///< made again after each migration
    std::vector<Commands> migrations; ///< the first one leads from version 1 to version 2

    int Version() const { return 1 + static_cast<int>(migrations.size()); }
};

/// That of this program.
const Schema& ThisSchema();

/// The commands for a database.
QString ScriptOf(const Commands& commands, sql::Dialect dialect);

/// Commands that store the comments of a script in the database.
QStringList CommentsOf(const QString& script);

/// Makes the tables of an empty database, or brings older ones to the schema's version, all of it or nothing.
/// Several programs may try at once. Throws Failure, and text::Error if it is another program's database or
/// that of a newer version.
void Prepare(sql::Database& database, const Schema& schema = ThisSchema());

/// Throws the same unless the database has the schema's version.
void CheckVersion(sql::Database& database, const Schema& schema = ThisSchema());

} // namespace catalogue
