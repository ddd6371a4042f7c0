#include "watchscan.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

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

void AddBelow(const QString& top, const QStringList& excluded, QSet<QString>& directories)
{
    QDirIterator below(top, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (below.hasNext()) {
        const QString path = QDir::cleanPath(QFileInfo(below.next()).absoluteFilePath());
        bool isExcluded = false;
        for (const QString& one : excluded) {
            const QString other = QDir::cleanPath(QFileInfo(one).absoluteFilePath());
            isExcluded = isExcluded || path == other || path.startsWith(other + QLatin1Char('/'));
        }
        if (!isExcluded)
            directories << path;
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
    RecordingList list = CollectRecordings(directories, recursive, excluded);
    for (const Recording& recording : list.recordings) {
        const QByteArray print = PrintOf(recording.path);
        if (!print.isEmpty())
            scan.chains.push_back({recording, print});
    }
    for (const Refusal& refusal : list.refusals) {
        if (refusal.failed)
            scan.unreadable.push_back(refusal);
    }
    QSet<QString> lookedInto;
    for (const QString& directory : directories) {
        lookedInto << QDir::cleanPath(QFileInfo(directory).absoluteFilePath());
        if (recursive)
            AddBelow(directory, excluded, lookedInto);
    }
    scan.directories = lookedInto.values();
    return scan;
}
