#include "analysis/operating.h"

#include <algorithm>

namespace analysis {

namespace {

// A part of a fault that starts this soon after the one before, seconds, is its evolution, not a reclosing
// onto the fault: no breaker closes again within two periods.

// Onsets are found to within this, seconds, so that an event may seem to come a little before.
constexpr double OnsetError = 0.002;

using Chosen = std::vector<const Event*>;

const Event* First(const Chosen& events, ChannelKind kind, bool isActive, double since)
{
    const auto found = std::find_if(events.begin(), events.end(), [&](const Event* event) {
        return event->use.kind == kind && event->IsActive() == isActive && !event->isBounce &&
               event->time >= since;
    });
    return found == events.end() ? nullptr : *found;
}

bool IsOfProtection(const Event& event)
{
    return event.use.kind == ChannelKind::Start || event.use.kind == ChannelKind::Trip ||
           event.use.kind == ChannelKind::Breaker;
}

Chosen OfCircuit(const std::vector<Event>& events, const comtrade::Configuration& config,
                 const QString& circuit)
{
    Chosen chosen;
    for (const Event& event : events)
        if (config.states[event.channel].circuit == circuit)
            chosen.push_back(&event);
    const bool isEnough =
        std::any_of(chosen.begin(), chosen.end(), [](const Event* event) { return IsOfProtection(*event); });
    return isEnough ? chosen : Chosen();
}

// The closing that ends the dead time, by the contact that reported the opening if it reports that as well.
const Event* ClosingAfter(const Chosen& events, const Event& opening)
{
    Chosen own;
    std::copy_if(events.begin(), events.end(), std::back_inserter(own),
                 [&](const Event* event) { return event->channel == opening.channel; });
    const Event* closing = First(own, ChannelKind::Breaker, true, opening.time);
    return closing != nullptr ? closing : First(events, ChannelKind::Breaker, true, opening.time);
}

bool StaysClosed(const Chosen& events, const Event& closing, const std::optional<Fault>& fault)
{
    const bool opensAgain = First(events, ChannelKind::Breaker, false, closing.time) != nullptr;
    const bool failsAgain = fault && fault->parts.back().onset >= closing.time - OnsetError;
    return !opensAgain && !failsAgain;
}

} // namespace

Operating OperatingOf(const std::vector<Event>& events, const comtrade::Configuration& config,
                      const std::vector<Circuit>& circuits, const std::optional<Fault>& fault)
{
    Operating operating;
    Chosen chosen;
    if (fault) {
        operating.circuit = circuits[fault->circuit].name;
        chosen = OfCircuit(events, config, operating.circuit);
    }
    if (chosen.empty()) {
        operating.circuit.clear();
        for (const Event& event : events)
            chosen.push_back(&event);
    }
    double since = -1e18;
    if (fault) {
        operating.from = fault->Onset();
        operating.isFromOnset = true;
        since = fault->Onset() - OnsetError;
    } else if (const Event* start = First(chosen, ChannelKind::Start, true, since)) {
        operating.from = start->time;
        since = start->time;
    }
    const auto after = [&](double time) { return time - operating.from.value_or(time); };
    const bool hasOrigin = operating.from.has_value();
    if (const Event* start = First(chosen, ChannelKind::Start, true, since); start && hasOrigin)
        operating.start = after(start->time);
    if (const Event* trip = First(chosen, ChannelKind::Trip, true, since); trip && hasOrigin)
        operating.trip = after(trip->time);
    if (const auto clearing = fault ? fault->Clearing() : std::nullopt)
        operating.clearing = after(*clearing);
    const Event* opening = First(chosen, ChannelKind::Breaker, false, since);
    if (opening == nullptr)
        return operating;
    if (hasOrigin)
        operating.breaker = after(opening->time);
    // A breaker that is opened and closed by hand has no dead time.
    const bool isTripped = fault || operating.trip;
    if (const Event* closing = isTripped ? ClosingAfter(chosen, *opening) : nullptr) {
        operating.deadTime = closing->time - opening->time;
        operating.reclosed = StaysClosed(chosen, *closing, fault);
    }
    return operating;
}

} // namespace analysis
