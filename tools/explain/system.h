// Failures of the operating system in the user's language.
#pragma once

#include <QString>

namespace explain {

/// The text of a failed system call, as "Permission denied", for its errno.
QString SystemText(int error);

/// The same for the text that the C library or Qt has made of it, as QFile::errorString(). A text that is
/// none of the system's stays as it is.
QString SystemText(const QString& text);

} // namespace explain
