#include "analysis/faultkind.h"

#include "analysis/constants.h"
#include "analysis/distance.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

PhasePhasors Difference(const PhasePhasors& during, const PhasePhasors& before)
{
    return {during[PhaseA] - before[PhaseA], during[PhaseB] - before[PhaseB],
            during[PhaseC] - before[PhaseC]};
}

Components ChangedCurrents(const Change& change)
{
    return ComponentsOf(Difference(change.during.currents, change.before.currents));
}

double Largest(const PhasePhasors& set)
{
    return std::max({std::abs(set[PhaseA]), std::abs(set[PhaseB]), std::abs(set[PhaseC])});
}

// A phase voltage of the healthy network: limits of currents are in proportion to it. While a line is open
// its bus may be far above that, and load that comes back brings it down again.
double HealthyVoltage(const Change& change)
{
    constexpr double highest = 1.25; // of the usual one; a network that was dead says nothing
    const double before = std::abs(ComponentsOf(change.before.voltages).positive);
    return before < highest * change.usualVoltage ? std::min(before, change.usualVoltage) : before;
}

// Without negative sequence to speak of, all three phases take part.
bool IsBalanced(const Components& currents, double noise)
{
    constexpr double part = 0.12;
    return std::abs(currents.negative) < std::max(part * std::abs(currents.positive), 3 * noise);
}

bool HasEarth(const Components& currents, double noise)
{
    constexpr double part = 0.06;
    const double others = std::max(std::abs(currents.positive), std::abs(currents.negative));
    return std::abs(currents.zero) > std::max(part * others, 3 * noise);
}

// One phase carries more current than before.
bool HasGrown(const Change& change)
{
    constexpr double part = 0.4;
    const double largest = Largest(Difference(change.during.currents, change.before.currents));
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const double size = std::abs(change.during.currents[phase] - change.before.currents[phase]);
        const double growth =
            std::abs(change.during.currents[phase]) - std::abs(change.before.currents[phase]);
        if (size > part * largest && growth > part * size)
            return true;
    }
    return false;
}

// One phase changes by more than what it carried, so that it was not just switched off: a pole that opens
// changes its current by no more than that. The load that flowed against the fault hides its growth.
bool HasTurned(const Change& change)
{
    constexpr double more = 1.2;
    for (size_t phase = PhaseA; phase < Phases; ++phase)
        if (std::abs(change.during.currents[phase] - change.before.currents[phase]) >
            more * std::abs(change.before.currents[phase]))
            return true;
    return false;
}

// A voltage between two phases, or of one to earth, is lower than this part of that before. The current of a
// saturated transformer has a second harmonic too, but the voltages tell it from that of one that is switched
// on.
bool HasBrokenDown(const Change& change, double brokenDown)
{
    if (!change.during.hasVoltages)
        return false;
    const PhasePhasors& before = change.before.voltages;
    brokenDown *= HealthyVoltage(change) / std::abs(ComponentsOf(before).positive);
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const size_t next = (phase + 1) % Phases;
        const PhasePhasors& during = change.during.voltages;
        if (std::abs(during[phase]) < brokenDown * std::abs(before[phase]) ||
            std::abs(during[phase] - during[next]) < brokenDown * std::abs(before[phase] - before[next]))
            return true;
    }
    return false;
}

// Transformers that are switched on have more of the second harmonic than anything else that breaks down no
// voltage. A weak source's voltage they break down as well, but then their second harmonic flows through that
// source, whose reactance is twice as large for it; that of a saturated current transformer flows nowhere.
bool IsInrush(const Change& change)
{
    constexpr double most = 0.12;
    constexpr double brokenDown = 0.85;
    if (change.secondHarmonic <= most)
        return false;
    return !HasBrokenDown(change, brokenDown) || change.voltageSecondHarmonic > change.secondHarmonic;
}

// A phase that carried current carries none.
bool HasOpened(const Change& change)
{
    constexpr double left = 0.08;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const double before = std::abs(change.before.currents[phase]);
        if (before > 6 * change.noise && std::abs(change.during.currents[phase]) < left * before)
            return true;
    }
    return false;
}

// No short circuit raises the voltage: one that ends does.
bool RaisesVoltage(const Change& change)
{
    constexpr double more = 1.002; // than noise
    return change.during.hasVoltages && std::abs(ComponentsOf(change.during.voltages).positive) >
                                            more * std::abs(ComponentsOf(change.before.voltages).positive);
}

