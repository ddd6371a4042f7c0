#include "analysis/distance.h"

#include "analysis/constants.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

// A loop of the fault: its voltage, current and drop along the whole line, and the current of the fault as
// each method sees it (all in volts and amperes).
struct Loop
{
    Phasor voltage;
    Phasor current;
    Phasor drop;
    Phasor takagi;
    Phasor sequence; // zero or negative sequence
    bool hasSequence = false;
};

PhasePhasors Superimposed(const Change& change)
{
    PhasePhasors result;
    for (size_t phase = PhaseA; phase < Phases; ++phase)
        result[phase] = change.during.currents[phase] - change.before.currents[phase];
    return result;
}

Phasor PositiveImpedance(const Line& line)
{
    return Phasor(line.r1, line.x1) * line.length;
}

// One phase to earth: its voltage drives its own current and the one that returns through earth.
Loop EarthLoop(size_t phase, const Change& change, const Line& line, const Coupled& parallel)
{
    const PhasePhasors& currents = change.during.currents;
    const Phasor zero = ComponentsOf(currents).zero;
    const Phasor z1 = PositiveImpedance(line);
    const Phasor z0 = Phasor(line.r0, line.x0) * line.length;
    const Phasor mutual = Phasor(line.mutualR, line.mutualX) * line.length;
    const PhasePhasors superimposed = Superimposed(change);
    Loop loop;
    loop.voltage = change.during.voltages[phase];
    loop.current = currents[phase] + (z0 - z1) / z1 * zero;
    loop.drop = z1 * loop.current + mutual * parallel.zeroCurrent;
    // Without the zero sequence, which divides between the ends of the line in another way.
    loop.takagi = 1.5 * (superimposed[phase] - ComponentsOf(superimposed).zero);
    loop.sequence = 3.0 * zero;
    loop.hasSequence = true;
    return loop;
}

// The part of the difference of two phases that is negative sequence.
Phasor NegativeDifference(const PhasePhasors& currents, size_t first, size_t second)
{
    const Phasor negative = ComponentsOf(currents).negative;
    const auto turned = [&](size_t phase) {
        return negative * std::polar(1.0, 2 * Pi / 3 * static_cast<double>(phase));
    };
    return turned(first) - turned(second);
}

Loop PhaseLoop(size_t first, size_t second, bool hasEarth, const Change& change, const Line& line)
{
    const auto between = [&](const PhasePhasors& set) { return set[first] - set[second]; };
    Loop loop;
    loop.voltage = between(change.during.voltages);
    loop.current = between(change.during.currents);
    loop.drop = PositiveImpedance(line) * loop.current;
    // Between two phases R is that of the arc, through which the current of one of them flows.
    loop.takagi = between(Superimposed(change)) * (hasEarth ? 1.0 : 0.5);
    loop.sequence = NegativeDifference(change.during.currents, first, second);
    loop.hasSequence = !hasEarth;
    return loop;
}

Loop BalancedLoop(const Change& change, const Line& line)
{
    Loop loop;
    loop.voltage = ComponentsOf(change.during.voltages).positive;
    loop.current = ComponentsOf(change.during.currents).positive;
    loop.drop = PositiveImpedance(line) * loop.current;
    loop.takagi = ComponentsOf(Superimposed(change)).positive;
    return loop;
}

Loop LoopOf(FaultKind kind, const Change& change, const Line& line, const Coupled& parallel)
{
    switch (kind) {
    case FaultKind::AG:
        return EarthLoop(PhaseA, change, line, parallel);
    case FaultKind::BG:
        return EarthLoop(PhaseB, change, line, parallel);
    case FaultKind::CG:
        return EarthLoop(PhaseC, change, line, parallel);
    case FaultKind::AB:
    case FaultKind::ABG:
        return PhaseLoop(PhaseA, PhaseB, kind == FaultKind::ABG, change, line);
    case FaultKind::BC:
    case FaultKind::BCG:
        return PhaseLoop(PhaseB, PhaseC, kind == FaultKind::BCG, change, line);
    case FaultKind::CA:
    case FaultKind::CAG:
        return PhaseLoop(PhaseC, PhaseA, kind == FaultKind::CAG, change, line);
    case FaultKind::ABC:
    case FaultKind::ABCG:
        break;
    }
    return BalancedLoop(change, line);
}

Phasor FaultCurrent(const Loop& loop, DistanceMethod method)
{
    switch (method) {
    case DistanceMethod::Reactance:
        return loop.current;
    case DistanceMethod::Takagi:
        return loop.takagi;
    case DistanceMethod::ModifiedTakagi:
        break;
    }
    return loop.sequence;
}

// The part of the line at which the rest of the voltage has the angle of the fault's current.
double PartOf(const Loop& loop, Phasor faultCurrent)
{
    return std::imag(loop.voltage * std::conj(faultCurrent)) / std::imag(loop.drop * std::conj(faultCurrent));
}

} // namespace

std::vector<Distance> DistancesOf(FaultKind kind, const Change& change, const Line& line,
                                  const Coupled& parallel)
{
    const Loop loop = LoopOf(kind, change, line, parallel);
    std::vector<Distance> distances;
    for (const DistanceMethod method :
         {DistanceMethod::Reactance, DistanceMethod::Takagi, DistanceMethod::ModifiedTakagi}) {
        if (method == DistanceMethod::ModifiedTakagi && !loop.hasSequence)
            continue;
        const Phasor current = FaultCurrent(loop, method);
        const double part = PartOf(loop, current);
        const double resistance = std::real((loop.voltage - part * loop.drop) / current);
        distances.push_back({method, 100 * part, part * line.length,
                             method == DistanceMethod::Reactance ? NoValue : resistance});
    }
    return distances;
}

DistanceRange RangeOf(FaultKind kind, const Change& change, const Line& line, const Coupled& parallel,
                      DistanceMethod method)
{
    constexpr double degrees = 5;
    const Loop loop = LoopOf(kind, change, line, parallel);
    const Phasor current = FaultCurrent(loop, method);
    const double one = 100 * PartOf(loop, current * std::polar(1.0, degrees * Pi / 180));
    const double other = 100 * PartOf(loop, current * std::polar(1.0, -degrees * Pi / 180));
    return {std::min(one, other), std::max(one, other)};
}

} // namespace analysis
