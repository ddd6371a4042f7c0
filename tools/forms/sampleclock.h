// When the samples of a stream were taken.
#pragma once

#include "analysis/timeaxis.h"
#include "comtrade/record.h"

#include <optional>

namespace forms {

/// Times in whole nanoseconds from the trigger, which is finer than the clock of any recorder, so that the
/// same sample has the same time in every form. They come from the rates or, if the configuration has none,
/// from the stamps of the samples.
class SampleClock
{
public:
    static constexpr qint64 NoTime = comtrade::Block::NoTime;

    explicit SampleClock(const comtrade::Configuration& config);

    /// The time of a sample, counted from 0; NoTime if its stamp is missing and there is no rate.
    qint64 At(qint64 sample, qint64 stamp) const;

    /// Whether the times come from the stamps.
    bool IsStamped() const { return !axis; }

private:
    std::optional<analysis::TimeAxis> axis; // by the rates
    double stampNanoseconds;
    qint64 trigger; // ns from the start
};

} // namespace forms
