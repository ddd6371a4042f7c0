#include "analysis/fault.h"

#include "analysis/channelrole.h"
#include "analysis/faultlocation.h"
#include "analysis/faultsearch.h"
#include "analysis/frequency.h"
#include "analysis/linematch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>

namespace analysis {

namespace {

CircuitWaves WavesOf(const Signals& signals, const Circuit& circuit, const Circuit* voltages)
{
    CircuitWaves waves;
    waves.hasVoltages = voltages != nullptr;
    for (size_t phase = PhaseA; phase < Phases; ++phase) {
        waves.currents[phase] = &signals.Of(static_cast<size_t>(circuit.currents[phase]));
        if (voltages != nullptr)
            waves.voltages[phase] = &signals.Of(static_cast<size_t>(voltages->voltages[phase]));
    }
    return waves;
}

// Three waves to measure the frequency on: voltages, else currents.
FrequencySource Reference(const Signals& signals, const std::vector<Circuit>& circuits)
{
    for (const bool wantVoltages : {true, false})
        for (const Circuit& circuit : circuits) {
            if (!(wantVoltages ? circuit.HasVoltages() : circuit.HasCurrents()))
                continue;
            const Circuit::Channels& channels = wantVoltages ? circuit.voltages : circuit.currents;
            FrequencySource reference;
            for (size_t phase = PhaseA; phase < Phases; ++phase)
                reference.push_back(&signals.Of(static_cast<size_t>(channels[phase])));
            return reference;
        }
    return {};
}

// The frequency in the first periods, before anything happens; in as few as say enough where more show none.
double StartFrequency(const Signals& signals, const FrequencySource& source)
{
    for (const double periods : {5.0, 2.5}) {
        const auto end = static_cast<size_t>(periods * signals.Rate() / signals.Nominal());
        const double frequency =
            FrequencyOf(source, signals.Rate(), signals.Nominal(), 0, std::min(end, signals.Count()));
        if (!std::isnan(frequency))
            return frequency;
    }
    return signals.Nominal();
}

// A circuit with a short circuit in it.
struct Candidate
{
    size_t circuit = 0;
    Direction direction = Direction::Unknown;
    double size = 0;
    std::shared_ptr<const FaultSearch> search;
    Occurrence found;
};

bool IsBetter(const Candidate& one, const Candidate& other)
{
    const bool isForward = one.direction == Direction::Forward;
    if (isForward != (other.direction == Direction::Forward))
        return isForward;
    return one.size > other.size;
}

class Finder
{
public:
    Finder(const Signals& signals_, const std::vector<Circuit>& circuits_, const Lines& lines_,
           WantedPhasors wanted_)
        : signals(signals_), circuits(circuits_), lines(lines_), wanted(wanted_),
          frequency(StartFrequency(signals_, Reference(signals_, circuits_))),
          meter(signals_.Rate() / frequency)
    {}

    double Frequency() const { return frequency; }

    std::optional<Fault> Find() const
    {
        std::optional<Candidate> best;
        for (size_t i = 0; i < circuits.size(); ++i) {
            if (!circuits[i].HasCurrents())
                continue;
            const std::optional<Candidate> candidate = FirstOf(i);
            if (candidate && (!best || IsBetter(*candidate, *best)))
                best = candidate;
        }
        if (best && best->direction == Direction::Reverse)
            best = Behind(*best);
        if (!best)
            return std::nullopt;
        return Complete(*best);
    }

    // Of all voltages and currents, in the period before the trigger.
    std::vector<ChannelPhasors> PhasorsAtTrigger() const
    {
        Occurrence quiet;
        const double trigger = std::clamp(signals.SampleAt(0), 0.0, static_cast<double>(signals.Count()));
        quiet.firstBad = std::max(static_cast<size_t>(trigger), meter.Window() + 2);
        quiet.firstBreak = 0;
        CircuitState before;
        const FrequencySource waves = Reference(signals, circuits);
        for (size_t phase = PhaseA; phase < Phases; ++phase)
            before.currents[phase] =
                meter.Of(*waves[phase], quiet.firstBad - meter.Window() - 1, meter.Window());
        return PhasorsAround(quiet, before, [](size_t) { return true; });
    }

private:
    CircuitWaves Waves(size_t circuit) const
    {
        const Line* line = LineOf(circuits[circuit].name, lines);
        CircuitWaves waves =
            WavesOf(signals, circuits[circuit], VoltagesOf(circuits[circuit], circuits, line));
        waves.line = line != nullptr && line->IsKnown() ? line : nullptr;
        return waves;
    }

