// Who is told of the records that a worker has put in their place.
#pragma once

#include <QString>

/// A record that is in its place and, if it is still there, its recording.
struct KeptRecord
{
    QString record;              ///< its .cfg or .cff
    QString recording;           ///< first file of the recording that it was made from
    bool isRecordingKept = true; ///< the recording stays where that says
    bool isVerified = false;     ///< the record was compared with it, and is right
    QString left;                ///< where the recording was before; empty: nowhere else
};

class RecordKeeper
{
public:
    virtual ~RecordKeeper() = default;

    /// Several threads may call it at once. Returns why it could not be done; empty: it is done.
    virtual QString Keep(const KeptRecord& record) = 0;
};
