#include "zucmtr/files/asidefiles.h"

#include "base/chainnames.h"
#include "text/texts.h"
#include "zucmtr/files/asidename.h"

#include "explain/filesystem.h"
#include "explain/system.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <map>
#include <unistd.h>

using explain::SystemText;
using systemfile::Identity;
using systemfile::Links;
using systemfile::Lock;

namespace sourcefiles {

namespace {

QString UndeletedText(const QString& path, int error)
{
    return Tr("sources", "'%1' could not be deleted: %2; delete it yourself, its record is verified")
        .arg(path, SystemText(error));
}

[[noreturn]] void ThrowUndeleted(const QString& path, int error)
{
    throw Error(UndeletedText(path, error));
}

bool IsNameTooLong(const QString& path)
{
    return QFile::encodeName(QFileInfo(path).fileName()).size() > NAME_MAX;
}

[[noreturn]] void ThrowOpenForWriting(const QString& path)
{
    ThrowChanged(Tr("sources", "'%1' is still open for writing in another program").arg(path));
}

[[noreturn]] void ThrowUnseen(const QString& path, int error)
{
    ThrowChanged(Tr("sources", "'%1' could not be checked again: %2").arg(path, SystemText(error)));
}

// "rec.ZU" and its continuations as "rec-2.ZU" and so on.
QString NumberedName(const QString& path, int number)
{
    if (number == 1)
        return path;
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    return path.left(dot) + QStringLiteral("-%1").arg(number) + path.mid(dot);
}

bool IsFree(const std::vector<AsideFile>& files, int number)
{
    return std::none_of(files.begin(), files.end(), [&](const AsideFile& file) {
        return !file.aside.isEmpty() && systemfile::IsTaken(NumberedName(file.own, number));
    });
}

// A file that cannot be moved may be protected by itself; or no file of its directory can be.
Trouble TroubleOf(int error, const QString& directory)
{
    if (explain::IsNoRoom(error))
        return Trouble::NoRoom;
    const bool isForbidden = error == EPERM || error == EACCES;
    return error == EROFS || (isForbidden && !systemfile::IsWritable(directory)) ? Trouble::Input
                                                                                 : Trouble::File;
}

// The name and the aside name lead to one file: the program was killed while it moved the file on a file
// system that cannot rename without replacing.
bool HasBothNames(const AsideFile& file)
{
    Identity own;
    Identity aside;
    return systemfile::Identify(file.own, own, Links::Kept) == 0 &&
           systemfile::Identify(file.aside, aside, Links::Kept) == 0 && own.IsSameFile(aside);
}

// False if the file has only one name.
bool DropSecondName(AsideFile& file)
{
    if (file.aside.isEmpty() || !HasBothNames(file) || unlink(QFile::encodeName(file.aside).constData()) != 0)
        return false;
    file.aside.clear();
    return true;
}

// The first file last, as its presence says that the others are there.
QStringList PutBackAll(std::vector<AsideFile>& files)
{
    constexpr int mostNumbers = 10000;
    std::for_each(files.begin(), files.end(), DropSecondName);
    int number = 1;
    while (number < mostNumbers && !IsFree(files, number))
        ++number;
    QStringList notes;
    bool isWhole = true;
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        if (file->aside.isEmpty())
            continue;
        // Without its continuations the first file would be taken for the whole recording.
        if (!isWhole && std::next(file) == files.rend()) {
            notes << Tr("sources",
                        "'%1' is now called '%2', as its continuations could not get their names back")
                         .arg(file->own, file->aside);
            break;
        }
        const QString old = file->own;
        file->own = NumberedName(old, number);
        if (DropSecondName(*file))
            continue;
        const int error = systemfile::RenameToFree(file->aside, file->own);
        if (error != 0) {
            notes << Tr("sources", "'%1' is now called '%2' and could not get its name back: %3; rename it")
                         .arg(old, file->aside, SystemText(error));
            isWhole = false;
            continue;
        }
        if (number > 1)
            notes << Tr("sources", "'%1' is now called '%2', because another file has taken its name")
                         .arg(old, file->own);
        file->aside.clear();
    }
    return notes;
}

enum class Lease { Taken, Refused, Unknown };

// Takes a lease, which is granted only while nobody has the file open for writing, and makes writers wait
// until ReturnLease. Unknown: there are no leases, or none for this user.
Lease TakeLease(int file)
{
    if (!explain::IsLocal(file))
        return Lease::Unknown;
    // The signal that reports a waiting writer; the default one would end the program, this one does nothing.
    fcntl(file, F_SETSIG, SIGURG);
    if (fcntl(file, F_SETLEASE, F_RDLCK) == 0)
        return Lease::Taken;
    return errno == EAGAIN ? Lease::Refused : Lease::Unknown;
}

// Whether a lease that was taken still keeps writers out, and nobody is waiting for it.
bool HasLease(int file)
{
    return fcntl(file, F_GETLEASE) == F_RDLCK;
}

void ReturnLease(int file)
{
    fcntl(file, F_SETLEASE, F_UNLCK);
}

// Files of one recording that were left aside in a directory.
class LeftAside
{
public:
    void Add(const QString& path, const AsideName& name)
    {
        files.push_back({QFileInfo(path).path() + QLatin1Char('/') + name.Original(), path});
        done.push_back(name.IsDone());
    }

