#include "forms/timewindow.h"

#include "comtrade/moment.h"
#include "forms/comtradetext.h"
#include "forms/sampleclock.h"
#include "text/texts.h"

#include <algorithm>
#include <cmath>
#include <limits>

using comtrade::Block;
using comtrade::Configuration;

namespace forms {

namespace {

constexpr qint64 Unlimited = std::numeric_limits<qint64>::max();
constexpr int Microseconds = 6; // decimals of a second

// The limits of a span in nanoseconds from the trigger. A sample on the limit is within: half a microsecond
// makes up for the decimals that people write.
struct Limits
{
    explicit Limits(const Span& span)
    {
        constexpr qint64 tolerance = 500;
        const auto nanoseconds = [](double seconds) {
            return std::llround(std::clamp(seconds, -1e9, 1e9) * 1e9);
        };
        if (span.from)
            from = nanoseconds(*span.from) - tolerance;
        if (span.to)
            to = nanoseconds(*span.to) + tolerance;
    }

    qint64 from = -Unlimited;
    qint64 to = Unlimited;
};

// The number of samples before a moment, by the rates.
qint64 SamplesBefore(const SampleClock& clock, qint64 moment, qint64 count)
{
    qint64 low = 0;
    qint64 high = count;
    while (low < high) {
        const qint64 middle = low + (high - low) / 2;
        if (clock.At(middle, SampleClock::NoTime) < moment)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

Extent ByRates(const Limits& limits, const SampleClock& clock, qint64 count)
{
    Extent extent;
    extent.first = SamplesBefore(clock, limits.from, count);
    const qint64 end = limits.to == Unlimited ? count : SamplesBefore(clock, limits.to + 1, count);
    extent.count = std::max<qint64>(0, end - extent.first);
    return extent;
}

// From the first sample within the limits to the last one before the stamps leave them.
Extent ByStamps(const Limits& limits, const SampleClock& clock, Stream& source)
{
    Extent extent;
    Block block;
    for (qint64 sample = 0; source.Next(block); sample += static_cast<qint64>(block.count)) {
        for (size_t i = 0; i < block.count; ++i) {
            const qint64 number = sample + static_cast<qint64>(i);
            const qint64 time = clock.At(number, block.times[i]);
            if (time == SampleClock::NoTime)
                throw FormError(Tr("export", "sample %1 has no time stamp, and the record no sampling rate: "
                                             "a part of it cannot be chosen by time")
                                    .arg(number + 1));
            const bool isWithin = time >= limits.from && time <= limits.to;
            if (isWithin && extent.count++ == 0)
                extent.first = number;
            if (!isWithin && extent.count > 0)
                return extent;
        }
    }
    return extent;
}

// The stamp so many nanoseconds later, with the decimals of its seconds as they are, but at least six.
comtrade::TimeStamp Later(const comtrade::TimeStamp& stamp, qint64 nanoseconds)
{
    constexpr qint64 day = qint64{86400} * 1000000000;
    comtrade::TimeStamp later = stamp;
    const qint64 whole = stamp.nanoseconds + nanoseconds;
    const qint64 days = (whole >= 0 ? whole : whole - day + 1) / day;
    later.nanoseconds = whole - days * day;
    later.date = stamp.date.addDays(days);
    later.decimals = std::max(stamp.decimals, Microseconds);
    return later;
}

// The rates of the samples of an extent.
std::vector<comtrade::SampleRate> RatesOf(const Configuration& config, const Extent& extent)
{
    std::vector<comtrade::SampleRate> rates;
    for (const comtrade::SampleRate& rate : config.rates) {
        const bool isLast = &rate == &config.rates.back();
        const qint64 last = isLast ? extent.first + extent.count : rate.lastSample;
        const qint64 kept = std::min(last - extent.first, extent.count);
        if (kept > 0 && (rates.empty() || rates.back().lastSample < kept))
            rates.push_back({rate.hertz, kept});
    }
    if (rates.empty() && !config.rates.empty())
        rates.push_back({config.rates.front().hertz, extent.count});
    return rates;
}

template <class Value>
void DropFirst(std::vector<Value>& values, size_t count)
{
    values.erase(values.begin(), values.begin() + static_cast<ptrdiff_t>(count));
}

} // namespace

Extent ExtentOf(const Span& span, const Configuration& config, Stream* stamps)
{
    const SampleClock clock(config);
    const Limits limits(span);
    const Extent extent =
        clock.IsStamped() ? ByStamps(limits, clock, *stamps) : ByRates(limits, clock, config.SampleCount());
    if (extent.count == 0)
        throw NoSamples(Tr("export", "no sample of the record is in the time asked for"));
    return extent;
}

TimeWindow::TimeWindow(Stream& source_, const Extent& extent_)
    : source(source_), extent(extent_), config(source.Config())
{
    config.rates = RatesOf(config, extent);
    if (extent.first > 0)
        Start();
}

// Goes to the first sample: its time stamp is needed for the start time.
void TimeWindow::Start()
{
    qint64 passed = 0;
    while (source.Next(held)) {
        const auto count = static_cast<qint64>(held.count);
        if (passed + count > extent.first) {
            const auto skipped = static_cast<size_t>(extent.first - passed);
            held.count -= skipped;
            DropFirst(held.numbers, skipped);
            DropFirst(held.times, skipped);
            DropFirst(held.analog, skipped * config.analog.size());
            DropFirst(held.states, skipped * config.states.size());
            holds = true;
            MoveStart(held.times.front());
            return;
        }
        passed += count;
    }
}

// The start as the stamps have it: exact in their own unit. Where a rate contradicts them, the rate counts.
void TimeWindow::MoveStart(qint64 firstStamp)
{
    const Configuration& whole = source.Config();
    const qint64 unit = whole.start.decimals > Microseconds ? 1 : 1000; // ns
    const bool isStamped = firstStamp != Block::NoTime;
    stampShift = isStamped ? firstStamp : 0;
    const double byStamp = static_cast<double>(stampShift) * whole.StampSeconds() * 1e9;
    double moment = byStamp;
    const SampleClock clock(whole);
    if (!clock.IsStamped()) {
        const qint64 trigger = comtrade::NanosecondsBetween(whole.start, whole.trigger);
        const auto byRate = static_cast<double>(clock.At(extent.first, Block::NoTime) + trigger);
        const double step = std::max(static_cast<double>(unit), whole.StampSeconds() * 1e9);
        if (!isStamped || std::fabs(byStamp - byRate) > step)
            moment = byRate;
    }
    const double units = std::clamp(moment / static_cast<double>(unit), -1e15, 1e15);
    config.start = Later(config.start, std::llround(units) * unit);
}

bool TimeWindow::Next(Block& block)
{
    if (delivered >= extent.count)
        return false;
    if (holds)
        std::swap(block, held);
    else if (!source.Next(block))
        return false;
    holds = false;
    return Deliver(block);
}

bool TimeWindow::Deliver(Block& block)
{
    block.count = std::min(block.count, static_cast<size_t>(extent.count - delivered));
    if (extent.first > 0) {
        for (size_t i = 0; i < block.count; ++i) {
            block.numbers[i] = static_cast<quint32>(delivered + static_cast<qint64>(i) + 1);
            if (block.times[i] != Block::NoTime)
                block.times[i] -= stampShift;
        }
    }
    delivered += static_cast<qint64>(block.count);
    return true;
}

} // namespace forms
