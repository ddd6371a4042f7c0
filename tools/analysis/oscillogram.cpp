#include "analysis/oscillogram.h"

#include "comtrade/samples.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

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
    Limit(begin, next);
    small.resize(static_cast<size_t>(next - small.data()));
    return static_cast<size_t>(next - begin);
}

void Codes::Add(const qint16* code, size_t count)
{
    if (!wide.empty()) {
        for (size_t i = 0; i < count; ++i)
            AddWide(code[i]);
        return;
    }
    small.insert(small.end(), code, code + count);
    Limit(code, code + count);
}

// Takes codes into account for the least and the greatest.
void Codes::Limit(const qint16* code, const qint16* end)
{
    if (code == end)
        return;
    qint16 low = *code; // as std::minmax_element, but in a loop that has no branches
    qint16 high = *code;
    const auto count = static_cast<size_t>(end - code);
    for (size_t i = 0; i < count; ++i) {
        low = code[i] < low ? code[i] : low;
        high = code[i] > high ? code[i] : high;
    }
    least = std::isnan(least) ? low : std::min<double>(least, low);
    greatest = std::isnan(greatest) ? high : std::max<double>(greatest, high);
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
    if (changes > 0)
        for (size_t i = NextChange(1); i < count; i = NextChange(i + 1))
            positions.push_back(static_cast<qint32>(i));
    return positions;
}

size_t States::NextChange(size_t from) const
{
    const auto isEven = [this](size_t byte, bool state) { return bits[byte] == (state ? 0xff : 0); };
    while (from < count && At(from) == At(from - 1)) {
        const bool isByte = from % 8 == 0 && from + 8 <= count && isEven(from / 8, At(from - 1));
        from += isByte ? 8 : 1;
    }
    return std::min(from, count);
}

qint64 Oscillogram::Count() const
{
    if (!analog.empty())
        return static_cast<qint64>(analog.front().Size());
    return states.empty() ? 0 : static_cast<qint64>(states.front().Size());
}

namespace {

// Samples of so many bytes are in memory twice for a moment, since that is faster.
constexpr double MostBytesTwice = 64 << 20;

template <class Number>
void AddTo(Codes& codes, const comtrade::View<Number>& read)
{
    constexpr Number missing = std::numeric_limits<Number>::min();
    if constexpr (std::is_same_v<Number, qint16>) {
        bool isLacking = false; // in a loop without an end before the end
        for (const Number code : read)
            isLacking |= code == missing;
        if (!isLacking) {
            codes.Add(read.data(), read.size());
            return;
        }
    }
    for (const Number code : read) {
        const bool isMissing = std::is_integral_v<Number> && code == missing;
        codes.Add(isMissing ? std::numeric_limits<double>::quiet_NaN() : static_cast<double>(code));
    }
}

// `state` is that of the first sample.
void AddTo(States& states, bool state, const comtrade::Changes& changes, qint64 count)
{
    qint64 from = 0;
    for (size_t i = 0; i < changes.samples.size(); ++i) {
        states.Add(state, static_cast<size_t>(changes.samples[i] - from));
        from = changes.samples[i];
        state = changes.states[i] != 0;
    }
    states.Add(state, static_cast<size_t>(count - from));
}

// All samples of a record, channel by channel.
void TakeAll(comtrade::Record& record, Oscillogram& oscillogram)
{
    const comtrade::Samples samples(record);
    oscillogram.total = samples.Count();
    for (size_t i = 0; i < oscillogram.analog.size(); ++i)
        std::visit([&](const auto& read) { AddTo(oscillogram.analog[i], read); }, samples.Analog(i));
    for (size_t i = 0; i < oscillogram.states.size() && samples.Count() > 0; ++i)
        AddTo(oscillogram.states[i], samples.State(i, 0) != 0, samples.ChangesOf(i), samples.Count());
}

// The samples of a range, as they come.
void TakePart(comtrade::Record& record, const Range& range, Oscillogram& oscillogram)
{
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
}

} // namespace

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
    const bool isWhole = range.first == 0 && range.end == std::numeric_limits<qint64>::max();
    if (isWhole && BytesAnnounced(oscillogram.config) <= MostBytesTwice)
        TakeAll(record, oscillogram);
    else
        TakePart(record, range, oscillogram);
    return oscillogram;
}

double PrimaryFactor(const comtrade::AnalogChannel& channel)
{
    const bool hasRatio = channel.primary > 0 && channel.secondary > 0;
    return channel.primaryValues || !hasRatio ? 1 : channel.primary / channel.secondary;
}

} // namespace analysis
