#include "text/columns.h"

#include <algorithm>

namespace text {

QStringList Aligned(const std::vector<QStringList>& rows, const std::vector<bool>& right)
{
    std::vector<int> widths(right.size(), 0);
    for (const QStringList& row : rows)
        for (size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], static_cast<int>(row[static_cast<int>(i)].size()));
    QStringList lines;
    for (const QStringList& row : rows) {
        QString line;
        for (size_t i = 0; i < widths.size(); ++i) {
            const QString& cell = row[static_cast<int>(i)];
            line += QStringLiteral("  ") +
                    (right[i] ? cell.rightJustified(widths[i]) : cell.leftJustified(widths[i]));
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        lines << line;
    }
    return lines;
}

} // namespace text
