#include "info/recordingdata.h"

#include "recording/zufileformat.h"
#include "writers/samplewalk.h"

#include <algorithm>

namespace info {

namespace {

struct Channel
{
    DiChannelData* data = nullptr;
    bool state = false;
    quint64 due = 0; // time at which it may change next, microseconds
    qint64 changes = 0;
};

class Pass
{
public:
    explicit Pass(size_t count) : channels(count) {}

    void Enter(const ZuFileFormat& segment)
    {
        for (size_t i = 0; i < channels.size(); ++i)
            channels[i].data = segment.DiChannels.at(i);
        AskAll();
        last = 0;
    }

    // time in microseconds from the start of the segment.
    void MoveTo(quint32 time)
    {
        if (time < last) // the recorder's clock has wrapped around
            AskAll();
        last = time;
        if (time < due)
            return;
        due = DiChannelData::NoChange;
        for (Channel& channel : channels) {
            Ask(channel, time);
            due = std::min(due, channel.due);
        }
        isFirst = false;
    }

    std::vector<qint64> Changes() const
    {
        std::vector<qint64> changes;
        changes.reserve(channels.size());
        for (const Channel& channel : channels)
            changes.push_back(channel.changes);
        return changes;
    }

private:
    void AskAll()
    {
        for (Channel& channel : channels)
            channel.due = 0;
        due = 0;
    }

    void Ask(Channel& channel, quint32 time) const
    {
        if (time < channel.due)
            return;
        const bool state = channel.data->GetVal(time);
        if (!isFirst && state != channel.state)
            ++channel.changes;
        channel.state = state;
        channel.due = channel.data->NextChange(time);
    }

    std::vector<Channel> channels;
    quint64 due = 0; // the earliest of the channels'
    quint32 last = 0;
    bool isFirst = true; // sample of the recording: there is none before
};

} // namespace

RecordingData WalkThrough(const std::vector<ZuFileFormat*>& files, double rate, qint64 total)
{
    RecordingData data;
    Pass pass(files.front()->DiChannels.size());
    SampleWalk walk(files, rate, total);
    while (walk.Next()) {
        if (walk.IsFirstOfSegment())
            pass.Enter(walk.Segment());
        pass.MoveTo(walk.SegmentTime());
        ++data.samples;
    }
    data.changes = pass.Changes();
    return data;
}

} // namespace info
