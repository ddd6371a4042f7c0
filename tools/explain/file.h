// Why a path of the command line is no recording, and what to give instead. The library alone decides what it
// takes; what is said here is said after it has refused, or about files that it refuses by their name or
// kind.
#pragma once

#include <QString>

namespace explain {

/// Why nothing can be read at the path: it is empty, too long, not there, a directory, a device or pipe, not
/// permitted. Nothing is opened that could make the program wait. Empty for a regular file that can be read.
QString Unreadable(const QString& path);

/// Why the library converts no recording of that path, as far as that is known without reading it whole:
/// Unreadable, or a name that does not end in .ZU or .zu. Empty for a first file that may be one.
QString NotConvertible(const QString& path);

/// Why the library, which has given that text, does not load the file.
QString NotLoaded(const QString& path, const QString& libraryText);

/// Why the file is not the .cfg or .cff of a record though its name says so; empty if it may be one.
QString NotARecord(const QString& path);

/// The word for programs (zucmtr/reasons.h) of what Unreadable and the others say of the path; `otherwise` of
/// a regular file that can be read.
const char* WordOf(const QString& path, const char* otherwise);

/// Whether the file begins as the library wants a recording to begin, as far as the file goes.
bool BeginsAsRecording(const QString& path);

} // namespace explain
