// Values over the last period that need no sine: direct component, RMS value, peak.
#pragma once

#include "analysis/harmonics.h"
#include "analysis/signals.h"

#include <optional>
#include <vector>

namespace analysis {

/// The mean over one period of any number of samples, also not whole (Fourier with order 0), in the unit of
/// the wave.
class Direct
{
public:
    /// As Fourier.
    explicit Direct(double samplesPerPeriod);

    size_t Window() const { return mean.Window(); }
    double Of(const double* first) const ///< of the Window() values from first on
    {
        return mean.Of(first).real();
    }
    Wave Track(const Wave& wave) const; ///< NaN without a whole window of values

private:
    Fourier mean;
};

/// The root of the mean square over one period, in the unit of the wave: fundamental, harmonics and direct
/// component (IEC 61000-4-30, but over one period at each sample instead of ten periods).
///
/// Squares have twice the frequencies of the wave, and what of them is above half the rate is folded. So with
/// up to 32 samples a period the squares of all harmonics are added (Parseval), of the fit that Harmonics
/// makes: exact for a periodic wave; of a transient, what is no harmonic is missing. With more samples the
/// squares of direct component and fundamental are added to the mean square of the rest: there 10 % of a
/// harmonic above 0.4 of the rate may cost 0.3 %, of others 0.02 %.
class Rms
{
public:
    explicit Rms(double samplesPerPeriod);

    size_t Window() const { return mean.Window(); }
    double Of(const double* first) const;
    Wave Track(const Wave& wave) const;

private:
    Fourier mean;
    Fourier fundamental;
    std::vector<Phasor> unit; // for each sample, of which the real part with the phasor is the fundamental
    std::optional<Harmonics> harmonics; // with few samples a period
};

/// The largest magnitude among the samples of one period, in the unit of the wave: less than the crest of the
/// wave by up to 1 - cos(pi / samplesPerPeriod) of it.
class Peak
{
public:
    explicit Peak(double samplesPerPeriod);

    size_t Window() const { return window; }
    double Of(const double* first) const;
    Wave Track(const Wave& wave) const;

private:
    size_t window;
};

} // namespace analysis
