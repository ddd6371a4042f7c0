// The name that a recording's record will have, from the head of its first file alone.
#pragma once

#include "verify/stamp.h"

#include <QString>

namespace verify {

class Device;

/// What the head of a recording's first file and the device say about its record.
struct RecordHead
{
    QString name;    ///< as the library gives it, without directory and extension
    QString station; ///< texts of the ini file
    QString recorder;
    QString subject;
    Moment trigger; ///< in the recorder's zone
};

/// The name is empty if the library would refuse the head. It does not say whether the rest of the recording
/// can be converted.
RecordHead RecordHeadOf(const QString& firstFile, const Device& device);

} // namespace verify
