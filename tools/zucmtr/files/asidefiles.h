// Moves the files of a recording aside, so that what is removed is what was read, and puts them back. A
// program that is killed in the middle leaves files aside; Recover puts those back, or removes them if their
// recording was already put away.
#pragma once

#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/sourceerror.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace sourcefiles {

/// A file with two names: its own, and the one that it has while it is aside.
struct AsideFile
{
    QString own;
    QString aside; // empty: not aside
};

/// For one recording. A file that is aside is locked as long as `chain` lives, so that no other program takes
/// it for one left over. The first file is moved aside before the others and back after them: as long as it
/// is there, the recording was not put away.
class AsideFiles
{
public:
    /// Locks the files. Throws Error if another program has one of them.
    explicit AsideFiles(const ChainFiles& chain_);

    /// Puts back what is aside, and unlocks the files.
    ~AsideFiles();
    AsideFiles(const AsideFiles&) = delete;
    AsideFiles& operator=(const AsideFiles&) = delete;

    /// Moves all files aside and checks that they are those that were read, with the same content, that
    /// nobody writes to them, and that no continuation has arrived. Throws Error, with files aside.
    void Move();

    /// Checks once more that nobody writes to the files or has changed them since Move, as copying them may
    /// have taken time. Throws Error, with files aside.
    void CheckAgain() const;

    /// Removes the first file for good. There is no way back from then on: Recover removes what is left of
    /// the others. If it throws Error, all files are there.
    void RemoveFirst();

    /// Removes the others. Throws Error at the first that stays.
    void RemoveRest();

    /// Instead of RemoveFirst for a recording of one file: moves it to a free name, with the file and both
    /// directories written to the disk. 0 or errno.
    int MoveOnlyTo(const QString& path);

    /// Puts all files back under their names; if one of these is taken by now, all of them get other names
    /// that belong together. Returns sentences about what is not as it was.
    QStringList PutBack();

private:
    void MoveOne(size_t number);
    void Check(size_t number);

    const ChainFiles& chain;
    const QString token;
    std::vector<AsideFile> files;
    std::vector<bool> leased; // by number: whether writers are made to wait
    bool putAway = false;     // the first file is gone for good
};

/// What Recover did; paths.
struct Recovered
{
    QStringList back;    // recordings' files that have their names again
    QStringList removed; // rests of recordings that were put away
    QStringList notes;   // sentences about files that are not as they were, or still aside

    Recovered& operator+=(const Recovered& other);
};

/// Gives files that a killed program left aside in a directory their names back. If a name is taken by now,
/// the files of that recording get other names, with a note. Files that a running program holds stay.
Recovered Recover(const QString& directory);

/// The same for all directories that hold recordings of a command line: those given, those of files that are
/// given, and with `recursive` all below.
Recovered RecoverAll(const QStringList& arguments, bool recursive);

} // namespace sourcefiles
