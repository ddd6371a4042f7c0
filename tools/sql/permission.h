// Who may not do what with the file of a database, and who can change that.
#pragma once

#include <QString>

namespace sql {

/// A sentence for a file that the user of this process may not read (or write to, if writes), or whose
/// directory, or one above it, they may not enter, or may not make files in (if writes: SQLite has its
/// journal beside the database). Empty if they may.
QString MissingPermission(const QString& path, bool writes);

} // namespace sql
