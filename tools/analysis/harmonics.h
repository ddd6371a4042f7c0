// The spectrum of a periodic wave.
#pragma once

#include "analysis/phasor.h"

#include <vector>

namespace analysis {

struct Spectrum
{
    double direct = 0; ///< in the unit of the wave
    std::vector<Phasor>
        harmonics; ///< 1 to at most 50: RMS and angle at the last sample, in the unit of the wave

    /// The root of the squares of all harmonics from 2 on, against the fundamental (IEC 61000-2-4, which
    /// takes those up to 50); NaN without a fundamental. Those that the rate cannot show are not in it.
    double Thd() const;
};

/// Takes a wave apart into harmonics, by least squares over whole periods (windowfit.h), for any number of
/// samples a period. IEC 61000-4-7 takes ten periods of 50 Hz and adds what is between the harmonics to them
/// in groups; here nothing is grouped, as a record of a fault has no ten steady periods.
///
/// There is no FFT in it: a period is not a power of two of samples, in general not even whole, and 50 sums
/// of it are soon made.
class Harmonics
{
public:
    /// samplesPerPeriod as of Fourier; the window has `periods` periods.
    explicit Harmonics(double samplesPerPeriod, size_t periods = 1);

    size_t Window() const { return filters.front().Window(); }

    /// The highest harmonic: 50, or that below half the rate by a quarter of the fundamental.
    int Highest() const { return static_cast<int>(filters.size()) - 1; }

    /// Of the Window() values from `first` on; all NaN if one is.
    Spectrum Of(const double* first) const;

private:
    std::vector<Fourier> filters; // of orders from 0 on
};

} // namespace analysis
