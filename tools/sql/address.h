// Which database the user means.
#pragma once

#include "sql/database.h"

namespace sql {

/// Whether the text is the address of a PostgreSQL database,
/// "postgresql://user@host:port/name?sslmode=require" (or "postgres://"), and not the path of a file.
bool IsServer(const QString& address);

/// The address without its password, for messages.
QString Shown(const QString& address);

/// Opens it. A file is created if it is not there, unless isReadOnly. Throws Failure.
std::unique_ptr<Database> Open(const QString& address, bool isReadOnly = false);

} // namespace sql
