#include "station/linesignals.h"

#include "station/drawing.h"

#include <algorithm>
#include <cmath>

namespace station {

namespace {

constexpr uint32_t DelaySeed = 0x2545f491u; // other draws than those of the scenario

int64_t Microseconds(double seconds)
{
    return std::llround(seconds * 1e6);
}

// Small delays of contacts and relays, all of one recording.
struct ContactDelays
{
    double closedOff;        // s, after the separation of the contacts
    double openOn;           // s, after that
    double openOff;          // s, before the contacts close
    double closedOn;         // s, after that
    double outputRelay;      // s, after the command
    double dropOut;          // s, after the currents are gone
    double reclosingCommand; // s, before the contacts close
    double reclosingLength;
};

ContactDelays DrawDelays(Drawing& draw)
{
    ContactDelays delays = {};
    delays.closedOff = draw.Between(0.0005, 0.003);
    delays.openOn = draw.Between(0.002, 0.006);
    delays.openOff = draw.Between(0.002, 0.006);
    delays.closedOn = draw.Between(0.0005, 0.003);
    delays.outputRelay = draw.Between(0.001, 0.003);
    delays.dropOut = draw.Between(0.015, 0.035);
    delays.reclosingCommand = draw.Between(0.045, 0.080);
    delays.reclosingLength = draw.Between(0.1, 0.16);
    return delays;
}

// The moments of the faulted line's signals.
class LineHistory
{
public:
    LineHistory(const LineScenario& plans, const LineOutcome& played, const ContactDelays& contacts)
        : scenario(plans), outcome(played), moments(played.moments), delays(contacts)
    {}

    std::vector<double> TogglesOf(const DiscreteSignal& signal) const;

private:
    std::vector<double> Held(bool trip, double delay) const;
    std::vector<double> Position(double opening, double closing) const;

    const LineScenario& scenario;
    const LineOutcome& outcome;
    const LineCourse& moments;
    const ContactDelays& delays;
};

// From the start or the trip until the currents are gone, and the same after reclosing.
std::vector<double> LineHistory::Held(bool trip, double delay) const
{
    std::vector<double> toggles;
    const auto add = [&](const std::optional<Operation>& operation, const std::optional<double>& opened) {
        if (!operation)
            return;
        toggles.push_back((trip ? operation->trip : operation->start) + delay);
        if (opened)
            toggles.push_back(std::max(*opened + delays.dropOut, toggles.back() + 0.02) + delay);
    };
    add(moments.first, outcome.opened);
    add(moments.second, outcome.openedAgain);
    return toggles;
}

// Of a position signal, with its delays after the separation and after the closing of the contacts.
std::vector<double> LineHistory::Position(double opening, double closing) const
{
    std::vector<double> toggles;
    if (moments.first || moments.manualOpening)
        toggles.push_back((moments.first ? moments.first->opening : *moments.manualOpening) + opening);
    if (moments.closing)
        toggles.push_back(*moments.closing + closing);
    if (moments.second)
        toggles.push_back(moments.second->opening + opening);
    return toggles;
}

std::vector<double> LineHistory::TogglesOf(const DiscreteSignal& signal) const
{
    switch (signal.behaviour) {
    case Behaviour::ProtectionStart:
        return Held(false, 0.0);
    case Behaviour::Trip:
        return Held(true, signal.statusCode == QLatin1String("FD") ? 0.0 : delays.outputRelay);
    case Behaviour::BreakerClosed:
        return Position(delays.closedOff, delays.closedOn);
    case Behaviour::BreakerOpen:
        return Position(delays.closedOff + delays.openOn, -delays.openOff);
    case Behaviour::Reclosing:
        if (scenario.fault && moments.closing) {
            const double command = *moments.closing - delays.reclosingCommand;
            return {command, command + delays.reclosingLength};
        }
        break;
    case Behaviour::Off:
    case Behaviour::On:
        break;
    }
    return {};
}

// The protection of the healthy line sees the fault too, and returns.
std::vector<double> HealthyToggles(const LineScenario& scenario, const LineOutcome& outcome,
                                   const ContactDelays& delays)
{
    if (!scenario.fault || !scenario.fault->healthyLineStarts || !outcome.moments.first)
        return {};
    std::vector<double> toggles = {outcome.moments.first->start + delays.closedOff};
    if (outcome.cleared)
        toggles.push_back(std::max(*outcome.cleared + delays.openOn, toggles.back() + 0.005));
    return toggles;
}

// One change becomes 3 or 5 within 1 to 4 ms.
void Bounce(Drawing& draw, std::vector<int64_t>& toggles)
{
    if (toggles.empty())
        return;
    const size_t bouncing = static_cast<size_t>(draw.Below(static_cast<int>(toggles.size())));
    const int further = draw.Chance(0.5) ? 2 : 4;
    const double length = draw.Between(1000, 4000); // microseconds
    const int64_t first = toggles[bouncing];
    for (int i = 1; i <= further; ++i)
        toggles.push_back(first + std::llround(length * i / further));
    std::sort(toggles.begin(), toggles.end());
}

// What the recording holds of it: before its end, and changes at its first sample are its state there.
void Trim(SignalHistory& history, int64_t end)
{
    while (!history.toggles.empty() && history.toggles.back() >= end)
        history.toggles.pop_back();
    while (!history.toggles.empty() && history.toggles.front() <= 0) {
        history.atStart = !history.atStart;
        history.toggles.erase(history.toggles.begin());
    }
}

} // namespace

std::vector<SignalHistory> HistoriesOf(const LineScenario& scenario, const LineOutcome& outcome)
{
    Drawing draw(scenario.seed ^ DelaySeed);
    const ContactDelays delays = DrawDelays(draw);
    const LineHistory line(scenario, outcome, delays);
    const LineBays bays = BaysAround(scenario.line);
    const int64_t end = Microseconds(static_cast<double>(outcome.samples) / scenario.sampleRate);
    std::vector<SignalHistory> histories;
    std::vector<size_t> changing;
    for (const DiscreteSignal& signal : DiscreteSignalsAround(scenario.line)) {
        SignalHistory history{
            signal, signal.behaviour == Behaviour::On || signal.behaviour == Behaviour::BreakerClosed, {}};
        std::vector<double> toggles;
        if (signal.bay.name == bays.line.name)
            toggles = line.TogglesOf(signal);
        else if (signal.bay.name == bays.healthy.name && signal.behaviour == Behaviour::ProtectionStart)
            toggles = HealthyToggles(scenario, outcome, delays);
        for (const double toggle : toggles)
            history.toggles.push_back(Microseconds(toggle));
        if (!history.toggles.empty())
            changing.push_back(histories.size());
        histories.push_back(history);
    }
    if (scenario.bounce && !changing.empty())
        Bounce(draw, histories[draw.OneOf(changing)].toggles);
    for (SignalHistory& history : histories)
        Trim(history, end);
    return histories;
}

} // namespace station
