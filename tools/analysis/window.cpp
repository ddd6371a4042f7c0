#include "analysis/window.h"

#include "analysis/constants.h"

#include <cmath>

namespace analysis {

Meter::Meter(double samplesPerPeriod)
    : period(samplesPerPeriod), window(static_cast<size_t>(std::ceil(samplesPerPeriod - 1e-6)))
{
    secondTurns.reserve(window);
    for (size_t i = 0; i < window; ++i)
        secondTurns.push_back(std::polar(1.0, -4 * Pi * static_cast<double>(i) / period));
}

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

// From the angle at the last sample of a window to that at sample 0.
Phasor Meter::TurnOf(size_t first, size_t length) const
{
    const double last = static_cast<double>(first + length - 1);
    return std::polar(1.0, -std::fmod(2 * Pi * last / period, 2 * Pi));
}

Phasor Meter::Of(const Wave& wave, size_t first, size_t length) const
{
    if (length == 0 || first + length > wave.size())
        return {NoValue, NoValue};
    return Filter(length).Of(&wave[first]) * TurnOf(first, length);
}

CircuitState Meter::Of(const CircuitWaves& waves, size_t first, size_t length) const
{
    CircuitState state;
    state.hasVoltages = waves.hasVoltages;
    // The waves of a record are equally long.
    if (length == 0 || first + length > waves.currents[PhaseA]->size()) {
        state.currents.fill({NoValue, NoValue});
        if (waves.hasVoltages)
            state.voltages.fill({NoValue, NoValue});
        return state;
    }
    const Phasor turn = TurnOf(first, length);
    const auto at = [first](const Wave* wave) { return wave->data() + first; };
    const auto& currents = waves.currents;
    const auto& voltages = waves.voltages;
    if (waves.hasVoltages) {
        const std::array<Phasor, 2 * Phases> all =
            Filter(length).Of<2 * Phases>({at(currents[PhaseA]), at(currents[PhaseB]), at(currents[PhaseC]),
                                           at(voltages[PhaseA]), at(voltages[PhaseB]), at(voltages[PhaseC])});
        for (size_t phase = PhaseA; phase < Phases; ++phase) {
            state.currents[phase] = all[phase] * turn;
            state.voltages[phase] = all[Phases + phase] * turn;
        }
    } else {
        const std::array<Phasor, Phases> all =
            Filter(length).Of<Phases>({at(currents[PhaseA]), at(currents[PhaseB]), at(currents[PhaseC])});
        for (size_t phase = PhaseA; phase < Phases; ++phase)
            state.currents[phase] = all[phase] * turn;
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
        second += weight * wave[first + i] * secondTurns[i];
    }
    return std::sqrt(2.0) / period * std::abs(second);
}

} // namespace analysis
