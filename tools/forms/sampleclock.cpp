#include "forms/sampleclock.h"

#include "comtrade/moment.h"

#include <algorithm>
#include <cmath>

namespace forms {

namespace {

constexpr double Second = 1e9; // ns

// Hostile numbers are limited to some hundred years.
qint64 Rounded(double nanoseconds)
{
    constexpr double farthest = 4e18;
    return std::isnan(nanoseconds) ? SampleClock::NoTime
                                   : std::llround(std::clamp(nanoseconds, -farthest, farthest));
}

} // namespace

SampleClock::SampleClock(const comtrade::Configuration& config)
    : stampNanoseconds(config.StampSeconds() * Second),
      trigger(comtrade::NanosecondsBetween(config.start, config.trigger))
{
    if (!analysis::IsStamped(config))
        axis = analysis::TimeAxis::FromRates(config);
}

qint64 SampleClock::At(qint64 sample, qint64 stamp) const
{
    if (axis)
        return Rounded(axis->TimeOf(sample) * Second);
    if (stamp == NoTime)
        return NoTime;
    const qint64 fromStart = Rounded(static_cast<double>(stamp) * stampNanoseconds);
    return fromStart == NoTime ? NoTime : fromStart - trigger;
}

} // namespace forms
