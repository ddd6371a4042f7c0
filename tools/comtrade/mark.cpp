#include "comtrade/mark.h"

#include <QRegularExpression>

namespace comtrade {

std::optional<Mark> MarkOf(const QByteArray& line)
{
    constexpr int longest = 200; // characters of a mark; other lines need no look at all of them
    const bool hasByteOrderMark = line.startsWith("\xEF\xBB\xBF");
    const QString text =
        QString::fromLatin1(line.mid(hasByteOrderMark ? 3 : 0, longest)).simplified().toUpper();
    if (!text.startsWith(QLatin1String("--")) && !text.startsWith(QLatin1String("- -")))
        return std::nullopt;
    static const QRegularExpression form(
        QStringLiteral("\\A[- ]+FILE ?TYPE ?(:?) ?([A-Z]{3})\\b([ A-Z0-9]*:? ?([0-9]*))([^-]*)[- ]*\\z"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    Mark mark;
    mark.kind = match.captured(2);
    bool ok = false;
    const qint64 bytes = text.contains(QStringLiteral("DAT")) ? match.captured(4).toLongLong(&ok) : 0;
    if (ok)
        mark.dataBytes = bytes;
    static const QRegularExpression exact(
        QStringLiteral("\\A--- FILE TYPE: ([A-Z]{3}|DAT [A-Z0-9]+ ?(: ?[0-9]+)?) ---\\z"));
    mark.isExact = !hasByteOrderMark && exact.match(text).hasMatch();
    return mark;
}

} // namespace comtrade
