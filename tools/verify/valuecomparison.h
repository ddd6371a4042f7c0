// A record of any form and any settings compared with its recording in what does not depend on an ini file:
// stamps, rate, times, samples and states.
#pragma once

#include "comtrade/finding.h"
#include "verify/columns.h"

#include <QString>

#include <vector>

namespace verify {

class Source;

/// A channel of the record whose values are not all those of the recording.
struct ChannelDifference
{
    bool isAnalog = false;
    size_t number = 0; ///< of the record's channels of this kind, from 1
    QString name;
    qint64 count = 0;   ///< values that differ
    qint64 sample = 0;  ///< the first of them, from 1
    double seconds = 0; ///< its time from the record's first sample
    double found = 0;   ///< its code or state; NaN: missing
    double expected = 0;
};

struct ValueComparison
{
    Alignment alignment;
    qint64 total = 0;       ///< samples of the recording
    size_t analogOfAll = 0; ///< channels of the recording
    size_t statesOfAll = 0;
    ColumnChannels channels; ///< empty if the samples could not be compared
    std::vector<ChannelDifference> differences;
    comtrade::Findings wrong; ///< nothing if all is as in the recording

    /// Whether the record has all samples and channels of the recording.
    bool HasAll(size_t analog, size_t states) const
    {
        return alignment.first == 0 && alignment.every == 1 && alignment.count == total &&
               analog == analogOfAll && states == statesOfAll;
    }
};

/// The record may begin later and end earlier than the recording, leave out channels and have each so
/// many-th sample only; its channels may be in any order, and their values may be scaled. Throws
/// comtrade::Error if the record cannot be read.
ValueComparison CompareValues(const QString& record, const Source& source);

/// The names in the configuration that an ini file decides: station, recorder; name, phase, circuit and unit
/// of each channel. What differs is added to wrong.
void CompareTexts(const QString& record, const Source& source, const ColumnChannels& channels,
                  comtrade::Findings& wrong);

} // namespace verify
