#include "comtrade/cfgchannels.h"

#include "text/texts.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace comtrade {

namespace {

constexpr int NamesOfAnalog = 5;   // number, name, phase, circuit, unit
constexpr int FieldsOf1991 = 10;   // with a, b, skew, minimum and maximum
constexpr int FieldsOfAnalog = 13; // with primary factor, secondary factor and side
constexpr int FieldsOfState1991 = 3;
constexpr int FieldsOfState = 5;

bool IsNumber(const QString& field)
{
    bool ok = false;
    const double number = field.toDouble(&ok);
    return ok && std::isfinite(number);
}

bool IsState(const QString& field)
{
    return field == QLatin1String("0") || field == QLatin1String("1");
}

// Latin for Cyrillic letters that look the same, as keyboards put them there.
QString LatinLetters(QString text)
{
    static const QString cyrillic = QStringLiteral("АВСРЅ");
    static const QString latin = QStringLiteral("ABCPS");
    text = text.toUpper();
    for (QChar& letter : text) {
        const int index = cyrillic.indexOf(letter);
        if (index >= 0)
            letter = latin[index];
    }
    return text;
}

// The count in a field such as "32A"; nothing if it is not one of this letter.
std::optional<qint64> CountIn(const QString& field, QChar letter)
{
    const QString text = LatinLetters(field);
    if (!text.endsWith(letter))
        return std::nullopt;
    bool ok = false;
    const qint64 count = text.chopped(1).trimmed().toLongLong(&ok);
    return ok ? std::optional<qint64>(count) : std::nullopt;
}

// The count in field `index` of three, which should be "32A" or "32D".
qint64 CountAt(CfgLines& lines, const Place& place, int index, QChar letter)
{
    const QString field = place.fields.value(index);
    const std::optional<qint64> count = CountIn(field, letter);
    if (count) {
        if (!field.endsWith(letter, Qt::CaseInsensitive))
            lines.Forgive(
                place, index,
                {Severity::Error, reason::WordForm,
                 Tr("comtrade", "the letter of '%1' is not the Latin %2").arg(field, QString(letter)),
                 Tr("comtrade", "read as %1").arg(QString::number(*count) + letter)});
        return *count;
    }
    bool ok = false;
    const qint64 plain = field.toLongLong(&ok);
    if (!ok)
        lines.Fail(place, Tr("comtrade", "'%1' should be a number and %2").arg(field, QString(letter)));
    lines.Forgive(place, index,
                  {Severity::Error, reason::WordForm,
                   Tr("comtrade", "'%1' should be a number and %2").arg(field, QString(letter)),
                   Tr("comtrade", "read as %1").arg(QString::number(plain) + letter)});
    return plain;
}

// "1D,2A" for "2A,1D".
void PutInOrder(CfgLines& lines, Place& place)
{
    const QLatin1Char a('A');
    const QLatin1Char d('D');
    if (!CountIn(place.fields.value(1), d) || !CountIn(place.fields.value(2), a))
        return;
    lines.Forgive(place, 1,
                  {Severity::Error, reason::WordForm,
                   Tr("comtrade", "the count of status channels comes before that of analog channels"),
                   Tr("comtrade", "each is known by its letter")});
    place.fields.swapItemsAt(1, 2);
    std::swap(place.columns[1], place.columns[2]);
}

// What may stand in a field for the phase: nothing, or a few letters.
bool MayBePhase(const QString& field)
{
    constexpr int longest = 4;
    return field.size() <= longest && !IsNumber(field);
}

// How many of the fields of an analog line are the numbers that end it: 8 with factors and side, 5 in 1991.
// Only where these numbers are what they should be.
bool EndsWith(const QStringList& fields, int numbers)
{
    const int first = fields.size() - numbers;
    if (first < NamesOfAnalog)
        return false;
    for (int i = first; i < first + 5; ++i) {
        const bool mayBeEmpty = i == first + 2; // the skew
        if (!IsNumber(fields[i]) && !(mayBeEmpty && fields[i].isEmpty()))
            return false;
    }
    if (numbers == 5)
        return true;
    const QString side = LatinLetters(fields.last());
    return IsNumber(fields[first + 5]) && IsNumber(fields[first + 6]) &&
           (side == QLatin1String("P") || side == QLatin1String("S"));
}

// Joins the fields from `first` on to one, as many as are too many.
void Join(Place& place, int first, int tooMany)
{
    place.fields[first] = place.TextOf(first, first + tooMany);
    for (; tooMany > 0; --tooMany) {
        place.fields.removeAt(first + 1);
        place.columns.erase(place.columns.begin() + first + 1);
    }
}

void ForgiveComma(CfgLines& lines, const Place& place, int field)
{
    lines.Forgive(place, field,
                  {Severity::Error, reason::CommaInText,
                   Tr("comtrade", "a text holds a comma, which separates fields"),
                   Tr("comtrade", "read as '%1'").arg(place.fields[field])});
}

// True if the quotation marks of the line explain its number of fields.
bool TakeQuotes(CfgLines& lines, Place& place, int wanted)
{
    const QStringList fields = Unquoted(place);
    if (fields.size() != wanted)
        return false;
    lines.Forgive(place, 1,
                  {Severity::Error, reason::QuotationMarks,
                   Tr("comtrade", "quotation marks do not keep a comma inside of a field"),
                   Tr("comtrade", "read as if they did")});
    place.fields = fields;
    place.columns.resize(static_cast<size_t>(wanted));
    return true;
}

// A line with more fields than there are: the numbers at its end are known, so the comma is in a name. A
// number where the first of them should be is one that was written with a decimal comma.
void TakeCommas(CfgLines& lines, Place& place)
{
    const int count = place.fields.size();
    if (TakeQuotes(lines, place, FieldsOfAnalog) || TakeQuotes(lines, place, FieldsOf1991))
        return;
    const int numbers = EndsWith(place.fields, 8) ? 8 : EndsWith(place.fields, 5) ? 5 : 0;
    const int tooMany = count - NamesOfAnalog - numbers;
    const bool isDecimal = std::any_of(place.fields.begin() + NamesOfAnalog, place.fields.end() - numbers,
                                       [](const QString& field) { return IsNumber(field); });
    if (numbers == 0 || isDecimal)
        lines.Fail(place, Tr("comtrade", "%1 has %2 fields, there are %3; does a name or a number hold a "
                                         "comma? Decimals need a point")
                              .arg(Tr("comtrade", "an analog channel"))
                              .arg(FieldsOfAnalog)
                              .arg(count));
    const bool isInCircuit = MayBePhase(place.fields[2]) && !MayBePhase(place.fields[2 + tooMany]);
    const int field = isInCircuit ? 3 : 1;
    Join(place, field, tooMany);
    ForgiveComma(lines, place, field);
}

// Brings the fields of an analog line to thirteen or, as in 1991, ten.
void Arrange(CfgLines& lines, Place& place, Revision revision)
{
    const QString what = Tr("comtrade", "an analog channel");
    lines.DropTrailing(place, revision == Revision::R1991 ? FieldsOf1991 : FieldsOfAnalog);
    const bool isFull = place.fields.size() >= FieldsOf1991 && place.fields.size() <= FieldsOfAnalog;
    const bool commaInOld = revision == Revision::R1991 && place.fields.size() < FieldsOfAnalog &&
                            place.fields.size() > FieldsOf1991 && !IsNumber(place.fields[NamesOfAnalog]) &&
                            EndsWith(place.fields, 5);
    if (!isFull || commaInOld) {
        if (place.fields.size() < FieldsOf1991)
            lines.ExpectFields(place, revision == Revision::R1991 ? FieldsOf1991 : FieldsOfAnalog,
                               FieldsOfAnalog, what);
        TakeCommas(lines, place);
    }
    const int count = place.fields.size();
    const int wanted = revision == Revision::R1991 ? FieldsOf1991 : FieldsOfAnalog;
    if (count < wanted)
        lines.Forgive(place, -1,
                      {Severity::Error, reason::FieldsLacking,
                       Tr("comtrade", "%1 needs %2 fields, there are %3").arg(what).arg(wanted).arg(count),
                       count == FieldsOf1991
                           ? Tr("comtrade", "the ratio is not known, the values are taken as primary")
                           : Tr("comtrade", "what is missing is taken as not known")});
    else if (count > wanted)
        lines.Forgive(place, wanted,
                      {Severity::Warning, reason::ExtraFields,
                       Tr("comtrade", "%1 has %2 fields, there are %3").arg(what).arg(wanted).arg(count),
                       Tr("comtrade", "the others are read as in revision 1999")});
}

int ReadNumber(CfgLines& lines, const Place& place, int ordinal)
{
    const QString field = place.fields[0];
    if (field.isEmpty()) {
        lines.Forgive(place, 0,
                      {Severity::Error, reason::FieldEmpty,
                       Tr("comtrade", "%1 is empty").arg(Tr("comtrade", "channel number")),
                       Tr("comtrade", "read as %1").arg(ordinal)});
        return ordinal;
    }
    return static_cast<int>(lines.Integer(place, 0, Tr("comtrade", "channel number")));
}

// Skew is of no weight for the values of its own channel.
double ReadSkew(CfgLines& lines, const Place& place)
{
    const QString field = place.fields[7];
    if (field.isEmpty() || IsNumber(field))
        return field.toDouble();
    lines.Forgive(place, 7,
                  {Severity::Error, reason::NotANumber,
                   Tr("comtrade", "%1 is '%2', which is no number").arg(Tr("comtrade", "skew"), field),
                   Tr("comtrade", "read as %1").arg(0)});
    return 0;
}

// The limits of what data can hold, where a channel gives none.
constexpr double LargestCode = 99998;

void ReadLimits(CfgLines& lines, const Place& place, AnalogChannel& channel)
{
    channel.min = lines.NumberOr(-LargestCode, place, 8, Tr("comtrade", "minimum"));
    channel.max = lines.NumberOr(LargestCode, place, 9, Tr("comtrade", "maximum"));
    if (channel.min > channel.max)
        lines.Remark(
            place, 8,
            {Severity::Error, reason::LimitsSwapped,
             Tr("comtrade", "the minimum %1 is above the maximum %2").arg(place.fields[8], place.fields[9]),
             Tr("comtrade", "the samples count, not the limits")});
}

// Whether the values are primary ones. Any case, the whole word, and the letters that Russian writers use.
bool ReadSide(CfgLines& lines, const Place& place, int field)
{
    const QString text = place.fields.value(field);
    const QString side = LatinLetters(text).left(1);
    const bool isPrimary = side == QLatin1String("P") || side == QStringLiteral("П");
    const bool isSecondary = side == QLatin1String("S") || side == QStringLiteral("В");
    if (text.isEmpty()) {
        lines.Forgive(place, field,
                      {Severity::Error, reason::FieldEmpty,
                       Tr("comtrade", "%1 is empty").arg(Tr("comtrade", "the side, P or S,")),
                       Tr("comtrade", "read as %1").arg(QLatin1Char('P'))});
        return true;
    }
    const bool isWord = text.size() > 1 && !LatinLetters(text).startsWith(QLatin1String("PRI")) &&
                        !LatinLetters(text).startsWith(QLatin1String("SEC"));
    if ((!isPrimary && !isSecondary) || isWord)
        lines.Fail(place, Tr("comtrade", "'%1' should be P or S").arg(text));
    const QString upper = text.toUpper();
    if (upper != QLatin1String("P") && upper != QLatin1String("S"))
        lines.Forgive(place, field,
                      {Severity::Error, reason::WordForm, Tr("comtrade", "'%1' should be P or S").arg(text),
                       Tr("comtrade", "read as %1").arg(isPrimary ? QLatin1Char('P') : QLatin1Char('S'))});
    return isPrimary;
}

void ReadRatio(CfgLines& lines, const Place& place, AnalogChannel& channel)
{
    channel.primary = 1;
    channel.secondary = 1;
    channel.primaryValues = true;
    const int count = place.fields.size();
    if (count == FieldsOf1991)
        return;
    const bool isSide = count == FieldsOf1991 + 1;
    if (!isSide) {
        channel.primary = lines.NumberOr(1, place, 10, Tr("comtrade", "primary factor"));
        channel.secondary = lines.NumberOr(1, place, 11, Tr("comtrade", "secondary factor"));
    }
    if (count == FieldsOfAnalog || (isSide && !IsNumber(place.fields[10])))
        channel.primaryValues = ReadSide(lines, place, count - 1);
}

// The texts of a status line by its number of fields; the last one is the normal state, unless it cannot be.
void ReadStateTexts(const QStringList& fields, bool hasState, StateChannel& channel)
{
    channel.name = fields.value(1);
    const int texts = fields.size() - 2 - (hasState ? 1 : 0);
    if (texts >= 2) {
        channel.phase = fields[2];
        channel.circuit = fields[3];
    } else if (texts == 1) {
        (MayBePhase(fields[2]) ? channel.phase : channel.circuit) = fields[2];
    }
}

bool ReadNormalState(CfgLines& lines, const Place& place, int field)
{
    const QString text = place.fields.value(field);
    if (IsState(text))
        return text == QLatin1String("1");
    const QString what = Tr("comtrade", "normal state");
    if (text.isEmpty()) {
        lines.Forgive(place, field,
                      {Severity::Error, reason::FieldEmpty, Tr("comtrade", "%1 is empty").arg(what),
                       Tr("comtrade", "read as %1").arg(0)});
        return false;
    }
    const bool state = IsNumber(text) && text.toDouble() != 0;
    lines.Forgive(place, field,
                  {Severity::Error, reason::WordForm,
                   Tr("comtrade", "%1 is '%2', which is neither 0 nor 1").arg(what, text),
                   Tr("comtrade", "read as %1").arg(state ? 1 : 0)});
    return state;
}

} // namespace

