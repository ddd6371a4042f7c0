// The files of a recording in an archive: first under names ending in ".part", then under their own, never in
// the place of another file. The recording itself stays where it is.
#pragma once

#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/sourceerror.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace sourcefiles {

class ArchiveCopies
{
public:
    /// The directory is made if it is not there. Throws Error if it cannot be, if a file of one of the names
    /// is there and is not the same, or if it is the directory of the recording itself.
    ArchiveCopies(const ChainFiles& chain_, const QString& directory_);

    /// Removes what was placed, unless it is kept.
    ~ArchiveCopies();
    ArchiveCopies(const ArchiveCopies&) = delete;
    ArchiveCopies& operator=(const ArchiveCopies&) = delete;

    /// Has the archive hold each file under its name with ".part": as a second name of the file on the same
    /// file system, else as a copy with the times, mode and, where the user may, owner; compared, and on the
    /// disk. What is there under its own name already is written to the disk. Throws Error.
    void Place();

    /// Whether the one file of the recording has to be moved here, as its file system gives it no second
    /// name.
    bool NeedsMove() const { return needsMove; }

    /// The name of a file in the archive.
    QString TargetOf(size_t number) const;

    /// Gives the files their names. When it returns, the archive is on the disk. Throws Error.
    void Finish();

    /// What was placed stays.
    void Keep() { kept = true; }

    /// Throws the Error of a file that cannot be moved to its name here.
    [[noreturn]] void Fail(size_t number, int error) const;

private:
    enum class State { Missing, Part, Named, Present }; // in the archive; Present: before
    void CheckDirectory() const;
    void CheckTarget(size_t number);
    void PlaceOne(size_t number);
    int Link(size_t number);
    void Copy(size_t number);
    void ClearPart(size_t number) const;
    void FinishOne(size_t number);
    void SyncNames() const;

    const ChainFiles& chain;
    const QString directory;
    std::vector<State> states;
    std::vector<systemfile::Descriptor> placed; // what is in the archive; keeps the copies locked
    bool needsMove = false;
    bool kept = false;
};

/// To be called once before recordings are moved into a directory of an archive, which is `top` or lies below
/// it: removes the parts that killed runs left there, makes it if it is not there, and has all directories up
/// to `top` on the disk, also those that a killed run has made. Throws Error.
void PrepareArchive(const QString& directory, const QString& top);

/// Removes files of a recorder's names with ".part" that a killed program left in an archive, and gives their
/// paths. Those that a running program writes stay.
QStringList RemoveParts(const QString& directory);

} // namespace sourcefiles
