// Fields of CSV files (RFC 4180).
#pragma once

#include <QByteArray>
#include <QString>

namespace text {

/// In UTF-8, in quotes if it needs them. Blanks at the ends are kept by quotes, as some readers drop them.
QByteArray CsvField(const QString& text, char separator = ',');

} // namespace text
