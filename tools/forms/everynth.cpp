#include "forms/everynth.h"

#include <algorithm>
#include <cmath>

namespace forms {

namespace {

comtrade::Configuration Thinned(comtrade::Configuration config, int n)
{
    const qint64 count = (config.SampleCount() + n - 1) / n;
    if (HasOneRate(config)) {
        config.rates = {{config.rates.front().hertz / n, count}};
        return config;
    }
    if (!analysis::IsStamped(config))
        config.timeMultiplier = 1;
    config.rates = {{0, count}};
    return config;
}

} // namespace

bool HasOneRate(const comtrade::Configuration& config)
{
    return !config.rates.empty() && config.rates.front().hertz > 0 &&
           std::all_of(config.rates.begin(), config.rates.end(), [&](const comtrade::SampleRate& rate) {
               return rate.hertz == config.rates.front().hertz;
           });
}

EveryNth::EveryNth(Stream& source_, int n_)
    : source(source_), n(n_), clock(source.Config()),
      isStamped(!clock.IsStamped() && !HasOneRate(source.Config())), first(clock.At(0, 0)),
      configuration(Thinned(source.Config(), n))
{}

qint64 EveryNth::StampOf(qint64 stored) const
{
    if (!isStamped)
        return stored;
    return std::llround(static_cast<double>(clock.At(sample, stored) - first) /
                        (configuration.StampSeconds() * 1e9));
}

bool EveryNth::Next(comtrade::Block& block)
{
    const size_t analog = configuration.analog.size();
    const size_t states = configuration.states.size();
    size_t kept = 0;
    while (kept == 0 && source.Next(block)) {
        for (size_t i = 0; i < block.count; ++i, ++sample) {
            if (sample % n != 0)
                continue;
            block.numbers[kept] = ++delivered;
            block.times[kept] = StampOf(block.times[i]);
            std::copy_n(block.analog.data() + i * analog, analog, block.analog.data() + kept * analog);
            std::copy_n(block.states.data() + i * states, states, block.states.data() + kept * states);
            ++kept;
        }
    }
    block.count = kept;
    return kept > 0;
}

} // namespace forms
