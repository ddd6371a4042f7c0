#include "forms/spantext.h"

#include "comtrade/moment.h"
#include "text/texts.h"

#include <QRegularExpression>

namespace forms {

namespace {

const QRegularExpression& SecondsForm()
{
    static const QRegularExpression form(
        QStringLiteral("\\A([+-]?[0-9]+(?:\\.[0-9]*)?|[+-]?\\.[0-9]+) ?(s|ms)?\\z"));
    return form;
}

const QRegularExpression& DateForm()
{
    static const QRegularExpression form(QStringLiteral(
        "\\A([0-9]{4}-[0-9]{2}-[0-9]{2})[T ]([0-9]{2}):([0-9]{2})(?::([0-9]{2})(?:[.,]([0-9]{1,9}))?)?"
        "(Z|[+-][0-9]{2}(?::?[0-9]{2})?)?\\z"));
    return form;
}

// Minutes of "Z", "+03" or "+03:00".
int MinutesOf(const QString& offset)
{
    const int minutes = offset.mid(1, 2).toInt() * 60 + offset.right(2).toInt() * (offset.size() > 3 ? 1 : 0);
    return offset.startsWith(QLatin1Char('-')) ? -minutes : minutes;
}

std::optional<comtrade::TimeStamp> StampOf(const QRegularExpressionMatch& match)
{
    comtrade::TimeStamp stamp;
    stamp.date = QDate::fromString(match.captured(1), Qt::ISODate);
    const int hour = match.captured(2).toInt();
    const int minute = match.captured(3).toInt();
    const int second = match.captured(4).toInt();
    if (!stamp.date.isValid() || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    const qint64 decimals = match.captured(5).leftJustified(9, QLatin1Char('0')).toLongLong();
    stamp.nanoseconds = ((qint64{hour} * 60 + minute) * 60 + second) * 1000000000 + decimals;
    return stamp;
}

double SecondsFromTrigger(const QString& text, const QString& offset, const comtrade::TimeStamp& stamp,
                          const comtrade::Configuration& config)
{
    double seconds = static_cast<double>(comtrade::NanosecondsBetween(config.trigger, stamp)) / 1e9;
    if (offset.isEmpty())
        return seconds;
    const std::optional<int> own = comtrade::UtcOffset(config);
    if (!own)
        throw MomentError(Tr("export", "'%1' has an offset from UTC, but that of the record is not known; "
                                       "give the time of the record's own clock, without an offset")
                              .arg(text));
    const int minutes = *own - (offset == QLatin1String("Z") ? 0 : MinutesOf(offset));
    seconds += 60.0 * minutes;
    return seconds;
}

} // namespace

bool IsMoment(const QString& text)
{
    const QRegularExpressionMatch date = DateForm().match(text);
    return SecondsForm().match(text).hasMatch() || (date.hasMatch() && StampOf(date));
}

std::optional<double> SecondsOf(const QString& text, const comtrade::Configuration& config)
{
    if (text.isEmpty())
        return std::nullopt;
    const QRegularExpressionMatch seconds = SecondsForm().match(text);
    if (seconds.hasMatch())
        return seconds.captured(1).toDouble() * (seconds.captured(2) == QLatin1String("ms") ? 1e-3 : 1);
    const QRegularExpressionMatch date = DateForm().match(text);
    const std::optional<comtrade::TimeStamp> stamp = date.hasMatch() ? StampOf(date) : std::nullopt;
    if (!stamp)
        throw MomentError(Tr("export", "'%1' is no moment; give seconds from the trigger, as -0.2 or 200ms, "
                                       "or a time as 2024-01-31T12:00:00.25")
                              .arg(text));
    return SecondsFromTrigger(text, date.captured(6), *stamp, config);
}

} // namespace forms
