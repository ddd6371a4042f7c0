// Records made for a test, and records of a stream collected.
#pragma once

#include "forms/stream.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

/// Analog channels "Ia", "Ib" ... in A and discrete ones "K1", "K2" ..., sampled at 1 kHz; the trigger comes
/// 2 ms after the first sample.
inline comtrade::Configuration MadeConfiguration(int analog, int states, qint64 samples)
{
    comtrade::Configuration config;
    config.station = QStringLiteral("Подстанция");
    config.device = QStringLiteral("РАС");
    for (int i = 0; i < analog; ++i) {
        comtrade::AnalogChannel channel;
        channel.number = i + 1;
        channel.name = QStringLiteral("I%1").arg(QChar('a' + i));
        channel.unit = QStringLiteral("A");
        channel.a = 1;
        config.analog.push_back(channel);
    }
    for (int i = 0; i < states; ++i) {
        comtrade::StateChannel channel;
        channel.number = i + 1;
        channel.name = QStringLiteral("K%1").arg(i + 1);
        config.states.push_back(channel);
    }
    config.lineFrequency = 50;
    config.rates = {{1000, samples}};
    config.start = {QDate(2024, 1, 31), 86399 * qint64{1000000000} + 998000000, 6};
    config.trigger = {QDate(2024, 2, 1), 0, 6};
    return config;
}

/// Delivers given records in blocks of a given size.
class MadeStream : public forms::Stream
{
public:
    explicit MadeStream(comtrade::Configuration config_, size_t blockSize_ = 3)
        : config(std::move(config_)), blockSize(blockSize_)
    {}

    void Add(const std::vector<double>& analog, const std::vector<quint8>& states, qint64 stamp = 0)
    {
        all.numbers.push_back(static_cast<quint32>(++all.count));
        all.times.push_back(stamp);
        all.analog.insert(all.analog.end(), analog.begin(), analog.end());
        all.states.insert(all.states.end(), states.begin(), states.end());
    }

    const comtrade::Configuration& Config() const override { return config; }

    bool Next(comtrade::Block& block) override
    {
        block.Resize(blockSize, config);
        block.count = std::min(blockSize, all.count - at);
        for (size_t i = 0; i < block.count; ++i, ++at) {
            block.numbers[i] = all.numbers[at];
            block.times[i] = all.times[at];
            const size_t analog = config.analog.size();
            const size_t states = config.states.size();
            std::copy_n(all.analog.begin() + static_cast<long>(at * analog), analog,
                        block.analog.begin() + static_cast<long>(i * analog));
            std::copy_n(all.states.begin() + static_cast<long>(at * states), states,
                        block.states.begin() + static_cast<long>(i * states));
        }
        return block.count > 0;
    }

private:
    const comtrade::Configuration config;
    const size_t blockSize;
    comtrade::Block all;
    size_t at = 0;
};

/// The bits of the numbers, so that any two can be compared.
inline std::vector<quint64> BitsOf(const std::vector<double>& numbers)
{
    std::vector<quint64> bits(numbers.size());
    for (size_t i = 0; i < numbers.size(); ++i)
        std::memcpy(&bits[i], &numbers[i], sizeof numbers[i]);
    return bits;
}

/// All records of a stream in one block.
inline comtrade::Block AllOf(forms::Stream& stream)
{
    comtrade::Block all;
    comtrade::Block block;
    const size_t analog = stream.Config().analog.size();
    const size_t states = stream.Config().states.size();
    while (stream.Next(block)) {
        const auto count = static_cast<long>(block.count);
        all.count += block.count;
        all.numbers.insert(all.numbers.end(), block.numbers.begin(), block.numbers.begin() + count);
        all.times.insert(all.times.end(), block.times.begin(), block.times.begin() + count);
        all.analog.insert(all.analog.end(), block.analog.begin(),
                          block.analog.begin() + count * static_cast<long>(analog));
        all.states.insert(all.states.end(), block.states.begin(),
                          block.states.begin() + count * static_cast<long>(states));
    }
    return all;
}
