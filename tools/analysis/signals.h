// The analog channels of a record as waves for computing: primary values in volts and amperes (others in
// their own unit), at one constant rate.
//
// A record of a single rate keeps its samples. One of several rates, or with a time stamp for each sample, is
// put on a common grid by windowed-sinc interpolation (J. O. Smith, "Digital Audio Resampling", CCRMA), so
// that each computation needs to know one rate only.
#pragma once

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
    double SampleAt(double seconds) const
    {
        return (seconds - start) * rate;
    }                                          ///< the inverse, a fraction too
    double Nominal() const { return nominal; } ///< line frequency of the configuration, Hz

    /// Values of an analog channel, computed when they are first asked for. Not for several threads at once.
    const Wave& Of(size_t channel) const;

private:
    Wave Compute(size_t channel) const;

    const Oscillogram& oscillogram;
    double rate = 0;
    double start = 0; // time of the first sample
    double nominal = 0;
    size_t count = 0;
    bool isGrid = false; // the samples are interpolated
    mutable std::map<size_t, Wave> waves;
};

} // namespace analysis
