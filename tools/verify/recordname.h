// The name that a recording's record will have, from the head of its first file alone.
#pragma once

#include <QString>

namespace verify {

class Device;

/// The name without directory and extension; empty if the library would refuse the head. It does not say
/// whether the rest of the recording can be converted.
QString RecordNameOf(const QString& firstFile, const Device& device);

} // namespace verify
