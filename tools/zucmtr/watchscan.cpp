#include "watchscan.h"

#include "reasons.h"
#include "texts.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFileInfo>
#include <QStringList>

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

// The directories that are there. One may be gone for a while, as with a network.
QStringList Present(const QStringList& directories, Scan& scan)
{
    QStringList present;
    for (const QString& directory : directories) {
        if (QFileInfo(directory).isDir())
            present << directory;
        else
            scan.unreadable.push_back({directory,
                                       Tr("watch", "the directory is gone; it is looked for at each rescan"),
                                       true, reason::DirectoryGone});
    }
    return present;
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
    const RecordingList list = CollectRecordings(present, recursive, excluded);
    for (const Recording& recording : list.recordings) {
        const QByteArray print = PrintOf(recording.path);
        if (!print.isEmpty())
            scan.chains.push_back({recording, print});
    }
    for (const Refusal& refusal : list.refusals) {
        if (refusal.failed)
            scan.unreadable.push_back(refusal);
    }
    scan.directories = list.directories;
    return scan;
}
