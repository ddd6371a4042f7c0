// What the library has to say about a recording, in the user's language. Its own texts are Russian and speak
// of the fields of its format.
#pragma once

#include <QString>
#include <QStringList>

namespace explain {

/// The library's text as a reason that can follow "recording.ZU: "; a text that is not known stays as it is.
QString LibraryText(const QString& text);

/// The same for each of several notes.
QStringList LibraryTexts(const QStringList& texts);

} // namespace explain
