// Moves the files of a recording aside, so that what is removed is what was read, and puts them back. A
// program that is killed meanwhile leaves files aside; Recover puts those back, or removes them if their
// recording was put away already.
#pragma once

#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/sourceerror.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace sourcefiles {

/// A file with two names: that of its own and the one under which it is aside.
struct AsideFile
{
    QString own;
    QString aside; // empty: not aside
};

/// For one recording. A file that is aside is locked as long as `chain` is there, so that no other program
/// takes it for one that was left. The first file goes aside before the others and comes back after them: as
/// long as it is there, the recording was not put away.
class AsideFiles
{
public:
    /// Locks the files. Throws Error if another program has one of them.
    explicit AsideFiles(const ChainFiles& chain_);

    /// Puts back what is aside, and unlocks.
    ~AsideFiles();
    AsideFiles(const AsideFiles&) = delete;
    AsideFiles& operator=(const AsideFiles&) = delete;

    /// Moves all files aside and looks whether they are, with their content, those that were read, nobody
    /// writes to them, and no continuation has come. Throws Error, with files aside.
    void Move();

    /// Looks once more whether somebody writes to the files or has changed them since Move: copying them may
    /// have taken its time. Throws Error, with files aside.
    void LookAgain() const;

    /// Removes the first file for good. From then on no way leads back: Recover removes what is left of the
    /// others. Throws Error: all files are there.
    void RemoveFirst();

    /// Removes the others. Throws Error at the first that stays.
    void RemoveRest();

    /// Instead of RemoveFirst for a recording of one file: moves it to a name that is free, with the file and
    /// both directories on the disk. 0 or errno.
    int MoveOnlyTo(const QString& path);

    /// Puts all files back under their names; if one of these is taken by now, all of them under other names
    /// of one recording. Gives sentences on what is not as it was.
    QStringList PutBack();

private:
    void MoveOne(size_t number);
    void Look(size_t number);

    const ChainFiles& chain;
    const QString token;
    std::vector<AsideFile> files;
    std::vector<bool> leased; // by number: whether writers have to wait
    bool putAway = false;     // the first file is gone for good
};

/// What Recover did; paths.
struct Recovered
{
    QStringList back;    // recordings' files that have their names again
    QStringList removed; // rests of recordings that were put away
    QStringList notes;   // sentences on files that are not as they were, or still aside
};

/// Files that a killed program left aside in a directory get their names back. If a name is taken by now, the
/// files of that recording get other names, with a note. Files that a running program holds stay as they are.
Recovered Recover(const QString& directory);

/// The same for the directories in which recordings of a command line lie: those given, those of files that
/// are given, and with `recursive` all below.
Recovered RecoverAll(const QStringList& arguments, bool recursive);

} // namespace sourcefiles
