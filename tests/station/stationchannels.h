// Look-ups in the recordings of the sample station.
#pragma once

#include "station/station.h"

#include <gtest/gtest.h>

// Signals of the faulted bay start with this.
inline const QString line = QStringLiteral("ВЛ-110 Восточная:");

// The channels of one kind, in file order.
template <typename Channel>
std::vector<Channel> ChannelsOf(const recorderfile::Recording& recording)
{
    std::vector<Channel> channels;
    for (const recorderfile::Recording::Section& section : recording.sections)
        if (const auto* channel = std::get_if<Channel>(&section))
            channels.push_back(*channel);
    return channels;
}

// The channel with that name; the test fails if there is none.
template <typename Channel>
Channel Find(const recorderfile::Recording& recording, const QString& name)
{
    for (const Channel& channel : ChannelsOf<Channel>(recording))
        if (channel.name == name)
            return channel;
    ADD_FAILURE() << "no channel " << name.toStdString();
    return {};
}

// The first segment of the usual station, 2 s at 2400 Hz with the trigger at half a second.
inline recorderfile::Recording FirstSegment(station::Fault fault,
                                            station::StartKind start = station::StartKind::PositiveSequence)
{
    station::StationOptions options;
    options.fault = fault;
    return station::MakeRecording(options, start).front();
}
