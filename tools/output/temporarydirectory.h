// A directory among the temporary files that does not outlive the program, even one that is killed.
#pragma once

#include <QByteArray>
#include <QString>

namespace output {

/// It is locked while it lives. The first one that a process makes in a place removes those there that are no
/// longer locked: what killed runs of the same user have left.
class TemporaryDirectory
{
public:
    /// place: the directory in which it is made.
    explicit TemporaryDirectory(const QString& place);
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// The errno of the failure to make it; 0 if it is there.
    int Error() const { return error; }

    const QString& Path() const { return path; }
    QString FilePath(const QString& name) const { return path + QLatin1Char('/') + name; }

private:
    void Make(const QString& place);

    QString path;
    int lock = -1;
    int error = 0;
};

/// A file with these bytes, in a temporary directory of its own.
class TemporaryFile
{
public:
    explicit TemporaryFile(const QByteArray& bytes);

    const QString& Path() const { return path; }

    /// Why it could not be written; empty if it is there.
    const QString& ErrorText() const { return error; }

private:
    const TemporaryDirectory directory;
    QString path; // of the place where it cannot be, after a failure
    QString error;
};

} // namespace output
