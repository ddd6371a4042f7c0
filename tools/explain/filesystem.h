// What file systems are like, as far as it decides how files on them may be used.
#pragma once

#include <QString>

namespace explain {

/// Whether the system itself knows everybody who has a file of this file system open: no other machine has.
/// False also if that is not known.
bool IsLocal(int file);
bool IsLocal(const QString& path);

} // namespace explain
