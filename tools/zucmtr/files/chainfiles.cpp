#include "zucmtr/files/chainfiles.h"

#include "base/chainnames.h"
#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/files/asidename.h"

#include <QSet>

#include <algorithm>
#include <cerrno>
#include <ctime>

using explain::SystemText;
using systemfile::Links;

namespace {

constexpr std::int64_t second = 1000000000; // nanoseconds

// The clock that file systems take their times from. It advances in steps of some milliseconds.
std::int64_t FileClock()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now.tv_sec * second + now.tv_nsec;
}

std::int64_t Youngest(const systemfile::Identity& identity)
{
    return std::max(identity.modified, identity.changed);
}

// A change after `now` may leave the file with the times that it has already.
bool TimesShowChange(const systemfile::Identity& identity, std::int64_t now)
{
    // Times without a fraction are in seconds, on some file systems in steps of two.
    const bool counted = identity.modified % second == 0 && identity.changed % second == 0;
    return now > Youngest(identity) + (counted ? 3 * second : 0);
}

ChainFiles::Unreadable::Kind KindOf(int error)
{
    using Kind = ChainFiles::Unreadable::Kind;
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return Kind::Gone;
    case EACCES:
    case EPERM:
        return Kind::NoPermission;
    case EMFILE:
    case ENFILE:
    case ENOMEM:
        return Kind::NoResources;
    case ENXIO:
    case ENODEV:
        return Kind::NotAFile;
    default:
        return Kind::Unreliable;
    }
}

QString PatternOf(ChainFiles::Unreadable::Kind kind)
{
    using Kind = ChainFiles::Unreadable::Kind;
    switch (kind) {
    case Kind::Gone:
        return Tr("sources", "'%1' is not there");
    case Kind::NoPermission:
        return Tr("sources",
                  "'%1' could not be read: no permission; let this user read it, then convert again");
    case Kind::NotAFile:
        return Tr("sources",
                  "'%1' has the name of a recording, but is not a file; move it away, then convert again");
    case Kind::Changing:
        return Tr("sources", "'%1' changed while it was read; convert again when it is complete");
    case Kind::NoResources:
        return Tr("sources", "'%1' could not be read: %2; convert fewer recordings at once (--jobs)");
    case Kind::Unreliable:
        break;
    }
    return Tr("sources", "'%1' could not be read: %2; check the disk or the network, then convert again");
}

QString SentenceOf(ChainFiles::Unreadable::Kind kind, const QString& path, int code)
{
    const QString text = PatternOf(kind);
    return text.contains(QLatin1String("%2")) ? text.arg(path, SystemText(code)) : text.arg(path);
}

} // namespace

ChainFiles::Unreadable::Unreadable(Kind kind_, const QString& path_, int code_)
    : text::Error(SentenceOf(kind_, path_, code_)), kind(kind_), path(path_),
      reason(code_ == 0 ? QString() : SystemText(code_)), code(code_)
{}

ChainFiles::ChainFiles(const QString& firstFile)
{
    if (!Open(firstFile))
        throw Unreadable(Unreadable::Kind::Gone, firstFile, ENOENT);
    OpenContinuations(firstFile);
    Read();
}

void ChainFiles::OpenContinuations(const QString& firstFile)
{
    if (!zu::IsFirstFileName(firstFile))
        return; // not a recording: the library refuses it
    for (int number = 1; number <= zu::MostContinuations; ++number) {
        const QString path = zu::ContinuationName(firstFile, number);
        if (absent.isEmpty() && Open(path))
            continue;
        const bool isTaken = systemfile::IsTaken(path);
        if (absent.isEmpty() && isTaken) // a link to a file that may be back later
            throw Unreadable(Unreadable::Kind::Unreliable, path, ENOENT);
        if (isTaken)
            beyond << path;
        else
            absent << path;
    }
}

// False if there is no file of this name.
bool ChainFiles::Open(const QString& path)
{
    File opened;
    opened.descriptor = systemfile::OpenToRead(path);
    if (!opened.descriptor.IsOpen()) {
        const int error = errno;
        if (error == ENOENT || error == ENOTDIR)
            return false;
        throw Unreadable(KindOf(error), path, error);
    }
    const int error = systemfile::Identify(opened.descriptor, opened.file);
    if (error != 0)
        throw Unreadable(KindOf(error), path, error);
    if (!opened.file.IsRegular())
        throw Unreadable(Unreadable::Kind::NotAFile, path, 0);
    files.push_back(std::move(opened));
    paths << path;
    return true;
}

