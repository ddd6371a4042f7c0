#include "analysis/phasor.h"

#include "analysis/constants.h"
#include "analysis/windowfit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace analysis {

namespace {

// Sums that slide start afresh with each block, so that no rounding error grows with the wave.
constexpr size_t Block = 256;

// One register on x86-64 and 64-bit ARM: real and imaginary part.
typedef double Pair __attribute__((vector_size(16)));

// Sums of products of weights with a wave, for each sample of a block.
struct Taps
{
    std::array<double, Block> real;
    std::array<double, Block> imaginary;

    // Adds the products of one weight with the values from `first` on.
    void Add(Phasor weight, const double* first)
    {
        const double re = weight.real();
        const double im = weight.imag();
        for (size_t i = 0; i < Block; ++i) {
            real[i] += re * first[i];
            imaginary[i] += im * first[i];
        }
    }

    Phasor Turned(size_t i, double re, double im) const
    {
        return {real[i] * re - imaginary[i] * im, real[i] * im + imaginary[i] * re};
    }
};

// NaN in place of results whose window has a value that is missing.
void RemoveMissing(const std::vector<double>& wave, size_t window, std::vector<Phasor>& result)
{
    size_t until = 0;
    for (size_t i = 0; i < wave.size(); ++i) {
        if (!std::isfinite(wave[i]))
            until = i + window;
        if (i < until)
            result[i] = Phasor(NoValue, NoValue);
    }
}

} // namespace

Fourier::Fourier(double samplesPerPeriod, size_t window, const Model& model)
    : Fourier(WindowFit(samplesPerPeriod, window, model), model.order)
{}

Fourier::Fourier(const WindowFit& fit, int order)
    : step(fit.Step() * static_cast<double>(order)), ends(fit.Ends()), weights(fit.Weights(order))
{}

Phasor Fourier::Of(const double* first) const
{
    double real = 0;
    double imaginary = 0;
    for (size_t i = 0; i < weights.size(); ++i) {
        real += weights[i].real() * first[i];
        imaginary += weights[i].imag() * first[i];
    }
    return {real, imaginary};
}

template <size_t Count>
std::array<Phasor, Count> Fourier::Of(const std::array<const double*, Count>& firsts) const
{
    Pair sums[Count] = {};
    for (size_t i = 0; i < weights.size(); ++i) {
        const Pair weight = {weights[i].real(), weights[i].imag()};
        for (size_t k = 0; k < Count; ++k)
            sums[k] += weight * firsts[k][i];
    }
    std::array<Phasor, Count> results;
    for (size_t k = 0; k < Count; ++k)
        results[k] = {sums[k][0], sums[k][1]};
    return results;
}

template std::array<Phasor, 3> Fourier::Of(const std::array<const double*, 3>& firsts) const;
template std::array<Phasor, 6> Fourier::Of(const std::array<const double*, 6>& firsts) const;

Phasor Fourier::TurnOf(size_t sample) const
{
    return std::polar(1.0, -std::remainder(step * static_cast<double>(sample), 2 * Pi));
}

// Results of `count` samples, at most Block, from sample `last` of the wave on, whose window has its first
// value at `first`. There are Block samples from `last` on, whatever the count.
void Fourier::TrackBlock(const double* first, size_t last, size_t count, Phasor* result) const
{
    Taps sums{};
    Taps changes{}; // of the sum between the ends, from each sample to the next: one value enters, one leaves
    const size_t window = weights.size();
    for (size_t i = 0; i < window; ++i)
        if (ends == 0 || i < ends || i >= window - ends)
            sums.Add(weights[i], first + i);
    Phasor between = 0;
    const Phasor turn = TurnOf(last);
    if (ends > 0) {
        for (size_t i = ends; i < window - ends; ++i)
            between += weights[i] * first[i];
        between *= turn;
        changes.Add(weights[window - ends - 1] * std::polar(1.0, -step), first + window - ends);
        changes.Add(-weights[ends], first + ends);
    }
    for (size_t i = 0; i < count; ++i) {
        const double re = turns[i].real() * turn.real() - turns[i].imag() * turn.imag();
        const double im = turns[i].real() * turn.imag() + turns[i].imag() * turn.real();
        result[i] = between + sums.Turned(i, re, im);
        between += changes.Turned(i, re, im);
    }
}

std::vector<Phasor> Fourier::Track(const std::vector<double>& wave) const
{
    std::vector<Phasor> result(wave.size(), Phasor(NoValue, NoValue));
    const size_t window = weights.size();
    if (wave.size() < window)
        return result;
    for (size_t i = turns.size(); i < Block; ++i)
        turns.push_back(TurnOf(i));
    std::vector<double> values(wave.size() + Block); // a missing value must not stay in a sliding sum
    std::transform(wave.begin(), wave.end(), values.begin(),
                   [](double value) { return std::isfinite(value) ? value : 0; });
    for (size_t last = window - 1; last < wave.size(); last += Block)
        TrackBlock(&values[last + 1 - window], last, std::min(Block, wave.size() - last), &result[last]);
    RemoveMissing(wave, window, result);
    return result;
}

Components ComponentsOf(Phasor a, Phasor b, Phasor c)
{
    static const Phasor turn = std::polar(1.0, 2 * Pi / 3);
    static const Phasor twice = turn * turn;
    return {(a + b + c) / 3.0, (a + turn * b + twice * c) / 3.0, (a + twice * b + turn * c) / 3.0};
}

} // namespace analysis
