#include "comtrade/moment.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace comtrade {

namespace {

constexpr qint64 Day = qint64{86400} * 1000000000; // ns

} // namespace

std::optional<int> UtcOffset(const Configuration& configuration)
{
    // Some writers put the Cyrillic letter between hours and minutes.
    static const QRegularExpression form(
        QStringLiteral("\\A([+-]?)([0-9]{1,2})(?:[hH\u0447\u0427:]([0-9]{2}))?\\z"));
    const QRegularExpressionMatch match = form.match(configuration.timeCode);
    if (!match.hasMatch())
        return std::nullopt;
    const int minutes = match.captured(2).toInt() * 60 + match.captured(3).toInt();
    return match.captured(1) == QLatin1String("-") ? -minutes : minutes;
}

QString OffsetText(std::optional<int> minutes)
{
    if (!minutes)
        return QString();
    const int distance = std::abs(*minutes);
    return QString::asprintf("%c%02d:%02d", *minutes < 0 ? '-' : '+', distance / 60, distance % 60);
}

QString MomentText(const TimeStamp& stamp, const std::optional<int>& offset)
{
    return QString::asprintf("%04d-%02d-%02dT", stamp.date.year(), stamp.date.month(), stamp.date.day()) +
           ClockText(stamp) + OffsetText(offset);
}

TimeStamp After(const TimeStamp& stamp, double seconds)
{
    constexpr double farthest = 1e9; // s; beyond it stand the numbers of a damaged record
    TimeStamp moment = stamp;
    const double microseconds = std::isfinite(seconds) ? std::clamp(seconds, -farthest, farthest) * 1e6 : 0;
    const qint64 nanoseconds = stamp.nanoseconds + std::llround(microseconds) * 1000;
    qint64 days = nanoseconds / Day;
    if (nanoseconds % Day < 0)
        --days;
    moment.nanoseconds = nanoseconds - days * Day;
    moment.date = stamp.date.addDays(days);
    moment.decimals = std::max(stamp.decimals, 6);
    return moment;
}

qint64 NanosecondsBetween(const TimeStamp& from, const TimeStamp& to)
{
    constexpr qint64 farthest = 100000; // days
    const qint64 days = std::clamp(from.date.daysTo(to.date), -farthest, farthest);
    return days * Day + to.nanoseconds - from.nanoseconds;
}

TriggerDistance DistanceOfTriggers(const Configuration& first, const Configuration& second)
{
    constexpr qint64 minute = qint64{60} * 1000000000; // ns
    qint64 nanoseconds = NanosecondsBetween(first.trigger, second.trigger);
    const std::optional<int> firstOffset = UtcOffset(first);
    const std::optional<int> secondOffset = UtcOffset(second);
    TriggerDistance distance;
    if (firstOffset && secondOffset) {
        nanoseconds += (*firstOffset - *secondOffset) * minute;
        distance.inUtc = true;
    }
    distance.seconds = static_cast<double>(nanoseconds) / 1e9;
    return distance;
}

QString ClockText(const TimeStamp& stamp)
{
    const qint64 second = stamp.nanoseconds / 1000000000;
    const QString clock =
        QString::asprintf("%02d:%02d:%02d", int(second / 3600), int(second / 60 % 60), int(second % 60));
    const QString decimals =
        QString::asprintf("%09d", int(stamp.nanoseconds % 1000000000)).left(std::min(stamp.decimals, 9));
    return clock + (decimals.isEmpty() ? QString() : QLatin1Char('.') + decimals);
}

} // namespace comtrade
