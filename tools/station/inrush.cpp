#include "station/inrush.h"

#include "station/waveform.h"

#include <cmath>

namespace station {

namespace {

constexpr double SaturationFlux = 1.2; // per unit of the steady flux; the largest is 2

double TransformerCurrent(const Inrush& inrush, double decay, double before, double turns)
{
    const double flux = SineOfTurns(before + 0.25) * decay - SineOfTurns(turns + 0.25);
    const double beyond = std::fabs(flux) - SaturationFlux;
    return beyond > 0.0 ? std::copysign(inrush.peak * beyond / (2.0 - SaturationFlux), flux) : 0.0;
}

double CapacitorCurrent(const Inrush& inrush, double decay, double since, double before, double turns)
{
    const double oscillation = inrush.naturalFrequency * since;
    const double ratio = inrush.naturalFrequency / 50.0;
    return inrush.peak * (SineOfTurns(turns + 0.25) -
                          decay * (SineOfTurns(before + 0.25) * SineOfTurns(oscillation + 0.25) -
                                   ratio * SineOfTurns(before) * SineOfTurns(oscillation)));
}

} // namespace

std::array<double, 3> InrushCurrents(const Inrush& inrush, double time, double turns)
{
    std::array<double, 3> currents = {};
    const double since = time - inrush.start;
    if (since <= 0.0)
        return currents;
    const double decay = DecayAfter(since / inrush.timeConstant);
    double sum = 0.0;
    for (size_t phase = 0; phase < 3; ++phase) {
        const double angle = static_cast<double>(phase) / 3.0;
        const double before = inrush.turnsAtStart - angle;
        currents[phase] = inrush.load == SwitchedLoad::Transformer
                              ? TransformerCurrent(inrush, decay, before, turns - angle)
                              : CapacitorCurrent(inrush, decay, since, before, turns - angle);
        sum += currents[phase];
    }
    for (double& current : currents)
        current -= sum / 3.0;
    return currents;
}

} // namespace station
