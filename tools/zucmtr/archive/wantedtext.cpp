#include "zucmtr/archive/wantedtext.h"

#include "text/texts.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace archive {

namespace {

constexpr qint64 Second = 1000000; // us

struct Unit
{
    const char* name;
    double size;
};
using Units = std::vector<Unit>;

const Units& Times()
{
    static const Units units = {{"ms", 0.001}, {"мс", 0.001}, {"s", 1}, {"с", 1}, {"min", 60}, {"мин", 60}};
    return units;
}

const Units& Ages()
{
    static const Units units = {{"min", 60},  {"мин", 60},   {"h", 3600},   {"ч", 3600},     {"d", 86400},
                                {"д", 86400}, {"w", 604800}, {"н", 604800}, {"y", 31536000}, {"г", 31536000}};
    return units;
}

const Units& Currents()
{
    static const Units units = {{"kA", 1000}, {"ka", 1000}, {"кА", 1000}, {"A", 1}, {"a", 1}, {"А", 1}};
    return units;
}

// A number with one of the units, in the unit whose size is 1. A comma may be the decimal separator.
std::optional<double> Measured(const QString& text, const Units& units)
{
    static const QRegularExpression form(QStringLiteral("\\A(\\d+(?:[.,]\\d+)?) *([^\\d\\s]+)\\z"));
    const QRegularExpressionMatch match = form.match(text);
    const QString name = match.captured(2);
    const auto unit = std::find_if(units.begin(), units.end(),
                                   [&](const Unit& one) { return name == QString::fromUtf8(one.name); });
    if (!match.hasMatch() || unit == units.end())
        return std::nullopt;
    return match.captured(1).replace(QLatin1Char(','), QLatin1Char('.')).toDouble() * unit->size;
}

[[noreturn]] void Refuse(const QString& text, const QString& what)
{
    throw WantedTextError(Tr("archive", "'%1' is wrong; give %2").arg(text, what));
}

// The first instant of what is written, or the first after it. Invalid if there is no such day or time.
QDateTime Calendar(const QRegularExpressionMatch& match, End end)
{
    const auto part = [&](int i) { return match.captured(i).toInt(); };
    const auto has = [&](int i) { return !match.captured(i).isEmpty(); };
    const QTime time(part(4), part(5), part(6),
                     match.captured(7).leftJustified(3, QLatin1Char('0'), true).toInt());
    QDateTime moment(QDate(part(1), has(2) ? part(2) : 1, has(3) ? part(3) : 1), time, Qt::UTC);
    if (!time.isValid() || !moment.isValid())
        return QDateTime();
    if (end == End::First)
        return moment;
    if (has(7))
        return moment.addMSecs(1);
    if (has(4))
        return moment.addSecs(has(6) ? 1 : 60);
    return has(3) ? moment.addDays(1) : has(2) ? moment.addMonths(1) : moment.addYears(1);
}

// Minutes of "Z", "+03:00" or "-0730".
qint64 OffsetOf(const QString& text)
{
    if (text.compare(QLatin1String("Z"), Qt::CaseInsensitive) == 0)
        return 0;
    const int minutes = text.mid(1, 2).toInt() * 60 + text.right(2).toInt();
    return text.startsWith(QLatin1Char('-')) ? -minutes : minutes;
}

std::optional<double> BoundOf(const QString& text)
{
    if (text.isEmpty())
        return std::nullopt;
    return QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
}

struct KindWord
{
    const char* word;
    const char* kinds; // with blanks between
};

const KindWord Words[] = {
    {"AG", "AG"},
    {"BG", "BG"},
    {"CG", "CG"},
    {"AB", "AB"},
    {"BC", "BC"},
    {"CA", "CA"},
    {"ABG", "ABG"},
    {"BCG", "BCG"},
    {"CAG", "CAG"},
    {"ABC", "ABC"},
    {"ABCG", "ABCG"},
    {"single", "AG BG CG"},
    {"two", "AB BC CA"},
    {"two-earth", "ABG BCG CAG"},
    {"three", "ABC ABCG"},
    {"earth", "AG BG CG ABG BCG CAG ABCG"},
    {"any", "AG BG CG AB BC CA ABG BCG CAG ABC ABCG"},
    {"none", ""},
};

} // namespace

