// One pass over the samples of a recording, as the converter writes them.
#pragma once

#include <QtGlobal>

#include <vector>

class ZuFileFormat;

namespace info {

struct RecordingData
{
    qint64 samples = 0; // that the record will hold
    std::vector<qint64>
        changes; // of each discrete channel: samples whose state is not that of the one before
};

/// files are the segments with their time bases; rate in samples per second, total of all segments.
RecordingData WalkThrough(const std::vector<ZuFileFormat*>& files, double rate, qint64 total);

} // namespace info
