#include "analysis/oscillogram.h"

#include "comtrade/text.h"

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

qint64 CountOf(const QString& recordPath)
{
    comtrade::Record record(recordPath);
    comtrade::Row row{};
    qint64 count = 0;
    while (record.Next(row))
        ++count;
    return count;
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
    if (extent.window > 0) {
        const double last = axis.TimeOf(std::max<qint64>(count - 1, 0));
        const bool isOver = -extent.window * PartBeforeTrigger > last; // before the trigger
        const double wanted = isOver ? last - extent.window : -extent.window * PartBeforeTrigger;
        const double start = std::max(wanted, axis.TimeOf(0));
        return {axis.SampleAt(start, count), axis.SampleAt(start + extent.window, count) + 1};
    }
    return count <= fitting ? whole : Around(axis.TriggerSample(), fitting, count);
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

void Append(Oscillogram& oscillogram, const comtrade::Row& row)
{
    for (size_t i = 0; i < oscillogram.analog.size(); ++i)
        oscillogram.analog[i].Add(row.analog[i]);
    for (size_t i = 0; i < oscillogram.states.size(); ++i)
        oscillogram.states[i].Add(row.states[i] != 0);
}

// The code as a 16-bit integer, if it is one.
bool ToShort(double code, qint16& number)
{
    if (!(code >= -32768 && code <= 32767))
        return false;
    number = static_cast<qint16>(code);
    return static_cast<double>(number) == code;
}

} // namespace

void Codes::Add(double code)
{
    qint16 number = 0;
    const bool isShort = ToShort(code, number);
    if (wide.empty() && !isShort)
        wide.assign(small.begin(), small.end());
    if (wide.empty() && isShort)
        small.push_back(number);
    else
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

void States::Add(bool state)
{
    if (count % 8 == 0)
        bits.push_back(0);
    if (count > 0 && last != state)
        ++changes;
    if (state)
        bits.back() = static_cast<quint8>(bits.back() | (1u << (count % 8)));
    last = state;
    ++count;
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
    comtrade::Record record(recordPath);
    Oscillogram oscillogram;
    oscillogram.config = record.Config();
    oscillogram.report = ReportText(record.Header());
    oscillogram.information = record.Information();
    oscillogram.axis = AxisOf(recordPath, oscillogram.config);
    oscillogram.analog.resize(oscillogram.config.analog.size());
    oscillogram.states.resize(oscillogram.config.states.size());
    const Range range = Chosen(recordPath, oscillogram.axis, oscillogram.config, extent);
    oscillogram.first = range.first;
    comtrade::Row row{};
    for (qint64 sample = 0; record.Next(row); ++sample) {
        if (sample >= range.first && sample < range.end)
            Append(oscillogram, row);
        oscillogram.total = sample + 1;
    }
    return oscillogram;
}

QString ReportText(const QByteArray& bytes)
{
    return comtrade::DecodedText(bytes).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

double PrimaryFactor(const comtrade::AnalogChannel& channel)
{
    const bool hasRatio = channel.primary > 0 && channel.secondary > 0;
    return channel.primaryValues || !hasRatio ? 1 : channel.primary / channel.secondary;
}

} // namespace analysis
