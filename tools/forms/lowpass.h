// The filter that keeps a signal from aliasing when its rate changes.
#pragma once

#include <vector>

namespace forms {

/// A low-pass of finite length and linear phase: a sinc under a Kaiser window (J. F. Kaiser, 1974). Rates are
/// those of the samples before and after; the bands are in parts of the lower of the two. It passes what is
/// below PassBand and attenuates what is above StopBand.
class LowPass
{
public:
    static constexpr double PassBand = 0.4;
    static constexpr double StopBand = 0.5;
    static constexpr double Attenuation = 80; // dB

    LowPass(double sourceRate, double newRate);

    /// The samples after an instant, and before it, that take part.
    int Reach() const { return reach; }

    /// The factors of 2 * Reach() samples for the instant that is `phase` of a sample (0 to 1) after the
    /// Reach()-th of them. Their sum is 1, so that a constant stays what it is.
    void FactorsAt(double phase, std::vector<double>& factors) const;

private:
    double cutoff;     // the middle of the transition, in parts of the source's rate
    double halfLength; // samples of the source
    int reach;
};

} // namespace forms
