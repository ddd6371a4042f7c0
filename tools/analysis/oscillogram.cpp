#include "analysis/oscillogram.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace analysis {

namespace {

struct Range
{
    qint64 first, end;
};

// A third of a window shows what came before the fault.
constexpr double PartBeforeTrigger = 1.0 / 3;

qint64 BytesOfSample(const comtrade::Configuration& config)
{
    return 2 * static_cast<qint64>(config.analog.size()) + static_cast<qint64>(config.states.size()) / 8 + 1;
}

Range Around(qint64 trigger, qint64 length, qint64 count)
{
    length = std::min(length, count);
    const auto before = static_cast<qint64>(static_cast<double>(length) * PartBeforeTrigger);
    const qint64 first = std::clamp<qint64>(trigger - before, 0, count - length);
    return {first, first + length};
}

comtrade::ReadingOptions ReadingOf(const Extent& extent)
{
    comtrade::ReadingOptions options;
    options.encoding = extent.encoding;
    return options;
}

// The encoding plays no part.
qint64 CountOf(const QString& recordPath)
{
    comtrade::Record record(recordPath);
    comtrade::Row row{};
    qint64 count = 0;
    while (record.Next(row))
        ++count;
    return count;
}

// The moment that a window is around, s from the trigger.
double Centre(const TimeAxis& axis, qint64 count, double around)
{
    const double start = axis.TimeOf(0);
    const double last = axis.TimeOf(std::max<qint64>(count - 1, 0));
    const double length = last - start;
    return around < start - length || around > last + length ? 0 : around;
}

// The samples to hold. They are counted in the data, as the configuration may give more or fewer.
Range Chosen(const QString& recordPath, const TimeAxis& axis, const comtrade::Configuration& config,
             const Extent& extent)
{
    const Range whole{0, std::numeric_limits<qint64>::max()};
    const qint64 fitting = extent.mostBytes > 0 ? extent.mostBytes / BytesOfSample(config) : whole.end;
    if (extent.window <= 0 && config.SampleCount() <= fitting)
        return whole;
    const qint64 count = CountOf(recordPath);
    const double centre = Centre(axis, count, extent.around);
    if (extent.window > 0) {
        const double last = axis.TimeOf(std::max<qint64>(count - 1, 0));
        const double begin = centre - extent.window * PartBeforeTrigger;
        const bool isOver = begin > last; // before the trigger
        const double wanted = isOver ? last - extent.window : begin;
        const double start = std::max(wanted, axis.TimeOf(0));
        return {axis.SampleAt(start, count), axis.SampleAt(start + extent.window, count) + 1};
    }
    const qint64 sample = centre == 0 ? axis.TriggerSample() : axis.SampleAt(centre, count);
    return count <= fitting ? whole : Around(sample, fitting, count);
}

TimeAxis AxisOf(const QString& recordPath, const comtrade::Configuration& config)
{
    if (!IsStamped(config))
        return TimeAxis::FromRates(config);
    comtrade::Record record(recordPath);
    comtrade::Row row{};
    std::vector<double> seconds;
    const double unit = config.StampSeconds();
    while (record.Next(row)) {
        const double before = seconds.empty() ? 0 : seconds.back();
        seconds.push_back(row.hasTime ? static_cast<double>(row.time) * unit : before);
    }
    return TimeAxis::FromStamps(config, std::move(seconds));
}

// Discrete channels seldom change, so that samples with the same states are added together.
class StateAppender
{
public:
    explicit StateAppender(std::vector<States>& channels_) : channels(channels_) {}

    void Add(const quint8* next)
    {
        if (times > 0 && !std::equal(states.begin(), states.end(), next))
            Flush();
        if (times == 0)
            states.assign(next, next + channels.size());
        ++times;
    }

    /// To be called at the end.
    void Flush()
    {
        for (size_t i = 0; i < channels.size() && times > 0; ++i)
            channels[i].Add(states[i] != 0, times);
        times = 0;
    }

private:
    std::vector<States>& channels;
    std::vector<quint8> states; // of the last samples
    size_t times = 0;           // how many of them are not added yet
};

// The code as a 16-bit integer, if it is one.
bool ToShort(double code, qint16& number)
{
    if (!(code >= -32768 && code <= 32767))
        return false;
    number = static_cast<qint16>(code);
    return static_cast<double>(number) == code;
}

} // namespace

qint64 BytesOf(const Oscillogram& oscillogram)
{
    return oscillogram.Count() * BytesOfSample(oscillogram.config);
}

