// Frequency, rates, times, codes of the clock, and the type of the data.
#include "comtrade/moment.h"
#include "validate/rules.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace validate {

namespace {

using comtrade::DataType;
using comtrade::Revision;
using comtrade::TimeStamp;

constexpr Rule OddFrequency = {
    reason::OddFrequency, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "the frequency of the network is %1 Hz; 50 and 60 are usual")};
constexpr Rule RateWithoutCount = {
    reason::RateContradicts, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the number of rates is 0, but the rate is %1; without a constant rate both are 0")};
constexpr Rule RateZero = {
    reason::RateContradicts, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the rate is 0, but the number of rates is %1; without a constant rate both are 0")};
constexpr Rule TooManyRates = {reason::RateContradicts, Severity::Warning,
                               QT_TRANSLATE_NOOP("validate", "there are %1 rates; the standard allows 999")};
constexpr Rule RateOrder = {
    reason::RateOrder, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the rate ends with sample %1, as the one before does, so that no sample has it; take "
                      "it out")};
constexpr Rule NoSamples = {reason::NoSamples, Severity::Warning,
                            QT_TRANSLATE_NOOP("validate", "the last sample is 0: the record has none")};
constexpr Rule StampsOverflow = {
    reason::StampsOverflow, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the times of the samples go to %1, and their field ends with %2; use a larger time "
                      "multiplier")};
constexpr Rule YearOutOfRange = {
    reason::YearOutOfRange, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the year is %1; the standard allows 1900 to 9999")};
constexpr Rule SecondDigits = {
    reason::SecondDigits, Severity::Note,
    QT_TRANSLATE_NOOP("validate",
                      "the seconds have %1 digits after the point; the standard has 6, and 9 for nanoseconds "
                      "in revision 2013")};
constexpr Rule DigitsDiffer = {
    reason::SecondDigits, Severity::Note,
    QT_TRANSLATE_NOOP("validate",
                      "the seconds have %1 digits after the point, those of the start have %2; the digits "
                      "give the unit of the times of the samples, so give both as many")};
constexpr Rule TriggerBeforeStart = {
    reason::TriggerOutside, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "the trigger is %1 s before the first sample; readers that look for it among the "
                      "samples find none")};
constexpr Rule TriggerAfterEnd = {
    reason::TriggerOutside, Severity::Note,
    QT_TRANSLATE_NOOP("validate", "the trigger is %1 s after the first sample, and the record has %2 s")};
constexpr Rule TypeNotInRevision = {
    reason::TypeNotInRevision, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "%1 data came with revision 2013, this is revision %2; older readers refuse them")};
constexpr Rule BadTimeCode = {
    reason::BadTimeCode, Severity::Warning,
    QT_TRANSLATE_NOOP("validate",
                      "'%1' should be the difference from UTC, as +3, -7h15 or 0, or x where it is not "
                      "known")};
constexpr Rule BadTimeQuality = {
    reason::BadTimeQuality, Severity::Warning,
    QT_TRANSLATE_NOOP("validate", "the quality of the time is '%1'; it is 0 to 9, A, B or F")};
constexpr Rule BadLeapSecond = {reason::BadLeapSecond, Severity::Warning,
                                QT_TRANSLATE_NOOP("validate", "the leap second is '%1'; it is 0, 1, 2 or 3")};

QString Text(double number)
{
    return QString::number(number, 'g', 10);
}

// Seconds from the first sample to the end of the record by its rates; 0 where there is none.
double Duration(const comtrade::Configuration& configuration)
{
    double seconds = 0;
    qint64 before = 0;
    for (const comtrade::SampleRate& rate : configuration.rates) {
        if (!(rate.hertz > 0))
            return 0;
        seconds += static_cast<double>(rate.lastSample - before) / rate.hertz;
        before = rate.lastSample;
    }
    return seconds;
}

void CheckFrequency(const CheckedConfiguration& checked)
{
    constexpr std::array<double, 2> usual = {50, 60};
    const double frequency = checked.configuration.lineFrequency;
    const bool isGiven = !checked.places.frequency.fields.value(0).isEmpty();
    if (isGiven && std::find(usual.begin(), usual.end(), frequency) == usual.end())
        checked.report.Add(OddFrequency, PositionOf(checked.places.frequency, 0), {Text(frequency)});
}

void CheckStamps(const CheckedConfiguration& checked)
{
    const comtrade::Configuration& configuration = checked.configuration;
    const bool isAscii = configuration.dataType == DataType::Ascii;
    const double most =
        isAscii ? configuration.revision == Revision::R2013 ? 9999999999999.0 : 9999999999.0 : 4294967294.0;
    const double unit = configuration.StampSeconds();
    const double last = unit > 0 ? std::floor(Duration(configuration) / unit) : 0;
    if (last > most && !checked.places.rates.empty())
        checked.report.Add(StampsOverflow, PositionOf(checked.places.rates.back(), 1),
                           {QString::number(last, 'f', 0), QString::number(most, 'f', 0)});
}

