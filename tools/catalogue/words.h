// The words by which entries are found, the same whichever database has them: each has rules of its own for
// what a word is (PostgreSQL takes "-1" for a number and "a/b" for a path), so it gets words that both leave
// as they are.
#pragma once

#include "sql/database.h"

#include <QStringList>

namespace catalogue {

/// The runs of letters and digits of a text, each once, in small letters, "ё" as "е".
QStringList WordsIn(const QString& text);

/// The value for `search MATCH ?` (SQLite) or `words @@ CAST(? AS TSQUERY)` (PostgreSQL) that finds the
/// entries which have, for each word of the text, one that begins so; empty if the text has no words.
QString SearchFor(const QString& text, sql::Dialect dialect);

} // namespace catalogue
