#include "analysis/signals.h"

#include "analysis/channelrole.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace analysis {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double None = std::numeric_limits<double>::quiet_NaN();

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

double Sinc(double x)
{
    return std::abs(x) < 1e-9 ? 1 : std::sin(Pi * x) / (Pi * x);
}

// The value between samples, at a distance from the sample `at` in parts of a step: 16 samples under a
// Lanczos window. At the ends of a stretch fewer take part. NaN where one of the two neighbours is missing.
template <typename ValueAt>
double Between(ValueAt valueAt, qint64 at, double part, qint64 begin, qint64 end)
{
    constexpr qint64 half = 8;
    double sum = 0;
    double weights = 0;
    for (qint64 i = std::max(begin, at - half + 1); i < std::min(end, at + half + 1); ++i) {
        const double distance = static_cast<double>(i - at) - part;
        const double weight = Sinc(distance) * Sinc(distance / half);
        const double value = valueAt(i);
        if (std::isnan(value) && (i == at || i == at + 1))
            return None;
        if (std::isnan(value))
            continue;
        sum += weight * value;
        weights += weight;
    }
    return sum / weights;
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
    count = isGrid ? static_cast<size_t>(std::floor(length * rate + 1e-6)) + 1 : static_cast<size_t>(samples);
}

const Wave& Signals::Of(size_t channel) const
{
    const auto known = waves.find(channel);
    return known != waves.end() ? known->second : waves.emplace(channel, Compute(channel)).first->second;
}

Wave Signals::Compute(size_t channel) const
{
    const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
    const Codes& codes = oscillogram.analog[channel];
    const double factor = PrimaryFactor(known) * BaseFactor(known.unit);
    const auto valueAt = [&](qint64 sample) {
        return (known.a * codes.At(static_cast<size_t>(sample)) + known.b) * factor;
    };
    Wave wave(count);
    if (!isGrid) {
        for (size_t i = 0; i < count; ++i)
            wave[i] = valueAt(static_cast<qint64>(i));
        return wave;
    }
    const qint64 samples = oscillogram.Count();
    qint64 at = 0; // the sample of the record at or before the moment
    const auto timeAt = [&](qint64 sample) { return oscillogram.axis.TimeOf(oscillogram.first + sample); };
    for (size_t i = 0; i < count; ++i) {
        const double time = TimeOf(static_cast<double>(i));
        while (at + 2 < samples && timeAt(at + 1) <= time)
            ++at;
        const double step = samples > 1 ? timeAt(at + 1) - timeAt(at) : 0;
        const double part = step > 0 ? (time - timeAt(at)) / step : 0;
        wave[i] = samples > 1 ? Between(valueAt, at, std::clamp(part, 0.0, 1.0), 0, samples) : valueAt(0);
    }
    return wave;
}

} // namespace analysis
