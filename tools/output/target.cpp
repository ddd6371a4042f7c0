#include "output/target.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace output {

namespace {

constexpr int LongestChain = 40; // of links, the limit of the system itself

// The directory of the process's descriptors; what stands in it looks like links, but leads to open files.
bool HoldsDescriptors(const QString& directory)
{
    for (const char* name : {"/proc/self/fd", "/proc/thread-self/fd"})
        if (directory == QFileInfo(QLatin1String(name)).canonicalFilePath())
            return true;
    return false;
}

// Follows one link; the path itself if it is none.
QString Followed(const QString& directory, const QString& path)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t size = readlink(QFile::encodeName(path).constData(), target.data(), target.size());
    if (size <= 0)
        return path;
    const QString text = QFile::decodeName(QByteArray(target.data(), static_cast<int>(size)));
    return text.startsWith(QLatin1Char('/')) ? text : directory + QLatin1Char('/') + text;
}

Kind KindOf(const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return Kind::NewFile;
    if (S_ISDIR(status.st_mode))
        return Kind::Directory;
    // Under /proc are the open files of other processes.
    return S_ISREG(status.st_mode) && !path.startsWith(QLatin1String("/proc/")) ? Kind::RegularFile
                                                                                : Kind::Stream;
}

} // namespace

Target TargetOf(const QString& path)
{
    if (path == QLatin1String("-"))
        return {Kind::Stream, path, STDOUT_FILENO};
    QString file = path;
    for (int links = 0; links < LongestChain; ++links) {
        const QFileInfo info(file);
        const QString directory = QFileInfo(info.path()).canonicalFilePath();
        if (directory.isEmpty())
            break;
        bool isNumber = false;
        const int number = info.fileName().toInt(&isNumber);
        if (isNumber && HoldsDescriptors(directory))
            return {Kind::Stream, file, number};
        const QString next = Followed(directory, file);
        if (next == file)
            break;
        file = next;
    }
    return {KindOf(file), file, -1};
}

bool IsStandardOutput(const QString& path)
{
    const Target target = TargetOf(path);
    if (target.kind != Kind::Stream)
        return false;
    struct stat there = {};
    struct stat standard = {};
    const bool known = target.descriptor >= 0 ? fstat(target.descriptor, &there) == 0
                                              : stat(QFile::encodeName(target.path).constData(), &there) == 0;
    return target.descriptor == STDOUT_FILENO ||
           (known && fstat(STDOUT_FILENO, &standard) == 0 && there.st_dev == standard.st_dev &&
            there.st_ino == standard.st_ino);
}

} // namespace output
