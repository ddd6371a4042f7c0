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
    /// Makes the directory if it is not there. Throws Error if it cannot be made, if it has a different file
    /// of one of the names, or if it is the directory of the recording itself.
    ArchiveCopies(const ChainFiles& chain_, const QString& directory_);

    /// Removes what was placed, unless it is kept.
    ~ArchiveCopies();
    ArchiveCopies(const ArchiveCopies&) = delete;
    ArchiveCopies& operator=(const ArchiveCopies&) = delete;

    /// Puts each file into the archive under its name with ".part": as a second name of the file on the same
    /// file system, otherwise as a copy with the times, the mode and, if the user may set it, the owner;
    /// copies are compared, and all are written to the disk, also what was there already under its own name.
    /// Throws Error.
    void Place();

    /// Whether the recording's only file has to be moved here, because its file system cannot give it a
    /// second name.
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
    enum class State { Missing, Part, Named, Present }; // in the archive; Present: it was there before
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
/// it: removes the parts that killed runs left there, makes the directory if it is not there, and has all
/// directories up to `top` on the disk, also those made by a killed run. Throws Error.
void PrepareArchive(const QString& directory, const QString& top);

/// Removes recorder files with ".part" after their names that a killed run left in an archive, and returns
/// their paths. Those that a running program is writing stay, and so do those that this program did not make,
/// unless they are second names of other files.
QStringList RemoveParts(const QString& directory);

} // namespace sourcefiles
