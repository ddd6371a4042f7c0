// Texts put together from values.
#pragma once

#include <QString>
#include <QStringBuilder>

namespace zu {

/// Whether a text may be put in place of "%1" and be followed by another value without taking that one in:
/// with a
/// "%" in it, only QString::arg itself knows what comes out.
inline bool IsPlainValue(const QString& text)
{
    return !text.contains(QLatin1Char('%'));
}

/// QStringLiteral("%1 %2").arg(first).arg(second)
inline QString TwoWords(const QString& first, const QString& second)
{
    if (IsPlainValue(first))
        return first % QLatin1Char(' ') % second;
    return QStringLiteral("%1 %2").arg(first).arg(second);
}

} // namespace zu
