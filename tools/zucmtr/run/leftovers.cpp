#include "zucmtr/run/leftovers.h"

#include "text/texts.h"
#include "zucmtr/files/archivecopies.h"
#include "zucmtr/files/asidefiles.h"
#include "zucmtr/files/chainfiles.h"
#include "zucmtr/files/staging.h"
#include "zucmtr/terminal/console.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

namespace {

// out: of the records; below: where the recordings lie below the archive.
void RemoveUnfinished(const QString& out, const QString& archive, const QString& below)
{
    Staging::RemoveLeft(out);
    if (!archive.isEmpty())
        sourcefiles::RemoveParts(QDir(archive).filePath(below));
}

} // namespace

void ClearLeftovers(const QStringList& arguments, bool recursive, const QString& out, const QString& archive)
{
    const sourcefiles::Recovered recovered = sourcefiles::RecoverAll(arguments, recursive);
    for (const QString& path : recovered.back)
        Complain(
            Tr("leftovers", "%1: is back under its name; a run that was ended had moved it aside").arg(path));
    for (const QString& path : recovered.removed)
        Complain(Tr("leftovers",
                    "%1: removed, as its recording was put away by a run that was ended before it could")
                     .arg(path));
    for (const QString& note : recovered.notes)
        Complain(note);
    RemoveUnfinished(out, archive, QString());
    for (const QString& top : recursive ? arguments : QStringList()) {
        QDirIterator directory(QFileInfo(top).absoluteFilePath(),
                               QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks | QDir::Hidden,
                               QDirIterator::Subdirectories);
        while (directory.hasNext()) {
            const QString below = QDir(top).relativeFilePath(directory.next());
            RemoveUnfinished(QDir(out).filePath(below), archive, below);
        }
    }
}

void ClearAfter(const Recording& recording, const QString& out, const QString& archive)
{
    RemoveUnfinished(out, archive, recording.below);
}

void ReportOrphans(const RecordingList& list)
{
    QStringList directories = list.directories;
    for (const Recording& recording : list.recordings)
        directories << QFileInfo(recording.path).path();
    QSet<QString> seen;
    for (const QString& directory : directories) {
        const QString absolute = QFileInfo(directory).absoluteFilePath();
        if (seen.contains(absolute))
            continue;
        seen.insert(absolute);
        for (const QString& orphan : OrphansIn(directory))
            Complain(Tr("leftovers", "%1: continues a recording whose first file is not there; bring that "
                                     "back, or put this file to the rest of its recording")
                         .arg(orphan));
    }
}
