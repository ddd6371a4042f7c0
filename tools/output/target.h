// Where the path of an output option leads: to a file that may be replaced, or to something that is only ever
// written to.
#pragma once

#include <QString>

namespace output {

/// What stands at the end of a path, symbolic links followed.
enum class Kind {
    NewFile,     ///< nothing yet
    RegularFile, ///< a file with contents, which a new one may replace
    Directory,
    Stream ///< all else: a device, a pipe, a socket, an open descriptor; written to, never replaced or
           ///< removed
};

struct Target
{
    Kind kind = Kind::NewFile;
    QString path;        ///< without symbolic links; of a Stream as the system takes it
    int descriptor = -1; ///< of a Stream that is named by its descriptor in this process, as /dev/stdout
};

/// Follows the path. "-" is standard output; so are /dev/stdout, /dev/fd/1 and /proc/self/fd/1, whatever the
/// shell has opened there: a regular file that is named by its descriptor is not replaced, as the shell goes
/// on using it.
Target TargetOf(const QString& path);

/// Whether the path leads to standard output, so that nothing else may be printed there. False for a regular
/// file that is given by its name.
bool IsStandardOutput(const QString& path);

} // namespace output
