#include "zucmtr/files/staging.h"

#include "text/texts.h"

#include "explain/system.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>
#include <utility>

using explain::SystemText;
using systemfile::Descriptor;

namespace {

const QString NamePattern = QStringLiteral(".zucmtr-??????");

// An empty file in every staging directory: users' directories may have such names too.
constexpr char Mark[] = "zucmtr-staging";

QString MarkIn(const QString& directory)
{
    return directory + QLatin1Char('/') + QLatin1String(Mark);
}

// Returns 0 or errno.
int MakeMark(const QString& directory)
{
    const Descriptor mark(open(QFile::encodeName(MarkIn(directory)).constData(),
                               O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    return mark.IsOpen() ? 0 : errno;
}

// The mark last, so that what a killed run leaves of the directory has it.
void RemoveWhole(const QString& directory)
{
    const QFileInfoList inside = QDir(directory).entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo& file : inside) {
        if (file.fileName() != QLatin1String(Mark))
            QFile::remove(file.filePath());
    }
    QDir(directory).removeRecursively();
}

Descriptor OpenDirectory(const QByteArray& path)
{
    return Descriptor(open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// Whether the path still leads to the directory that was opened.
bool IsStillThere(const QByteArray& path, const Descriptor& directory)
{
    struct stat named = {};
    struct stat opened = {};
    if (lstat(path.constData(), &named) != 0)
        return errno != ENOENT;
    return fstat(directory.Number(), &opened) == 0 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}

// Whether everything in a directory may have been written here, so that it is not one of the user's.
bool HoldsARecordAlone(const QString& path)
{
    static const QStringList endings = {"cfg",    "dat",    "hdr",    "inf",  "cff", "cfgtmp", "dattmp",
                                        "hdrtmp", "inftmp", "cfftmp", "html", "csv", "mat",    "earlier"};
    const QFileInfoList inside =
        QDir(path).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    return std::all_of(inside.begin(), inside.end(), [](const QFileInfo& file) {
        const bool isOurs = endings.contains(file.suffix()) || file.fileName() == QLatin1String("room") ||
                            file.fileName() == QLatin1String(Mark) ||
                            file.fileName().contains(QStringLiteral(".html.")) ||
                            file.fileName().contains(QStringLiteral(".events."));
        return isOurs && (file.isSymLink() || !file.isDir());
    });
}

// A record of a single file, or an export that is no record.
bool IsSingleFile(const QString& configuration)
{
    return !configuration.endsWith(QLatin1String(".cfg"));
}

// The record's files that the library replaces or removes, the configuration first.
QStringList Touched(const QStringList& names)
{
    QStringList touched = names;
    if (IsSingleFile(names.first()))
        return touched;
    for (const char* extension : {".dat", ".hdr", ".inf"})
        touched << names.first().chopped(4) + QLatin1String(extension);
    touched.removeDuplicates();
    return touched;
}

} // namespace

bool StagingError::IsHeld() const
{
    return code == EWOULDBLOCK;
}

bool StagingError::NoRoom() const
{
    return explain::IsNoRoom(code);
}

Staging::Staging(const QString& out_, std::chrono::milliseconds patience_) : out(out_), patience(patience_)
{
    // Before it is locked, a new directory looks like one of a killed run, and may be removed as such.
    do {
        Make();
    } while (systemfile::LockAlone(handle) == systemfile::Lock::Held ||
             !IsStillThere(QFile::encodeName(directory), handle));
}

void Staging::Make()
{
    QByteArray path = QFile::encodeName(out + QStringLiteral("/.zucmtr-XXXXXX"));
    const bool made = mkdtemp(path.data()) != nullptr;
    Descriptor opened = made ? OpenDirectory(path) : Descriptor();
    const int error = errno;
    handle = std::move(opened);
    directory = QFile::decodeName(path);
    const int code = handle.IsOpen() ? MakeMark(directory) : error;
    if (code == 0 || (made && code == ENOENT)) // removed already
        return;
    if (made)
        rmdir(path.constData());
    throw StagingError(
        Tr("staging", "no directory for new records can be made in '%1': %2").arg(out, SystemText(code, out)),
        code);
}

Staging::~Staging()
{
    RemoveWhole(directory);
}

QByteArray Staging::Own(const QString& name) const
{
    return QFile::encodeName(directory + QLatin1Char('/') + name);
}

QByteArray Staging::Final(const QString& name) const
{
    return QFile::encodeName(out + QLatin1Char('/') + name);
}

void Staging::Name(const QString& from, const QString& to) const
{
    if (std::rename(Own(from).constData(), Own(to).constData()) == 0)
        return;
    const int code = errno;
    throw StagingError(Tr("staging", "the record cannot be called '%1': %2").arg(to, SystemText(code, out)),
                       code);
}

void Staging::Sync(const QStringList& names)
{
    for (const QString& name : names) {
        if (synced.contains(name))
            continue;
        const int code = systemfile::Sync(directory + QLatin1Char('/') + name);
        if (code != 0)
            Fail(name, code);
        synced << name;
    }
}

bool Staging::IsDiskFull(qint64 recordSize) const
{
    return !CanWrite(64 * 1024) || Free() < recordSize - Written();
}

// False if the system reports that the disk, or the user's share of it, is full.
bool Staging::CanWrite(int bytes) const
{
    const QByteArray path = Own(QStringLiteral("room"));
    const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    int code = file < 0 ? errno : 0;
    if (file >= 0) {
        const QByteArray block(4096, 'x');
        for (int written = 0; written < bytes && code == 0; written += block.size()) {
            if (write(file, block.constData(), static_cast<size_t>(block.size())) < 0)
                code = errno;
        }
        close(file);
        unlink(path.constData());
    }
    return !explain::IsNoRoom(code);
}

// Bytes that this user may still write, according to the file system. Nothing is written to try it: others
// would find the disk full meanwhile.
qint64 Staging::Free() const
{
    struct statvfs status = {};
    if (statvfs(QFile::encodeName(directory).constData(), &status) != 0 || status.f_blocks == 0)
        return std::numeric_limits<qint64>::max();
    const auto blocks = static_cast<qint64>(geteuid() == 0 ? status.f_bfree : status.f_bavail);
    return blocks * static_cast<qint64>(status.f_frsize);
}

qint64 Staging::Written() const
{
    qint64 bytes = 0;
    for (const QFileInfo& file : QDir(directory).entryInfoList(QDir::Files | QDir::Hidden))
        bytes += file.size();
    return bytes;
}

void Staging::Lock()
{
    if (lock.IsOpen())
        return;
    Descriptor opened(open(QFile::encodeName(out).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    constexpr std::chrono::milliseconds pause{10};
    const auto end = std::chrono::steady_clock::now() + patience;
    while (opened.IsOpen() && systemfile::LockAlone(opened) == systemfile::Lock::Held) {
        if (std::chrono::steady_clock::now() >= end)
            throw StagingError(Tr("staging", "another zucmtr holds the directory '%1', where it puts a "
                                             "record in place; convert again when it has ended")
                                   .arg(out),
                               EWOULDBLOCK);
        std::this_thread::sleep_for(pause);
    }
    lock = std::move(opened);
}

void Staging::Commit(const QStringList& names, bool sync)
{
    if (sync)
        Sync(names);
    Lock();
    CheckNames(names);
    RemoveTemporary(names.first());
    if (names.size() == 1 && IsSingleFile(names.first())) {
        Replace(names.first());
    } else {
        SetAside(Touched(names));
        for (int i = names.size(); i-- > 0;) // the configuration last
            PutInPlace(names[i]);
    }
    const int code = sync ? systemfile::Sync(out) : 0;
    if (code != 0)
        Fail(names.first(), code);
    moves.clear();
}

// Finds what would fail halfway before anything is touched.
void Staging::CheckNames(const QStringList& names) const
{
    struct stat status = {};
    for (const QString& name : names) {
        if (lstat(Own(name).constData(), &status) == 0)
            continue;
        const int code = errno;
        throw StagingError(
            Tr("staging", "the record's file '%1' was not written: %2").arg(name, SystemText(code, out)),
            code);
    }
    for (const QString& name : Touched(names)) {
        const QByteArray path = Final(name);
        if (lstat(path.constData(), &status) != 0 || S_ISREG(status.st_mode) || S_ISLNK(status.st_mode))
            continue;
        if (S_ISDIR(status.st_mode))
            throw StagingError(Tr("staging", "'%1' is a directory; the record needs the name, move it away")
                                   .arg(QFile::decodeName(path)),
                               EISDIR);
        throw StagingError(
            Tr("staging", "'%1' is a device or a pipe; the record needs the name, move it away")
                .arg(QFile::decodeName(path)),
            EEXIST);
    }
}

// Removes the temporary files that a killed conversion leaves when it went right into the directory.
void Staging::RemoveTemporary(const QString& configuration) const
{
    QStringList extensions = {QStringLiteral(".cfgtmp"), QStringLiteral(".dattmp"), QStringLiteral(".hdrtmp"),
                              QStringLiteral(".inftmp")};
    if (IsSingleFile(configuration))
        extensions << QStringLiteral(".cfftmp");
    for (const QString& extension : extensions) {
        const QByteArray path = Final(configuration.chopped(4) + extension);
        if (unlink(path.constData()) == 0 || errno == ENOENT || errno == EISDIR)
            continue;
        const int code = errno;
        throw StagingError(Tr("staging", "'%1' could not be removed: %2")
                               .arg(QFile::decodeName(path), SystemText(code, out)),
                           code);
    }
}

bool Staging::Rename(const QByteArray& from, const QByteArray& to, unsigned int flags)
{
    const int result = flags == 0 ? std::rename(from.constData(), to.constData())
                                  : renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), flags);
    if (result == 0)
        moves.push_back({from, to, flags});
    return result == 0;
}

void Staging::SetAside(const QStringList& names)
{
    for (int i = 0; i < names.size(); ++i) {
        if (!Rename(Final(names[i]), Own(QStringLiteral("%1.earlier").arg(i)), 0) && errno != ENOENT)
            Fail(names[i], errno);
    }
}

void Staging::PutInPlace(const QString& name)
{
    if (!Rename(Own(name), Final(name), 0))
        Fail(name, errno);
}

// A record of one file replaces the earlier one in one step.
void Staging::Replace(const QString& name)
{
    if (Rename(Own(name), Final(name), RENAME_EXCHANGE))
        return;
    const bool canExchange = errno != EINVAL && errno != ENOSYS;
    if (canExchange && errno != ENOENT)
        Fail(name, errno);
    PutInPlace(name);
    if (!canExchange) // the earlier one is gone: there is no way back
        moves.clear();
}

// Stops at a move that cannot be undone: an earlier configuration must not come back to other pieces. Returns
// that file's name; empty if everything is as it was.
QString Staging::UndoAll()
{
    for (; !moves.empty(); moves.pop_back()) {
        const Move& move = moves.back();
        const int result = move.flags == 0 ? std::rename(move.to.constData(), move.from.constData())
                                           : renameat2(AT_FDCWD, move.to.constData(), AT_FDCWD,
                                                       move.from.constData(), move.flags);
        if (result != 0)
            return QFile::decodeName(move.from);
    }
    return QString();
}

void Staging::Fail(const QString& name, int code)
{
    const QString path = out + QLatin1Char('/') + name;
    QString text = Tr("staging", "'%1' could not be put in place: %2").arg(path, SystemText(code, out));
    if (!UndoAll().isEmpty())
        text += Tr("staging", "; what was there before could not be put back, convert the recording again");
    throw StagingError(text, code);
}

void Staging::RemoveLeft(const QString& out)
{
    const QDir parent(out);
    for (const QString& name : parent.entryList({NamePattern}, QDir::Dirs | QDir::Hidden)) {
        const QString path = parent.filePath(name);
        const Descriptor handle = OpenDirectory(QFile::encodeName(path));
        if (!handle.IsOpen() || !HoldsARecordAlone(path) ||
            systemfile::LockAlone(handle) != systemfile::Lock::Taken)
            continue;
        if (QFileInfo(MarkIn(path)).isFile())
            RemoveWhole(path);
        else
            rmdir(QFile::encodeName(path).constData()); // if nothing is in it
    }
}
