// The known word that somebody may have meant.
#pragma once

#include <QString>
#include <QStringList>

namespace inicheck {

/// The one of `known` that takes the fewest changes of a letter, if these are few for the length of the word;
/// case and doubled blanks count little. Empty if none is near.
QString Nearest(const QString& word, const QStringList& known);

} // namespace inicheck
