// Failures of the operating system in the user's language.
#pragma once

#include <QString>

namespace explain {

/// The text for the errno of a failed system call, such as "Permission denied".
QString SystemText(int error);

/// The same for a failure to write below a directory: a full disk is said to be the directory's.
QString SystemText(int error, const QString& directory);

/// Whether the errno means that a disk, or the user's share of it, is full.
bool IsNoRoom(int error);

/// The same for a text that the C library or Qt made from an errno, such as QFile::errorString(). Any other
/// text stays as it is.
QString SystemText(const QString& text);

} // namespace explain
