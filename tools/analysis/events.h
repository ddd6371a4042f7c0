// The sequence of events: each change of a discrete channel.
#pragma once

#include "analysis/channelkinds.h"
#include "analysis/oscillogram.h"

#include <vector>

namespace analysis {

struct Event
{
    qint64 sample = 0;  ///< of the record: the first one with the new state
    double time = 0;    ///< of that sample, seconds from the trigger
    size_t channel = 0; ///< discrete channel, place in the configuration
    ChannelUse use;
    bool state = false;    ///< after the change; with contact bounce the one in which the channel stays
    int changes = 1;       ///< above 1: contact bounce, folded
    bool isBounce = false; ///< the channel bounced back into its old state

    bool IsActive() const { return state == use.active; }
};

/// Changes of one channel that follow each other by at most this, seconds, are contact bounce: relays settle
/// within it, while no protection signal or breaker changes twice so fast.
constexpr double BounceGap = 0.005;

/// No bounce lasts longer than this, seconds: what goes on changing is another event.
constexpr double LongestBounce = 0.020;

/// Events beyond this number are counted, not listed.
constexpr size_t MostEvents = 100000;

struct EventList
{
    std::vector<Event> events; ///< by time, those of one sample in the order of their channels
    qint64 leftOut = 0;        ///< changes after the last of MostEvents
};

/// The changes among the samples held. The state at the first of them is no change.
EventList EventsOf(const Oscillogram& oscillogram, const ChannelKinds& kinds);

} // namespace analysis
