// A directory beside the final place of a record, where the record is written and verified before it gets its
// final names.
//
// The final names change in one order: the earlier configuration goes first, the new one comes last. So at
// every moment a configuration (.cfg, .cff) that is there has its own pieces around it: the earlier record is
// whole, or the new one is, or there are pieces without a configuration, which no reader takes for a record.
// The final state is the one that the library leaves when it converts right into the directory.
#pragma once

#include "text/error.h"
#include "zucmtr/files/systemfile.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <vector>

/// A record that could not be put in place, or had no directory to be written to.
class StagingError : public text::Error
{
public:
    StagingError(const QString& sentence, int code_) : text::Error(sentence), code(code_) {}

    /// Whether the disk, or the user's share of it, is full.
    bool NoRoom() const;

    /// Whether another program has locked the directory.
    bool IsHeld() const;

    const int code; // errno
};

/// For one record and one thread at a time. Several may be in one directory, also from several processes.
class Staging
{
public:
    /// Makes an empty directory below out, which must exist. patience: how long Lock waits. Throws
    /// StagingError.
    explicit Staging(const QString& out_, std::chrono::milliseconds patience_ = std::chrono::seconds(30));

    /// Removes the directory with everything left in it.
    ~Staging();
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;

    /// Where the record is to be written, each piece under its final name.
    const QString& Directory() const { return directory; }

    /// Gives a file here another name. Throws StagingError.
    void Name(const QString& from, const QString& to) const;

    /// Has the system write these pieces to the disk. Commit does so too; but done before Lock, others need
    /// not wait for it. Throws StagingError.
    void Sync(const QStringList& names);

    /// Whether the disk has no room for a record of that size (bytes), counting what is already here of it,
    /// or for another 64 KiB: for when something here could not be written for an unknown reason.
    bool IsDiskFull(qint64 recordSize) const;

    /// Waits until nobody else commits to out, and keeps others out as long as the object lives: what is
    /// found under the final names from here on is what Commit replaces. A commit takes moments; a process
    /// that holds the directory for longer is stopped or waits for a disk. On a file system without locks it
    /// does nothing. Throws StagingError.
    void Lock();

    /// Gives the pieces their final names, over those of an earlier record. names are file names without a
    /// directory, the configuration (.cfg or .cff) first, as Device::RecordFiles returns them; others, such
    /// as a page, may follow. sync: they are on the disk when it returns. If it throws StagingError, the
    /// earlier record is in its place again.
    void Commit(const QStringList& names, bool sync);

    /// Removes the directories of killed runs: empty ones, and those with the mark that every staging
    /// directory has and nothing but a record's files. One that is in use stays, and so does one that cannot
    /// be removed.
    static void RemoveLeft(const QString& out);

private:
    // A rename that was done, and how it is undone: by the same kind of rename the other way round.
    struct Move
    {
        QByteArray from, to;
        unsigned int flags;
    };

    void Make();
    bool CanWrite(int bytes) const;
    qint64 Free() const;
    qint64 Written() const;
    void CheckNames(const QStringList& names) const;
    void RemoveTemporary(const QString& configuration) const;
    void SetAside(const QStringList& names);
    void PutInPlace(const QString& name);
    void Replace(const QString& name);
    bool Rename(const QByteArray& from, const QByteArray& to, unsigned int flags);
    QString UndoAll();
    [[noreturn]] void Fail(const QString& name, int code);
    QByteArray Own(const QString& name) const;
    QByteArray Final(const QString& name) const;

    const QString out;
    const std::chrono::milliseconds patience;
    QString directory;
    systemfile::Descriptor handle; // of the directory: its lock shows RemoveLeft that it is in use
    systemfile::Descriptor lock;   // of out
    QStringList synced;
    std::vector<Move> moves; // of the current commit, in order
};
