// Recordings whose file ends before what its headers promise.
#pragma once

#include <QString>

namespace explain {

/// Where the recorder's file at path ends, and at what size it was whole, as far as its headers tell; empty
/// if it is as long as they say, or if they contradict each other.
QString CutOffText(const QString& path);

} // namespace explain
