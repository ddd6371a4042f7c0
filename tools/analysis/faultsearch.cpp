#include "analysis/faultsearch.h"

#include <algorithm>
#include <cmath>

namespace analysis {

namespace {

bool IsWhole(const CircuitState& state)
{
    for (size_t phase = PhaseA; phase < Phases; ++phase)
        if (std::isnan(state.currents[phase].real()) || std::isnan(state.voltages[phase].real()))
            return false;
    return true;
}

bool IsBalanced(FaultKind kind)
{
    return kind == FaultKind::ABC || kind == FaultKind::ABCG;
}

// Whether the last three changes have one direction, and the last is no smaller than a part of the first.
bool IsSteady(const std::vector<Change>& run, bool isLarge)
{
    const double left = isLarge ? 0.6 : 0.85;
    const Change& last = run.back();
    const Change& first = run[run.size() - 3];
    return DirectionOf(first) == DirectionOf(last) && DirectionOf(run[run.size() - 2]) == DirectionOf(last) &&
           SizeOf(last) > left * SizeOf(first);
}

} // namespace

FaultSearch::FaultSearch(const CircuitWaves& waves_, const Meter& meter_)
    : waves(waves_), meter(meter_), count(waves_.currents[PhaseA]->size())
{
    constexpr double beyondNoise = 6;
    constexpr double partOfLoad = 0.02;
    constexpr double partOfLargest = 0.004;
    const auto quiet = static_cast<size_t>(4 * meter.Period());
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const Wave& wave = *waves.currents[phase];
        differences[phase] = Superimposed(wave, meter.Period());
        const double level = LesserNoise(differences[phase], 0, quiet);
        // One limit for the three: a phase that takes no part has nothing but the last digits of its values.
        limit = std::max({limit, beyondNoise * level, partOfLoad * LargestOf(wave, 0, meter.Window()),
                          partOfLargest * LargestOf(differences[phase], 0, count)});
        // A difference has the noise of two samples, a phasor the mean of a period's.
        noise = std::max(noise, level / std::sqrt(meter.Period()));
    }
    if (waves.hasVoltages)
        usualVoltage = std::abs(ComponentsOf(meter.Of(waves, 0, meter.Window()).voltages).positive);
}

std::optional<Departure> FaultSearch::FirstDeparture(size_t from) const
{
    // The phases go together, so that a quiet one is not searched to its end for each departure of another.
    constexpr size_t together = 2; // samples within which the phases leave for one reason
    constexpr size_t looked = together + 3;
    for (size_t n = from; n < count; ++n) {
        std::optional<Departure> first;
        bool isHere = false;
        for (size_t phase = PhaseA; phase < Phases; ++phase) {
            if (!isHere && !(std::abs(differences[phase][n]) > limit))
                continue;
            const std::optional<Departure> found = FirstBeyond(differences[phase], limit, n, n + looked);
            isHere = isHere || (found && found->sample == n);
            if (found && (!first || found->moment < first->moment))
                first = found;
        }
        if (isHere)
            return first;
    }
    return std::nullopt;
}

CircuitState FaultSearch::Before(size_t sample) const
{
    constexpr size_t gap = 1; // the departure may have begun a little earlier
    const size_t end = sample > gap ? sample - gap : 0;
    const auto two = static_cast<size_t>(std::ceil(2 * meter.Period()));
    const size_t length = end >= two ? two : meter.Window();
    CircuitState state = meter.Of(waves, end >= length ? end - length : count, length);
    return state;
}

Change FaultSearch::At(const CircuitState& before, size_t first) const
{
    Change change;
    change.before = before;
    change.during = meter.Of(waves, first, meter.Window());
    change.noise = noise;
    size_t largest = PhaseA;
    for (size_t phase = PhaseA; phase < Phases; ++phase)
        if (std::abs(change.during.currents[phase]) > std::abs(change.during.currents[largest]))
            largest = phase;
    const auto part = [](double harmonic, Phasor of) { return of == Phasor() ? 0 : harmonic / std::abs(of); };
    change.secondHarmonic =
        part(meter.SecondHarmonic(*waves.currents[largest], first), change.during.currents[largest]);
    if (waves.hasVoltages)
        change.voltageSecondHarmonic = part(meter.SecondHarmonic(*waves.voltages[largest], first),
                                            change.during.voltages[largest] - before.voltages[largest]);
    change.usualVoltage = usualVoltage;
    return change;
}

