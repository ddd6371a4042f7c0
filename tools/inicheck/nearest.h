// The known word that somebody may have meant.
#pragma once

#include <QString>
#include <QStringList>

namespace inicheck {

/// The word of known that differs least from text (letters added, left out, replaced or exchanged; case and
/// Cyrillic letters that look like Latin ones count little). Empty if none is near.
QString Nearest(const QString& text, const QStringList& known);

/// text with Latin letters in place of the Cyrillic ones that look the same.
QString WithLatinLetters(QString text);

} // namespace inicheck
