#include "verify/timecheck.h"

#include <cmath>

namespace verify {

namespace {

// Six significant digits of a rate leave an error of up to this part.
constexpr double RatePrecision = 5e-6;

// Times that are rounded or cut off are up to one unit away from each other's step.
constexpr double Rounding = 1.01;

} // namespace

TimeCheck::TimeCheck(const comtrade::Configuration& configuration_) : configuration(configuration_) {}

// Binary times have 32 bits and start again after 71 minutes.
qint64 TimeCheck::Unwrapped(qint64 time) const
{
    if (configuration.dataType == comtrade::DataType::Ascii)
        return time;
    return before + static_cast<qint32>(static_cast<quint32>(time) - static_cast<quint32>(before));
}

void TimeCheck::EnterRate(qint64 time)
{
    while (rate + 1 < configuration.rates.size() && sample > configuration.rates[rate].lastSample)
        ++rate;
    const double hertz = configuration.rates.empty() ? 0 : configuration.rates[rate].hertz;
    const double unit = configuration.StampSeconds();
    step = hertz > 0 && unit > 0 ? 1 / (hertz * unit) : 0;
    first = sample;
    start = time;
}

bool TimeCheck::Take(const comtrade::Row& row)
{
    ++sample;
    if (!row.hasTime)
        return true;
    const qint64 time = sample == 1 ? row.time : Unwrapped(row.time);
    const bool entersRate = sample == 1 || (rate + 1 < configuration.rates.size() &&
                                            sample > configuration.rates[rate].lastSample);
    expected = static_cast<double>(before);
    if (entersRate || step == 0) {
        if (sample > 1 && time < before)
            return false;
        if (entersRate)
            EnterRate(time);
    } else {
        const double elapsed = static_cast<double>(sample - first) * step;
        expected = static_cast<double>(start) + elapsed;
        const double sinceLast = static_cast<double>(sample - last) * step;
        const double allowed = Rounding + RatePrecision * sinceLast;
        if (std::abs(static_cast<double>(time) - expected) > 1.5 + RatePrecision * elapsed ||
            std::abs(static_cast<double>(time - before) - sinceLast) > allowed)
            return false;
        const qint64 exact = std::llround(expected);
        if (time != exact && ++inexact.count == 1)
            inexact = {1, sample, time, exact};
    }
    last = sample;
    before = time;
    return true;
}

TimeCheck::Inexact TimeCheck::NearlyRight() const
{
    // A writer that cuts off its times has a third of them or more below the rounded ones.
    return inexact.count * 4 <= sample ? inexact : Inexact();
}

} // namespace verify