QStringList Unquoted(const Place& place)
{
    const QLatin1Char quote('"');
    QStringList joined;
    int first = -1; // field with the opening mark
    for (int i = 0; i < place.fields.size(); ++i) {
        const QString& field = place.fields[i];
        const bool opens =
            first < 0 && field.startsWith(quote) && !(field.size() > 1 && field.endsWith(quote));
        if (opens) {
            first = i;
        } else if (first < 0) {
            joined << field;
        } else if (field.endsWith(quote)) {
            const QString text = place.TextOf(first, i);
            joined << text.mid(1, text.size() - 2).trimmed();
            first = -1;
        }
    }
    const bool isUsed = joined.size() < place.fields.size();
    return first < 0 && isUsed ? joined : QStringList();
}

Counts ReadCounts(CfgLines& lines, Place& place)
{
    const QString what = Tr("comtrade", "channel counts");
    place = lines.Take(what);
    const bool isTotalLacking = place.fields.size() == 2 && CountIn(place.fields[0], QLatin1Char('A'));
    if (isTotalLacking) {
        lines.Forgive(place, 0,
                      {Severity::Error, reason::FieldsLacking,
                       Tr("comtrade", "%1 needs %2 fields, there are %3").arg(what).arg(3).arg(2),
                       Tr("comtrade", "the total is taken as their sum")});
        place.fields.prepend(QString());
        place.columns.insert(place.columns.begin(), 0);
    }
    lines.ExpectFields(place, 3, 3, what);
    PutInOrder(lines, place);
    const Counts counts{CountAt(lines, place, 1, QLatin1Char('A')),
                        CountAt(lines, place, 2, QLatin1Char('D'))};
    for (const qint64 count : {counts.analog, counts.states})
        if (count < 0 || count > lines.Left())
            lines.Fail(place,
                       Tr("comtrade", "%1 channels, but only %2 lines follow").arg(count).arg(lines.Left()));
    if (isTotalLacking)
        return counts;
    const qint64 total = lines.Integer(place, 0, Tr("comtrade", "channel count"));
    if (total != counts.analog + counts.states)
        lines.Forgive(place, 0,
                      {Severity::Error, reason::CountsDiffer,
                       Tr("comtrade", "%1 channels in all are not %2 and %3")
                           .arg(total)
                           .arg(counts.analog)
                           .arg(counts.states),
                       Tr("comtrade", "the counts of each kind are taken")});
    return counts;
}

