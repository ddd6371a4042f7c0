// The text of SQL commands, as far as it has to be understood: what is in quotes or a comment is left alone.
#pragma once

#include <QStringList>

namespace sql {

/// The command with $1, $2 ... for each "?".
QString Numbered(const QString& command);

/// The commands of a script, without the semicolons that end them.
QStringList CommandsOf(const QString& script);

} // namespace sql
