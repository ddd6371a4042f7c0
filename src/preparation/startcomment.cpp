// Taking the start comment apart.
#include "preparation/startcomment.h"

#include "config/GlobalFunction.h"

namespace zu {

QString CleanStartComment(const QString& comment, int trigMicroseconds, int startMicroseconds)
{
    constexpr int StampLength = 24;
    constexpr int BeforeMicroseconds = 17; // "dd.MM.yy hh:mm:ss"
    constexpr int LastUntouched = 21;      // Deliberate: a stamp nearer to the start stays in the text.
    QString text = comment;
    text.remove(QStringLiteral("(GPS)"), Qt::CaseSensitive);
    text.remove(QLatin1Char('\''), Qt::CaseSensitive);
    auto position = text.indexOf(QString::asprintf(".%06d", trigMicroseconds));
    if (position < 0)
        position = text.indexOf(QString::asprintf(".%06d", startMicroseconds));
    if (position > LastUntouched)
        text.remove(position - BeforeMicroseconds, StampLength);
    return text;
}

// The word before the parenthesis at open; blanks directly before it do not count.
static QString KindBefore(const QString& text, QString::size_type open)
{
    QString::size_type end = open;
    while (end > 0 && text[end - 1] == QLatin1Char(' '))
        --end;
    QString::size_type blank = end - 1;
    while (blank > 0 && text[blank] != QLatin1Char(' '))
        --blank;
    // Deliberate: without any blank the kind starts at the second character.
    return text.mid(blank + 1, end - blank - 1);
}

bool SplitStartComment(const QString& text, StartComment& pieces)
{
    const auto open = text.indexOf(QLatin1Char('('));
    const auto close = text.indexOf(QLatin1Char(')'));
    if (open < 0 || close < open)
        return false;
    pieces.text = text;
    pieces.kind = KindBefore(text, open);
    pieces.inside = text.mid(open + 1, close - open - 1).trimmed();
    pieces.tail = text.mid(close + 1).trimmed();
    const auto comma = pieces.tail.indexOf(QLatin1Char(','));
    if (comma >= 0)
        pieces.tail.truncate(comma);
    pieces.items.clear();
    GlobalFunction::GetNamesFromString(pieces.inside, &pieces.items);
    return true;
}

// Takes value to thousands if the pick-up value is large enough, and puts it in text.
static QString Scaled(double value, bool thousands)
{
    return QString::asprintf("%3.3f", thousands ? value / 1000.0 : value);
}

void ScaleThreshold(ThresholdText& texts, double primary)
{
    const bool hasReturn = !texts.returns.isNull();
    bool pickUpOk = false;
    bool returnsOk = false;
    const double pickUp = texts.pickUp.toDouble(&pickUpOk) * primary;
    const double returns = texts.returns.toDouble(&returnsOk) * primary;
    if (!pickUpOk || (hasReturn && !returnsOk))
        return;
    const bool thousands = pickUp >= 1000.0; // Deliberate: the return value plays no part.
    texts.pickUp = Scaled(pickUp, thousands);
    if (hasReturn)
        texts.returns = Scaled(returns, thousands);
    if (thousands)
        texts.unit.prepend(QStringLiteral("к"));
}

} // namespace zu
