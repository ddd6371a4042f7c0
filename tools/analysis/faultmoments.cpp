// When a short circuit starts and ends, to the sample.
#include "analysis/faultsearch.h"

#include <algorithm>
#include <cmath>

namespace analysis {

// Something small may have happened before the fault itself: the onset is where the growth of the first large
// difference starts.
void FaultSearch::SetOnset(Occurrence& found, size_t from, size_t to) const
{
    constexpr double large = 0.15; // of the largest difference
    found.firstBad = to;
    found.onset = static_cast<double>(to);
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const Wave& difference = differences[phase];
        const double peakLimit = std::max(limit, large * LargestOf(difference, from, to));
        const std::optional<Departure> peak = FirstBeyond(difference, peakLimit, from, to);
        if (!peak)
            continue;
        // Back over the difference's own zeros.
        const auto gap = static_cast<size_t>(meter.Period() / 8);
        size_t first = peak->sample;
        for (size_t n = first; n > from && first - n <= gap; --n)
            if (std::abs(difference[n - 1]) > limit)
                first = n - 1;
        const std::optional<Departure> departure = FirstBeyond(difference, limit, first, to);
        if (departure && departure->moment < found.onset) {
            found.onset = departure->moment;
            found.firstBad = departure->sample;
        }
    }
    if (waves.hasVoltages)
        SetOnsetByVoltages(found);
}

// A current that starts at the zero of its voltage grows with the square of time and hides in the noise at
// first; the voltage that it drops at the source grows with time, or is there at once. What comes much
// earlier is another event.
void FaultSearch::SetOnsetByVoltages(Occurrence& found) const
{
    constexpr double beyondNoise = 6;
    constexpr double partOfVoltage = 0.02;
    constexpr double earliest = 0.1; // periods
    constexpr size_t taps = 16;      // of the interpolation of few samples
    const auto earlier = static_cast<size_t>(std::ceil(earliest * meter.Period()));
    const size_t history = 5 * meter.Window() + taps;
    if (found.firstBad < history + earlier)
        return;
    const size_t begin = found.firstBad - history - earlier;
    const size_t first = found.firstBad - earlier - begin;
    for (const Wave* wave : waves.voltages) {
        const Wave part(wave->begin() + static_cast<ptrdiff_t>(begin),
                        wave->begin() + static_cast<ptrdiff_t>(std::min(found.firstBad + taps, count)));
        const Wave difference = Superimposed(part, meter.Period());
        const double level =
            std::max(beyondNoise * NoiseOf(difference, 0, first), partOfVoltage * LargestOf(part, 0, first));
        const std::optional<Departure> departure = FirstBeyond(difference, level, first, difference.size());
        constexpr double middle = 0.5; // of the samples before and after it: a step has no growth to follow
        if (departure && departure->sample > first && departure->sample + begin < found.firstBad)
            found.onset = std::min(found.onset, static_cast<double>(departure->sample + begin) - middle);
    }
}

// The first window in which the fault is gone for half a period; the end of the wave if there is none.
size_t FaultSearch::EndOf(const Change& start, size_t first) const
{
    constexpr size_t enough = 4;
    const auto step = static_cast<size_t>(std::max(1.0, meter.Period() / 8));
    size_t quiet = 0;
    for (size_t at = first; at + meter.Window() <= count; at += step) {
        quiet = GoesOn(start, meter.Of(waves, at, meter.Window())) ? 0 : quiet + 1;
        if (quiet > enough)
            return at - enough * step;
    }
    return count;
}

// The sample from which on a phase that carried current carries none up to `to`; none if it does. The current
// of a transformer may decay further without the alternating one, which is what counts.
std::optional<size_t> FaultSearch::Interruption(size_t phase, size_t from, size_t to) const
{
    constexpr double still = 0.02;
    constexpr double decaying = 0.4;
    const Wave& wave = *waves.currents[phase];
    const double largest = LargestOf(wave, from, to);
    const double stillness = std::max(limit, still * largest);
    const auto apart = static_cast<size_t>(std::max(1.0, meter.Period() / 12));
    const auto isStill = [&](size_t n) {
        return std::abs(wave[n]) < stillness ||
               (std::abs(wave[n]) < decaying * largest && std::abs(wave[n] - wave[n - apart]) < stillness);
    };
    size_t first = to;
    while (first > from + apart && isStill(first - 1))
        --first;
    const auto longEnough = static_cast<size_t>(meter.Period() * 0.6);
    if (first <= from + apart || to - first < longEnough)
        return std::nullopt;
    return first;
}

// `end` is the start of the first window without a short circuit.
void FaultSearch::FindClearing(Occurrence& found, size_t end) const
{
    found.firstBreak = count;
    if (end >= count) {
        FindClearingAtEnd(found);
        return;
    }
    const size_t to = std::min(count, end + 3 * meter.Window());
    std::optional<size_t> last;
    const unsigned phases = PhasesOf(KindOf(found.change));
    bool allBreak = true;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const std::optional<size_t> interruption = Interruption(phase, found.firstBad, to);
        if (interruption)
            found.firstBreak = std::min(found.firstBreak, *interruption);
        const bool isFaulted = (phases >> phase & 1u) != 0;
        allBreak = allBreak && (!isFaulted || interruption);
        // A healthy phase that is interrupted later does not prolong the fault; one that joined it does.
        if (isFaulted && interruption)
            last = std::max(last.value_or(0), *interruption);
    }
    if (allBreak && last) {
        found.clearing = static_cast<double>(*last);
        return;
    }
    // The current goes on without the fault: the last sample that differs from the course that follows.
    const size_t settled = std::min(end + meter.Window() / 2, count - std::min(count, meter.Window()));
    size_t latest = found.firstBad;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        const Wave& difference = differences[phase];
        const double other = std::max(limit, 0.05 * LargestOf(*waves.currents[phase], found.firstBad, end));
        // Forward differences: what is a period later.
        for (size_t n = std::min(settled + meter.Window(), count - 1); n > latest + meter.Window(); --n)
            if (std::abs(difference[n]) > other) {
                latest = n - meter.Window();
                break;
            }
    }
    found.firstBreak = std::min(found.firstBreak, latest);
    found.clearing = static_cast<double>(latest);
}

// A record that ends less than a period after the interruption has no window without the fault; but no
// current rests for an eighth of a period by itself.
void FaultSearch::FindClearingAtEnd(Occurrence& found) const
{
    constexpr double still = 0.02;
    constexpr size_t fewest = 3;
    const size_t least = std::max(fewest, static_cast<size_t>(meter.Period() / 8));
    const unsigned phases = PhasesOf(KindOf(found.change));
    size_t last = found.firstBad;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        if ((phases >> phase & 1u) == 0)
            continue;
        const Wave& wave = *waves.currents[phase];
        const double stillness = std::max(limit, still * LargestOf(wave, found.firstBad, count));
        size_t first = count;
        while (first > found.firstBad && std::abs(wave[first - 1]) < stillness)
            --first;
        if (count - first < least)
            return;
        last = std::max(last, first);
        found.firstBreak = std::min(found.firstBreak, first);
    }
    found.clearing = static_cast<double>(last);
}

} // namespace analysis
