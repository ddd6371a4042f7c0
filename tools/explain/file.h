// Why a path of the command line is no recording, and what to give instead. The library alone decides what it
// takes; these texts explain its refusal, or why it would refuse a file because of its name or kind.
#pragma once

#include <QString>

namespace explain {

/// Why nothing can be read at the path: it is empty, too long, not there, a directory, a device or pipe, not
/// permitted. Nothing is opened that could make the program wait. Empty for a regular file that can be read.
QString Unreadable(const QString& path);

/// Why the library converts no recording at that path, as far as can be seen without reading all of it:
/// Unreadable, or a name that does not end in .ZU or .zu. Empty for a possible first file.
QString NotConvertible(const QString& path);

/// Why the library does not load the file; libraryText is the text that it gave.
QString NotLoaded(const QString& path, const QString& libraryText);

/// Why the file is not the .cfg or .cff of a record though its name says so; empty if it may be one.
QString NotARecord(const QString& path);

/// The word for programs (text/reasons.h) that goes with what Unreadable and the others say about the path;
/// `otherwise` for a regular file that can be read.
const char* WordOf(const QString& path, const char* otherwise);

/// Whether the file starts as the library wants a recording to start, as far as the file goes.
bool BeginsAsRecording(const QString& path);

} // namespace explain
