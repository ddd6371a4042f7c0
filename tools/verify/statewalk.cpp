#include "verify/statewalk.h"

#include "recording/zufileformat.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace verify {

void StateWalk::Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order, size_t count)
{
    channels.clear();
    changes.clear();
    for (size_t i = 0; i < count; ++i) {
        DiChannelData* const channel = segment.DiChannels.at(order.at(i));
        channel->CurrentIndex = 0; // as it was loaded, whoever has asked for its states since
        channel->CurrentValue =
            channel->ChangeCount > 0 && (channel->m_pData[0] != 0) != channel->Inverted ? 1 : 0;
        AddChanges(*channel, static_cast<quint32>(channels.size()));
        channels.push_back(channel);
    }
    std::sort(changes.begin(), changes.end(),
              [](const Change& a, const Change& b) { return a.time < b.time; });
    states.assign(channels.size(), 0);
    next = 0;
    lastTime = std::numeric_limits<quint64>::max(); // whatever comes first is before it
}

// However the times of a channel's records follow each other, its state changes at none but these.
void StateWalk::AddChanges(const DiChannelData& channel, quint32 number)
{
    for (quint32 i = 0; i < channel.ChangeCount; ++i) {
        ZuDiChangeRecord record;
        std::memcpy(&record, channel.m_pData + i * sizeof record, sizeof record);
        changes.push_back({record.time, number});
    }
}

void StateWalk::Update(quint32 time)
{
    if (time < lastTime) {
        for (size_t i = 0; i < channels.size(); ++i)
            states[i] = channels[i]->GetVal(time) ? 1 : 0;
        next = 0;
    }
    for (; next < changes.size() && changes[next].time <= time; ++next) {
        const quint32 channel = changes[next].channel;
        states[channel] = channels[channel]->GetVal(time) ? 1 : 0;
    }
    lastTime = time;
}

} // namespace verify