double BytesAnnounced(const comtrade::Configuration& config)
{
    return static_cast<double>(config.SampleCount()) * static_cast<double>(BytesOfSample(config));
}

void Codes::Add(const double* code, size_t count, size_t stride)
{
    const size_t added = wide.empty() ? AddSmall(code, count, stride) : 0;
    for (size_t i = added; i < count; ++i)
        AddWide(code[i * stride]);
}

// Adds codes up to the first that is no 16-bit integer, and returns how many.
size_t Codes::AddSmall(const double* code, size_t count, size_t stride)
{
    const size_t before = small.size();
    small.resize(before + count);
    qint16* next = small.data() + before;
    const qint16* const begin = next;
    for (size_t i = 0; i < count && ToShort(code[i * stride], *next); ++i)
        ++next;
    if (next > begin) {
        const auto [low, high] = std::minmax_element(begin, static_cast<const qint16*>(next));
        least = std::isnan(least) ? *low : std::min<double>(least, *low);
        greatest = std::isnan(greatest) ? *high : std::max<double>(greatest, *high);
    }
    small.resize(static_cast<size_t>(next - small.data()));
    return static_cast<size_t>(next - begin);
}

void Codes::AddWide(double code)
{
    if (wide.empty())
        wide.assign(small.begin(), small.end());
    wide.push_back(static_cast<float>(code));
    if (!std::isfinite(code)) {
        ++missing;
        return;
    }
    if (!(least <= code)) // also if there is none yet
        least = code;
    if (!(greatest >= code))
        greatest = code;
}

void States::Add(bool state, size_t times)
{
    if (times == 0)
        return;
    if (count > 0 && last != state)
        ++changes;
    last = state;
    const size_t end = count + times;
    bits.resize((end + 7) / 8);
    for (; state && count < end && count % 8 != 0; ++count)
        SetBit(count);
    for (; state && count + 8 <= end; count += 8)
        bits[count / 8] = 0xff;
    for (; state && count < end; ++count)
        SetBit(count);
    count = end;
}

void States::SetBit(size_t index)
{
    bits[index / 8] = static_cast<quint8>(bits[index / 8] | (1u << (index % 8)));
}

std::vector<qint32> States::ChangePositions() const
{
    std::vector<qint32> positions;
    for (size_t i = 1; i < count; ++i)
        if (At(i) != At(i - 1))
            positions.push_back(static_cast<qint32>(i));
    return positions;
}

qint64 Oscillogram::Count() const
{
    if (!analog.empty())
        return static_cast<qint64>(analog.front().Size());
    return states.empty() ? 0 : static_cast<qint64>(states.front().Size());
}

Oscillogram Read(const QString& recordPath, const Extent& extent)
{
    comtrade::Record record(recordPath, ReadingOf(extent));
    Oscillogram oscillogram;
    oscillogram.config = record.Config();
    // Lines end in line feeds.
    oscillogram.report = record.HeaderText().replace(QLatin1String("\r\n"), QLatin1String("\n"));
    oscillogram.information = record.InformationText();
    oscillogram.axis = AxisOf(recordPath, oscillogram.config);
    oscillogram.analog.resize(oscillogram.config.analog.size());
    oscillogram.states.resize(oscillogram.config.states.size());
    const Range range = Chosen(recordPath, oscillogram.axis, oscillogram.config, extent);
    oscillogram.first = range.first;
    comtrade::Block block;
    StateAppender appender(oscillogram.states);
    const size_t analog = oscillogram.analog.size();
    const size_t states = oscillogram.states.size();
    while (record.Next(block)) {
        const auto count = static_cast<qint64>(block.count);
        const auto from = static_cast<size_t>(std::clamp<qint64>(range.first - oscillogram.total, 0, count));
        const auto to = static_cast<size_t>(std::clamp<qint64>(range.end - oscillogram.total, 0, count));
        for (size_t i = 0; i < analog && from < to; ++i)
            oscillogram.analog[i].Add(&block.analog[from * analog + i], to - from, analog);
        for (size_t sample = from; sample < to; ++sample)
            appender.Add(block.states.data() + sample * states);
        oscillogram.total += count;
    }
    appender.Flush();
    return oscillogram;
}

double PrimaryFactor(const comtrade::AnalogChannel& channel)
{
    const bool hasRatio = channel.primary > 0 && channel.secondary > 0;
    return channel.primaryValues || !hasRatio ? 1 : channel.primary / channel.secondary;
}

} // namespace analysis
