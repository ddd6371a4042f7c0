#include "forms/csvtext.h"

#include "comtrade/moment.h"
#include "forms/channeltitles.h"
#include "text/csv.h"
#include "text/texts.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace forms {

namespace {

constexpr qint64 Second = 1000000000;  // ns
constexpr qint64 Day = 86400 * Second; // ns
constexpr int Decimals = 9;            // of a second

// The number with zeros in front.
char* PutDigits(char* to, qint64 number, int digits)
{
    for (char* at = to + digits; at != to; number /= 10)
        *--at = static_cast<char>('0' + number % 10);
    return to + digits;
}

bool ParseDigits(const char* begin, const char* end, qint64& number)
{
    if (begin == end || *begin < '0' || *begin > '9') // no sign, no blanks
        return false;
    const std::from_chars_result result = std::from_chars(begin, end, number);
    return result.ec == std::errc() && result.ptr == end;
}

// Decimals of a second, up to nine of them.
bool ParseDecimals(const char* begin, const char* end, qint64& nanoseconds)
{
    if (end - begin > Decimals || !ParseDigits(begin, end, nanoseconds))
        return false;
    for (auto digits = end - begin; digits < Decimals; ++digits)
        nanoseconds *= 10;
    return true;
}

} // namespace

QByteArray CsvTitles(const comtrade::Configuration& configuration, const CsvForm& form)
{
    const QString time = form.time == CsvTime::Seconds ? QStringLiteral("time [s]") : QStringLiteral("time");
    QByteArray line = form.decimalComma ? QByteArray("\xEF\xBB\xBF") : QByteArray();
    line += time.toUtf8();
    for (const QString& title : ChannelTitles(configuration, time))
        line += SeparatorOf(form) + text::CsvField(title, SeparatorOf(form));
    return line + "\r\n";
}

CsvTimeText::CsvTimeText(const comtrade::Configuration& configuration, const CsvForm& form_)
    : form(form_), trigger(configuration.trigger),
      offset(comtrade::OffsetText(comtrade::UtcOffset(configuration)).toLatin1())
{
    if (form.time == CsvTime::Iso8601 && !trigger.date.isValid())
        throw text::Error(Tr("forms",
                             "the trigger has no date, so that there is none for the samples either; use "
                             "--time seconds"));
    SetDay(0);
}

void CsvTimeText::SetDay(qint64 day_)
{
    day = day_;
    date = trigger.date.addDays(day).toString(Qt::ISODate).toLatin1() + 'T';
}

char* CsvTimeText::Put(char* to, qint64 time)
{
    if (time == comtrade::Block::NoTime)
        return to;
    return form.time == CsvTime::Seconds ? PutSeconds(to, time) : PutMoment(to, time);
}

char* CsvTimeText::PutSeconds(char* to, qint64 time) const
{
    if (time < 0)
        *to++ = '-';
    const qint64 size = std::abs(time);
    to = std::to_chars(to, to + Longest / 2, size / Second).ptr;
    if (size % Second == 0)
        return to;
    *to++ = PointOf(form);
    to = PutDigits(to, size % Second, Decimals);
    while (to[-1] == '0')
        --to;
    return to;
}

char* CsvTimeText::PutMoment(char* to, qint64 time)
{
    const qint64 fromMidnight = trigger.nanoseconds + time;
    qint64 rest = fromMidnight % Day;
    if (rest < 0)
        rest += Day;
    if (const qint64 days = (fromMidnight - rest) / Day; days != day)
        SetDay(days);
    to = std::copy(date.begin(), date.end(), to);
    const qint64 seconds = rest / Second;
    to = PutDigits(to, seconds / 3600, 2);
    *to++ = ':';
    to = PutDigits(to, seconds / 60 % 60, 2);
    *to++ = ':';
    to = PutDigits(to, seconds % 60, 2);
    *to++ = '.'; // also where numbers have a comma
    to = PutDigits(to, rest % Second, Decimals);
    return std::copy(offset.begin(), offset.end(), to);
}

bool CsvTimeText::Parse(const char* begin, const char* end, qint64& time)
{
    time = comtrade::Block::NoTime;
    if (begin == end)
        return true;
    return form.time == CsvTime::Seconds ? ParseSeconds(begin, end, time) : ParseMoment(begin, end, time);
}

bool CsvTimeText::ParseSeconds(const char* begin, const char* end, qint64& time) const
{
    const bool isNegative = *begin == '-';
    if (isNegative)
        ++begin;
    const char* const point = std::find(begin, end, PointOf(form));
    qint64 seconds = 0;
    qint64 nanoseconds = 0;
    if (!ParseDigits(begin, point, seconds) || (point != end && !ParseDecimals(point + 1, end, nanoseconds)))
        return false;
    time = seconds * Second + nanoseconds;
    if (isNegative)
        time = -time;
    return true;
}

bool CsvTimeText::ParseMoment(const char* begin, const char* end, qint64& time)
{
    constexpr auto clock = sizeof "hh:mm:ss.nnnnnnnnn" - 1;
    const QByteArray text = QByteArray::fromRawData(begin, static_cast<int>(end - begin));
    const int dateLength = text.indexOf('T') + 1;
    if (text.size() != dateLength + static_cast<int>(clock) + offset.size() || !text.endsWith(offset))
        return false;
    if (!text.startsWith(date)) {
        const QDate other = QDate::fromString(QString::fromLatin1(begin, dateLength - 1), Qt::ISODate);
        if (!other.isValid())
            return false;
        SetDay(trigger.date.daysTo(other));
    }
    begin += dateLength;
    qint64 hours = 0;
    qint64 minutes = 0;
    qint64 seconds = 0;
    qint64 nanoseconds = 0;
    if (begin[2] != ':' || begin[5] != ':' || begin[8] != '.' || !ParseDigits(begin, begin + 2, hours) ||
        !ParseDigits(begin + 3, begin + 5, minutes) || !ParseDigits(begin + 6, begin + 8, seconds) ||
        !ParseDecimals(begin + 9, begin + clock, nanoseconds))
        return false;
    time = day * Day + ((hours * 60 + minutes) * 60 + seconds) * Second + nanoseconds - trigger.nanoseconds;
    return true;
}

} // namespace forms
