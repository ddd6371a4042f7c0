#include "station/startcomment.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>

namespace station {

namespace {

// The signal that a start refers to must be there.
enum class Needs { Analog, Discrete, Nothing };

struct CommentRow
{
    StartKind start;
    Needs needs;
    const char* bay;
    const char* signal;
    const char* text; // %1: bay, %2: time stamp
};

const CommentRow CommentRows[] = {
    {StartKind::PositiveSequence, Needs::Analog, "ВЛ-110 Восточная", "Ia",
     "Пуск ПП (%1:I,12.0,11.4,0) I1 больше %2 (GPS)"},
    {StartKind::NegativeSequence, Needs::Analog, "ВЛ-110 Восточная", "Ia",
     "Пуск ОП (%1:I,3.0,0) I2 больше %2 (GPS)"},
    {StartKind::ZeroSequence, Needs::Analog, "ВЛ-110 Восточная", "Ia",
     "Пуск НП (%1:I,2.5,2.25,0) 3I0 больше %2 (GPS)"},
    {StartKind::Channel, Needs::Analog, "ВЛ-110 Восточная", "Ia",
     "Пуск ДЗ (%1:Ia,10.0,9.5,0) больше %2 (GPS)"},
    {StartKind::Discrete, Needs::Discrete, "ВЛ-110 Восточная", "Пуск защит",
     "Пуск ДП (1,0) %1:Пуск защит %2 (GPS)"},
    {StartKind::Frequency, Needs::Analog, "Частота 1СШ-110", "Fa",
     "Пуск Ч (%1:Fa,49.9,0,49.95,0) снижение %2 (GPS)"},
    {StartKind::Harmonic, Needs::Analog, "ВЛ-110 Восточная", "Ia", "Пуск Г (%1:Ia,5,0.4,0) больше %2 (GPS)"},
    {StartKind::External, Needs::Nothing, "", "", "Пуск внешний, %2 (GPS)"},
};

const CommentRow& RowOf(StartKind start)
{
    return *std::find_if(std::begin(CommentRows), std::end(CommentRows),
                         [&](const CommentRow& row) { return row.start == start; });
}

template <typename Signal>
bool Has(const std::vector<Signal>& list, const QString& name)
{
    return std::any_of(list.begin(), list.end(), [&](const Signal& signal) { return signal.name == name; });
}

} // namespace

std::optional<QString> StartComment(StartKind start, const std::vector<AnalogSignal>& analog,
                                    const std::vector<DiscreteSignal>& discrete, const QString& stamp)
{
    const CommentRow& row = RowOf(start);
    const QString bay = QString::fromUtf8(row.bay);
    const QString name = bay + QLatin1Char(':') + QString::fromUtf8(row.signal);
    if ((row.needs == Needs::Analog && !Has(analog, name)) ||
        (row.needs == Needs::Discrete && !Has(discrete, name)))
        return std::nullopt;
    return BayStartComment(start, bay, stamp);
}

QString BayStartComment(StartKind start, const QString& bay, const QString& stamp)
{
    return QString::fromUtf8(RowOf(start).text)
        .replace(QLatin1String("%1"), bay)
        .replace(QLatin1String("%2"), stamp);
}

QString StampOf(int64_t microseconds, int zoneSeconds)
{
    constexpr int64_t second = 1000000;
    const QDateTime time =
        QDateTime::fromSecsSinceEpoch(microseconds / second, Qt::OffsetFromUTC, zoneSeconds);
    return time.toString(QStringLiteral("dd.MM.yy hh:mm:ss")) +
           QString::asprintf(".%06d", static_cast<int>(microseconds % second));
}

} // namespace station
