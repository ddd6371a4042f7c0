// Files as the system knows them, for code that must not confuse a file with another one of the same name.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace systemfile {

/// A file descriptor, closed with the object.
class Descriptor
{
public:
    explicit Descriptor(int number_ = -1) : number(number_) {}
    Descriptor(Descriptor&& other) noexcept : number(other.number) { other.number = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int Number() const { return number; }
    bool IsOpen() const { return number >= 0; }

private:
    int number;
};

/// Identifies a file and its state. Times are nanoseconds since 1970.
struct Identity
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;     // bytes
    std::int64_t modified = 0; // content
    std::int64_t changed = 0;  // content, name, owner or mode; set by the system alone
    std::uint32_t mode = 0;    // type and permissions
    std::uint32_t names = 0;   // hard links

    bool IsSameFile(const Identity& other) const { return device == other.device && inode == other.inode; }
    bool IsRegular() const;
    bool IsLink() const;
    /// The same file in the same state.
    bool operator==(const Identity& other) const;
    bool operator!=(const Identity& other) const { return !(*this == other); }
};

/// What the path leads to; with Links::Kept, a symbolic link itself. Returns 0, or the errno of the failure.
/// A network file system asks its server.
enum class Links { Followed, Kept };
int Identify(const QString& path, Identity& identity, Links links = Links::Followed);
int Identify(const Descriptor& file, Identity& identity);

/// Whether the path is a name of the open file.
bool LeadsTo(const QString& path, const Descriptor& file);

/// Whether the name is in use, even by a link that leads nowhere. If that is unknown, it counts as taken.
bool IsTaken(const QString& path);

/// Whether names in the directory can be changed now.
bool IsWritable(const QString& directory);

/// The names in a directory, sorted, without "." and ".."; none if it cannot be read. Names that are not text
/// come out altered.
QStringList NamesIn(const QString& directory);

/// Opens for reading and never waits for the other end of a pipe. Not open on failure, with errno.
Descriptor OpenToRead(const QString& path);

/// A file's content as a number that is another one if anything in the content differs.
struct Fingerprint
{
    std::int64_t size = 0; // bytes
    std::uint64_t value = 0;
    bool operator==(const Fingerprint& other) const { return size == other.size && value == other.value; }
};

/// Reads a file from start to end. Returns 0, or the errno of the failure.
int ReadThrough(const Descriptor& file, Fingerprint& fingerprint);

/// Compares the contents of two files. Returns 0 with the answer in `same`, or the errno of the failure.
int Compare(const Descriptor& a, const Descriptor& b, bool& same);

/// Whether the content of `start` is all, or the beginning, of that of `whole`. Returns as Compare does.
int CompareStart(const Descriptor& start, const Descriptor& whole, bool& same);

/// Renames, but never over another file. Returns 0, or the errno of the failure: EEXIST if the name is taken.
/// Nobody else may be using `from`.
int RenameToFree(const QString& from, const QString& to);

/// The same for a `from` that others may replace at any time, and a name `to` that nobody else would take.
int RenameToOwn(const QString& from, const QString& to);

/// Whether somebody else may be using a file.
enum class Lock { Taken, Held, Unknown };

/// Marks an open file as in use, as long as it is open (Taken). Held: somebody else has locked it for
/// themselves. Unknown: the file system has no such locks.
Lock LockShared(const Descriptor& file);

/// Keeps all others from an open file or directory. Held: somebody else has locked it, alone or not.
Lock LockAlone(const Descriptor& file);

void Unlock(const Descriptor& file);

/// Whether no running program is using the file; programs lock such files while they use them. If true,
/// `held` is the file and keeps others from it as long as it is open. Without locks a file counts as
/// abandoned an hour after its last change.
bool TakeAbandoned(const QString& path, Descriptor& held);

/// Has the system write a file, or the names in a directory, to the disk. Returns 0 or errno.
int Sync(const QString& path);
int Sync(const Descriptor& file);

/// Makes a directory and those above it, with their names written to the disk. Returns 0, also if it is there
/// already, or the errno of the failure.
int MakeDirectory(const QString& path);

/// Sync of a directory and of those above it up to `top`. Returns 0, or the errno of the failure.
int SyncUp(const QString& path, const QString& top);

} // namespace systemfile