    std::optional<Candidate> FirstOf(size_t circuit) const
    {
        const auto search = std::make_shared<const FaultSearch>(Waves(circuit), meter);
        const std::optional<Occurrence> found = search->Next(0);
        if (!found)
            return std::nullopt;
        return Candidate{circuit, DirectionOf(found->change), SizeOf(found->change), search, *found};
    }

    // What one circuit sees behind it lies ahead of the circuit with the largest change, which may not look
    // like a fault by itself. If that one is only switched off there is none: its load moved to the others.
    std::optional<Candidate> Behind(const Candidate& seen) const
    {
        std::optional<Candidate> cause;
        bool isSwitchedOff = false;
        for (size_t i = 0; i < circuits.size(); ++i) {
            if (!circuits[i].HasCurrents())
                continue;
            const auto search = std::make_shared<const FaultSearch>(Waves(i), meter);
            const std::optional<Change> change = search->ChangeAt(seen.found.firstBad);
            if (!change || DirectionOf(*change) != Direction::Forward ||
                SizeOf(*change) < (cause ? cause->size : seen.size))
                continue;
            cause = Candidate{i, Direction::Forward, SizeOf(*change), search, {}};
            isSwitchedOff = IsSwitchedOff(*change);
        }
        if (!cause)
            return seen;
        if (isSwitchedOff)
            return std::nullopt;
        cause->found = cause->search->FaultAt(seen.found.firstBad);
        return cause;
    }

    Fault Complete(const Candidate& candidate) const
    {
        Fault fault;
        fault.circuit = candidate.circuit;
        fault.direction = candidate.direction;
        const FaultSearch& search = *candidate.search;
        std::optional<Occurrence> found = candidate.found;
        fault.phasors = PhasorsAround(*found, search.Before(found->firstBad), [&](size_t channel) {
            return wanted == WantedPhasors::AllWaves || circuits[fault.circuit].HasWave(channel);
        });
        while (found) {
            AddParts(fault, *found, search);
            if (!found->clearing)
                break;
            found = search.Next(static_cast<size_t>(*found->clearing) + meter.Window());
        }
        return fault;
    }

    void AddParts(Fault& fault, const Occurrence& found, const FaultSearch& search) const
    {
        const bool isAgain = !fault.parts.empty();
        const CircuitState before = search.Before(found.firstBad);
        for (size_t i = 0; i < found.kinds.size(); ++i) {
            FaultPart part;
            part.kind = found.kinds[i].second;
            part.afterReclosing = isAgain;
            part.onset = signals.TimeOf(found.kinds[i].first);
            const bool isLast = i + 1 == found.kinds.size();
            if (!isLast)
                part.clearing = signals.TimeOf(found.kinds[i + 1].first);
            else if (found.clearing)
                part.clearing = signals.TimeOf(*found.clearing);
            const auto from = static_cast<size_t>(std::max(0.0, std::ceil(found.kinds[i].first)));
            const size_t to = isLast ? found.firstBreak : static_cast<size_t>(found.kinds[i + 1].first);
            LocatePart(part, fault.circuit, {from, to, before}, search.Waves());
            fault.parts.push_back(part);
        }
    }

    void LocatePart(FaultPart& part, size_t circuit, const FaultStretch& stretch,
                    const CircuitWaves& waves) const
    {
        const Line* line = LineOf(circuits[circuit].name, lines);
        const bool isKnown = line != nullptr && line->IsKnown();
        if (!isKnown || !waves.hasVoltages) {
            part.lack = isKnown ? Lack::Voltages : Lack::LineData;
            return;
        }
        LocatedCircuit located{waves, std::nullopt, *line};
        // Reactances are known at the nominal frequency.
        const double factor = frequency / signals.Nominal();
        located.line.x1 *= factor;
        located.line.x0 *= factor;
        located.line.mutualX *= factor;
        for (size_t i = 0; i < circuits.size() && !line->parallel.isEmpty(); ++i)
            if (circuits[i].name == line->parallel && circuits[i].HasCurrents())
                located.parallel = Waves(i);
        Locate(part, stretch, located, meter);
    }

