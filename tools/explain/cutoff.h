// Recordings whose file ends earlier than its headers say.
#pragma once

#include <QString>

namespace explain {

/// Where the recorder file at path ends, and what size it had when whole, according to its headers; empty if
/// it is as long as they say, or if they contradict each other.
QString CutOffText(const QString& path);

} // namespace explain