bool IsLarge(const Change& change, double leastPart, double farthest)
{
    const double size = Largest(Difference(change.during.currents, change.before.currents));
    return !RaisesVoltage(change) && size > leastPart * Largest(change.before.currents) &&
           size > 6 * change.noise &&
           (!change.during.hasVoltages || size > HealthyVoltage(change) / farthest);
}

bool IsUnbalanced(const Change& change)
{
    constexpr double part = 0.2;
    const Components currents = ChangedCurrents(change);
    return std::abs(currents.negative) > part * std::abs(currents.positive);
}

// Currents grow with the voltage of the network, but less; so impedances do with the root of it.
double LevelFactor(const Change& change)
{
    constexpr double level = 63500; // V, of a network of 110 kV
    return std::sqrt(HealthyVoltage(change) / level);
}

// A balanced change is a short circuit if the voltage breaks down, or if the current is one that no load has.
bool IsBalancedShortCircuit(const Change& change)
{
    constexpr double brokenDown = 0.9; // of the voltage before
    constexpr double sunk = 0.96;
    constexpr double leastLoad = 40; // ohms at 63.5 kV: switchgear is rated for no more than 1.6 kA there
    if (!change.during.hasVoltages) {
        constexpr double manyTimes = 4;
        return Largest(change.during.currents) >
               manyTimes * Largest(change.before.currents) + 6 * change.noise;
    }
    const Phasor voltage = ComponentsOf(change.during.voltages).positive;
    const Phasor current = ComponentsOf(change.during.currents).positive;
    const double healthy = HealthyVoltage(change);
    const double part = std::abs(voltage) / healthy;
    const double lag = std::abs(std::arg(voltage / current)) * 180 / Pi;
    const bool isInductive = lag > 45 && lag < 150;
    return part < brokenDown || (part < sunk && isInductive) ||
           std::abs(voltage / current) < leastLoad * LevelFactor(change);
}

// The distance, as far as it can be known, is one of this line.
bool IsOnLine(const Change& change, const Line& line)
{
    constexpr double margin = 10; // percent of the line
    const FaultKind kind = KindOf(change);
    const DistanceMethod method = DistancesOf(kind, change, line, {}).back().method;
    const DistanceRange range = RangeOf(kind, change, line, {}, method);
    return range.toPercent > -margin && range.fromPercent < 100 + margin;
}

} // namespace

FaultKind KindOf(const Change& change)
{
    const Components currents = ChangedCurrents(change);
    const bool hasEarth = HasEarth(currents, change.noise);
    if (IsBalanced(currents, change.noise))
        return hasEarth ? FaultKind::ABCG : FaultKind::ABC;
    // Earth returns through all phases alike, so that the difference of two healthy phases does not change.
    const PhasePhasors phases = Difference(change.during.currents, change.before.currents);
    const std::array<double, Phases> opposite = {std::abs(phases[PhaseB] - phases[PhaseC]),
                                                 std::abs(phases[PhaseC] - phases[PhaseA]),
                                                 std::abs(phases[PhaseA] - phases[PhaseB])};
    constexpr double unchanged = 0.25; // of the largest difference
    constexpr std::array<FaultKind, Phases> single = {FaultKind::AG, FaultKind::BG, FaultKind::CG};
    const auto least = std::min_element(opposite.begin(), opposite.end());
    const double largest = *std::max_element(opposite.begin(), opposite.end());
    if (*least < unchanged * largest)
        return single[static_cast<size_t>(least - opposite.begin())];
    // 60 degrees for A-B, and 120 further for each of the other pairs.
    const double measured = std::arg(currents.negative / currents.positive) * 180 / Pi;
    const double angle = std::isfinite(measured) ? measured : 0; // a value is missing
    const auto sector = static_cast<size_t>(std::floor((angle + 360) / 120)) % Phases;
    constexpr std::array<FaultKind, Phases> toEarth = {FaultKind::ABG, FaultKind::BCG, FaultKind::CAG};
    constexpr std::array<FaultKind, Phases> between = {FaultKind::AB, FaultKind::BC, FaultKind::CA};
    return hasEarth ? toEarth[sector] : between[sector];
}

unsigned PhasesOf(FaultKind kind)
{
    constexpr unsigned a = 1;
    constexpr unsigned b = 2;
    constexpr unsigned c = 4;
    switch (kind) {
    case FaultKind::AG:
        return a;
    case FaultKind::BG:
        return b;
    case FaultKind::CG:
        return c;
    case FaultKind::AB:
    case FaultKind::ABG:
        return a | b;
    case FaultKind::BC:
    case FaultKind::BCG:
        return b | c;
    case FaultKind::CA:
    case FaultKind::CAG:
        return c | a;
    case FaultKind::ABC:
    case FaultKind::ABCG:
        break;
    }
    return a | b | c;
}

