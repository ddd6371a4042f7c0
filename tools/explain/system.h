// Failures of the operating system in the user's language.
#pragma once

#include <QString>

namespace explain {

/// The text of a failed system call, as "Permission denied", for its errno.
QString SystemText(int error);

/// The same for a failure to write below a directory: of a full disk it says that it is that of the
/// directory.
QString SystemText(int error, const QString& directory);

/// Whether the errno means that a disk, or the user's share of it, is full.
bool IsNoRoom(int error);

/// The same for the text that the C library or Qt has made of it, as QFile::errorString(). A text that is
/// none of the system's stays as it is.
QString SystemText(const QString& text);

} // namespace explain
