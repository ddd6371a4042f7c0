#include "info/values.h"

#include "comtrade/moment.h"
#include "text/texts.h"

#include <QDateTime>

#include <cmath>

namespace info {

Cell TextCell(const QString& text)
{
    return {text, text};
}

Cell CountCell(qint64 count)
{
    return {count, QString::number(count)};
}

Cell NumberCell(double number)
{
    // JSON has no infinities.
    if (!std::isfinite(number))
        return {QJsonValue(), QString::number(number)};
    return {number, QString::number(number, 'g', 8)};
}

Cell FlagCell(bool flag)
{
    return {flag, flag ? Tr("info", "yes") : Tr("info", "no")};
}

Cell UnknownCell()
{
    return {QJsonValue(), QStringLiteral("-")};
}

Cell MomentCell(const QDateTime& seconds, qint32 microseconds)
{
    return TextCell(seconds.toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")) +
                    QString::asprintf(".%06d", microseconds) +
                    comtrade::OffsetText(seconds.offsetFromUtc() / 60));
}

Cell SecondsCell(double seconds)
{
    if (!std::isfinite(seconds))
        return {QJsonValue(), Tr("info", "unknown")};
    return {seconds, Tr("info", "%1 s").arg(seconds, 0, 'f', 6)};
}

Cell BytesCell(qint64 bytes)
{
    QString text = Tr("info", "%1 bytes").arg(bytes);
    double size = static_cast<double>(bytes);
    const char* const units[] = {QT_TRANSLATE_NOOP("info", "kB"), QT_TRANSLATE_NOOP("info", "MB"),
                                 QT_TRANSLATE_NOOP("info", "GB")};
    QString shown;
    for (const char* unit : units) {
        if (size < 1000)
            break;
        size /= 1000;
        shown = QStringLiteral(" (%1 %2)").arg(size, 0, 'f', 1).arg(Tr("info", unit));
    }
    return {bytes, text + shown};
}

} // namespace info
