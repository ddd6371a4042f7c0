#include "view/stretch.h"

#include <algorithm>
#include <cmath>

namespace view {

namespace {

constexpr double PeriodsBefore = 3;
constexpr double PeriodsShown = 12;

} // namespace

Stretch::Stretch(const analysis::Oscillogram& oscillogram_) : oscillogram(oscillogram_)
{
    const analysis::TimeAxis& axis = oscillogram.axis;
    const qint64 last = oscillogram.first + std::max<qint64>(oscillogram.Count() - 1, 0);
    const double start = axis.TimeOf(oscillogram.first);
    const double end = axis.TimeOf(last);
    const double period = 1 / analysis::MainsFrequency(oscillogram.config);
    from = std::max(start, -PeriodsBefore * period);
    to = std::min(end, from + PeriodsShown * period);
    if (from < to)
        return;
    from = start;
    to = std::max(end, start + period);
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

} // namespace view