    void Recover(Recovered& recovered)
    {
        std::stable_partition(files.begin(), files.end(), IsFirst);
        if (!TakeAll())
            return;
        const bool putAway = !IsFirst(files.front()) && std::count(done.begin(), done.end(), false) == 0;
        if (putAway)
            Remove(recovered);
        else
            PutBack(recovered);
    }

private:
    static bool IsFirst(const AsideFile& file) { return zu::FirstFileOf(file.own).isEmpty(); }

    // False if a running program has one of them.
    bool TakeAll()
    {
        held.resize(files.size());
        for (size_t number = 0; number < files.size(); ++number) {
            if (!systemfile::TakeAbandoned(files[number].aside, held[number]))
                return false;
        }
        return true;
    }

    void Remove(Recovered& recovered)
    {
        for (const AsideFile& file : files) {
            if (unlink(QFile::encodeName(file.aside).constData()) == 0)
                recovered.removed << file.own;
            else
                recovered.notes << UndeletedText(file.aside, errno);
        }
    }

    void PutBack(Recovered& recovered)
    {
        recovered.notes += PutBackAll(files);
        for (const AsideFile& file : files) {
            if (file.aside.isEmpty())
                recovered.back << file.own;
        }
    }

    std::vector<AsideFile> files;
    std::vector<bool> done;
    std::vector<systemfile::Descriptor> held; // locks
};

} // namespace

AsideFiles::AsideFiles(const ChainFiles& chain_)
    : chain(chain_), token(AsideName::NewToken()), leased(chain_.Count())
{
    for (const QString& path : chain.Paths())
        files.push_back({path, QString()});
    for (size_t number = 0; number < files.size(); ++number) {
        if (systemfile::LockShared(chain.FileOf(number)) == Lock::Held)
            ThrowChanged(Tr("sources", "'%1' is locked by another program").arg(files[number].own));
    }
}

AsideFiles::~AsideFiles()
{
    PutBack();
    for (size_t number = 0; number < files.size(); ++number) {
        ReturnLease(chain.Descriptor(number));
        systemfile::Unlock(chain.FileOf(number));
    }
}

void AsideFiles::Move()
{
    for (size_t number = 0; number < files.size(); ++number)
        MoveOne(number);
    for (size_t number = 0; number < files.size(); ++number)
        Check(number);
    const QString arrived = chain.Arrived();
    if (!arrived.isEmpty())
        ThrowChanged(Tr("sources", "'%1' came after the recording was read").arg(arrived));
}

void AsideFiles::MoveOne(size_t number)
{
    AsideFile& file = files[number];
    const QString path = AsideName::PathOf(file.own, token);
    // A continuation file gets a longer name later, when nobody can do anything about it.
    const bool isTooLong = number > 0 && IsNameTooLong(AsideName::PathOf(file.own, token, true));
    const int error = isTooLong ? ENAMETOOLONG : systemfile::RenameToOwn(file.own, path);
    if (error == ENOENT)
        ThrowChanged(Tr("sources", "'%1' is gone since it was read").arg(file.own));
    if (error == ENAMETOOLONG)
        throw Error(Tr("sources", "'%1' could not be put away: the name is too long; give it a shorter one")
                        .arg(file.own));
    if (error != 0)
        throw Error(TroubleOf(error, QFileInfo(file.own).path()),
                    Tr("sources",
                       "'%1' could not be put away: %2; it is where it was; give this user the permission "
                       "to change its directory, or put it away yourself, its record is verified")
                        .arg(file.own, SystemText(error, QFileInfo(file.own).path())));
    file.aside = path;
}

