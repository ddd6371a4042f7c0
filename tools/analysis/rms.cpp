#include "analysis/rms.h"

#include "analysis/constants.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace analysis {

namespace {

constexpr size_t FewSamples = 32; // of a window all of whose weights are fitted

Model OfOrder(int order)
{
    Model model;
    model.order = order;
    return model;
}

// Of a mean square, which the rounding of nothing may put below zero.
double RootOf(double meanSquare)
{
    return std::isnan(meanSquare) ? NoValue : std::sqrt(std::max(0.0, meanSquare));
}

} // namespace

Direct::Direct(double samplesPerPeriod) : mean(samplesPerPeriod, 0, OfOrder(0)) {}

Wave Direct::Track(const Wave& wave) const
{
    const std::vector<Phasor> means = mean.Track(wave);
    Wave result(means.size());
    std::transform(means.begin(), means.end(), result.begin(),
                   [](const Phasor& value) { return value.real(); });
    return result;
}

Rms::Rms(double samplesPerPeriod) : mean(samplesPerPeriod, 0, OfOrder(0)), fundamental(samplesPerPeriod)
{
    for (size_t i = 0; i < Window(); ++i)
        unit.push_back(
            std::polar(std::sqrt(2.0), 2 * Pi * static_cast<double>(Window() - 1 - i) / samplesPerPeriod));
    if (Window() <= FewSamples)
        harmonics.emplace(samplesPerPeriod);
}

double Rms::Of(const double* first) const
{
    const Phasor sine = fundamental.Of(first);
    const double direct = mean.Of(first).real();
    double squares = direct * direct + std::norm(sine);
    if (harmonics) {
        const Spectrum spectrum = harmonics->Of(first);
        for (size_t i = 1; i < spectrum.harmonics.size(); ++i)
            squares += std::norm(spectrum.harmonics[i]);
        return RootOf(squares);
    }
    Wave rest(Window());
    for (size_t i = 0; i < rest.size(); ++i) {
        const double value = first[i] - direct - sine.real() * unit[i].real() - sine.imag() * unit[i].imag();
        rest[i] = value * value;
    }
    return RootOf(squares + mean.Of(rest.data()).real());
}

Wave Rms::Track(const Wave& wave) const
{
    Wave result(wave.size(), NoValue);
    for (size_t i = Window(); i <= wave.size(); ++i)
        result[i - 1] = Of(&wave[i - Window()]);
    return result;
}

Peak::Peak(double samplesPerPeriod) : window(static_cast<size_t>(std::ceil(samplesPerPeriod - 1e-6))) {}

double Peak::Of(const double* first) const
{
    if (std::any_of(first, first + window, [](double value) { return std::isnan(value); }))
        return NoValue;
    const auto largest = std::max_element(
        first, first + window, [](double left, double right) { return std::abs(left) < std::abs(right); });
    return std::abs(*largest);
}

Wave Peak::Track(const Wave& wave) const
{
    Wave result(wave.size(), NoValue);
    std::deque<size_t> candidates; // places of magnitudes that fall
    size_t begin = 0;              // after the last value that is missing
    for (size_t i = 0; i < wave.size(); ++i) {
        if (std::isnan(wave[i])) {
            begin = i + 1;
            continue;
        }
        while (!candidates.empty() && std::abs(wave[candidates.back()]) <= std::abs(wave[i]))
            candidates.pop_back();
        candidates.push_back(i);
        while (candidates.front() + window <= i)
            candidates.pop_front();
        if (i + 1 - begin >= window)
            result[i] = std::abs(wave[candidates.front()]);
    }
    return result;
}

} // namespace analysis