void ChainFiles::Read()
{
    const std::int64_t now = FileClock();
    for (size_t number = 0; number < files.size(); ++number) {
        const QString& path = paths[static_cast<int>(number)];
        Identify(number);
        File& file = files[number];
        file.timesShowChange = TimesShowChange(file.file, now);
        int error = systemfile::ReadThrough(file.descriptor, file.fingerprint);
        Identity after;
        if (error == 0)
            error = systemfile::Identify(file.descriptor, after);
        if (error != 0)
            throw Unreadable(KindOf(error), path, error);
        if (after != file.file || file.fingerprint.size != after.size)
            throw Unreadable(Unreadable::Kind::Changing, path, 0);
    }
}

void ChainFiles::Identify(size_t number)
{
    const QString& path = paths[static_cast<int>(number)];
    File& file = files[number];
    Identity target;
    int error = systemfile::Identify(file.descriptor, file.file);
    if (error == 0)
        error = systemfile::Identify(path, file.name, Links::Kept);
    if (error == 0)
        error = systemfile::Identify(path, target);
    if (error != 0 && KindOf(error) != Unreadable::Kind::Gone)
        throw Unreadable(KindOf(error), path, error);
    if (error != 0 || !target.IsSameFile(file.file))
        throw Unreadable(Unreadable::Kind::Changing, path, 0);
}

bool ChainFiles::IsUnchanged(QString* what) const
{
    QString happened;
    bool unchanged = true;
    for (size_t number = 0; unchanged && number < files.size(); ++number)
        unchanged = IsUnchanged(number, happened);
    const QString arrived = unchanged ? Arrived() : QString();
    if (!arrived.isEmpty()) {
        happened = Tr("sources", "'%1' came after the recording was read").arg(arrived);
        unchanged = false;
    }
    if (what != nullptr)
        *what = happened;
    return unchanged;
}

bool ChainFiles::IsUnchanged(size_t number, QString& what) const
{
    const QString& path = paths[static_cast<int>(number)];
    const File& file = files[number];
    Identity name;
    Identity target;
    int error = systemfile::Identify(path, name, Links::Kept);
    if (error == 0)
        error = systemfile::Identify(path, target);
    bool same = name == file.name && target == file.file;
    if (error == 0 && same && !file.timesShowChange)
        error = CompareContent(number, same);
    if (error != 0)
        what = KindOf(error) == Unreadable::Kind::Gone
                   ? Tr("sources", "'%1' is gone since it was read").arg(path)
                   : Tr("sources", "'%1' could not be checked again: %2").arg(path, SystemText(error));
    else if (!target.IsSameFile(file.file) || !name.IsSameFile(file.name))
        what = Tr("sources", "'%1' is another file than the one that was read").arg(path);
    else if (!same)
        what = Tr("sources", "'%1' changed after it was read").arg(path);
    return error == 0 && same;
}

QString ChainFiles::Arrived() const
{
    const auto arrived = std::find_if(absent.begin(), absent.end(), systemfile::IsTaken);
    return arrived == absent.end() ? QString() : *arrived;
}

int ChainFiles::CompareContent(size_t number, bool& same) const
{
    return CompareContent(number, files[number].descriptor, same);
}

int ChainFiles::CompareContent(size_t number, const systemfile::Descriptor& copy, bool& same) const
{
    systemfile::Fingerprint fingerprint;
    const int error = systemfile::ReadThrough(copy, fingerprint);
    same = fingerprint == files[number].fingerprint;
    return error;
}

QStringList OrphansIn(const QString& directory)
{
    QStringList continuations;
    QSet<QString> firsts;
    for (const QString& name : systemfile::NamesIn(directory)) {
        const AsideName aside(name);
        if (zu::FirstFileOf(name).isEmpty())
            firsts << (aside.IsOne() ? aside.Original() : name);
        else
            continuations << name;
    }
    QStringList orphans;
    for (const QString& name : continuations) {
        if (!firsts.contains(zu::FirstFileOf(name)))
            orphans << directory + QLatin1Char('/') + name;
    }
    orphans.sort();
    return orphans;
}
