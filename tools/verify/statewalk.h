// The states of a recording's channels from record to record, computed independently of the writer's code.
#pragma once

#include <QtGlobal>

#include <vector>

class DiChannelData;
class ZuFileFormat;

namespace verify {

class StateWalk
{
public:
    /// Takes as many channels of a segment as count, by their indexes in the order of the record. Their
    /// states are unknown until the first MoveTo. Throws std::out_of_range for an order that does not fit.
    void Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order, size_t count);

    /// Goes to a time, microseconds from the start of the segment. Returns whether a state may have changed.
    /// Costs nothing while the times rise and pass no change of a channel.
    bool MoveTo(quint32 time)
    {
        if (time >= lastTime && (next == changes.size() || changes[next].time > time)) {
            lastTime = time;
            return false;
        }
        Update(time);
        return true;
    }

    bool At(size_t channel) const { return states[channel] != 0; }

private:
    // A moment at which a channel may have another state than before.
    struct Change
    {
        quint32 time;
        quint32 channel;
    };

    void AddChanges(const DiChannelData& channel, quint32 number);
    void Update(quint32 time);

    std::vector<DiChannelData*> channels;
    std::vector<Change> changes; // in the order of their times
    std::vector<quint8> states;
    size_t next = 0; // change that has not been reached
    quint64 lastTime = 0;
};

} // namespace verify
