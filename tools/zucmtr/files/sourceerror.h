// Why a recording was not put away.
#pragma once

#include "text/error.h"

#include <QString>

namespace sourcefiles {

enum class Trouble {
    Changed,  // not the files that were read, or in use by somebody: convert again
    Conflict, // the user has to move something away
    Archive,  // the archive cannot be written to: this affects every recording
    Input,    // nothing in the recording's directory can be moved or deleted: the same
    NoRoom,   // a disk is full: the same
    File      // this one could not be written, moved or deleted
};

/// The message is a sentence with the file, the reason, and what to do.
class Error : public text::Error
{
public:
    Error(Trouble trouble_, const QString& sentence) : text::Error(sentence), trouble(trouble_) {}
    explicit Error(const QString& sentence) : Error(Trouble::File, sentence) {}
    const Trouble trouble;
};

/// For a recording that is not the one that was read; `what` is a clause that says what happened.
[[noreturn]] void ThrowChanged(const QString& what);

/// For a file, or the names in a directory, that the system could not write to the disk. Throws Error:
/// NoRoom, or `otherwise`.
[[noreturn]] void ThrowUnwritten(const QString& path, const QString& directory, int error, Trouble otherwise);

/// Has the system write a file, or the names in a directory, to the disk. Throws Error: NoRoom, or
/// `otherwise`.
void SyncOrThrow(const QString& path, const QString& directory, Trouble otherwise);

} // namespace sourcefiles