AnalogChannel ReadAnalog(CfgLines& lines, Revision revision, int ordinal, Place& place)
{
    place = lines.Take(Tr("comtrade", "an analog channel"));
    Place arranged = place;
    Arrange(lines, arranged, revision);
    const QStringList& fields = arranged.fields;
    AnalogChannel channel;
    channel.number = ReadNumber(lines, arranged, ordinal);
    channel.name = fields[1];
    channel.phase = fields[2];
    channel.circuit = fields[3];
    channel.unit = fields[4];
    channel.a = lines.NumberOr(1, arranged, 5, Tr("comtrade", "multiplier a"));
    channel.b = lines.NumberOr(0, arranged, 6, Tr("comtrade", "offset b"));
    channel.skew = ReadSkew(lines, arranged);
    ReadLimits(lines, arranged, channel);
    ReadRatio(lines, arranged, channel);
    return channel;
}

StateChannel ReadState(CfgLines& lines, Revision revision, int ordinal, Place& place)
{
    const QString what = Tr("comtrade", "a status channel");
    const int wanted = revision == Revision::R1991 ? FieldsOfState1991 : FieldsOfState;
    place = lines.Take(what);
    Place arranged = place;
    lines.DropTrailing(arranged, wanted);
    int count = arranged.fields.size();
    if (count > FieldsOfState && count < FieldsOf1991 &&
        (IsState(arranged.fields.last()) || arranged.fields.last().isEmpty()) &&
        !TakeQuotes(lines, arranged, FieldsOfState)) {
        Join(arranged, 1, count - FieldsOfState);
        ForgiveComma(lines, arranged, 1);
    }
    lines.ExpectFields(arranged, 2, FieldsOfState, what);
    count = arranged.fields.size();
    const QString last = arranged.fields.constLast();
    const bool hasState = count > 2 && (count == FieldsOfState || IsState(last) || last.isEmpty());
    if (count < wanted)
        lines.Forgive(arranged, -1,
                      {Severity::Error, reason::FieldsLacking,
                       Tr("comtrade", "%1 needs %2 fields, there are %3").arg(what).arg(wanted).arg(count),
                       hasState ? Tr("comtrade", "the last one is taken as the normal state")
                                : Tr("comtrade", "the normal state is taken as 0")});
    else if (count > wanted)
        lines.Forgive(arranged, wanted,
                      {Severity::Warning, reason::ExtraFields,
                       Tr("comtrade", "%1 has %2 fields, there are %3").arg(what).arg(wanted).arg(count),
                       Tr("comtrade", "the others are read as in revision 1999")});
    StateChannel channel;
    channel.number = ReadNumber(lines, arranged, ordinal);
    ReadStateTexts(arranged.fields, hasState, channel);
    channel.normalState = hasState && ReadNormalState(lines, arranged, count - 1);
    return channel;
}

} // namespace comtrade
