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

void AppendValues(Oscillogram& oscillogram, const comtrade::Row& row)
{
    for (size_t i = 0; i < oscillogram.analog.size(); ++i)
        oscillogram.analog[i].Add(row.analog[i]);
}

// Discrete channels seldom change, so that samples with the same states are added together.
class StateAppender
{
public:
    explicit StateAppender(std::vector<States>& channels_) : channels(channels_) {}

    void Add(const std::vector<quint8>& next)
    {
        if (times > 0 && next != states)
            Flush();
        if (times == 0)
            states = next;
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

void Codes::Add(double code)
{
    qint16 number = 0;
    const bool isShort = ToShort(code, number);
    if (wide.empty() && isShort) {
        small.push_back(number);
    } else {
        if (wide.empty())
            wide.assign(small.begin(), small.end());
        wide.push_back(static_cast<float>(code));
        if (!std::isfinite(code)) {
            ++missing;
            return;
        }
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
    comtrade::Row row{};
    StateAppender appender(oscillogram.states);
    for (qint64 sample = 0; record.Next(row); ++sample) {
        if (sample >= range.first && sample < range.end) {
            AppendValues(oscillogram, row);
            appender.Add(row.states);
        }
        oscillogram.total = sample + 1;
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
