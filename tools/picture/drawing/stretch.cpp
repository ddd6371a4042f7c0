#include "picture/drawing/stretch.h"

#include <algorithm>
#include <cmath>

namespace picture {

namespace {

constexpr double PeriodsBefore = 3;
constexpr double PeriodsShown = 12;
constexpr double MostPeriods = 30;

} // namespace

Stretch::Stretch(const analysis::Oscillogram& oscillogram_) : oscillogram(oscillogram_)
{
    Take(-PeriodsBefore * Period(), PeriodsShown * Period());
}

Stretch::Stretch(const analysis::Oscillogram& oscillogram_, const analysis::Fault& fault)
    : oscillogram(oscillogram_)
{
    const double start = fault.Onset() - PeriodsBefore * Period();
    const std::optional<double> clearing = fault.Clearing();
    const double length = clearing ? *clearing - start + PeriodsBefore * Period() : MostPeriods * Period();
    Take(start, std::clamp(length, PeriodsShown * Period(), MostPeriods * Period()));
}

// What there is of a span; all where there is nothing of it.
void Stretch::Take(double wantedFrom, double length)
{
    const analysis::TimeAxis& axis = oscillogram.axis;
    const qint64 last = oscillogram.first + std::max<qint64>(oscillogram.Count() - 1, 0);
    const double start = axis.TimeOf(oscillogram.first);
    const double end = axis.TimeOf(last);
    from = std::max(start, wantedFrom);
    to = std::min(end, from + length);
    if (from < to)
        return;
    from = start;
    to = std::max(end, start + Period());
}

double Stretch::XOf(const QRectF& plot, double time) const
{
    return plot.left() + (time - from) / (to - from) * plot.width();
}

size_t Stretch::SampleAt(double time) const
{
    const qint64 end = oscillogram.first + oscillogram.Count();
    return static_cast<size_t>(std::max<qint64>(oscillogram.axis.SampleAt(time, end) - oscillogram.first, 0));
}

double Stretch::TimeOf(size_t sample) const
{
    return oscillogram.axis.TimeOf(oscillogram.first + static_cast<qint64>(sample));
}

double NiceStep(double range, int most)
{
    const double raw = range / most;
    const double power = std::pow(10, std::floor(std::log10(raw)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= raw)
            return factor * power;
    return 10 * power;
}

} // namespace picture