std::optional<Occurrence> FaultSearch::Next(size_t from) const
{
    constexpr double longest = 100; // periods that a fault lasts before the slowest protection trips
    const auto period = static_cast<size_t>(std::round(meter.Period()));
    std::optional<Occurrence> suspect; // a balanced change that turns out to be a fault when more happens
    size_t at = from;
    while (const std::optional<Departure> departure = FirstDeparture(at)) {
        at = departure->sample + 2 * period;
        const CircuitState before = Before(departure->sample);
        if (!IsWhole(before))
            continue;
        if (suspect && (!GoesOn(suspect->change, before) ||
                        departure->moment > suspect->onset + longest * meter.Period()))
            suspect.reset();
        if (const std::optional<size_t> first = FirstFaulted(before, departure->sample)) {
            Occurrence found = Starting(*departure, before, *first);
            const bool isBalanced = IsBalanced(KindOf(found.change));
            if (isBalanced && !IsSudden(found.firstBad))
                continue;
            if (suspect && isBalanced)
                found = *suspect;
            Follow(found, *first);
            return found;
        }
        Occurrence found = Starting(*departure, before, departure->sample + period);
        if (suspect || !IsWhole(found.change.during) || !IsSuspect(found.change) || !IsSudden(found.firstBad))
            continue;
        const size_t end = EndOf(found.change, departure->sample + period);
        if (end < departure->sample + static_cast<size_t>(longest * meter.Period()) &&
            IsOpen(found.change, end)) {
            Follow(found, departure->sample + period);
            return found;
        }
        suspect = found;
    }
    return std::nullopt;
}

std::optional<Change> FaultSearch::ChangeAt(size_t sample) const
{
    const Change change = At(Before(sample), sample);
    return IsWhole(change.before) && IsWhole(change.during) ? std::optional(change) : std::nullopt;
}

Occurrence FaultSearch::FaultAt(size_t sample) const
{
    const size_t near = meter.Window() / 4;
    const std::optional<Departure> departure = FirstDeparture(sample - std::min(sample, near));
    const bool isNear = departure && departure->sample < sample + near;
    const Departure start = isNear ? *departure : Departure{sample, static_cast<double>(sample)};
    Occurrence found = Starting(start, Before(start.sample), start.sample);
    Follow(found, start.sample);
    return found;
}

Occurrence FaultSearch::Starting(const Departure& departure, const CircuitState& before, size_t first) const
{
    Occurrence found;
    SetOnset(found, departure.sample, first + meter.Window() / 2);
    found.change = At(before, first);
    return found;
}

void FaultSearch::Follow(Occurrence& found, size_t first) const
{
    FindClearing(found, EndOf(found.change, first));
    FindKinds(found);
}

// A power swing changes the currents from period to period; a short circuit changes them in one.
bool FaultSearch::IsSudden(size_t sample) const
{
    constexpr double before = 0.5;
    const size_t window = meter.Window();
    double earlier = 0;
    double later = 0;
    for (const Wave& difference : differences) {
        earlier = std::max(earlier, LargestOf(difference, sample - std::min(sample, window), sample));
        later = std::max(later, LargestOf(difference, sample, sample + window));
    }
    return earlier < before * later;
}

// Whether the breaker has interrupted all that flowed, in the period after the first window without the
// fault.
bool FaultSearch::IsOpen(const Change& start, size_t end) const
{
    constexpr double left = 0.08;
    const CircuitState after = meter.Of(waves, end + meter.Window(), meter.Window());
    for (size_t phase = PhaseA; phase < Phases; ++phase)
        if (!(std::abs(after.currents[phase]) < left * std::abs(start.during.currents[phase])))
            return false;
    return true;
}

// The first of three windows in a row, a quarter of a period apart, that show a short circuit in one
// direction: what goes over within half a period, as the oscillation of a capacitor that is switched on, is
// none.
std::optional<size_t> FaultSearch::FirstFaulted(const CircuitState& before, size_t departure) const
{
    constexpr size_t enough = 3;
    constexpr size_t tried = 7;
    const auto quarter = static_cast<size_t>(std::max(1.0, std::round(meter.Period() / 4)));
    std::vector<Change> run;
    size_t large = 0; // of the run
    for (size_t i = 0; i < tried; ++i) {
        const size_t first = departure + i * quarter;
        const Change change = At(before, first);
        if (!IsWhole(change.during))
            break;
        const bool isLarge = IsShortCircuit(change);
        if (!isLarge && !MayBeShortCircuit(change, waves.line)) {
            run.clear();
            large = 0;
            continue;
        }
        run.push_back(change);
        large = isLarge ? large + 1 : 0;
        if (run.size() >= enough && IsSteady(run, large >= enough))
            return first - (enough - 1) * quarter;
    }
    return std::nullopt;
}

