#include "view/overlay.h"

#include "analysis/channelrole.h"
#include "comtrade/moment.h"
#include "view/pagedata.h"

#include <QJsonArray>

#include <algorithm>

namespace view {

namespace {

constexpr double LengthsApart = 3; // of the longer record
constexpr double Milliseconds = 1000;

struct Span
{
    double start, end; // s

    double Length() const { return end - start; }
};

Span SpanOf(const analysis::Oscillogram& oscillogram)
{
    const qint64 last = oscillogram.first + std::max<qint64>(oscillogram.Count() - 1, 0);
    return {oscillogram.axis.TimeOf(oscillogram.first), oscillogram.axis.TimeOf(last)};
}

void AddUnits(QJsonObject& units, const comtrade::Configuration& config)
{
    for (const comtrade::AnalogChannel& channel : config.analog)
        units[channel.unit] =
            QJsonArray{QuantityName(analysis::RoleOf(channel).quantity), analysis::BaseFactor(channel.unit)};
}

} // namespace

Overlay::Overlay(const analysis::Oscillogram& first, const analysis::Oscillogram& second,
                 Alignment alignment_)
    : alignment(alignment_)
{
    const comtrade::TriggerDistance distance = comtrade::DistanceOfTriggers(first.config, second.config);
    between = distance.seconds;
    inUtc = distance.inUtc;
    const Span own = SpanOf(first);
    const Span other = SpanOf(second);
    reach = LengthsApart * std::max(own.Length(), other.Length());
    const double shift = alignment == Alignment::Time ? between : 0;
    gap = std::max(other.start + shift - own.end, own.start - (other.end + shift));
}

QJsonObject OverlayJson(const Overlay& overlay, const analysis::Oscillogram& first,
                        const analysis::Oscillogram& second)
{
    QJsonObject units;
    AddUnits(units, first.config);
    AddUnits(units, second.config);
    const bool byTime = overlay.alignment == Alignment::Time;
    return {{QStringLiteral("between"), overlay.between * Milliseconds},
            {QStringLiteral("inUtc"), overlay.inUtc},
            {QStringLiteral("reach"), overlay.reach * Milliseconds},
            {QStringLiteral("align"), byTime ? QStringLiteral("time") : QStringLiteral("trigger")},
            {QStringLiteral("units"), units}};
}

} // namespace view
