#include "comtrade/mark.h"

namespace comtrade {

std::optional<Mark> MarkOf(const QByteArray& line)
{
    const QString text = QString::fromLatin1(line).simplified().toUpper();
    const QString head = QStringLiteral("--- FILE TYPE:");
    if (!text.startsWith(head) || !text.endsWith(QLatin1String("---")))
        return std::nullopt;
    const QString inside = text.mid(head.size(), text.size() - head.size() - 3).trimmed();
    Mark mark;
    mark.kind = inside.section(QLatin1Char(' '), 0, 0);
    bool ok = false;
    const qint64 bytes = inside.section(QLatin1Char(':'), 1).trimmed().toLongLong(&ok);
    if (ok)
        mark.dataBytes = bytes;
    return mark;
}

} // namespace comtrade
