// Phasors of the fundamental and its harmonics.
#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <vector>

namespace analysis {

/// RMS value and angle (rad) of a cosine; the angle is that at the moment which the function names.
using Phasor = std::complex<double>;

class WindowFit;

/// What a window of samples is taken for, besides fundamental and direct component.
struct Model
{
    /// The highest, at most as many as the window can tell apart; 0: as many as it can, up to 50.
    int harmonics = 0;
    /// Of the polynomial in time, 0 to 2, for the direct component; 2 follows a decaying one.
    int degree = 0;
    /// The harmonic that is wanted; 0: the direct component. Above the highest all is NaN.
    int order = 1;
};

/// Full-cycle Fourier filter, for windows of any length: the least-squares fit of a direct component, the
/// fundamental and its harmonics. Over a whole number of samples in one period this is the discrete Fourier
/// transform. Where a period is not a whole number of samples the transform is not exact any more, but the
/// fit is, for every periodic signal with harmonics up to 50 that are below half the rate by a quarter of the
/// fundamental or more (A. G. Phadke, J. S. Thorp, "Computer Relaying for Power Systems", 2nd ed., 3.3).
///
/// The filter of one period with more than 32 samples fits only its ends (windowfit.h), so that following a
/// wave costs the same at any rate. A harmonic then leaks by at most 0.5 % of itself (the highest; those in
/// the lower half 0.01 %), the fundamental and the direct component by less than 0.001 %.
class Fourier
{
public:
    /// samplesPerPeriod: rate / frequency, at least 4. The window has `window` samples; 0: one period,
    /// rounded up to whole samples.
    explicit Fourier(double samplesPerPeriod, size_t window = 0, const Model& model = {});

    /// The filter of a harmonic, from a fit that serves several.
    Fourier(const WindowFit& fit, int order);

    size_t Window() const { return weights.size(); }

    /// The phasor of the Window() values from `first` on; its angle is that at the last of them. NaN if one
    /// is. The direct component is the real part.
    Phasor Of(const double* first) const;

    /// The same for `Count` windows at once (3 or 6), bit for bit what each of them gives alone, in a third
    /// of the time: the sums of one window need not wait for those of another.
    template <size_t Count>
    std::array<Phasor, Count> Of(const std::array<const double*, Count>& firsts) const;

    /// The same for each sample of a wave as the last of its window, with the angle against a phasor that
    /// turns with the filter's own frequency and has angle 0 at sample 0: constant for a steady signal. NaN
    /// for samples without a whole window. Not for several threads at once.
    std::vector<Phasor> Track(const std::vector<double>& wave) const;

private:
    void TrackBlock(const double* first, size_t last, size_t count, Phasor* result) const;
    Phasor TurnOf(size_t sample) const;

    double step; // rad per sample, of the harmonic that is wanted
    size_t ends; // weights at each end that are not the plain kernel; 0: all
    std::vector<Phasor> weights;
    mutable std::vector<Phasor> turns; // of the first samples; filled when a wave is first tracked
};

/// Zero, positive and negative sequence of three phasors (C. L. Fortescue, Trans. AIEE 37, 1918).
struct Components
{
    Phasor zero, positive, negative;
};

Components ComponentsOf(Phasor a, Phasor b, Phasor c);

} // namespace analysis
