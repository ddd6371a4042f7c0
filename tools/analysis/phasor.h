// Phasors of the fundamental.
#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace analysis {

/// RMS value and angle (rad) of a cosine; the angle is that at the moment which the function names.
using Phasor = std::complex<double>;

/// What a window of samples is taken for, besides fundamental and direct component.
struct Model
{
    int harmonics =
        0; ///< the highest, at most as many as the window can tell apart; 0: as many as it can, up to 25
    int degree = 0; ///< of the polynomial for the direct component; 2 follows a decaying one
};

/// Full-cycle Fourier filter, for windows of any length: the least-squares fit of a direct component, the
/// fundamental and its harmonics. Over a whole number of samples in one period this is the discrete Fourier
/// transform; where a period is not a whole number of samples it remains exact for every periodic signal, as
/// the transform does not (A. G. Phadke, J. S. Thorp, "Computer Relaying for Power Systems", 2nd ed., 3.3).
class Fourier
{
public:
    /// samplesPerPeriod: rate / frequency, at least 4. The window has `window` samples; 0: one period,
    /// rounded up to whole samples.
    explicit Fourier(double samplesPerPeriod, size_t window = 0, const Model& model = {});

    size_t Window() const { return weights.size(); }

    /// The phasor of the Window() values from `first` on; its angle is that at the last of them. NaN if one
    /// is.
    Phasor Of(const double* first) const;

    /// The same for each sample of a wave as the last of its window, with the angle against a phasor that
    /// turns with the filter's own frequency and has angle 0 at sample 0: constant for a steady signal. NaN
    /// for samples without a whole window.
    std::vector<Phasor> Track(const std::vector<double>& wave) const;

private:
    double step; // rad per sample
    std::vector<Phasor> weights;
};

/// Zero, positive and negative sequence of three phasors (C. L. Fortescue, Trans. AIEE 37, 1918).
struct Components
{
    Phasor zero, positive, negative;
};

Components ComponentsOf(Phasor a, Phasor b, Phasor c);

} // namespace analysis
