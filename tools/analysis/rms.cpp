#include "analysis/rms.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>

namespace analysis {

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();

constexpr size_t FewSamples = 32; // of a window all of whose weights are fitted

Model OfOrder(int order)
{
    Model model;
    model.order = order;
    return model;
}

Wave SquareOf(const double* first, size_t count)
{
    Wave squares(first, first + count);
    for (double& value : squares)
        value *= value;
    return squares;
}

// Of a mean square, which the rounding of nothing may put below zero.
double RootOf(double meanSquare)
{
    return std::isnan(meanSquare) ? None : std::sqrt(std::max(0.0, meanSquare));
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

Rms::Rms(double samplesPerPeriod) : mean(samplesPerPeriod)
{
    if (mean.Window() <= FewSamples)
        harmonics.emplace(samplesPerPeriod);
}

double Rms::Of(const double* first) const
{
    if (!harmonics)
        return RootOf(mean.Of(SquareOf(first, Window()).data()));
    const Spectrum spectrum = harmonics->Of(first);
    double squares = spectrum.direct * spectrum.direct;
    for (const Phasor& harmonic : spectrum.harmonics)
        squares += std::norm(harmonic);
    return RootOf(squares);
}

Wave Rms::Track(const Wave& wave) const
{
    if (!harmonics) {
        Wave result = mean.Track(SquareOf(wave.data(), wave.size()));
        std::transform(result.begin(), result.end(), result.begin(), RootOf);
        return result;
    }
    Wave result(wave.size(), None);
    for (size_t i = Window(); i <= wave.size(); ++i)
        result[i - 1] = Of(&wave[i - Window()]);
    return result;
}

Peak::Peak(double samplesPerPeriod) : window(static_cast<size_t>(std::ceil(samplesPerPeriod - 1e-6))) {}

double Peak::Of(const double* first) const
{
    if (std::any_of(first, first + window, [](double value) { return std::isnan(value); }))
        return None;
    const auto largest = std::max_element(
        first, first + window, [](double left, double right) { return std::abs(left) < std::abs(right); });
    return std::abs(*largest);
}

Wave Peak::Track(const Wave& wave) const
{
    Wave result(wave.size(), None);
    std::deque<size_t> candidates; // places of magnitudes that fall
    size_t begin = 0;              // after the last value that is missing
    for (size_t i = 0; i < wave.size(); ++i) {
        if (std::isnan(wave[i])) {
            candidates.clear();
            begin = i + 1;
            continue;
        }
        while (!candidates.empty() && std::abs(wave[candidates.back()]) <= std::abs(wave[i]))
            candidates.pop_back();
        candidates.push_back(i);
        if (candidates.front() + window <= i)
            candidates.pop_front();
        if (i + 1 - begin >= window)
            result[i] = std::abs(wave[candidates.front()]);
    }
    return result;
}

} // namespace analysis
