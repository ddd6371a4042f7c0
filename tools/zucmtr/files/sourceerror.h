// Why a recording was not put away.
#pragma once

#include <QString>

#include <stdexcept>

namespace sourcefiles {

enum class Trouble {
    Changed,  // not the files that were read, or somebody is at work with them: convert again
    Conflict, // the user has to move something away
    Archive,  // the archive cannot be written to: every recording has this trouble
    NoRoom,   // a disk is full: likewise
    File      // that one could not be written, moved or deleted
};

/// what() is a sentence in UTF-8: the file, the reason, what to do.
class Error : public std::runtime_error
{
public:
    Error(Trouble trouble_, const QString& text) : std::runtime_error(text.toStdString()), trouble(trouble_)
    {}
    explicit Error(const QString& text) : Error(Trouble::File, text) {}
    const Trouble trouble;
};

/// For a recording that is not what was read; `what` is a clause that says what happened.
[[noreturn]] void ThrowChanged(const QString& what);

/// For a file, or the names in a directory, that the system could not write to the disk. Throws Error:
/// NoRoom, or `otherwise`.
[[noreturn]] void ThrowUnwritten(const QString& path, const QString& directory, int error, Trouble otherwise);

/// Has the system write a file, or the names in a directory, to the disk. Throws Error: NoRoom, or
/// `otherwise`.
void SyncOrThrow(const QString& path, const QString& directory, Trouble otherwise);

} // namespace sourcefiles
