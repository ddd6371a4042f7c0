// A record's values and times as forms without codes hold them: CSV and MAT.
#pragma once

#include "forms/sampleclock.h"
#include "forms/stream.h"

namespace forms {

/// Delivers a * code + b of another stream in double precision (NaN: missing), with a = 1 and b = 0 for each
/// channel, as the stamp of each record its time in nanoseconds from the trigger, and numbers from 1 on. The
/// configuration has the rates of the source, and start.decimals and timeMultiplier for which StampSeconds()
/// is 1e-9.
class Values : public Stream
{
public:
    /// The source must outlive it.
    explicit Values(Stream& source);

    const comtrade::Configuration& Config() const override { return configuration; }
    bool Next(comtrade::Block& block) override;

private:
    Stream& source;
    const SampleClock clock;
    comtrade::Configuration configuration;
    qint64 sample = 0; // the next one
};

} // namespace forms
