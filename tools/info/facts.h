// What recordings and records have in common.
#pragma once

#include "info/description.h"

#include <QtGlobal>

#include <vector>

namespace info {

/// A stretch of samples.
struct Rate
{
    double hertz = 0;      // 0: not constant, the time stamps count
    qint64 lastSample = 0; // of the stretch, counted from 1

    bool IsConstant() const { return hertz != 0; }
};

/// How a recording or record was sampled.
struct Sampling
{
    std::vector<Rate> rates;
    double seconds = 0; // NaN: unknown

    qint64 Samples() const { return rates.empty() ? 0 : rates.back().lastSample; }
};

/// The duration of the stretches that have a rate, seconds: their samples divided by their rates. A recording
/// and its record agree in it. NaN if a rate is no positive number.
double SecondsOfRates(const std::vector<Rate>& rates);

/// Adds the duration, the rates and the number of samples.
void AddSampling(Description& description, const Sampling& sampling);

/// Adds how many channels there are.
void AddChannelCount(Description& description, size_t analog, size_t discrete);

} // namespace info
