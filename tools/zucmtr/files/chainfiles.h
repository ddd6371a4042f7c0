// The files of one recording as they were when it was read: opened, read through, and recognised again. The
// library takes what it cannot read for the end of a recording; here it is an error.
#pragma once

#include "text/error.h"
#include "zucmtr/files/systemfile.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Opens the first file and its continuations up to the first name that is missing, and keeps them open, so
/// that no other file can take their place unnoticed.
class ChainFiles
{
public:
    /// A file of the recording that is there, but could not be read just now; the message is a sentence that
    /// says what to do.
    class Unreadable : public text::Error
    {
    public:
        enum class Kind {
            Gone,         // there is no first file
            NoPermission, // for one of the files
            NotAFile,     // but a directory, a pipe, a device
            Changing,     // while it was read
            NoResources,  // descriptors or memory of this machine, not the file
            Unreliable    // disk or network: EIO, ESTALE and the like
        };
        Unreadable(Kind kind_, const QString& path_, int code_);
        const Kind kind;
        const QString path;
        const QString reason; // the system's text; empty without a code
        const int code;       // errno; 0 if the system reported none
    };

    using Identity = systemfile::Identity;

    /// Throws Unreadable, and std::bad_alloc without 64 KiB of memory.
    explicit ChainFiles(const QString& firstFile);

    /// As opened, the first file first.
    const QStringList& Paths() const { return paths; }
    size_t Count() const { return files.size(); }

    /// Continuations numbered after a missing one, so that they are not part of the recording (yet).
    const QStringList& Beyond() const { return beyond; }

    /// Whether each path still leads to the very file that was read, unchanged, and no continuation has
    /// arrived. If not, `what` is a clause that says what happened. Where the times of a file cannot show a
    /// change, because the file was changed within the current tick of the clock or the file system counts in
    /// seconds, its content is read again.
    bool IsUnchanged(QString* what = nullptr) const;

    /// A continuation that was not there when the files were opened; empty if there is none.
    QString Arrived() const;

    /// The file when it was read.
    const Identity& Of(size_t number) const { return files[number].file; }

    /// What the file's name led to: the file, or a symbolic link.
    const Identity& NameOf(size_t number) const { return files[number].name; }

    /// Open for reading, as long as this object lives.
    int Descriptor(size_t number) const { return files[number].descriptor.Number(); }
    const systemfile::Descriptor& FileOf(size_t number) const { return files[number].descriptor; }

    /// Reads the file, or a copy of it, once more and compares it with what was read at first. Returns 0 with
    /// the answer in `same`, or the errno of the failure.
    int CompareContent(size_t number, bool& same) const;
    int CompareContent(size_t number, const systemfile::Descriptor& copy, bool& same) const;

private:
    struct File
    {
        systemfile::Descriptor descriptor;
        Identity name;
        Identity file;
        systemfile::Fingerprint fingerprint;
        bool timesShowChange = true; // a change shows in them
    };

    bool Open(const QString& path);
    void OpenContinuations(const QString& firstFile);
    void Read();
    void Identify(size_t number);
    bool IsUnchanged(size_t number, QString& what) const;

    QStringList paths;
    std::vector<File> files;
    QStringList absent; // continuations that were not there
    QStringList beyond;
};

/// Paths of the continuation files in a directory that has no first file for them, sorted: nothing will ever
/// convert them. A first file that a running program has moved aside counts as there. Also empty if the
/// directory cannot be read.
QStringList OrphansIn(const QString& directory);