void AsideFiles::Check(size_t number)
{
    const AsideFile& file = files[number];
    const Lease lease = TakeLease(chain.Descriptor(number));
    if (lease == Lease::Refused)
        ThrowOpenForWriting(file.own);
    leased[number] = lease == Lease::Taken;
    const Identity& read = chain.Of(number);
    Identity name;
    Identity target;
    bool same = false;
    int error = systemfile::Identify(file.aside, name, Links::Kept);
    if (error == 0)
        error = systemfile::Identify(file.aside, target);
    if (error == 0 && (!name.IsSameFile(chain.NameOf(number)) || !target.IsSameFile(read)))
        ThrowChanged(Tr("sources", "'%1' is another file than the one that was read").arg(file.own));
    if (error == 0)
        error = chain.CompareContent(number, same);
    if (error != 0)
        ThrowUnseen(file.own, error);
    if (!same || target.modified != read.modified)
        ThrowChanged(Tr("sources", "'%1' changed after it was read").arg(file.own));
}

void AsideFiles::CheckAgain() const
{
    for (size_t number = 0; number < files.size(); ++number) {
        const AsideFile& file = files[number];
        if (leased[number] && !HasLease(chain.Descriptor(number)))
            ThrowOpenForWriting(file.own);
        const Identity& read = chain.Of(number);
        Identity now;
        const int error = systemfile::Identify(file.aside, now);
        if (error != 0)
            ThrowUnseen(file.own, error);
        if (!now.IsSameFile(read) || now.size != read.size || now.modified != read.modified)
            ThrowChanged(Tr("sources", "'%1' changed after it was read").arg(file.own));
    }
}

void AsideFiles::RemoveFirst()
{
    // From here on, if the first file is gone, what is left of the others was put away.
    for (size_t number = 1; number < files.size(); ++number) {
        const QString path = AsideName::PathOf(files[number].own, token, true);
        const int error = systemfile::RenameToOwn(files[number].aside, path);
        if (error != 0)
            ThrowUndeleted(files[number].own, error);
        files[number].aside = path;
    }
    if (unlink(QFile::encodeName(files.front().aside).constData()) != 0)
        ThrowUndeleted(files.front().own, errno);
    files.front().aside.clear();
    putAway = true;
}

void AsideFiles::RemoveRest()
{
    for (size_t number = 1; number < files.size(); ++number) {
        if (unlink(QFile::encodeName(files[number].aside).constData()) != 0)
            ThrowUndeleted(files[number].aside, errno);
        files[number].aside.clear();
    }
}

int AsideFiles::MoveOnlyTo(const QString& path)
{
    QString& aside = files.front().aside;
    int error = systemfile::RenameToFree(aside, path);
    if (error != 0)
        return error;
    for (const QString& moved : {path, QFileInfo(path).path(), QFileInfo(aside).path()}) {
        if (error == 0)
            error = systemfile::Sync(moved);
    }
    if (error != 0 && systemfile::RenameToFree(path, aside) == 0)
        return error;
    putAway = true;
    aside.clear();
    if (error != 0)
        throw Error(Trouble::Archive,
                    Tr("sources", "'%1' is in the archive as '%2', but could not be written to the disk: %3; "
                                  "check the archive's disk")
                        .arg(files.front().own, path, SystemText(error, QFileInfo(path).path())));
    return 0;
}

QStringList AsideFiles::PutBack()
{
    return putAway ? QStringList() : PutBackAll(files);
}

Recovered& Recovered::operator+=(const Recovered& other)
{
    back += other.back;
    removed += other.removed;
    notes += other.notes;
    return *this;
}

Recovered Recover(const QString& directory)
{
    std::map<QString, LeftAside> recordings;
    for (const QString& name : systemfile::NamesIn(directory)) {
        const AsideName aside(name);
        if (!aside.IsOne())
            continue;
        const QString first = zu::FirstFileOf(aside.Original());
        const QString key = (first.isEmpty() ? aside.Original() : first) + QLatin1Char('/') + aside.Token();
        recordings[key].Add(directory + QLatin1Char('/') + name, aside);
    }
    Recovered recovered;
    for (auto& recording : recordings)
        recording.second.Recover(recovered);
    return recovered;
}

Recovered RecoverAll(const QStringList& arguments, bool recursive)
{
    QStringList directories;
    for (const QString& argument : arguments) {
        const QFileInfo info(argument);
        if (!info.isDir()) {
            directories << info.path();
            continue;
        }
        directories << argument;
        QDirIterator below(argument, QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks,
                           recursive ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
        while (recursive && below.hasNext())
            directories << below.next();
    }
    directories.removeDuplicates();
    Recovered all;
    for (const QString& directory : directories)
        all += Recover(directory);
    return all;
}

} // namespace sourcefiles
