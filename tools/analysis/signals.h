// The analog channels of a record as waves for computing: primary values in volts and amperes (others in
// their own unit), at one constant rate.
//
// A record of a single rate keeps its samples exactly. One of several rates, or with a time stamp for each
// sample, is put on a common grid (interpolation.h), so that each computation needs to know one rate only.
// The grid has the highest rate, or a lower one if it would have more than four times the samples of the
// record: then what a faster piece has above half the rate of the grid is folded below it.
//
// A channel with a skew was sampled so much after the time of each sample (IEEE C37.111: time skew from the
// start of the sample period). Its values are interpolated at the common moments too, as 100 us are 1.8
// degrees between two channels; near a step they swing as any band-limited signal does, in proportion to the
// skew. A skew of more than a step cannot be one and is ignored.
#pragma once

#include "analysis/interpolation.h"
#include "analysis/oscillogram.h"

#include <map>
#include <vector>

namespace analysis {

using Wave = std::vector<double>; ///< NaN where the record has no value

class Signals
{
public:
    /// The oscillogram must outlive the signals.
    explicit Signals(const Oscillogram& oscillogram_);

    const comtrade::Configuration& Config() const { return oscillogram.config; }

    double Rate() const { return rate; }   ///< samples per second; 0 if there is no sample
    size_t Count() const { return count; } ///< samples of each wave
    double TimeOf(double sample) const { return start + sample / rate; } ///< seconds from the trigger
    double SampleAt(double seconds) const                                ///< the inverse, a fraction too
    {
        return (seconds - start) * rate;
    }
    double Nominal() const { return nominal; } ///< line frequency of the configuration, Hz

    /// Values of an analog channel, computed when they are first asked for. Not for several threads at once.
    const Wave& Of(size_t channel) const;

private:
    Wave Compute(size_t channel) const;
    double SkewOf(size_t channel) const;
    const Interpolation& InterpolationFor(double skew) const;

    const Oscillogram& oscillogram;
    double rate = 0;
    double start = 0; // time of the first sample
    double nominal = 0;
    size_t count = 0;
    bool isGrid = false; // the samples are interpolated
    mutable std::map<size_t, Wave> waves;
    mutable std::map<double, Interpolation> interpolations; // by the skew
};

} // namespace analysis
