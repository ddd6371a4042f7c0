#include "comtrade/cfglines.h"

#include "comtrade/text.h"
#include "text/texts.h"

#include <algorithm>
#include <cmath>

namespace comtrade {

namespace {

Place Split(qint64 number, const QString& text)
{
    Place place;
    place.line = number;
    place.text = text;
    const int commas = text.count(QLatin1Char(','));
    place.fields.reserve(commas + 1);
    place.columns.reserve(static_cast<size_t>(commas) + 1);
    int from = 0;
    while (from <= text.size()) {
        const int comma = text.indexOf(QLatin1Char(','), from);
        const int end = comma < 0 ? text.size() : comma;
        int first = from;
        while (first < end && text[first].isSpace())
            ++first;
        place.fields << text.mid(first, end - first).trimmed();
        place.columns.push_back(first + 1);
        from = end + 1;
    }
    return place;
}

// The length of a line end at the place; 0 if there is none. Some transfers make CR CR LF of CR LF.
int LineEndAt(const QString& text, int at)
{
    int end = at;
    while (end < text.size() && text[end] == QLatin1Char('\r'))
        ++end;
    if (end < text.size() && text[end] == QLatin1Char('\n'))
        return end + 1 - at;
    return end > at ? 1 : 0;
}

// The end as people call it.
QString NameOfEnd(const QString& end)
{
    QStringList names;
    for (const QChar one : end)
        names << (one == QLatin1Char('\r') ? QStringLiteral("CR") : QStringLiteral("LF"));
    return names.join(QLatin1Char(' '));
}

} // namespace

QString CfgText(const QByteArray& bytes, const QString& encoding, const QString& fileName, qint64 firstLine,
                Findings* forgiven)
{
    if (encoding.startsWith(QLatin1String("UTF-16")))
        Forgive(forgiven, fileName, firstLine, 0,
                {Severity::Error, reason::NotUtf8, Tr("comtrade", "the text is UTF-16"),
                 Tr("comtrade", "read as that")});
    else if (HasByteOrderMark(bytes))
        Forgive(forgiven, fileName, firstLine, 0,
                {Severity::Warning, reason::ByteOrderMark,
                 Tr("comtrade", "a byte order mark precedes the text"), Tr("comtrade", "it is left out")});
    return DecodedText(bytes, encoding);
}

CfgLines::CfgLines(const QString& text, const QString& fileName_, Findings* forgiven_, qint64 firstLine)
    : fileName(fileName_), forgiven(forgiven_)
{
    Split(text, firstLine);
    TakeSemicolons();
    left = std::count_if(lines.begin(), lines.end(), [](const Line& line) { return !line.isBlank; });
}

// NUL bytes and the mark with which DOS ended texts are no part of the last line.
void CfgLines::TakeOffEnd(QString& text, qint64 firstLine)
{
    const int mark = text.indexOf(QChar(0x1A));
    int end = mark >= 0 ? mark : text.size();
    while (end > 0 && text[end - 1].isNull())
        --end;
    if (end == text.size())
        return;
    Place place;
    place.line = firstLine + std::count(text.begin(), text.begin() + end, QLatin1Char('\n'));
    const bool isMark = text[end] == QChar(0x1A);
    text.truncate(end);
    if (isMark)
        Forgive(place, -1,
                {Severity::Note, reason::EndOfFileMark, Tr("comtrade", "the text ends with the byte 1A"),
                 Tr("comtrade", "what follows it is left out")});
    else
        Forgive(place, -1,
                {Severity::Warning, reason::EndOfFileMark, Tr("comtrade", "the text ends with bytes 0"),
                 Tr("comtrade", "they are left out")});
}

void CfgLines::Split(QString text, qint64 firstLine)
{
    TakeOffEnd(text, firstLine);
    qint64 number = firstLine;
    QString strangeEnd;
    Place strangePlace;
    int from = 0;
    for (int at = 0; at < text.size();) {
        const int length = LineEndAt(text, at);
        if (length == 0) {
            ++at;
            continue;
        }
        const QString line = text.mid(from, at - from);
        lines.push_back({number, line, line.trimmed().isEmpty()});
        const QString end = text.mid(at, length);
        // Another end than LF outweighs it: LF alone is read everywhere.
        if (end != QLatin1String("\r\n") && (strangeEnd.isEmpty() || strangeEnd == QLatin1String("\n")) &&
            end != strangeEnd) {
            strangeEnd = end;
            strangePlace.line = number;
        }
        ++number;
        from = at = at + length;
    }
    if (from < text.size())
        lines.push_back({number, text.mid(from), text.mid(from).trimmed().isEmpty()});
    if (strangeEnd.isEmpty())
        return;
    const bool isFeed = strangeEnd == QLatin1String("\n");
    const Slip slip{
        isFeed ? Severity::Note : Severity::Warning, reason::LineEnds,
        Tr("comtrade", "lines should end with CR LF, this one ends with %1").arg(NameOfEnd(strangeEnd)),
        Tr("comtrade", "read as the end of a line")};
    if (isFeed)
        Remark(strangePlace, -1, slip);
    else
        Forgive(strangePlace, -1, slip);
}

// Some programs for tables write semicolons. A text with commas, too, has them for something else.
void CfgLines::TakeSemicolons()
{
    const bool hasCommas = std::any_of(lines.begin(), lines.end(),
                                       [](const Line& line) { return line.text.contains(QLatin1Char(',')); });
    const auto first = std::find_if(lines.begin(), lines.end(),
                                    [](const Line& line) { return line.text.contains(QLatin1Char(';')); });
    if (hasCommas || first == lines.end())
        return;
    Place place;
    place.line = first->number;
    Forgive(place, -1,
            {Severity::Error, reason::FieldSeparator,
             Tr("comtrade", "semicolons separate the fields, not commas"),
             Tr("comtrade", "read as if they were commas")});
    for (Line& line : lines)
        line.text.replace(QLatin1Char(';'), QLatin1Char(','));
}

void CfgLines::PassBlanks()
{
    for (; next < lines.size() && lines[next].isBlank; ++next) {
        Place place;
        place.line = lines[next].number;
        const bool atEnd = Left() == 0;
        const Slip slip{atEnd ? Severity::Note : Severity::Warning, reason::BlankLine,
                        Tr("comtrade", "a blank line"), Tr("comtrade", "passed over")};
        if (atEnd)
            Remark(place, -1, slip);
        else
            Forgive(place, -1, slip);
    }
}

Place CfgLines::Take(const QString& what)
{
    if (Left() > 0)
        PassBlanks();
    return TakeEvenIfEmpty(what);
}

Place CfgLines::TakeEvenIfEmpty(const QString& what)
{
    if (next >= lines.size() || (Left() == 0 && lines[next].isBlank))
        throw Error(Tr("comtrade", "%1: ends after line %2, where %3 should follow")
                        .arg(fileName)
                        .arg(lastTaken)
                        .arg(what),
                    lastTaken);
    const Line& line = lines[next++];
    lastTaken = line.number;
    left -= line.isBlank ? 0 : 1;
    return comtrade::Split(line.number, line.text);
}

Place CfgLines::Peek(int ahead) const
{
    for (size_t i = next; i < lines.size(); ++i)
        if (!lines[i].isBlank && ahead-- == 0)
            return comtrade::Split(lines[i].number, lines[i].text);
    return {};
}

int CfgLines::Find(int from, const std::function<bool(const QString& field)>& isIt) const
{
    int ahead = 0;
    for (size_t i = next; i < lines.size(); ++i) {
        if (lines[i].isBlank)
            continue;
        if (ahead >= from && isIt(lines[i].text.left(lines[i].text.indexOf(QLatin1Char(','))).trimmed()))
            return ahead;
        ++ahead;
    }
    return std::max(ahead, from);
}

void CfgLines::Forgive(const Place& place, int field, const Slip& slip)
{
    comtrade::Forgive(forgiven, fileName, place.line, place.ColumnOf(field), slip);
}

void CfgLines::Remark(const Place& place, int field, const Slip& slip)
{
    comtrade::Remark(forgiven, fileName, place.line, place.ColumnOf(field), slip);
}

void CfgLines::Fail(const Place& place, const QString& what) const
{
    throw Error(Tr("comtrade", "%1, line %2: %3").arg(fileName, QString::number(place.line), what),
                place.line);
}

void CfgLines::DropTrailing(Place& place, int most)
{
    if (place.fields.size() <= most || !place.fields.last().isEmpty())
        return;
    int size = place.fields.size();
    while (size > most && place.fields[size - 1].isEmpty())
        --size;
    Forgive(place, size,
            {Severity::Warning, reason::ExtraFields, Tr("comtrade", "the line ends with a comma"),
             Tr("comtrade", "it is left out")});
    while (place.fields.size() > size) {
        place.fields.removeLast();
        place.columns.pop_back();
    }
}

void CfgLines::ExpectFields(Place& place, int fewest, int most, const QString& what)
{
    DropTrailing(place, most);
    const int count = place.fields.size();
    if (count < fewest)
        Fail(place, Tr("comtrade", "%1 needs %2 fields, there are %3").arg(what).arg(fewest).arg(count));
    if (count > most)
        Fail(place, Tr("comtrade", "%1 has %2 fields, there are %3; does a name hold a comma?")
                        .arg(what)
                        .arg(most)
                        .arg(count));
}

void CfgLines::NotANumber(const Place& place, int field, const QString& what) const
{
    Fail(place, Tr("comtrade", "%1 is '%2', which is no number").arg(what, place.fields.value(field)));
}

double CfgLines::Number(const Place& place, int field, const QString& what)
{
    const QString text = place.fields.value(field);
    bool ok = false;
    double number = text.toDouble(&ok);
    if (ok && std::isfinite(number))
        return number;
    // FORTRAN writes the exponent of double precision with a D.
    number = QString(text).replace(QLatin1Char('D'), QLatin1Char('E'), Qt::CaseInsensitive).toDouble(&ok);
    if (!ok || !std::isfinite(number))
        NotANumber(place, field, what);
    Forgive(place, field,
            {Severity::Error, reason::NumberForm,
             Tr("comtrade", "%1 is '%2', which is no plain number").arg(what, text),
             Tr("comtrade", "read as %1").arg(number, 0, 'g', 15)});
    return number;
}

qint64 CfgLines::Integer(const Place& place, int field, const QString& what)
{
    const QString text = place.fields.value(field);
    bool ok = false;
    const qint64 integer = text.toLongLong(&ok);
    if (ok)
        return integer;
    constexpr double largest = 9e15; // up to which a double holds every integer
    const double number = text.toDouble(&ok);
    if (!ok || !(std::abs(number) <= largest) || number != std::floor(number))
        NotANumber(place, field, what);
    const auto whole = static_cast<qint64>(number);
    Forgive(place, field,
            {Severity::Error, reason::NumberForm,
             Tr("comtrade", "%1 is '%2', which is not written as an integer").arg(what, text),
             Tr("comtrade", "read as %1").arg(whole)});
    return whole;
}

double CfgLines::NumberOr(double otherwise, const Place& place, int field, const QString& what)
{
    if (!place.fields.value(field).isEmpty())
        return Number(place, field, what);
    Forgive(place, field,
            {Severity::Error, reason::FieldEmpty, Tr("comtrade", "%1 is empty").arg(what),
             Tr("comtrade", "read as %1").arg(otherwise, 0, 'g', 15)});
    return otherwise;
}

void CfgLines::Close()
{
    if (Left() > 0)
        Remark(Peek(), -1,
               {Severity::Warning, reason::LinesLeftOver,
                Tr("comtrade", "%1 lines follow the last one of a configuration").arg(Left()),
                Tr("comtrade", "they are left out")});
    else if (next < lines.size())
        PassBlanks();
}

} // namespace comtrade
