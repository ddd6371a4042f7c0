#include "comtrade/samples.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace comtrade {

namespace {

template <class Number>
constexpr Number MissingAs = std::numeric_limits<Number>::has_quiet_NaN
                                 ? std::numeric_limits<Number>::quiet_NaN()
                                 : std::numeric_limits<Number>::min();

// The narrowest type that every code of a record has before any of them is read.
Codes EmptyCodes(DataType type)
{
    switch (type) {
    case DataType::Binary32:
        return std::vector<qint32>();
    case DataType::Float32:
        return std::vector<float>();
    case DataType::Ascii:
    case DataType::Binary:
        break;
    }
    return std::vector<qint16>();
}

// Whether the type has the code, as a number that is not the one for missing values.
template <class Number>
bool Holds(double code)
{
    if constexpr (std::is_integral_v<Number>)
        return code > std::numeric_limits<Number>::min() && code <= std::numeric_limits<Number>::max() &&
               code == std::trunc(code);
    else
        return static_cast<double>(static_cast<Number>(code)) == code;
}

template <class Number>
Number As(double code)
{
    return std::isnan(code) ? MissingAs<Number> : static_cast<Number>(code);
}

// Appends a column of a block; false, with the codes that fit appended, at the first that does not.
template <class Number>
bool Append(std::vector<Number>& codes, const Block& block, size_t channel, size_t channels, size_t& next)
{
    for (; next < block.count; ++next) {
        const double code = block.analog[next * channels + channel];
        if (!std::isnan(code) && !Holds<Number>(code))
            return false;
        codes.push_back(As<Number>(code));
    }
    return true;
}

template <class Wide, class Narrow>
std::vector<Wide> Widened(const std::vector<Narrow>& codes, size_t room)
{
    std::vector<Wide> wide;
    wide.reserve(room);
    for (const Narrow code : codes) {
        const bool isMissing = std::is_integral_v<Narrow> ? code == MissingAs<Narrow> : code != code;
        wide.push_back(isMissing ? MissingAs<Wide> : static_cast<Wide>(code));
    }
    return wide;
}

// The codes in the narrowest wider type that has this code too.
Codes Wider(const Codes& codes, double code)
{
    if (const auto* shorts = std::get_if<std::vector<qint16>>(&codes)) {
        if (Holds<qint32>(code))
            return Widened<qint32>(*shorts, shorts->capacity());
        return Widened<double>(*shorts, shorts->capacity());
    }
    if (const auto* integers = std::get_if<std::vector<qint32>>(&codes))
        return Widened<double>(*integers, integers->capacity());
    const auto& floats = std::get<std::vector<float>>(codes);
    return Widened<double>(floats, floats.capacity());
}

void AppendColumn(Codes& codes, const Block& block, size_t channel, size_t channels)
{
    size_t next = 0;
    while (!std::visit([&](auto& numbers) { return Append(numbers, block, channel, channels, next); }, codes))
        codes = Wider(codes, block.analog[next * channels + channel]);
}

} // namespace

Samples::Samples(Record& record)
{
    const Configuration& configuration = record.Config();
    analog.assign(configuration.analog.size(), EmptyCodes(configuration.dataType));
    states.resize(configuration.states.size());
    hasStamps = std::all_of(configuration.rates.begin(), configuration.rates.end(),
                            [](const SampleRate& rate) { return rate.hertz <= 0; });
    Block block;
    while (record.Next(block))
        Add(block);
    for (Codes& codes : analog)
        std::visit([](auto& column) { column.shrink_to_fit(); }, codes);
    for (std::vector<quint8>& bits : states)
        bits.shrink_to_fit();
}

void Samples::Add(const Block& block)
{
    for (size_t i = 0; i < analog.size(); ++i)
        AppendColumn(analog[i], block, i, analog.size());
    for (size_t i = 0; i < states.size(); ++i)
        AddStates(block, i);
    if (hasStamps)
        stamps.insert(stamps.end(), block.times.begin(),
                      block.times.begin() + static_cast<qint64>(block.count));
    for (size_t i = 0; i < block.count; ++i) {
        const qint64 expected = count + static_cast<qint64>(i) + 1;
        if (numbersCount && block.numbers[i] != expected) {
            numbersCount = false;
            for (qint64 number = 1; number < expected; ++number)
                numbers.push_back(static_cast<quint32>(number));
        }
        if (!numbersCount)
            numbers.push_back(block.numbers[i]);
    }
    count += static_cast<qint64>(block.count);
}

void Samples::AddStates(const Block& block, size_t channel)
{
    std::vector<quint8>& bits = states[channel];
    bits.resize((static_cast<size_t>(count) + block.count + 7) / 8);
    const quint8* state = block.states.data() + channel;
    for (size_t i = 0; i < block.count; ++i, state += states.size()) {
        const size_t place = static_cast<size_t>(count) + i;
        bits[place / 8] = static_cast<quint8>(bits[place / 8] | (*state << (place % 8)));
    }
}

Changes Samples::ChangesOf(size_t channel) const
{
    const std::vector<quint8>& bits = states[channel];
    const auto at = [&bits](qint64 sample) {
        return static_cast<quint8>(bits[static_cast<size_t>(sample) / 8] >> (sample % 8) & 1);
    };
    Changes changes;
    for (qint64 sample = 1; sample < count; ++sample) {
        // Bytes in which nothing changes are passed at once.
        if (sample % 8 == 0 && sample + 8 <= count &&
            bits[static_cast<size_t>(sample) / 8] == (at(sample - 1) ? 0xFF : 0)) {
            sample += 7;
            continue;
        }
        if (at(sample) != at(sample - 1)) {
            changes.samples.push_back(sample);
            changes.states.push_back(at(sample));
        }
    }
    return changes;
}

qint64 Samples::MemorySize() const
{
    size_t bytes = numbers.size() * sizeof(quint32) + stamps.size() * sizeof(qint64);
    for (const Codes& codes : analog)
        bytes += std::visit([](const auto& column) { return column.size() * sizeof column[0]; }, codes);
    for (const std::vector<quint8>& bits : states)
        bytes += bits.size();
    return static_cast<qint64>(bytes);
}

} // namespace comtrade