void FaultSearch::FindKinds(Occurrence& found) const
{
    const size_t window = meter.Window();
    const size_t end = std::min(found.firstBreak, count);
    const size_t first = found.firstBad;
    Change change = found.change;
    const auto kindIn = [&change](const CircuitState& during) {
        change.during = during;
        return KindOf(change);
    };
    const auto kindAt = [&](size_t at, size_t length) { return kindIn(meter.Of(waves, at, length)); };
    if (end < first + window) {
        const size_t length = std::max(end - std::min(end, first), window / 2);
        found.kinds = {{found.onset, kindAt(first, length)}};
        return;
    }
    const auto step = static_cast<size_t>(std::max(1.0, meter.Period() / 16));
    const size_t enough = 5;                        // windows in a row, a quarter of a period
    std::vector<std::pair<size_t, FaultKind>> runs; // first window, kind
    size_t length = 0;
    FaultKind running = kindAt(first, window);
    for (size_t at = first; at + window <= end; at += step) {
        const CircuitState during = meter.Of(waves, at, window);
        if (!IsWhole(during)) {
            length = 0;
            continue;
        }
        const FaultKind kind = kindIn(during);
        length = kind == running ? length + 1 : 1;
        running = kind;
        if (length == enough && (runs.empty() || HasJoined(runs.back(), kind, at)))
            runs.emplace_back(at - (enough - 1) * step, kind);
    }
    if (runs.empty())
        runs.emplace_back(first, kindAt(end - window, window));
    found.kinds = {{found.onset, runs.front().second}};
    for (size_t i = 1; i < runs.size(); ++i) {
        const double onset = OnsetOfKind(runs[i - 1].second, runs[i].second,
                                         std::max(first + 1, runs[i - 1].first), runs[i].first + window);
        // What lasts no longer than this was a mixture of the kinds before and after it.
        if (onset < found.kinds.back().first + meter.Period() / 4)
            found.kinds.back().second = runs[i].second;
        else
            found.kinds.emplace_back(onset, runs[i].second);
    }
}

// Whether the fault that was of an earlier kind is of another one in the window at a sample: only if phases
// join it, or earth does. Where the breaker at the other end opens, healthy phases lose their load.
bool FaultSearch::HasJoined(const std::pair<size_t, FaultKind>& earlier, FaultKind kind, size_t at) const
{
    constexpr double left = 0.5;
    constexpr double turned = 1.2;
    const unsigned before = PhasesOf(earlier.second);
    const unsigned after = PhasesOf(kind);
    if (kind == earlier.second || (before & ~after) != 0)
        return false;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        if (((after & ~before) >> phase & 1u) == 0)
            continue;
        const Wave& wave = *waves.currents[phase];
        const Phasor old = meter.Of(wave, earlier.first, meter.Window());
        const Phasor now = meter.Of(wave, at, meter.Window());
        if (std::abs(now) < left * std::abs(old) && std::abs(now - old) < turned * std::abs(old))
            return false;
    }
    return true;
}

// When the phases that join do so, between two samples.
double FaultSearch::OnsetOfKind(FaultKind earlier, FaultKind later, size_t from, size_t to) const
{
    const unsigned joining = PhasesOf(later) & ~PhasesOf(earlier);
    constexpr double partOfLargest = 0.2;
    double moment = static_cast<double>(to);
    if (joining == 0) { // earth takes part now
        Wave sum(differences[PhaseA]);
        for (size_t n = from; n < std::min(to, sum.size()); ++n)
            sum[n] += differences[PhaseB][n] + differences[PhaseC][n];
        const auto departure = FirstBeyond(sum, partOfLargest * LargestOf(sum, from, to), from, to);
        return departure ? departure->moment : moment;
    }
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        if ((joining >> phase & 1u) == 0)
            continue;
        const double joined = partOfLargest * LargestOf(differences[phase], from, to);
        if (const std::optional<Departure> departure = FirstBeyond(differences[phase], joined, from, to))
            moment = std::min(moment, departure->moment);
    }
    return moment;
}

} // namespace analysis
