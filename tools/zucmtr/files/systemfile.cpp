#include "zucmtr/files/systemfile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace systemfile {

namespace {

constexpr size_t Block = 1 << 16;

std::int64_t Nanoseconds(const statx_timestamp& time)
{
    return time.tv_sec * 1000000000 + time.tv_nsec;
}

int Identify(int directory, const char* path, int flags, Identity& identity)
{
    struct statx status = {};
    if (statx(directory, path, flags | AT_STATX_FORCE_SYNC, STATX_BASIC_STATS, &status) != 0)
        return errno;
    identity.device = (static_cast<std::uint64_t>(status.stx_dev_major) << 32) | status.stx_dev_minor;
    identity.inode = status.stx_ino;
    identity.size = static_cast<std::int64_t>(status.stx_size);
    identity.modified = Nanoseconds(status.stx_mtime);
    identity.changed = Nanoseconds(status.stx_ctime);
    identity.mode = status.stx_mode;
    identity.names = status.stx_nlink;
    return 0;
}

// Fills the buffer as far as the file goes; returns the number of bytes, or -1 with errno.
ssize_t ReadAt(const Descriptor& file, std::vector<char>& buffer, std::int64_t from)
{
    size_t filled = 0;
    while (filled < buffer.size()) {
        const ssize_t count = pread(file.Number(), buffer.data() + filled, buffer.size() - filled,
                                    from + static_cast<std::int64_t>(filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        filled += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

// Up to the end of the first file. lengthsFit: whether its blocks may be as long as those of the second.
template <class LengthsFit>
int CompareBlocks(const Descriptor& a, const Descriptor& b, bool& same, LengthsFit lengthsFit)
{
    std::vector<char> first(Block);
    std::vector<char> second(Block);
    for (std::int64_t at = 0;; at += Block) {
        const ssize_t count = ReadAt(a, first, at);
        const ssize_t other = count < 0 ? -1 : ReadAt(b, second, at);
        if (other < 0)
            return errno;
        same = lengthsFit(count, other) &&
               std::memcmp(first.data(), second.data(), static_cast<size_t>(count)) == 0;
        if (!same || static_cast<size_t>(count) < Block)
            return 0;
    }
}

// A word at a time, since every recording is read once for it: the multiplication by an odd number loses no
// difference between words, the rotation moves the high bits to where they count.
std::uint64_t Mixed(std::uint64_t value, std::uint64_t word)
{
    value = (value ^ word) * 0x9E3779B97F4A7C15ULL;
    return (value << 29) | (value >> 35);
}

std::uint64_t Mixed(std::uint64_t value, const char* bytes, size_t count)
{
    for (size_t at = 0; at < count; at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + at, std::min(count - at, sizeof word));
        value = Mixed(value, word);
    }
    return value;
}

int Flock(const Descriptor& file, int operation)
{
    int result = 0;
    do {
        result = flock(file.Number(), operation | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result == 0 ? 0 : errno;
}

Lock Answer(int error)
{
    if (error == 0)
        return Lock::Taken;
    return error == EWOULDBLOCK ? Lock::Held : Lock::Unknown;
}

// 0 or errno; ENOSYS if the file system, or the kernel, has no such call.
int RenameWithoutReplacing(const QString& from, const QString& to)
{
    if (renameat2(AT_FDCWD, QFile::encodeName(from).constData(), AT_FDCWD, QFile::encodeName(to).constData(),
                  RENAME_NOREPLACE) == 0)
        return 0;
    return errno == EINVAL ? ENOSYS : errno;
}

int RenameAfterALook(const QString& from, const QString& to)
{
    if (IsTaken(to))
        return EEXIST;
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0 ? 0
                                                                                                    : errno;
}

// Programs work with files for moments, or as long as a copy takes.
bool IsOld(const Identity& identity)
{
    constexpr std::int64_t hour = 3600;
    return identity.changed / 1000000000 < std::time(nullptr) - hour;
}

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    std::swap(number, other.number);
    return *this;
}

Descriptor::~Descriptor()
{
    if (number >= 0)
        close(number);
}

bool Identity::IsRegular() const
{
    return S_ISREG(mode);
}

bool Identity::IsLink() const
{
    return S_ISLNK(mode);
}

bool Identity::operator==(const Identity& other) const
{
    return IsSameFile(other) && size == other.size && modified == other.modified && changed == other.changed;
}

int Identify(const QString& path, Identity& identity, Links links)
{
    return Identify(AT_FDCWD, QFile::encodeName(path).constData(),
                    links == Links::Kept ? AT_SYMLINK_NOFOLLOW : 0, identity);
}

int Identify(const Descriptor& file, Identity& identity)
{
    return Identify(file.Number(), "", AT_EMPTY_PATH, identity);
}

bool LeadsTo(const QString& path, const Descriptor& file)
{
    Identity named;
    Identity opened;
    return Identify(path, named, Links::Kept) == 0 && Identify(file, opened) == 0 && named.IsSameFile(opened);
}

bool IsTaken(const QString& path)
{
    Identity identity;
    const int error = Identify(path, identity, Links::Kept);
    return error != ENOENT && error != ENOTDIR;
}

QStringList NamesIn(const QString& directory)
{
    QStringList names;
    const std::unique_ptr<DIR, int (*)(DIR*)> listed(opendir(QFile::encodeName(directory).constData()),
                                                     closedir);
    while (const dirent* entry = listed ? readdir(listed.get()) : nullptr) {
        const QString name = QFile::decodeName(entry->d_name);
        if (name != QLatin1String(".") && name != QLatin1String(".."))
            names << name;
    }
    names.sort();
    return names;
}

Descriptor OpenToRead(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NOCTTY;
    Descriptor file(open(name.constData(), flags | O_NONBLOCK, 0));
    Identity identity;
    // A file server has lent the file to a client, and takes it back only for those who wait.
    if (!file.IsOpen() && errno == EWOULDBLOCK && Identify(path, identity) == 0 && identity.IsRegular())
        file = Descriptor(open(name.constData(), flags, 0));
    return file;
}

int ReadThrough(const Descriptor& file, Fingerprint& fingerprint)
{
    posix_fadvise(file.Number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    std::vector<char> buffer(Block);
    fingerprint = Fingerprint();
    for (;;) {
        const ssize_t count = ReadAt(file, buffer, fingerprint.size);
        if (count < 0)
            return errno;
        fingerprint.value = Mixed(fingerprint.value, buffer.data(), static_cast<size_t>(count));
        fingerprint.size += count;
        if (static_cast<size_t>(count) < Block)
            return 0;
    }
}

int Compare(const Descriptor& a, const Descriptor& b, bool& same)
{
    return CompareBlocks(a, b, same, std::equal_to<ssize_t>());
}

int CompareStart(const Descriptor& start, const Descriptor& whole, bool& same)
{
    return CompareBlocks(start, whole, same, std::less_equal<ssize_t>());
}

bool IsWritable(const QString& directory)
{
    return access(QFile::encodeName(directory).constData(), W_OK | X_OK) == 0;
}

int RenameToFree(const QString& from, const QString& to)
{
    const int error = RenameWithoutReplacing(from, to);
    if (error != ENOSYS)
        return error;
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (link(source.constData(), target.constData()) == 0) {
        if (unlink(source.constData()) == 0)
            return 0;
        const int reason = errno;
        unlink(target.constData());
        return reason;
    }
    if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS && errno != EMLINK)
        return errno;
    return RenameAfterALook(from, to); // without second names nothing better is possible
}

int RenameToOwn(const QString& from, const QString& to)
{
    const int error = RenameWithoutReplacing(from, to);
    return error == ENOSYS ? RenameAfterALook(from, to) : error;
}

Lock LockShared(const Descriptor& file)
{
    return Answer(Flock(file, LOCK_SH));
}

Lock LockAlone(const Descriptor& file)
{
    return Answer(Flock(file, LOCK_EX));
}

void Unlock(const Descriptor& file)
{
    Flock(file, LOCK_UN);
}

bool TakeAbandoned(const QString& path, Descriptor& held)
{
    held = OpenToRead(path);
    Lock lock = held.IsOpen() ? LockAlone(held) : Lock::Unknown;
    if (lock == Lock::Unknown) { // NFS has exclusive locks only for what is open for writing
        held = Descriptor(
            open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0));
        lock = held.IsOpen() ? LockAlone(held) : Lock::Unknown;
    }
    Identity named;
    if (lock == Lock::Held || Identify(path, named, Links::Kept) != 0)
        return false;
    if (lock == Lock::Unknown)
        return IsOld(named);
    // Another program may have put the file away before the lock was ours.
    return named.IsLink() || LeadsTo(path, held);
}

int MakeDirectory(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    const QString above = QFileInfo(path).path();
    if (mkdir(name.constData(), 0777) == 0)
        return Sync(above);
    if (errno == ENOENT && above != path) {
        const int error = MakeDirectory(above);
        if (error != 0)
            return error;
        return mkdir(name.constData(), 0777) == 0 ? Sync(above) : errno;
    }
    const int error = errno;
    return QFileInfo(path).isDir() ? 0 : error;
}

int SyncUp(const QString& path, const QString& top)
{
    QString directory = path;
    int error = Sync(directory);
    while (error == 0 && directory.size() > top.size()) {
        directory = QFileInfo(directory).path();
        error = Sync(directory);
    }
    return error;
}

int Sync(const QString& path)
{
    const Descriptor file = OpenToRead(path);
    return file.IsOpen() ? Sync(file) : errno;
}

int Sync(const Descriptor& file)
{
    if (fsync(file.Number()) == 0)
        return 0;
    const int error = errno;
    Identity identity;
    // Some file systems do not support this request for a directory.
    return error == EINVAL && Identify(file, identity) == 0 && S_ISDIR(identity.mode) ? 0 : error;
}

} // namespace systemfile