catalogue::Instant InstantOf(const QString& text, End end)
{
    static const QRegularExpression form(QStringLiteral(
        "\\A(\\d{4})(?:-(\\d\\d)(?:-(\\d\\d)(?:[Tt ](\\d\\d):(\\d\\d)(?::(\\d\\d)(?:[.,](\\d{1,9}))?)?)?)?)?"
        "([Zz]|[+-]\\d\\d:?\\d\\d)?\\z"));
    if (text == QLatin1String("today"))
        return InstantOf(QDate::currentDate().toString(Qt::ISODate), end);
    if (const std::optional<double> age = Measured(text, Ages()))
        return {QDateTime::currentMSecsSinceEpoch() * 1000 - static_cast<qint64>(std::llround(*age * Second)),
                false};
    const QRegularExpressionMatch match = form.match(text);
    const QDateTime moment = Calendar(match, end);
    const QString offset = match.captured(8);
    if (!match.hasMatch() || !moment.isValid() || (!offset.isEmpty() && match.captured(4).isEmpty()))
        Refuse(text,
               Tr("archive",
                  "a date or a time as 2024-03, 2024-03-31, 2024-03-31T12:00 or 2024-03-31T12:00+03:00, "
                  "or how long ago as 12h, 30d or 1y"));
    const qint64 at = moment.toMSecsSinceEpoch() * 1000;
    return {at - (offset.isEmpty() ? 0 : OffsetOf(offset) * 60 * Second), offset.isEmpty()};
}

double SecondsOf(const QString& text)
{
    if (const std::optional<double> seconds = Measured(text, Times()))
        return *seconds;
    Refuse(text, Tr("archive", "a duration with its unit, as 80ms or 0.5s"));
}

double AgeOf(const QString& text)
{
    if (const std::optional<double> seconds = Measured(text, Ages()))
        return *seconds;
    Refuse(text, Tr("archive", "a time with its unit, as 12h, 30d or 4w"));
}

double AmperesOf(const QString& text)
{
    if (const std::optional<double> amperes = Measured(text, Currents()))
        return *amperes;
    Refuse(text, Tr("archive", "a current with its unit, as 12kA or 800A"));
}

Distances DistancesOf(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(\\d+(?:[.,]\\d+)?)?-(\\d+(?:[.,]\\d+)?)? *(km|км|%)?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    const catalogue::Range range{BoundOf(match.captured(1)), BoundOf(match.captured(2))};
    if (!match.hasMatch() || (!range.from && !range.to) ||
        (range.from && range.to && *range.from > *range.to))
        Refuse(text, Tr("archive", "a distance from and to, as 20-30 (in km), 20- or 40-60%"));
    return match.captured(3) == QLatin1String("%") ? Distances{{}, range} : Distances{range, {}};
}

QStringList KindsOf(const QString& text)
{
    QStringList kinds;
    for (const QString& given : text.split(QLatin1Char(','))) {
        const auto word = std::find_if(std::begin(Words), std::end(Words), [&](const KindWord& one) {
            return given.trimmed().compare(QLatin1String(one.word), Qt::CaseInsensitive) == 0;
        });
        if (word == std::end(Words))
            Refuse(given,
                   Tr("archive",
                      "AG, BG, CG, AB, BC, CA, ABG, BCG, CAG, ABC, ABCG, single, two, two-earth, three, "
                      "earth, any or none, or several with commas between"));
        kinds << QString::fromLatin1(word->kinds).split(QLatin1Char(' '));
    }
    kinds.removeDuplicates();
    return kinds;
}

const std::vector<std::string>& KindWords()
{
    static const std::vector<std::string> words = [] {
        std::vector<std::string> list;
        for (const KindWord& word : Words)
            list.emplace_back(word.word);
        return list;
    }();
    return words;
}

QStringList KindsWithPhases(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\A[ABC]{1,3}\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    if (!form.match(text).hasMatch())
        Refuse(text, Tr("archive", "phases as A, BC or ABC"));
    QStringList kinds = KindsOf(QStringLiteral("any"));
    for (const QChar phase : text.toUpper()) {
        kinds = kinds.filter(phase);
    }
    return kinds;
}

} // namespace archive