void CheckRates(const CheckedConfiguration& checked)
{
    const comtrade::Configuration& configuration = checked.configuration;
    const comtrade::Places& places = checked.places;
    constexpr int mostRates = 999;
    const int count = places.rateCount.fields.value(0).toInt();
    if (count > mostRates)
        checked.report.Add(TooManyRates, PositionOf(places.rateCount, 0), {QString::number(count)});
    qint64 before = 0;
    for (size_t i = 0; i < std::min(places.rates.size(), configuration.rates.size()); ++i) {
        const comtrade::SampleRate& rate = configuration.rates[i];
        const comtrade::Place& place = places.rates[i];
        if (count == 0 && rate.hertz != 0)
            checked.report.Add(RateWithoutCount, PositionOf(place, 0), {Text(rate.hertz)});
        else if (count > 0 && rate.hertz == 0)
            checked.report.Add(RateZero, PositionOf(place, 0), {QString::number(count)});
        if (i > 0 && rate.lastSample == before)
            checked.report.Add(RateOrder, PositionOf(place, 1), {QString::number(before)});
        before = rate.lastSample;
    }
    if (before == 0 && !places.rates.empty())
        checked.report.Add(NoSamples, PositionOf(places.rates.back(), 1));
    CheckStamps(checked);
}

void CheckMoment(const CheckedConfiguration& checked, const comtrade::Place& place, const TimeStamp& stamp)
{
    constexpr int firstYear = 1900;
    constexpr int lastYear = 9999;
    constexpr int microseconds = 6;
    constexpr int nanoseconds = 9;
    if (stamp.date.year() < firstYear || stamp.date.year() > lastYear)
        checked.report.Add(YearOutOfRange, PositionOf(place, 0), {QString::number(stamp.date.year())});
    // What is too fine for the revision is said by the reader.
    const bool is2013 = checked.configuration.revision == Revision::R2013;
    if (stamp.decimals < microseconds ||
        (is2013 && stamp.decimals > microseconds && stamp.decimals < nanoseconds))
        checked.report.Add(SecondDigits, PositionOf(place, 1), {QString::number(stamp.decimals)});
}

void CheckMoments(const CheckedConfiguration& checked)
{
    const comtrade::Configuration& configuration = checked.configuration;
    const TimeStamp& start = configuration.start;
    const TimeStamp& trigger = configuration.trigger;
    const comtrade::Place& place = checked.places.trigger;
    CheckMoment(checked, checked.places.start, start);
    CheckMoment(checked, place, trigger);
    const auto isFine = [](const TimeStamp& stamp) { return stamp.decimals > 6; };
    if (configuration.revision == Revision::R2013 && isFine(start) != isFine(trigger))
        checked.report.Add(DigitsDiffer, PositionOf(place, 1),
                           {QString::number(trigger.decimals), QString::number(start.decimals)});
    const double seconds = static_cast<double>(comtrade::NanosecondsBetween(start, trigger)) / 1e9;
    const double duration = Duration(configuration);
    if (seconds < 0)
        checked.report.Add(TriggerBeforeStart, {place.line, 0}, {Text(-seconds)});
    else if (duration > 0 && seconds > duration)
        checked.report.Add(TriggerAfterEnd, {place.line, 0}, {Text(seconds), Text(duration)});
}

void CheckData(const CheckedConfiguration& checked)
{
    const comtrade::Configuration& configuration = checked.configuration;
    const bool isNew =
        configuration.dataType == DataType::Binary32 || configuration.dataType == DataType::Float32;
    if (isNew && configuration.revision != Revision::R2013)
        checked.report.Add(
            TypeNotInRevision, PositionOf(checked.places.dataType, 0),
            {NameOf(configuration.dataType), QString::number(static_cast<int>(configuration.revision))});
}

// The codes are those of revision 2013; without the line there is nothing to say.
void CheckClock(const CheckedConfiguration& checked)
{
    static const QRegularExpression offset(
        QStringLiteral("\\A([-+]?(1[0-4]|0?[0-9])([hH][0-5][0-9])?|[xX])\\z"));
    static const QRegularExpression quality(QStringLiteral("\\A[0-9ABFabf]\\z"));
    static const QRegularExpression leap(QStringLiteral("\\A[0-3]\\z"));
    struct Code
    {
        const comtrade::Place& place;
        int field;
        const QRegularExpression& form;
        const Rule& rule;
    };
    const comtrade::Places& places = checked.places;
    for (const Code& code :
         {Code{places.timeCode, 0, offset, BadTimeCode}, Code{places.timeCode, 1, offset, BadTimeCode},
          Code{places.timeQuality, 0, quality, BadTimeQuality},
          Code{places.timeQuality, 1, leap, BadLeapSecond}}) {
        if (code.place.fields.size() <= code.field)
            continue;
        const QString& text = code.place.fields[code.field];
        if (!code.form.match(text).hasMatch())
            checked.report.Add(code.rule, PositionOf(code.place, code.field), {text});
    }
}

} // namespace

void CheckTimes(const CheckedConfiguration& checked)
{
    CheckFrequency(checked);
    CheckRates(checked);
    CheckMoments(checked);
    CheckData(checked);
    if (checked.configuration.revision == Revision::R2013)
        CheckClock(checked);
}

} // namespace validate
