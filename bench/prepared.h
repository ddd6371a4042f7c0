// A recording prepared up to the point at which its records are written.
#pragma once

#include "preparation/segmentchain.h"
#include "recording/zufileformat.h"
#include "workload.h"

namespace bench {

class PreparedRecording
{
public:
    /// Loads the recording and makes its names, totals and channel order for the device, which must outlive
    /// this object. The coefficients of the analog channels are set. Throws std::runtime_error if the
    /// recording cannot be loaded.
    PreparedRecording(Device& device_, const QString& firstFile);

    ZuFileFormat& First() const { return chain.First(); }
    std::vector<ZuFileFormat*>* Files() { return chain.Files(); }

    /// Writes the DAT file under the given path. Throws std::runtime_error if it fails.
    void WriteDat(const QString& path);

private:
    Device& device;
    SegmentChain chain;
};

} // namespace bench
