#include "verify/columns.h"

#include "verify/alignedrows.h"
#include "verify/channellines.h"
#include "verify/mismatch.h"
#include "verify/source.h"

#include <algorithm>
#include <cmath>

namespace verify {

namespace {

// Samples of a record, spread over all of it, that show which channel a column is. Odd distances keep them
// from always being at the same phase of a wave.
constexpr qint64 MostProbes = 256;

// So many of the probes may be damaged.
constexpr int MostDamaged = 2;

bool IsClose(double one, double other, double magnitude)
{
    constexpr double precision = 2e-7; // of single precision, and of numbers with eight digits
    return std::abs(one - other) <= precision * magnitude;
}

// The names that a channel of the recording may have in a record.
struct Names
{
    QString own; // the recorder's
    QString name;
    QString circuit;

    bool Have(const QString& columnName, const QString& columnCircuit) const
    {
        return columnName == own || (columnName == name && columnCircuit == circuit);
    }
};

template <class Channel>
Names NamesOf(const Channel& channel, size_t index, const Device& device)
{
    try {
        const QStringList fields = NameFields(channel, index + 1, device);
        return {channel.Name, fields[1], fields[3]};
    } catch (const Mismatch&) { // they make no record, but may be in one
        return {channel.Name, channel.CfgName, channel.CfgCircuit};
    }
}

// What was read of a column or channel.
struct Probes
{
    std::vector<std::vector<double>> analog; // by column or channel
    std::vector<quint64> states;             // hashes of all samples
};

quint64 HashOf(qint64 sample)
{
    quint64 hash = (static_cast<quint64>(sample) + 1) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ (hash >> 30U)) * 0xBF58476D1CE4E5B9U;
    return hash ^ (hash >> 27U);
}

class Matching
{
public:
    Matching(const QString& path, const Source& source_, const Alignment& alignment)
        : source(source_), rows(path, source_, alignment), configuration(rows.Config()),
          values(configuration, source_), distance((alignment.count / MostProbes) | 1)
    {
        columns.analog.resize(configuration.analog.size());
        columns.states.resize(configuration.states.size());
        channels.analog.resize(source.AnalogCount());
        channels.states.resize(source.StateCount());
        for (size_t i = 0; i < source.AnalogCount(); ++i)
            analogNames.push_back(NamesOf(source.Analog(i), i, source.Owner()));
        for (size_t i = 0; i < source.StateCount(); ++i)
            stateNames.push_back(NamesOf(source.State(i), i, source.Owner()));
    }

    ColumnChannels Run()
    {
        try {
            while (rows.Next()) {
                if (rows.Sample() % distance == 0)
                    Probe();
                HashStates();
            }
        } catch (const comtrade::Error&) { // what is before decides; the comparison reports it
        }
        ColumnChannels result;
        Assign(result.analog, columns.analog.size(), channels.analog.size(),
               [this](size_t column, size_t channel) { return AnalogFit(column, channel); });
        Assign(result.states, columns.states.size(), channels.states.size(),
               [this](size_t column, size_t channel) { return StateFit(column, channel); });
        return result;
    }

private:
    // How well a channel fits a column.
    struct Fit
    {
        bool hasValues = false;
        bool hasName = false;
    };

    void Probe()
    {
        for (size_t i = 0; i < columns.analog.size(); ++i)
            columns.analog[i].push_back(rows.Found().analog[i]);
        for (size_t i = 0; i < channels.analog.size(); ++i)
            channels.analog[i].push_back(rows.Code(i));
    }

    void HashStates()
    {
        const quint64 hash = HashOf(rows.Sample());
        for (size_t i = 0; i < columns.states.size(); ++i)
            columns.states[i] += rows.Found().states[i] != 0 ? hash : 0;
        for (size_t i = 0; i < channels.states.size(); ++i)
            channels.states[i] += rows.State(i) ? hash : 0;
    }

    Fit AnalogFit(size_t column, size_t channel) const
    {
        const std::vector<double>& found = columns.analog[column];
        const std::vector<double>& codes = channels.analog[channel];
        int damaged = 0;
        for (size_t i = 0; i < found.size() && damaged <= MostDamaged; ++i)
            damaged += values.IsSame(column, channel, found[i], codes[i]) ? 0 : 1;
        const comtrade::AnalogChannel& one = configuration.analog[column];
        return {damaged <= MostDamaged, analogNames[channel].Have(one.name, one.circuit)};
    }

