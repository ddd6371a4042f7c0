#include "explain/pattern.h"

#include <QRegularExpression>

namespace explain {

std::optional<QStringList> PlacesOf(const QString& text, const QString& pattern)
{
    QString expression = QRegularExpression::escape(pattern);
    for (const char* place : {"1", "2"})
        expression.replace(QStringLiteral("\\%") + QLatin1String(place), QStringLiteral("(.*?)"));
    const QRegularExpression whole(QStringLiteral("\\A%1\\z").arg(expression),
                                   QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = whole.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return match.capturedTexts().mid(1);
}

QString Filled(const QString& text, const QStringList& values)
{
    switch (values.size()) {
    case 0:
        return text;
    case 1:
        return text.arg(values[0]);
    default:
        return text.arg(values[0], values[1]);
    }
}

} // namespace explain
