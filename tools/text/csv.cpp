#include "text/csv.h"

#include <algorithm>

namespace text {

QByteArray CsvField(const QString& text, char separator)
{
    const auto isSpecial = [separator](QChar letter) {
        return letter == QLatin1Char(separator) || letter == QLatin1Char('"') ||
               letter == QLatin1Char('\r') || letter == QLatin1Char('\n');
    };
    QByteArray field = text.toUtf8();
    if (text == text.trimmed() && std::none_of(text.begin(), text.end(), isSpecial))
        return field;
    field.replace('"', "\"\"");
    return '"' + field + '"';
}

} // namespace text
