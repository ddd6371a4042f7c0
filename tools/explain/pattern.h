// Recognises texts that come from elsewhere by what is fixed in them.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace explain {

/// What stands in the text at %1 and %2 of the pattern, in the order of the pattern; nothing if the rest
/// differs. "--out is required" fits "%1 is required" with {"--out"}.
std::optional<QStringList> PlacesOf(const QString& text, const QString& pattern);

/// The text with its places %1, %2 ... filled in, all at once, so that a "%1" in a value stays as it is.
QString Filled(const QString& text, const QStringList& values);

} // namespace explain
