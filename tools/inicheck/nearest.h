// The known word that the user may have meant.
#pragma once

#include <QString>
#include <QStringList>

namespace inicheck {

/// The one of `known` that takes the fewest changes of a letter, if these are few for the length of the word;
/// case, doubled blanks and Cyrillic letters that look Latin do not count. Empty if none is close.
QString Nearest(const QString& word, const QStringList& known);

/// A clause that asks whether `nearest`, a word found by Nearest, is meant; empty if none was found.
QString MeantText(const QString& nearest);

/// The word with Latin letters in place of the Cyrillic ones that look the same.
QString WithLatinLetters(QString word);

} // namespace inicheck
