#include "watchscan.h"

#include "texts.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <dirent.h>
#include <memory>

namespace {

constexpr int continuations = 15;

// "rec.ZU" is continued by "rec.Z01" to "rec.Z0f".
QString ContinuationOf(const QString& first, int number)
{
    return first.chopped(1) + QStringLiteral("0%1").arg(number, 0, 16);
}

void Add(QCryptographicHash& hash, const QFileInfo& file)
{
    hash.addData(QStringLiteral("%1/%2/%3\n")
                     .arg(file.fileName())
                     .arg(file.size())
                     .arg(file.lastModified().toMSecsSinceEpoch())
                     .toUtf8());
}

QString Normalised(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

bool LiesInOneOf(const QString& path, const QStringList& directories)
{
    return std::any_of(directories.begin(), directories.end(), [&](const QString& directory) {
        return path == directory || path.startsWith(directory + QLatin1Char('/'));
    });
}

void AddBelow(const QString& top, const QStringList& excluded, Scan& scan)
{
    QDirIterator below(top, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (below.hasNext()) {
        const QString path = Normalised(below.next());
        if (LiesInOneOf(path, excluded))
            continue;
        if (below.fileInfo().isReadable())
            scan.directories << path;
        else
            scan.unreadable.push_back(
                {path, Tr("watch", "no permission to read this directory; check its permissions"), true});
    }
}

// The directories that are there. One may be gone for a while, as with a network.
QStringList Present(const QStringList& directories, Scan& scan)
{
    QStringList present;
    for (const QString& directory : directories) {
        if (QFileInfo(directory).isDir())
            present << directory;
        else
            scan.unreadable.push_back(
                {directory, Tr("watch", "the directory is gone; it is looked for at each rescan"), true});
    }
    return present;
}

bool IsUtf8(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

// Qt does not list them at all, so that nobody would hear of the recordings.
void AddNamesNotUtf8(const QString& path, Scan& scan)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(QFile::encodeName(path).constData()),
                                                        closedir);
    if (!directory)
        return;
    while (const dirent* entry = readdir(directory.get())) {
        const QByteArray name = entry->d_name;
        if (name.toLower().endsWith(".zu") && !IsUtf8(name))
            scan.unreadable.push_back({path + QLatin1Char('/') + QString::fromUtf8(name),
                                       Tr("watch", "not converted: the name is not UTF-8; rename the file"),
                                       true});
    }
}

} // namespace

QByteArray PrintOf(const QString& firstFile)
{
    const QFileInfo first(firstFile);
    if (!first.isFile())
        return QByteArray();
    QCryptographicHash hash(QCryptographicHash::Sha1);
    Add(hash, first);
    for (int number = 1; number <= continuations; ++number) {
        const QFileInfo file(ContinuationOf(firstFile, number));
        if (file.isFile())
            Add(hash, file);
    }
    return hash.result().toHex();
}

Scan ScanDirectories(const QStringList& directories, bool recursive, const QStringList& excluded)
{
    Scan scan;
    const QStringList present = Present(directories, scan);
    RecordingList list = CollectRecordings(present, recursive, excluded);
    for (const Recording& recording : list.recordings) {
        const QByteArray print = PrintOf(recording.path);
        if (!print.isEmpty())
            scan.chains.push_back({recording, print});
    }
    for (const Refusal& refusal : list.refusals) {
        if (refusal.failed)
            scan.unreadable.push_back(refusal);
    }
    QStringList kept;
    for (const QString& directory : excluded)
        kept << Normalised(directory);
    for (const QString& directory : present) {
        scan.directories << Normalised(directory);
        if (recursive)
            AddBelow(directory, kept, scan);
    }
    for (const QString& directory : scan.directories)
        AddNamesNotUtf8(directory, scan);
    return scan;
}
