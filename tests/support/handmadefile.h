// A recorder file of analog channels made in memory, for tests of calculations.
#pragma once

#include "recording/zufileformat.h"

#include <deque>
#include <vector>

class HandmadeFile : public ZuFileFormat
{
public:
    /// A file of count samples in a period.
    explicit HandmadeFile(quint32 count)
    {
        SamplesPerPeriod = count;
        CalcShifts();
    }

    /// Appends a channel of these codes, scaled by 1, and returns it.
    AnChannelData& Add(const QString& circuit, const QString& signal, const QString& unit,
                       const std::vector<qint16>& codes)
    {
        samples.push_back(codes);
        auto* channel = new AnChannelData; // the file owns it
        AnChannels.push_back(channel);
        channel->CfgCircuit = circuit;
        channel->CfgSignal = signal;
        channel->Unit = unit;
        channel->CoefA = 1.0F;
        channel->m_HeaderAn.points = static_cast<quint32>(codes.size());
        channel->Samples = codes.empty() ? nullptr : samples.back().data();
        return *channel;
    }

private:
    std::deque<std::vector<qint16>> samples;
};
