#include "zucmtr/watch/watchscan.h"

#include "base/chainnames.h"
#include "text/reasons.h"
#include "text/texts.h"
#include "zucmtr/files/systemfile.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace {

constexpr int64_t nanosecondsOfMillisecond = 1000000;

class Fingerprints
{
public:
    // Returns 0, or the errno of the failure. Anything but a regular file counts as missing, but is part of
    // the fingerprint: a recording may fail because of it, and succeed without it.
    int Add(const QString& path)
    {
        systemfile::Identity file;
        const int error = systemfile::Identify(path, file);
        if (error != 0)
            return error;
        const QByteArray name = QFileInfo(path).fileName().toUtf8();
        if (!file.IsRegular()) {
            print.addData(name + '/' + QByteArray::number(file.mode & S_IFMT, 8) + '\n');
            return ENOENT;
        }
        print.addData(name + '/' + QByteArray::number(static_cast<qlonglong>(file.size)) + '/' +
                      QByteArray::number(static_cast<qlonglong>(file.modified / nanosecondsOfMillisecond)) +
                      '\n');
        const QByteArray mode = name + '/' + QByteArray::number(file.mode, 8) + '\n';
        modes.addData(mode);
        access.addData(mode + QByteArray::number(static_cast<qlonglong>(file.changed)) + '\n');
        return 0;
    }

    Fingerprint Result() const
    {
        return {Fingerprint::State::There, print.result().toHex(), access.result().toHex(),
                modes.result().toHex()};
    }

private:
    QCryptographicHash print{QCryptographicHash::Sha1};
    QCryptographicHash access{QCryptographicHash::Sha1};
    QCryptographicHash modes{QCryptographicHash::Sha1};
};

bool IsGone(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

// The directories that exist. One may be missing for a while, as on a network.
QStringList Present(const QStringList& directories, Scan& scan)
{
    QStringList present;
    for (const QString& directory : directories) {
        if (QFileInfo(directory).isDir())
            present << directory;
        else
            scan.unreadable.push_back(
                {directory, Tr("watch", "the directory is gone; it is searched for at each rescan"), true,
                 reason::DirectoryGone});
    }
    return present;
}

} // namespace

// A file that cannot be checked for a while counts neither as gone nor as changed.
Fingerprint FingerprintOf(const QString& firstFile)
{
    Fingerprints fingerprints;
    const int first = fingerprints.Add(firstFile);
    if (IsGone(first))
        return {Fingerprint::State::Gone, {}, {}, {}};
    if (first != 0)
        return {};
    for (int number = 1; number <= zu::MostContinuations; ++number) {
        const int error = fingerprints.Add(zu::ContinuationName(firstFile, number));
        if (error != 0 && !IsGone(error))
            return {};
    }
    return fingerprints.Result();
}

Scan ScanDirectories(const QStringList& directories, bool recursive, const QStringList& excluded)
{
    Scan scan;
    const QStringList present = Present(directories, scan);
    const RecordingList list = CollectRecordings(present, recursive, excluded);
    for (const Recording& recording : list.recordings) {
        const Fingerprint fingerprint = FingerprintOf(recording.path);
        if (fingerprint.state != Fingerprint::State::Gone)
            scan.chains.push_back({recording, fingerprint});
    }
    for (const Refusal& refusal : list.refusals) {
        if (refusal.failed)
            scan.unreadable.push_back(refusal);
    }
    scan.directories = list.directories;
    return scan;
}
