#include "comtrade/cfgtimes.h"

#include "text/texts.h"

#include <QRegularExpression>

#include <optional>

namespace comtrade {

namespace {

constexpr qint64 Second = 1000000000; // ns
constexpr qint64 Day = 86400 * Second;

// The order of the parts of a date.
enum class Order { DayFirst, MonthFirst, YearFirst };

// A line before it is decided which part is the day.
struct RawStamp
{
    Place place;
    QString what;       // its name for people
    QStringList parts;  // of the date, three numbers, or none if the clock was not set
    QString clock;      // time of day
    bool isSet = false; // it says something
    bool isLacking = false;

    bool IsYearFirst() const { return parts[0].size() == 4; }
};

// Brings a line to a date and a time of day: they may be separated by a blank or a T, and the decimals of
// the seconds by a comma, as there is only one way to read that.
void Arrange(CfgLines& lines, RawStamp& raw)
{
    Place& place = raw.place;
    lines.DropTrailing(place, 2);
    static const QRegularExpression together(QStringLiteral("\\A([0-9./-]+)[ T]+([0-9: .]+)\\z"));
    static const QRegularExpression digits(QStringLiteral("\\A[0-9]{1,9}\\z"));
    const QRegularExpressionMatch match = together.match(place.fields[0]);
    if (place.fields.size() == 1 && match.hasMatch()) {
        lines.Forgive(place, 0,
                      {Severity::Error, reason::DateForm,
                       Tr("comtrade", "no comma separates date and time in '%1'").arg(place.fields[0]),
                       Tr("comtrade", "the blank is taken for it")});
        place.fields = QStringList{match.captured(1), match.captured(2)};
    } else if (place.fields.size() == 3 && digits.match(place.fields[2]).hasMatch() &&
               !place.fields[1].contains(QLatin1Char('.'))) {
        lines.Forgive(place, 2,
                      {Severity::Error, reason::TimeForm,
                       Tr("comtrade", "a comma separates the decimals of the seconds"),
                       Tr("comtrade", "read as a point")});
        place.fields[1] += QLatin1Char('.') + place.fields.takeLast();
    }
    lines.ExpectFields(place, 2, 2, raw.what);
}

// The time of day that a line says if the recorder had no clock.
bool IsZero(const QString& text)
{
    static const QRegularExpression other(QStringLiteral("[^0 .:/-]"));
    return !other.match(text).hasMatch();
}

RawStamp Take(CfgLines& lines, const QString& what)
{
    RawStamp raw;
    raw.what = what;
    raw.place = lines.Take(what);
    Arrange(lines, raw);
    raw.clock = raw.place.fields[1];
    const QString date = raw.place.fields[0];
    if (IsZero(date))
        return raw;
    raw.isSet = true;
    static const QRegularExpression form(
        QStringLiteral("\\A([0-9]{1,4})\\s*([/.-])\\s*([0-9]{1,2})\\s*\\2\\s*([0-9]{1,5})\\z"));
    const QRegularExpressionMatch match = form.match(date);
    if (!match.hasMatch() || raw.clock.isEmpty())
        lines.Fail(
            raw.place,
            Tr("comtrade", "'%1,%2' should be dd/mm/yyyy,hh:mm:ss.ssssss").arg(date, raw.place.fields[1]));
    raw.parts = QStringList{match.captured(1), match.captured(3), match.captured(4)};
    if (match.captured(2) != QLatin1String("/"))
        lines.Forgive(
            raw.place, 0,
            {Severity::Error, reason::DateForm,
             Tr("comtrade", "'%1' separates day, month and year with something other than slashes").arg(date),
             Tr("comtrade", "read as if they were slashes")});
    return raw;
}

// Whether the line is one word, as the type of the data is.
bool IsWord(const Place& place)
{
    return place.fields.size() == 1 && !place.fields[0].isEmpty() && place.fields[0][0].isLetter();
}

// The line of the trigger. If there is only one time, it is both.
RawStamp TakeTrigger(CfgLines& lines)
{
    const QString what = Tr("comtrade", "trigger time");
    if (!IsWord(lines.Peek()))
        return Take(lines, what);
    lines.Forgive(lines.Peek(), -1,
                  {Severity::Error, reason::LineLacking,
                   Tr("comtrade", "the line with %1 is missing").arg(what),
                   Tr("comtrade", "the other of the two times is taken")});
    RawStamp lacking;
    lacking.isLacking = true;
    return lacking;
}

// The year of one or two digits, or of programs that count from 1900 and write 104 or 19104 for 2004.
int FullYear(const QString& digits)
{
    constexpr int pivot = 70; // 70 to 99: of the last century; recorders that write COMTRADE are younger
    const int number = digits.toInt();
    if (digits.size() <= 2)
        return number + (number < pivot ? 2000 : 1900);
    if (digits.size() == 3)
        return number + 1900;
    return digits.size() == 5 ? number - 19000 + 1900 : number;
}

QDate DateOf(const RawStamp& raw, Order order)
{
    const QStringList& parts = raw.parts;
    if (order == Order::YearFirst)
        return QDate(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
    const bool isDayFirst = order == Order::DayFirst;
    if (parts[0].size() > 2)
        return {};
    return QDate(FullYear(parts[2]), parts[isDayFirst ? 1 : 0].toInt(), parts[isDayFirst ? 0 : 1].toInt());
}

bool Fits(const RawStamp& raw, Order order)
{
    return !raw.isSet || raw.IsYearFirst() || DateOf(raw, order).isValid();
}

// The order of both lines: that of the revision unless only the other one gives dates.
Order OrderOf(const RawStamp& start, const RawStamp& trigger, Revision revision)
{
    const Order usual = revision == Revision::R1991 ? Order::MonthFirst : Order::DayFirst;
    const Order other = revision == Revision::R1991 ? Order::DayFirst : Order::MonthFirst;
    const bool isUsual = Fits(start, usual) && Fits(trigger, usual);
    return !isUsual && Fits(start, other) && Fits(trigger, other) ? other : usual;
}

void CheckYear(CfgLines& lines, const RawStamp& raw, Revision revision)
{
    const int digits = raw.IsYearFirst() ? 4 : raw.parts[2].size();
    const int wanted = revision == Revision::R1991 ? 2 : 4;
    if (digits == wanted)
        return;
    const int year = FullYear(raw.parts[raw.IsYearFirst() ? 0 : 2]);
    lines.Forgive(
        raw.place, 0,
        {digits == 4 ? Severity::Warning : Severity::Error, reason::DateForm,
         Tr("comtrade", "the year in '%1' should have %2 digits").arg(raw.place.fields[0]).arg(wanted),
         Tr("comtrade", "read as %1").arg(year)});
}

QDate ReadDate(CfgLines& lines, const RawStamp& raw, Order order, Revision revision)
{
    const Order usual = revision == Revision::R1991 ? Order::MonthFirst : Order::DayFirst;
    const Order own = raw.IsYearFirst() ? Order::YearFirst : order;
    const QDate date = DateOf(raw, own);
    if (!date.isValid())
        lines.Fail(
            raw.place,
            Tr("comtrade", "'%1,%2' is no date and time").arg(raw.place.fields[0], raw.place.fields[1]));
    CheckYear(lines, raw, revision);
    if (own != usual)
        lines.Forgive(raw.place, 0,
                      {Severity::Error, reason::DateOrder,
                       (usual == Order::DayFirst
                            ? Tr("comtrade", "the day should come before the month, '%1' is no such date")
                            : Tr("comtrade", "the month should come before the day, '%1' is no such date"))
                           .arg(raw.place.fields[0]),
                       Tr("comtrade", "read as %1").arg(date.toString(Qt::ISODate))});
    return date;
}

// The parts of a time of day, before their values are looked at.
QStringList ClockParts(CfgLines& lines, const RawStamp& raw)
{
    QStringList parts = raw.clock.split(QLatin1Char(':'));
    const int digits = parts.size() == 4 ? parts[3].trimmed().size() : 0;
    if (digits == 3 || digits == 6 || digits == 9) {
        lines.Forgive(raw.place, 1,
                      {Severity::Error, reason::TimeForm,
                       Tr("comtrade", "a colon separates the decimals of the seconds"),
                       Tr("comtrade", "read as a point")});
        const QString decimals = parts.takeLast().trimmed();
        parts[2] += QLatin1Char('.') + decimals;
    }
    if (parts.size() != 3)
        lines.Fail(raw.place, Tr("comtrade", "'%1,%2' should be dd/mm/yyyy,hh:mm:ss.ssssss")
                                  .arg(raw.place.fields[0], raw.place.fields[1]));
    for (QString& part : parts)
        part = part.trimmed();
    return parts;
}

int ClockNumber(CfgLines& lines, const RawStamp& raw, const QString& digits, int largest, const QString& what)
{
    static const QRegularExpression form(QStringLiteral("\\A[0-9]{1,9}\\z"));
    if (!form.match(digits).hasMatch())
        lines.Fail(raw.place, Tr("comtrade", "%1 is '%2', which is no number").arg(what, digits));
    if (digits.toInt() > largest)
        lines.Fail(
            raw.place,
            Tr("comtrade", "'%1,%2' is no date and time").arg(raw.place.fields[0], raw.place.fields[1]));
    return digits.toInt();
}

// Converts the digits after the decimal point into nanoseconds.
qint64 Nanoseconds(const QString& digits)
{
    return digits.leftJustified(9, QLatin1Char('0'), true).toLongLong();
}

// The decimals of a second: six, or nine in revision 2013.
void ReadDecimals(CfgLines& lines, const RawStamp& raw, Revision revision, TimeStamp& stamp)
{
    constexpr int most = 9;
    const QString decimals = raw.clock.section(QLatin1Char('.'), 1).trimmed();
    stamp.decimals = decimals.size();
    if (!decimals.isEmpty())
        ClockNumber(lines, raw, decimals.left(most), 999999999, Tr("comtrade", "decimals of a second"));
    stamp.nanoseconds += Nanoseconds(decimals);
    const QString what = Tr("comtrade", "the seconds have %1 decimals").arg(decimals.size());
    if (decimals.size() > most) {
        stamp.decimals = most;
        lines.Forgive(
            raw.place, 1,
            {Severity::Warning, reason::TimeForm, what, Tr("comtrade", "the first %1 are taken").arg(most)});
    } else if (decimals.size() > 6 && revision != Revision::R2013) {
        lines.Remark(raw.place, 1,
                     {Severity::Warning, reason::TimeForm, what,
                      Tr("comtrade", "read as they are; the times of the samples are in microseconds")});
    }
}

enum class HalfDay { None, Morning, Afternoon };

// Takes AM or PM off the time.
HalfDay TakeHalfDay(RawStamp& raw)
{
    static const QRegularExpression form(QStringLiteral("\\s*\\b([AP])\\.?M\\.?\\s*\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(raw.clock);
    if (!match.hasMatch())
        return HalfDay::None;
    raw.clock.truncate(match.capturedStart());
    return match.captured(1).toUpper() == QLatin1String("A") ? HalfDay::Morning : HalfDay::Afternoon;
}

// The hour of the day.
int ReadHour(CfgLines& lines, const RawStamp& raw, const QString& digits, HalfDay half)
{
    const bool isHalf = half != HalfDay::None;
    const int hour = ClockNumber(lines, raw, digits, isHalf ? 12 : 24, Tr("comtrade", "hour"));
    if (!isHalf)
        return hour;
    const int whole = hour % 12 + (half == HalfDay::Afternoon ? 12 : 0);
    lines.Forgive(
        raw.place, 1,
        {Severity::Error, reason::TimeForm,
         Tr("comtrade", "'%1' is a time of a clock with twelve hours").arg(raw.place.fields.value(1)),
         Tr("comtrade", "read as %1").arg(Tr("comtrade", "hour %1").arg(whole))});
    return whole;
}

void ReadClock(CfgLines& lines, RawStamp raw, Revision revision, TimeStamp& stamp)
{
    const HalfDay half = TakeHalfDay(raw);
    const QStringList parts = ClockParts(lines, raw);
    raw.clock = parts.join(QLatin1Char(':'));
    const int hour = ReadHour(lines, raw, parts[0], half);
    const int minute = ClockNumber(lines, raw, parts[1], 59, Tr("comtrade", "minute"));
    const int second =
        ClockNumber(lines, raw, parts[2].section(QLatin1Char('.'), 0, 0), 60, Tr("comtrade", "second"));
    stamp.nanoseconds = ((hour * 60 + minute) * qint64{60} + second) * Second;
    ReadDecimals(lines, raw, revision, stamp);
    if (second == 60)
        lines.Remark(raw.place, 1,
                     {Severity::Warning, reason::TimeForm,
                      Tr("comtrade", "'%1' has 60 seconds").arg(raw.clock),
                      Tr("comtrade", "read as the start of the next minute")});
    if (hour == 24)
        lines.Forgive(raw.place, 1,
                      {Severity::Error, reason::TimeForm, Tr("comtrade", "'%1' has 24 hours").arg(raw.clock),
                       Tr("comtrade", "read as the start of the next day")});
    if (stamp.nanoseconds >= Day) {
        stamp.nanoseconds -= Day;
        stamp.date = stamp.date.addDays(1);
    }
}

TimeStamp ReadStamp(CfgLines& lines, const RawStamp& raw, Order order, Revision revision)
{
    TimeStamp stamp;
    stamp.date = ReadDate(lines, raw, order, revision);
    ReadClock(lines, raw, revision, stamp);
    return stamp;
}

// Stands for a moment that the record does not have.
TimeStamp Unknown()
{
    TimeStamp stamp;
    stamp.date = QDate(1970, 1, 1);
    stamp.decimals = 6;
    return stamp;
}

// The stamp, or the other one if the clock was not set.
TimeStamp StampOr(CfgLines& lines, const RawStamp& raw, const std::optional<TimeStamp>& own,
                  const std::optional<TimeStamp>& other)
{
    if (own)
        return *own;
    if (raw.isLacking)
        return other ? *other : Unknown();
    const Slip slip{Severity::Error, reason::ClockNotSet,
                    Tr("comtrade", "%1 is '%2', which is no date").arg(raw.what, raw.place.fields[0]),
                    other ? Tr("comtrade", "the other of the two times is taken")
                          : Tr("comtrade", "not known; 1970-01-01 stands for it")};
    lines.Forgive(raw.place, 0, slip);
    return other ? *other : Unknown();
}

} // namespace

bool IsStamp(const Place& place)
{
    return !place.fields.isEmpty() && IsStamp(place.fields[0]);
}

bool IsStamp(const QString& firstField)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[0-9]+\\s*[/.-]\\s*[0-9]+\\s*[/.-]\\s*[0-9]+([ T].*)?\\z"));
    const auto isSeparator = [](QChar one) { return one == '/' || one == '.' || one == '-'; };
    // Most lines are of channels.
    return std::any_of(firstField.begin(), firstField.end(), isSeparator) &&
           form.match(firstField).hasMatch();
}

bool HasShortYear(const Place& place)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[0-9]{1,2}\\s*/\\s*[0-9]{1,2}\\s*/\\s*[0-9]{1,2}\\z"));
    return !place.fields.isEmpty() && form.match(place.fields[0]).hasMatch();
}

void ReadStamps(CfgLines& lines, Configuration& configuration, Places& places)
{
    const QString what = Tr("comtrade", "start time");
    places.start = lines.Peek();
    const RawStamp start = Take(lines, what);
    places.trigger = IsWord(lines.Peek()) ? Place() : lines.Peek();
    const RawStamp trigger = TakeTrigger(lines);
    const Revision revision = configuration.revision;
    const Order order = OrderOf(start, trigger, revision);
    std::optional<TimeStamp> first;
    std::optional<TimeStamp> second;
    if (start.isSet)
        first = ReadStamp(lines, start, order, revision);
    if (trigger.isSet)
        second = ReadStamp(lines, trigger, order, revision);
    configuration.start = StampOr(lines, start, first, second);
    configuration.trigger = StampOr(lines, trigger, second, first);
}

} // namespace comtrade
