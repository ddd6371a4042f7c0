#include "output/temporarydirectory.h"

#include "explain/system.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace output {

namespace {

const QString Prefix = QStringLiteral("zucmtr-");
constexpr int RandomLetters = 6;

// The locked directory; -1 if another process has it, or it is none of ours.
int Locked(const QString& path)
{
    const int file =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status = {};
    if (file >= 0 && fstat(file, &status) == 0 && status.st_uid == geteuid() &&
        flock(file, LOCK_EX | LOCK_NB) == 0)
        return file;
    if (file >= 0)
        close(file);
    return -1;
}

bool IsAt(const QString& path, int file)
{
    struct stat named = {};
    struct stat opened = {};
    return fstat(file, &opened) == 0 && lstat(QFile::encodeName(path).constData(), &named) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// The errno of the failure; ENOENT if the directory has gone meanwhile. Where the file system knows no locks
// the directory is without one: nobody else gets one either, so that nobody removes it.
int WaitForLock(const QString& path, int& file)
{
    file = open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return errno;
    while (flock(file, LOCK_EX) != 0 && errno == EINTR) {
    }
    if (IsAt(path, file))
        return 0;
    close(file);
    file = -1;
    return ENOENT;
}

void RemoveLeft(const QString& place)
{
    const QDir directory(place);
    for (const QString& name : directory.entryList({Prefix + QString(RandomLetters, QLatin1Char('?'))},
                                                   QDir::Dirs | QDir::NoSymLinks)) {
        const QString path = directory.filePath(name);
        const int file = Locked(path);
        if (file < 0)
            continue;
        if (IsAt(path, file))
            QDir(path).removeRecursively();
        close(file);
    }
}

void RemoveLeftOnce(const QString& place)
{
    static std::mutex access;
    static QSet<QString> places;
    const std::lock_guard<std::mutex> alone(access);
    if (places.contains(place))
        return;
    places.insert(place);
    RemoveLeft(place);
}

} // namespace

TemporaryDirectory::TemporaryDirectory(const QString& place)
{
    if (place.isEmpty()) { // QDir::tempPath() if TMPDIR does not exist
        error = ENOENT;
        return;
    }
    RemoveLeftOnce(place);
    Make(place);
}

// Another process may take a directory that is not locked yet for one that was left. What it removes is gone
// before the lock is ours.
void TemporaryDirectory::Make(const QString& place)
{
    do {
        QByteArray name =
            QFile::encodeName(place + QLatin1Char('/') + Prefix) + QByteArray(RandomLetters, 'X');
        if (mkdtemp(name.data()) == nullptr) {
            error = errno;
            return;
        }
        path = QFile::decodeName(name);
        error = WaitForLock(path, lock);
        if (error != 0)
            rmdir(name.constData());
    } while (error == ENOENT);
}

TemporaryDirectory::~TemporaryDirectory()
{
    if (error == 0)
        QDir(path).removeRecursively();
    if (lock >= 0)
        close(lock);
}

TemporaryFile::TemporaryFile(const QByteArray& bytes)
    : directory(QDir::tempPath()),
      path(directory.Error() == 0 ? directory.FilePath(QStringLiteral("file")) : QDir::tempPath())
{
    if (directory.Error() != 0) {
        error = explain::SystemText(directory.Error());
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        error = explain::SystemText(file.errorString());
}

} // namespace output
