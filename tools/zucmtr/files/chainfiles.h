// The files of one recording as they lay there when it was read: opened, read through, and recognised again.
// The library takes what it cannot read for the end of a recording; here it is an error.
#pragma once

#include "text/error.h"
#include "zucmtr/files/systemfile.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Opens the first file and its continuations up to the first name that is not there, and keeps them open, so
/// that no other file can take their place unseen.
class ChainFiles
{
public:
    /// A file of the recording that is there, but could not be read, now; the message is a sentence that
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
        const QString reason; // as the system says it; empty without a code
        const int code;       // errno; 0 if the system reported none
    };

    using Identity = systemfile::Identity;

    /// Throws Unreadable, and std::bad_alloc without 64 KiB of memory.
    explicit ChainFiles(const QString& firstFile);

    /// These files and no others, whatever else lies beside them.
    /// Goes with the functions of sourcefiles.h that take paths.
    explicit ChainFiles(const QStringList& files);

    /// As opened, the first file first.
    const QStringList& Paths() const { return paths; }
    size_t Count() const { return files.size(); }

    /// Continuations that lie there after a number that is missing, so that they are not part of the
    /// recording (yet).
    const QStringList& Beyond() const { return beyond; }

    /// Whether each path leads to the very file that was read, unchanged, and no continuation has come.
    /// If not, `what` is a clause that says what happened. Where the times of a file cannot show a change,
    /// as it was changed within the current tick of the clock, or the file system counts in seconds, its
    /// content is read again.
    bool IsUnchanged(QString* what = nullptr) const;

    /// A continuation that was not there when the files were opened; empty if none has come.
    QString Arrived() const;

    /// The file when it was read.
    const Identity& Of(size_t number) const { return files[number].file; }

    /// What its name led to: the file, or a symbolic link.
    const Identity& NameOf(size_t number) const { return files[number].name; }

    /// Open for reading, for as long as this object is there.
    int Descriptor(size_t number) const { return files[number].descriptor.Number(); }
    const systemfile::Descriptor& FileOf(size_t number) const { return files[number].descriptor; }

    /// Reads the file once more, or a copy of it, and compares it with what was read at first. 0 with the
    /// answer in `same`, or the errno of the failure.
    int CompareContent(size_t number, bool& same) const;
    int CompareContent(size_t number, const systemfile::Descriptor& copy, bool& same) const;

private:
    struct File
    {
        systemfile::Descriptor descriptor;
        Identity name;
        Identity file;
        systemfile::Print print;
        bool timesTell = true; // a change shows in them
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

/// Paths of the continuation files in a directory without a first file there, sorted: nothing will ever
/// convert them. A first file that a running program has moved aside counts as there. Empty also if the
/// directory cannot be read.
QStringList OrphansIn(const QString& directory);
