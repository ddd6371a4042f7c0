#include "zucmtr/files/archivecopies.h"

#include "base/chainnames.h"
#include "text/texts.h"

#include "explain/system.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using explain::SystemText;
using systemfile::Descriptor;
using systemfile::Identity;
using systemfile::Links;

namespace sourcefiles {

namespace {

constexpr char PartEnding[] = ".part";

QString PartOf(const QString& path)
{
    return path + QLatin1String(PartEnding);
}

void Unlink(const QString& path)
{
    unlink(QFile::encodeName(path).constData());
}

// Means nothing on a file that is no directory. Every copy has it from its creation until it has its name, so
// that what a killed run leaves is not confused with the part of another program, which may be the only copy.
constexpr mode_t Mark = S_ISVTX;

// Nothing is lost with it: it is marked as a copy, or the file has another name.
bool IsOwnPart(const Identity& part)
{
    return part.IsRegular() && (part.names > 1 || (part.mode & Mark) != 0);
}

// A mark that cannot be cleared does no harm.
void ClearMark(const Descriptor& from, const Descriptor& copy)
{
    Identity source;
    Identity identity;
    if (systemfile::Identify(from, source) == 0 && systemfile::Identify(copy, identity) == 0 &&
        (identity.mode & ~source.mode & Mark) != 0)
        fchmod(copy.Number(), identity.mode & 07777 & ~Mark);
}

int WriteAll(const Descriptor& file, const char* bytes, size_t count)
{
    while (count > 0) {
        const ssize_t written = write(file.Number(), bytes, count);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return errno;
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return 0;
}

int CopyContent(const Descriptor& from, const Descriptor& to)
{
    std::array<char, 1 << 16> buffer{};
    for (off_t at = 0;;) {
        const ssize_t count = pread(from.Number(), buffer.data(), buffer.size(), at);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0 ? 0 : errno;
        const int error = WriteAll(to, buffer.data(), static_cast<size_t>(count));
        if (error != 0)
            return error;
        at += count;
    }
}

// As far as this user and the file system allow it. The owner first, as changing it clears bits of the mode.
// The copy stays marked.
void CopyProperties(const Descriptor& from, const Descriptor& to)
{
    struct stat status = {};
    if (fstat(from.Number(), &status) != 0)
        return;
    constexpr uid_t same = static_cast<uid_t>(-1);
    if (fchown(to.Number(), status.st_uid, status.st_gid) != 0 &&
        fchown(to.Number(), same, status.st_gid) != 0)
        status.st_mode &= 0777; // without the rights of an owner that the copy does not have
    fchmod(to.Number(), (status.st_mode & 07777) | Mark);
    const std::array<timespec, 2> times = {status.st_atim, status.st_mtim};
    futimens(to.Number(), times.data());
}

// Failures that are not about one file concern the disk, the network or the permissions.
Trouble TroubleOf(int error)
{
    if (explain::IsNoRoom(error))
        return Trouble::NoRoom;
    return error == EEXIST || error == ENAMETOOLONG ? Trouble::Conflict : Trouble::Archive;
}

void MakeArchive(const QString& directory)
{
    const int error = systemfile::MakeDirectory(directory);
    if (error != 0)
        throw Error(TroubleOf(error),
                    Tr("sources", "the directory '%1' cannot be made: %2; the recording is where it was")
                        .arg(directory, SystemText(error, QFileInfo(directory).path())));
}

} // namespace

ArchiveCopies::ArchiveCopies(const ChainFiles& chain_, const QString& directory_)
    : chain(chain_), directory(directory_), states(chain_.Count(), State::Missing)
{
    placed.resize(chain.Count());
    MakeArchive(directory);
    CheckDirectory();
    for (size_t number = 0; number < states.size(); ++number)
        CheckTarget(number);
}

ArchiveCopies::~ArchiveCopies()
{
    for (size_t number = 0; !kept && number < states.size(); ++number) {
        const QString target = TargetOf(number);
        if (states[number] == State::Part)
            Unlink(PartOf(target));
        else if (states[number] == State::Named && systemfile::LeadsTo(target, placed[number]))
            Unlink(target);
    }
}

QString ArchiveCopies::TargetOf(size_t number) const
{
    return directory + QLatin1Char('/') + QFileInfo(chain.Paths()[static_cast<int>(number)]).fileName();
}

void ArchiveCopies::Fail(size_t number, int error) const
{
    throw Error(TroubleOf(error), Tr("sources", "'%1' could not be moved to '%2': %3; it is where it was")
                                      .arg(chain.Paths()[static_cast<int>(number)], TargetOf(number),
                                           SystemText(error, directory)));
}

void ArchiveCopies::CheckDirectory() const
{
    const QString& file = chain.Paths().front();
    Identity there;
    Identity here;
    if (systemfile::Identify(directory, there) == 0 &&
        systemfile::Identify(QFileInfo(file).path(), here) == 0 && there.IsSameFile(here))
        throw Error(Trouble::Conflict,
                    Tr("sources", "'%1' is already in the archive; give another --archive").arg(file));
}

void ArchiveCopies::CheckTarget(size_t number)
{
    const QString target = TargetOf(number);
    if (!systemfile::IsTaken(target))
        return;
    Identity named;
    bool same = false;
    int error = systemfile::Identify(target, named, Links::Kept);
    if (error == 0 && named.IsRegular()) {
        placed[number] = systemfile::OpenToRead(target);
        error =
            placed[number].IsOpen() ? systemfile::Compare(chain.FileOf(number), placed[number], same) : errno;
    }
    if (error != 0)
        Fail(number, error);
    if (!same)
        throw Error(
            Trouble::Conflict,
            Tr("sources", "'%1' is not archived: a different file '%2' is there; move one of them away")
                .arg(chain.Paths()[static_cast<int>(number)], target));
    ClearMark(chain.FileOf(number), placed[number]); // of a run that was killed before it could
    states[number] = State::Present;
}

void ArchiveCopies::Place()
{
    for (size_t number = 0; number < states.size(); ++number)
        PlaceOne(number);
}

void ArchiveCopies::PlaceOne(size_t number)
{
    ClearPart(number);
    if (states[number] == State::Missing) {
        const int error = Link(number);
        const bool noSecondNames =
            error == EPERM || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK;
        if (noSecondNames && states.size() == 1)
            needsMove = true;
        else if (error != 0)
            Copy(number);
    }
    const int error = systemfile::Sync(needsMove ? chain.FileOf(number) : placed[number]);
    if (error != 0)
        Fail(number, error);
}

// A part may be left over from a killed run, another program may be writing it, or have left it.
void ArchiveCopies::ClearPart(size_t number) const
{
    const QString part = PartOf(TargetOf(number));
    Identity there;
    const int error = systemfile::Identify(part, there, Links::Kept);
    if (error == ENOENT)
        return;
    if (error != 0)
        Fail(number, error);
    // A second name of the recording itself is locked as the recording is: by this very program.
    const bool isSecondName = there.IsSameFile(chain.Of(number));
    Descriptor held;
    if (!isSecondName && !systemfile::TakeAbandoned(part, held))
        throw Error(
            Trouble::Changed,
            Tr("sources", "another program is writing '%1'; the recording is where it was").arg(part));
    // What is in the recording too is not lost with the part.
    bool isStart = false;
    if (!isSecondName && !IsOwnPart(there) &&
        (!there.IsRegular() || systemfile::CompareStart(held, chain.FileOf(number), isStart) != 0 ||
         !isStart))
        throw Error(Trouble::Conflict,
                    Tr("sources", "'%1' is there and was not made by this program; move it away").arg(part));
    if (unlink(QFile::encodeName(part).constData()) != 0 && errno != ENOENT)
        Fail(number, errno);
}

// A second name keeps all properties of the file. Symbolic links get none: they would lead elsewhere.
int ArchiveCopies::Link(size_t number)
{
    if (chain.NameOf(number).IsLink())
        return EXDEV;
    const QByteArray file = "/proc/self/fd/" + QByteArray::number(chain.Descriptor(number));
    const QByteArray part = QFile::encodeName(PartOf(TargetOf(number)));
    if (linkat(AT_FDCWD, file.constData(), AT_FDCWD, part.constData(), AT_SYMLINK_FOLLOW) != 0)
        return errno;
    states[number] = State::Part;
    placed[number] = Descriptor(fcntl(chain.Descriptor(number), F_DUPFD_CLOEXEC, 0));
    return placed[number].IsOpen() ? 0 : errno;
}

void ArchiveCopies::Copy(size_t number)
{
    const QString part = PartOf(TargetOf(number));
    Descriptor copy(open(QFile::encodeName(part).constData(),
                         O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR | Mark));
    if (!copy.IsOpen())
        Fail(number, errno);
    states[number] = State::Part;
    systemfile::LockShared(copy);
    int error = CopyContent(chain.FileOf(number), copy);
    if (error == 0) {
        CopyProperties(chain.FileOf(number), copy);
        error = systemfile::Sync(copy);
    }
    posix_fadvise(copy.Number(), 0, 0, POSIX_FADV_DONTNEED); // compared as it is on the disk
    bool same = false;
    if (error == 0)
        error = chain.CompareContent(number, copy, same);
    if (error != 0)
        Fail(number, error);
    QString what;
    if (!same && !chain.IsUnchanged(&what))
        ThrowChanged(what);
    if (!same)
        throw Error(Trouble::Archive,
                    Tr("sources", "the copy of '%1' in the archive is not the same; check the archive's disk")
                        .arg(chain.Paths()[static_cast<int>(number)]));
    placed[number] = std::move(copy);
}

void ArchiveCopies::Finish()
{
    for (size_t number = 0; number < states.size(); ++number) {
        if (states[number] == State::Part)
            FinishOne(number);
    }
    SyncNames();
}

void ArchiveCopies::FinishOne(size_t number)
{
    const QString target = TargetOf(number);
    const int error = systemfile::RenameToFree(PartOf(target), target);
    if (error != 0)
        Fail(number, error);
    states[number] = State::Named;
    if (!systemfile::LeadsTo(target, placed[number])) // another program took the part's name
        Fail(number, EEXIST);
    ClearMark(chain.FileOf(number), placed[number]);
}

void ArchiveCopies::SyncNames() const
{
    SyncOrThrow(directory, directory, Trouble::Archive);
}

void PrepareArchive(const QString& directory, const QString& top)
{
    RemoveParts(directory);
    MakeArchive(directory);
    const int error = systemfile::SyncUp(directory, top);
    if (error != 0)
        ThrowUnwritten(directory, directory, error, Trouble::Archive);
}

QStringList RemoveParts(const QString& directory)
{
    QStringList removed;
    for (const QString& name : systemfile::NamesIn(directory)) {
        if (!name.endsWith(QLatin1String(PartEnding)) ||
            !zu::IsRecorderFile(name.chopped(static_cast<int>(sizeof PartEnding) - 1)))
            continue;
        const QString path = directory + QLatin1Char('/') + name;
        Identity part;
        Descriptor held;
        if (systemfile::TakeAbandoned(path, held) && systemfile::Identify(path, part, Links::Kept) == 0 &&
            IsOwnPart(part) && unlink(QFile::encodeName(path).constData()) == 0)
            removed << path;
    }
    return removed;
}

} // namespace sourcefiles
