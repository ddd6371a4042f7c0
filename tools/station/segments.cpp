#include "station/segments.h"

#include <cmath>

namespace station {

using recorderfile::AnalogChannel;
using recorderfile::DiscreteChannel;
using recorderfile::Recording;

namespace {

constexpr int64_t MicrosecondsInSecond = 1000000;

AnalogChannel Part(const AnalogChannel& channel, size_t first, size_t samples)
{
    AnalogChannel part = channel;
    const auto begin = channel.samples.begin() + static_cast<std::ptrdiff_t>(first);
    part.samples.assign(begin, begin + static_cast<std::ptrdiff_t>(samples));
    return part;
}

// Times are microseconds; the part starts at `start`.
DiscreteChannel Part(const DiscreteChannel& channel, int64_t start, int64_t duration)
{
    DiscreteChannel part = channel;
    part.changes.clear();
    for (const recorderfile::Change& change : channel.changes) {
        const int64_t time = change.time - start;
        if (time >= duration)
            break;
        if (time <= 0)
            part.changes = {{0, change.value}};
        else
            part.changes.push_back({static_cast<uint32_t>(time), change.value});
    }
    return part;
}

} // namespace

std::vector<Recording> CutIntoSegments(const Recording& recording, size_t samples)
{
    const auto& analog = std::get<AnalogChannel>(recording.sections.front());
    const int64_t duration = std::llround(static_cast<double>(samples) * 1e6 / double{analog.rate});
    const int64_t start = int64_t{recording.startTime} * MicrosecondsInSecond + recording.startMicroseconds;
    std::vector<Recording> segments;
    for (size_t first = 0; first + samples <= analog.samples.size(); first += samples) {
        const int64_t base = static_cast<int64_t>(segments.size()) * duration;
        Recording segment = recording;
        segment.startTime = static_cast<uint32_t>((start + base) / MicrosecondsInSecond);
        segment.startMicroseconds = static_cast<int32_t>((start + base) % MicrosecondsInSecond);
        segment.duration = static_cast<uint32_t>(duration);
        for (Recording::Section& section : segment.sections) {
            if (const auto* wave = std::get_if<AnalogChannel>(&section))
                section = Part(AnalogChannel(*wave), first, samples);
            else if (const auto* signal = std::get_if<DiscreteChannel>(&section))
                section = Part(DiscreteChannel(*signal), base, duration);
        }
        segments.push_back(std::move(segment));
    }
    return segments;
}

} // namespace station
