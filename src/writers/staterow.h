// The discrete states of one record, ready to be copied into it.
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <vector>

class DiChannelData;
class ZuFileFormat;

class StateRow
{
public:
    enum class Form {
        Ascii, // ",0" or ",1" a channel
        Words  // 16 channels a little-endian word, first channel in bit 0
    };

    StateRow(Form form_, size_t count);

    /// Takes the channels of segment in the given order (indexes into its discrete channels). Throws
    /// std::out_of_range for an order that does not fit.
    void Enter(const ZuFileFormat& segment, const std::vector<unsigned int>& order);

    /// Brings the states to segmentTime, microseconds from the start of the segment. Costs nothing while
    /// the times rise and no channel changes.
    void MoveTo(quint32 segmentTime)
    {
        if (segmentTime < lastTime || segmentTime >= nextChange)
            Update(segmentTime);
        lastTime = segmentTime;
    }

    /// Copies the states to out, which has room for 2 bytes a channel; returns their end.
    char* Append(char* out) const { return std::copy(bytes.begin(), bytes.end(), out); }

private:
    void Update(quint32 segmentTime);
    void Set(size_t channel, bool state);

    const Form form;
    std::vector<char> bytes;
    std::vector<DiChannelData*> channels;
    std::vector<quint64> changes; // time from which each channel has to be asked again
    quint64 nextChange = 0;       // the earliest of them
    quint32 lastTime = 0;
};
