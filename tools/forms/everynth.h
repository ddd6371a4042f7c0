// Fewer samples of a record, unchanged.
#pragma once

#include "forms/sampleclock.h"
#include "forms/stream.h"

namespace forms {

/// Delivers the first sample and every n-th after it, as they are: what the signal has above half of the new
/// rate is folded below it. Samples of several rates are delivered with their time stamps and no rate, as
/// their times would follow from no rates.
class EveryNth : public Stream
{
public:
    /// The source must outlive it.
    EveryNth(Stream& source_, int n_);

    const comtrade::Configuration& Config() const override { return configuration; }
    bool Next(comtrade::Block& block) override;

private:
    qint64 StampOf(qint64 stored) const;

    Stream& source;
    const int n;
    const SampleClock clock;
    const bool isStamped; // by this stage
    const qint64 first;   // ns from the trigger
    comtrade::Configuration configuration;
    qint64 sample = 0; // of the source
    quint32 delivered = 0;
};

/// Whether samples have one rate, whether it is given in one line or in several.
bool HasOneRate(const comtrade::Configuration& config);

} // namespace forms
