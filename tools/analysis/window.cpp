#include "analysis/window.h"

#include <cmath>
#include <limits>

namespace analysis {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double None = std::numeric_limits<double>::quiet_NaN();

} // namespace

Meter::Meter(double samplesPerPeriod)
    : period(samplesPerPeriod), window(static_cast<size_t>(std::ceil(samplesPerPeriod - 1e-6)))
{}

const Fourier& Meter::Filter(size_t length) const
{
    const auto known = filters.find(length);
    if (known != filters.end())
        return known->second;
    Model model;
    if (length < window) {
        model.harmonics = 1;
    } else {
        // A decaying direct component would pass for a part of the fundamental; the more a window holds, the
        // more can be told apart.
        constexpr int usual = 7;
        model.harmonics = usual;
        model.degree = length > window + window / 8 ? 2 : 1;
    }
    return filters.emplace(length, Fourier(period, length, model)).first->second;
}

Phasor Meter::Of(const Wave& wave, size_t first, size_t length) const
{
    if (length == 0 || first + length > wave.size())
        return {None, None};
    const double last = static_cast<double>(first + length - 1);
    return Filter(length).Of(&wave[first]) * std::polar(1.0, -std::fmod(2 * Pi * last / period, 2 * Pi));
}

CircuitState Meter::Of(const CircuitWaves& waves, size_t first, size_t length) const
{
    CircuitState state;
    state.hasVoltages = waves.hasVoltages;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        state.currents[phase] = Of(*waves.currents[phase], first, length);
        if (waves.hasVoltages)
            state.voltages[phase] = Of(*waves.voltages[phase], first, length);
    }
    return state;
}

double Meter::SecondHarmonic(const Wave& wave, size_t first) const
{
    if (first + window > wave.size())
        return 0;
    Phasor second;
    for (size_t i = 0; i < window; ++i) {
        // The part of the last sample's step that is within the period.
        const double weight = i + 1 < window ? 1 : period - static_cast<double>(window - 1);
        second += weight * wave[first + i] * std::polar(1.0, -4 * Pi * static_cast<double>(i) / period);
    }
    return std::sqrt(2.0) / period * std::abs(second);
}

} // namespace analysis
