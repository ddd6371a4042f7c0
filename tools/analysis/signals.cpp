#include "analysis/signals.h"

#include "analysis/channelrole.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

// A common grid has at most so many times the samples of the record: a short stretch of a high rate must not
// blow up a long one of a low rate.
constexpr double MostGrowth = 4;

double HighestRate(const Oscillogram& oscillogram)
{
    double highest = 0;
    for (const TimeAxis::Piece& piece : oscillogram.axis.Pieces())
        highest = std::max(highest, piece.hertz);
    return highest;
}

} // namespace

Signals::Signals(const Oscillogram& oscillogram_)
    : oscillogram(oscillogram_), nominal(MainsFrequency(oscillogram_.config))
{
    const qint64 samples = oscillogram.Count();
    if (samples == 0)
        return;
    const qint64 last = oscillogram.first + samples - 1;
    start = oscillogram.axis.TimeOf(oscillogram.first);
    const auto& pieces = oscillogram.axis.Pieces();
    const bool isStamped = pieces.empty();
    isGrid = isStamped || pieces.size() > 1;
    const double length = oscillogram.axis.TimeOf(last) - start;
    const double average = length > 0 ? static_cast<double>(samples - 1) / length : 0;
    rate = isStamped ? average
                     : std::min(HighestRate(oscillogram), isGrid ? MostGrowth * average : pieces[0].hertz);
    if (isGrid && !(rate > 0 && std::isfinite(1 / rate) && std::isfinite(length)))
        return; // times of no use
    count = isGrid ? static_cast<size_t>(std::floor(length * rate + 1e-6)) + 1 : static_cast<size_t>(samples);
}

const Wave& Signals::Of(size_t channel) const
{
    const auto known = waves.find(channel);
    return known != waves.end() ? known->second : waves.emplace(channel, Compute(channel)).first->second;
}

// Seconds; 0 for what cannot be a skew.
double Signals::SkewOf(size_t channel) const
{
    const double skew = oscillogram.config.analog[channel].skew * 1e-6;
    return std::abs(skew) * rate <= 1 ? skew : 0;
}

const Interpolation& Signals::InterpolationFor(double skew) const
{
    const auto known = interpolations.find(skew);
    if (known != interpolations.end())
        return known->second;
    const SampleTimes times(oscillogram.axis, oscillogram.first, oscillogram.Count());
    return interpolations.emplace(skew, Interpolation(times, start - skew, 1 / rate, count)).first->second;
}

Wave Signals::Compute(size_t channel) const
{
    const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
    const Codes& codes = oscillogram.analog[channel];
    const double a = known.a;
    const double b = known.b;
    const double factor = PrimaryFactor(known) * BaseFactor(known.unit);
    Wave wave(codes.Size());
    const auto compute = [&](const auto& numbers) {
        for (size_t i = 0; i < wave.size(); ++i)
            wave[i] = (a * static_cast<double>(numbers[i]) + b) * factor;
    };
    if (codes.IsWide())
        compute(codes.Wide());
    else
        compute(codes.Small());
    const double skew = SkewOf(channel);
    if (isGrid || skew != 0)
        return InterpolationFor(skew).Of(wave);
    return wave;
}

} // namespace analysis