double SizeOf(const Change& change)
{
    double sum = 0;
    for (const Phasor& phasor : Difference(change.during.currents, change.before.currents))
        sum += std::norm(phasor);
    return std::sqrt(sum);
}

bool IsShortCircuit(const Change& change)
{
    constexpr double leastPart = 0.3; // of the current before
    constexpr double farthest = 300;  // ohms
    constexpr double brokenDown = 0.89;
    constexpr double distant = 130; // ohms at 63.5 kV
    if (!IsLarge(change, leastPart, farthest) || IsInrush(change))
        return false;
    // A load that is balanced may turn round at once.
    if (!HasGrown(change) && !(IsUnbalanced(change) && HasTurned(change)))
        return false;
    // What takes a few percent of the voltage away with no more current than this may be anywhere.
    if (change.during.hasVoltages && !HasBrokenDown(change, brokenDown) &&
        !IsLarge(change, leastPart, distant * LevelFactor(change)))
        return false;
    return IsUnbalanced(change) || IsBalancedShortCircuit(change);
}

bool MayBeShortCircuit(const Change& change, const Line* line)
{
    constexpr double leastPart = 0.25;
    constexpr double farthest = 900;
    constexpr double mostSecondHarmonic = 0.07;
    constexpr double brokenDown = 0.89;
    constexpr double deeply = 0.8;
    if (!change.during.hasVoltages || !IsLarge(change, leastPart, farthest) || HasOpened(change) ||
        DirectionOf(change) != Direction::Forward)
        return false;
    if (change.secondHarmonic > mostSecondHarmonic && !HasBrokenDown(change, deeply))
        return false;
    if (HasBrokenDown(change, brokenDown))
        return true;
    return line != nullptr && IsUnbalanced(change) && IsOnLine(change, *line);
}

bool IsSuspect(const Change& change)
{
    constexpr double sunk = 0.985;
    constexpr double leastPart = 0.5;
    constexpr double farthest = 300;
    return change.during.hasVoltages && !IsUnbalanced(change) && IsLarge(change, leastPart, farthest) &&
           (HasGrown(change) || HasTurned(change)) && !IsInrush(change) &&
           DirectionOf(change) == Direction::Forward &&
           std::abs(ComponentsOf(change.during.voltages).positive) < sunk * HealthyVoltage(change);
}

bool IsSwitchedOff(const Change& change)
{
    constexpr double part = 0.4;
    constexpr double left = 0.08;
    const PhasePhasors difference = Difference(change.during.currents, change.before.currents);
    for (size_t phase = PhaseA; phase < Phases; ++phase)
        if (std::abs(difference[phase]) > part * Largest(difference) &&
            std::abs(change.during.currents[phase]) > left * std::abs(change.before.currents[phase]))
            return false;
    return true;
}

bool GoesOn(const Change& start, const CircuitState& now)
{
    constexpr double leftOfCurrent = 0.1;
    constexpr double leftOfChange = 0.25;
    const PhasePhasors difference = Difference(start.during.currents, start.before.currents);
    const double largest = Largest(difference);
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const double change = std::abs(now.currents[phase] - start.before.currents[phase]);
        const double first = std::abs(start.during.currents[phase]);
        if (std::abs(difference[phase]) > largest / 2 &&
            change > leftOfChange * std::abs(difference[phase]) &&
            std::abs(now.currents[phase]) > leftOfCurrent * first)
            return true;
    }
    return false;
}

Direction DirectionOf(const Change& change)
{
    if (!change.during.hasVoltages)
        return Direction::Unknown;
    const Components currents = ChangedCurrents(change);
    const Components voltages = ComponentsOf(Difference(change.during.voltages, change.before.voltages));
    // The positive sequence is there in every fault, the negative one has no load in it.
    const Phasor power =
        voltages.positive * std::conj(currents.positive) + voltages.negative * std::conj(currents.negative);
    if (power == Phasor())
        return Direction::Unknown;
    static const Phasor toForward = std::polar(1.0, 3 * Pi / 4);
    // A source of 0 to 90 degrees behind the recorder gives 180 to 270, what lies ahead of it 0 to 90.
    return std::real(power * toForward) > 0 ? Direction::Forward : Direction::Reverse;
}

} // namespace analysis
