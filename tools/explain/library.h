// What the library has to say about a recording, in the user's language. Its own texts are Russian and speak
// of the fields of its format.
#pragma once

#include <QString>
#include <QStringList>

namespace explain {

/// The library's text as a reason that can follow "recording.ZU: ": a sentence, and the text itself in
/// brackets, by which others can look for it. A text that is not known stays as it is.
QString LibraryText(const QString& text);

/// Such a sentence that says more than the text.
QString WithLibraryText(const QString& sentence, const QString& text);

/// LibraryText of each of several notes.
QStringList LibraryTexts(const QStringList& texts);

} // namespace explain