    // Of the wanted voltages and currents, at the end of the fault's last part before a reclosing. Angles are
    // against the voltage of the faulted circuit before the fault, or its current where it has none.
    template <class IsWanted>
    std::vector<ChannelPhasors> PhasorsAround(const Occurrence& found, const CircuitState& before,
                                              IsWanted isWanted) const
    {
        const PhasePhasors& reference = before.hasVoltages ? before.voltages : before.currents;
        const Phasor positive = ComponentsOf(reference).positive;
        const Phasor turn = positive == Phasor() ? Phasor(1) : std::conj(positive) / std::abs(positive);
        const size_t window = meter.Window();
        const size_t from = found.firstBad > window ? found.firstBad - window - 1 : signals.Count();
        const size_t until = std::min(found.firstBreak, signals.Count());
        const size_t inside = until >= found.firstBad + window ? until - window : signals.Count();
        const size_t after =
            found.clearing ? static_cast<size_t>(*found.clearing) + window / 2 : signals.Count();
        std::vector<ChannelPhasors> phasors;
        for (size_t channel = 0; channel < signals.Config().analog.size(); ++channel) {
            if (!isWanted(channel) || RoleOf(signals.Config().analog[channel]).quantity == Quantity::Other)
                continue;
            const Wave& wave = signals.Of(channel);
            const auto at = [&](size_t first) { return meter.Of(wave, first, window) * turn; };
            phasors.push_back({channel, at(from), at(inside), at(after)});
        }
        return phasors;
    }

    const Signals& signals;
    const std::vector<Circuit>& circuits;
    const Lines& lines;
    const WantedPhasors wanted;
    const double frequency;
    const Meter meter;
};

} // namespace

const char* NameOf(FaultKind kind)
{
    constexpr std::array<const char*, 11> names = {"AG",  "BG",  "CG",  "AB",  "BC",  "CA",
                                                   "ABG", "BCG", "CAG", "ABC", "ABCG"};
    return names[static_cast<size_t>(kind)];
}

const char* NameOf(Direction direction)
{
    constexpr std::array<const char*, 3> names = {"unknown", "forward", "reverse"};
    return names[static_cast<size_t>(direction)];
}

const char* NameOf(DistanceMethod method)
{
    constexpr std::array<const char*, 3> names = {"reactance", "takagi", "modifiedTakagi"};
    return names[static_cast<size_t>(method)];
}

const FaultPart& Fault::Last() const
{
    const auto again =
        std::find_if(parts.begin(), parts.end(), [](const FaultPart& part) { return part.afterReclosing; });
    return *std::prev(again);
}

const FaultPart& Fault::Located() const
{
    const FaultPart* longest = nullptr;
    const auto length = [](const FaultPart& part) {
        return part.clearing ? *part.clearing - part.onset : std::numeric_limits<double>::infinity();
    };
    for (const FaultPart& part : parts)
        if (!part.distances.empty() && (longest == nullptr || length(part) > length(*longest)))
            longest = &part;
    return longest == nullptr ? Last() : *longest;
}

Findings FindFault(const Signals& signals, const std::vector<Circuit>& circuits, const Lines& lines,
                   WantedPhasors phasors)
{
    Findings findings;
    findings.frequency = signals.Nominal();
    findings.hasWaves =
        signals.Count() > 0 && std::any_of(circuits.begin(), circuits.end(),
                                           [](const Circuit& circuit) { return circuit.HasCurrents(); });
    constexpr double leastSamples = 8; // a period
    if (!findings.hasWaves || signals.Rate() / signals.Nominal() < leastSamples)
        return findings;
    const Finder finder(signals, circuits, lines, phasors);
    findings.frequency = finder.Frequency();
    findings.fault = finder.Find();
    if (!findings.fault && phasors == WantedPhasors::AllWaves)
        findings.phasors = finder.PhasorsAtTrigger();
    return findings;
}

} // namespace analysis
