#include "sourcefiles.h"

#include "explain/system.h"
#include "texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace sourcefiles {

namespace {

QString SystemText()
{
    return explain::SystemText(errno);
}

void SyncPath(const QString& path, int flags)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | flags);
    // Some file systems know no such request for a directory.
    const bool written = file >= 0 && (fsync(file) == 0 || (flags != 0 && errno == EINVAL));
    const QString reason = SystemText();
    if (file >= 0)
        close(file);
    if (!written)
        throw Error(Tr("sources",
                       "'%1' could not be written to the disk: %2; the recording is kept; check the "
                       "disk, then convert again")
                        .arg(path, reason));
}

bool SameContent(QFile& a, QFile& b)
{
    if (a.size() != b.size())
        return false;
    constexpr qint64 block = 1 << 16;
    while (!a.atEnd()) {
        const QByteArray bytes = a.read(block);
        if (bytes.isEmpty() || bytes != b.read(bytes.size()))
            return false;
    }
    return true;
}

bool SameFiles(const QString& a, const QString& b)
{
    QFile first(a);
    QFile second(b);
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly) && SameContent(first, second);
}

void RemoveFile(const QString& path)
{
    if (unlink(QFile::encodeName(path).constData()) != 0)
        throw Error(Tr("sources", "'%1' could not be deleted: %2; delete it yourself, its record is verified")
                        .arg(path, SystemText()));
}

QString TargetOf(const QString& file, const QString& directory)
{
    return directory + QLatin1Char('/') + QFileInfo(file).fileName();
}

// Renames, and never over another file.
bool RenameToFreeName(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL) // a file system without that kind of rename
        return false;
    if (QFileInfo::exists(to)) {
        errno = EEXIST;
        return false;
    }
    return std::rename(source.constData(), target.constData()) == 0;
}

[[noreturn]] void MoveFailed(const QString& from, const QString& to)
{
    throw Error(
        Tr("sources", "'%1' could not be moved to '%2': %3; it is where it was").arg(from, to, SystemText()));
}

// Goes with the object unless it was renamed.
class PartFile
{
public:
    explicit PartFile(const QString& path_) : path(path_) {}
    ~PartFile() { QFile::remove(path); }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    const QString path;
};

void MoveToOtherFileSystem(const QString& from, const QString& to)
{
    const PartFile part(to + QLatin1String(".part"));
    QFile::remove(part.path); // of a run that was ended
    if (!QFile::copy(from, part.path))
        MoveFailed(from, to);
    SyncPath(part.path, 0);
    if (!SameFiles(from, part.path))
        throw Error(Tr("sources", "the copy of '%1' in the archive is not the same; check the archive's disk")
                        .arg(from));
    if (!RenameToFreeName(part.path, to))
        MoveFailed(from, to);
    SyncPath(QFileInfo(to).path(), O_DIRECTORY);
    RemoveFile(from);
}

void Move(const QString& from, const QString& to)
{
    if (QFileInfo::exists(to)) { // the same, as was seen before
        RemoveFile(from);
        return;
    }
    if (RenameToFreeName(from, to))
        return;
    if (errno != EXDEV)
        MoveFailed(from, to);
    MoveToOtherFileSystem(from, to);
}

void CheckTarget(const QString& from, const QString& to)
{
    if (!QFileInfo::exists(to))
        return;
    if (QFileInfo(from).canonicalFilePath() == QFileInfo(to).canonicalFilePath())
        throw Error(Tr("sources", "'%1' lies in the archive already; give another --archive").arg(from));
    if (!SameFiles(from, to))
        throw Error(
            Tr("sources", "'%1' is not archived: a different file '%2' is there; move one of them away")
                .arg(from, to));
}

} // namespace

void Sync(const QStringList& files, const QString& directory)
{
    for (const QString& file : files)
        SyncPath(file, 0);
    SyncPath(directory, O_DIRECTORY);
}

void Remove(const QStringList& files)
{
    for (const QString& file : files)
        RemoveFile(file);
}

void Archive(const QStringList& files, const QString& directory)
{
    if (!QDir().mkpath(directory))
        throw Error(
            Tr("sources", "the directory '%1' cannot be made; the recording is where it was").arg(directory));
    for (const QString& file : files)
        CheckTarget(file, TargetOf(file, directory));
    for (const QString& file : files)
        Move(file, TargetOf(file, directory));
}

} // namespace sourcefiles
