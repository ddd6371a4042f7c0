#include "analysis/events.h"

#include <queue>

namespace analysis {

namespace {

// The events of one channel, one after the other.
class Channel
{
public:
    Channel(const Oscillogram& oscillogram_, size_t number_, ChannelUse use_)
        : oscillogram(&oscillogram_), number(number_), use(use_)
    {}

    // False after the last one.
    bool Next(Event& event)
    {
        if (!Seek())
            return false;
        const States& states = oscillogram->states[number];
        const bool before = states.At(at - 1);
        event = {};
        event.sample = oscillogram->first + static_cast<qint64>(at);
        event.time = TimeAt(at);
        event.channel = number;
        event.use = use;
        event.state = states.At(at);
        double last = event.time;
        for (++at; Seek(); ++at) {
            const double time = TimeAt(at);
            if (time - last > BounceGap + Rounding || time - event.time > LongestBounce + Rounding)
                break;
            last = time;
            event.state = states.At(at);
            ++event.changes;
        }
        event.isBounce = event.state == before;
        taken += event.changes;
        return true;
    }

    qint64 Left() const { return oscillogram->states[number].Changes() - taken; }

private:
    static constexpr double Rounding = 1e-9; // s, of times that are sums

    // Moves to the next sample, from the current one on, that differs from the one before.
    bool Seek()
    {
        const States& states = oscillogram->states[number];
        at = states.NextChange(at);
        return at < states.Size();
    }

    double TimeAt(size_t sample) const
    {
        return oscillogram->axis.TimeOf(oscillogram->first + static_cast<qint64>(sample));
    }

    const Oscillogram* oscillogram;
    size_t number;
    ChannelUse use;
    size_t at = 1;
    qint64 taken = 0;
};

struct Waiting
{
    Event event;
    size_t channel; // place among those that change
};

struct IsLater
{
    bool operator()(const Waiting& a, const Waiting& b) const
    {
        return a.event.sample != b.event.sample ? a.event.sample > b.event.sample : a.channel > b.channel;
    }
};

} // namespace

EventList EventsOf(const Oscillogram& oscillogram, const ChannelKinds& kinds)
{
    std::vector<Channel> channels;
    for (size_t i = 0; i < oscillogram.states.size(); ++i)
        if (oscillogram.states[i].Changes() > 0)
            channels.emplace_back(oscillogram, i, kinds.Of(i));
    std::priority_queue<Waiting, std::vector<Waiting>, IsLater> waiting;
    const auto await = [&](size_t channel) {
        Event event;
        if (channels[channel].Next(event))
            waiting.push({event, channel});
    };
    for (size_t i = 0; i < channels.size(); ++i)
        await(i);
    EventList list;
    while (!waiting.empty() && list.events.size() < MostEvents) {
        const Waiting next = waiting.top();
        waiting.pop();
        list.events.push_back(next.event);
        await(next.channel);
    }
    for (const Channel& channel : channels)
        list.leftOut += channel.Left();
    for (; !waiting.empty(); waiting.pop()) // taken, but not listed
        list.leftOut += waiting.top().event.changes;
    return list;
}

} // namespace analysis
