// JSON as the pieces hold it.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace archivepage {

/// A text with its quotation marks. Whatever it holds, it ends neither a script nor a line of one.
QByteArray JsonText(const QString& text);

/// A number with so many significant digits, or null.
QByteArray JsonNumber(const std::optional<double>& number, int digits);

} // namespace archivepage
