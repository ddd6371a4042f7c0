#include "analysis/timeaxis.h"

#include "comtrade/moment.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

qint64 OffsetNanoseconds(const comtrade::Configuration& config)
{
    return comtrade::NanosecondsBetween(config.start, config.trigger);
}

// A sample number from a calculation, where hostile numbers may stand.
qint64 ToSample(double position)
{
    constexpr double largest = 4e15;
    return std::isnan(position) ? 0 : static_cast<qint64>(std::clamp(position, -largest, largest));
}

} // namespace

double MainsFrequency(const comtrade::Configuration& config)
{
    constexpr double fallback = 50;
    return config.lineFrequency > 0 && std::isfinite(config.lineFrequency) ? config.lineFrequency : fallback;
}

bool IsStamped(const comtrade::Configuration& config)
{
    return std::none_of(config.rates.begin(), config.rates.end(),
                        [](const comtrade::SampleRate& rate) { return rate.hertz > 0; });
}

double TriggerOffset(const comtrade::Configuration& config)
{
    return static_cast<double>(OffsetNanoseconds(config)) / 1e9;
}

TimeAxis TimeAxis::FromRates(const comtrade::Configuration& config)
{
    TimeAxis axis;
    double at = -TriggerOffset(config);
    qint64 from = 0;
    for (const comtrade::SampleRate& rate : config.rates) {
        if (!(rate.hertz > 0))
            continue;
        if (!axis.pieces.empty()) { // the first sample of a rate comes one of its steps after the last one
            const Piece& before = axis.pieces.back();
            at = before.at + static_cast<double>(from - 1 - before.from) * before.step + 1 / rate.hertz;
        }
        axis.pieces.push_back({from, at, rate.hertz, 1 / rate.hertz});
        from = std::max(from + 1, rate.lastSample);
    }
    // Microseconds, in the report's order of operations.
    const qint64 microseconds = OffsetNanoseconds(config) / 1000;
    axis.trigger = ToSample(std::round(static_cast<double>(microseconds) * axis.pieces.front().hertz / 1e6));
    if (axis.pieces.size() > 1 && axis.trigger >= axis.pieces[1].from)
        axis.trigger = axis.SampleAt(0, axis.pieces.back().from + (qint64(1) << 40));
    return axis;
}

TimeAxis TimeAxis::FromStamps(const comtrade::Configuration& config, std::vector<double> seconds)
{
    TimeAxis axis;
    const double offset = TriggerOffset(config);
    double last = -offset;
    for (double& second : seconds) { // searching them relies on their order
        second = last = std::max(last, second - offset);
    }
    axis.stamps = std::move(seconds);
    axis.resolution = config.StampSeconds();
    axis.trigger = axis.SampleAt(0, static_cast<qint64>(axis.stamps.size()));
    return axis;
}

const TimeAxis::Piece& TimeAxis::PieceOf(qint64 sample) const
{
    const auto next = std::find_if(pieces.begin() + 1, pieces.end(),
                                   [sample](const Piece& piece) { return piece.from > sample; });
    return *(next - 1);
}

double TimeAxis::TimeOf(qint64 sample) const
{
    if (pieces.empty()) {
        const auto last = static_cast<qint64>(stamps.size()) - 1;
        return stamps.empty() ? 0 : stamps[static_cast<size_t>(std::clamp<qint64>(sample, 0, last))];
    }
    const Piece& piece = PieceOf(sample);
    return piece.at + static_cast<double>(sample - piece.from) * piece.step;
}

qint64 TimeAxis::SampleAt(double seconds, qint64 count) const
{
    qint64 low = 0;
    qint64 high = std::max<qint64>(count - 1, 0);
    while (low < high) { // the first sample that is not before the time
        const qint64 middle = low + (high - low) / 2;
        if (TimeOf(middle) < seconds)
            low = middle + 1;
        else
            high = middle;
    }
    if (low > 0 && seconds - TimeOf(low - 1) <= TimeOf(low) - seconds)
        --low;
    return low;
}

double TimeAxis::Duration(qint64 count) const
{
    if (pieces.empty())
        return TimeOf(count - 1) - TimeOf(0);
    double seconds = 0;
    for (size_t i = 0; i < pieces.size() && pieces[i].from < count; ++i) {
        const qint64 end = i + 1 < pieces.size() ? std::min(pieces[i + 1].from, count) : count;
        seconds += static_cast<double>(end - pieces[i].from) / pieces[i].hertz;
    }
    return seconds;
}

bool TimeAxis::HasTrigger(qint64 count) const
{
    constexpr double tolerance = 1e-6; // s, to which times are written
    const double step = pieces.empty() ? TimeOf(count - 1) - TimeOf(count - 2) : PieceOf(count - 1).step;
    return TimeOf(0) <= tolerance && TimeOf(count - 1) + step >= -tolerance;
}

} // namespace analysis
