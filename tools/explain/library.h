// What the library has to say about a recording, in the user's language. Its own texts are Russian and speak
// of the fields of its format.
#pragma once

#include <QString>

namespace explain {

/// The library's text as a reason that can follow "recording.ZU: ": a sentence, then the text itself in
/// brackets, which users can search for. An unknown text stays as it is.
QString LibraryText(const QString& text);

/// A sentence of one's own, followed by the library's text in brackets.
QString WithLibraryText(const QString& sentence, const QString& text);

} // namespace explain