    Fit StateFit(size_t column, size_t channel) const
    {
        const comtrade::StateChannel& one = configuration.states[column];
        return {columns.states[column] == channels.states[channel],
                stateNames[channel].Have(one.name, one.circuit)};
    }

    // In several rounds, from the surest reasons to the weakest. A channel is taken once.
    template <class FitOf>
    void Assign(std::vector<int>& result, size_t columnCount, size_t channelCount, const FitOf& fitOf) const
    {
        result.assign(columnCount, ColumnChannels::None);
        std::vector<bool> taken(channelCount);
        const auto take = [&](const auto& fits) {
            for (size_t column = 0; column < columnCount; ++column) {
                for (size_t i = 0; i < channelCount && result[column] == ColumnChannels::None; ++i) {
                    const size_t channel = (column + i) % channelCount; // the same place first
                    if (taken[channel] || !fits(fitOf(column, channel), i == 0))
                        continue;
                    result[column] = static_cast<int>(channel);
                    taken[channel] = true;
                }
            }
        };
        const bool hasAll = columnCount == channelCount;
        take([](const Fit& fit, bool) { return fit.hasValues && fit.hasName; });
        take([&](const Fit& fit, bool inPlace) { return fit.hasValues && hasAll && inPlace; });
        take([](const Fit& fit, bool) { return fit.hasValues; });
        take([](const Fit& fit, bool) { return fit.hasName; });
        take([&](const Fit&, bool inPlace) { return hasAll && inPlace; });
    }

    const Source& source;
    AlignedRows rows;
    const comtrade::Configuration& configuration;
    const ColumnValues values;
    const qint64 distance; // of the probes
    Probes columns;
    Probes channels;
    std::vector<Names> analogNames; // by channel
    std::vector<Names> stateNames;
};

bool IsCountingUp(const std::vector<int>& channels)
{
    for (size_t i = 0; i < channels.size(); ++i) {
        if (channels[i] != static_cast<int>(i))
            return false;
    }
    return true;
}

} // namespace

ColumnValues::ColumnValues(const comtrade::Configuration& configuration_, const Source& source)
    : configuration(configuration_)
{
    for (size_t i = 0; i < source.AnalogCount(); ++i) {
        const Scaling scaling = ScalingOf(source.Analog(i));
        channels.push_back({scaling.a.toDouble(), scaling.b.toDouble()});
    }
}

double ColumnValues::Expected(size_t column, size_t channel, double code) const
{
    const comtrade::AnalogChannel& own = configuration.analog[column];
    const Scale& scale = channels[channel];
    if (own.a == 0 || std::isnan(code) || (own.a == scale.a && own.b == scale.b))
        return code;
    const bool isSecondary = !own.primaryValues && own.primary != 0 && own.secondary != 0;
    const double value = (scale.a * code + scale.b) * (isSecondary ? own.secondary / own.primary : 1);
    return (value - own.b) / own.a;
}

bool ColumnValues::IsSame(size_t column, size_t channel, double found, double code) const
{
    constexpr double missingCode = -32768; // in binary data of the converter
    if (std::isnan(code))
        return std::isnan(found);
    if (std::isnan(found))
        return code == missingCode;
    const comtrade::AnalogChannel& own = configuration.analog[column];
    const double expected = Expected(column, channel, code);
    if (expected == found)
        return true;
    const bool isScaled = expected != code;
    const bool isRounded = isScaled && configuration.dataType != comtrade::DataType::Float32;
    if (isRounded && std::abs(expected - found) <= 0.501)
        return true;
    const double offset = own.a != 0 ? std::abs(own.b / own.a) : 0;
    return (isScaled || configuration.dataType == comtrade::DataType::Float32) &&
           IsClose(expected, found, std::abs(expected) + offset);
}

bool ColumnChannels::IsIdentity() const
{
    return IsCountingUp(analog) && IsCountingUp(states);
}

ColumnChannels MatchColumns(const QString& record, const Source& source, const Alignment& alignment)
{
    return Matching(record, source, alignment).Run();
}

} // namespace verify
