// What a worker does when a record is right: it gives the record its names and puts the recording away.
#include "text/error.h"
#include "text/texts.h"
#include "view/view.h"
#include "zucmtr/files/archivecopies.h"
#include "zucmtr/files/sourcefiles.h"
#include "zucmtr/run/recordplace.h"
#include "zucmtr/run/worker.h"
#include "zucmtr/run/workerjob.h"

#include <QFile>
#include <QFileInfo>

#include <exception>
#include <new>

// The names of the record's files in the staging directory, the page among them; pageError says why there is
// none.
QStringList Worker::WritePieces(Job& job, const QString& recordName, QString& pageError) const
{
    QStringList names = verifier.Parameters().RecordFiles(recordName);
    if (!order.view)
        return names;
    const QString page = recordName + QStringLiteral(".html");
    if (QFileInfo(job.directory + QLatin1Char('/') + page).isDir()) {
        pageError = Tr("worker", "'%1' is a directory").arg(job.directory + QLatin1Char('/') + page);
        return names;
    }
    // If there is something other than a regular file, it is written to, once the record is in its place.
    systemfile::Identity there;
    job.pageIsBeside =
        systemfile::Identify(job.directory + QLatin1Char('/') + page, there, systemfile::Links::Kept) == 0 &&
        !there.IsRegular();
    if (job.pageIsBeside)
        return names;
    const QString directory = job.staging->Directory() + QLatin1Char('/');
    view::Options options;
    options.source = QFileInfo(job.chain.Paths().first()).fileName();
    try {
        view::WritePage(directory + names.first(), directory + page, options);
        names << page;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        pageError = text::MessageOf(error).replace(directory, job.directory + QLatin1Char('/'));
        QFile::remove(directory + page);
    }
    return names;
}

bool Worker::Commit(BatchItem& item, Job& job)
{
    QString pageError;
    const QStringList names = WritePieces(job, item.recordName, pageError);
    const bool sync = order.sync || PutsAway();
    if (sync)
        job.staging->Sync(names);
    job.staging->Lock();
    const std::vector<systemfile::Identity> now = IdentifyRecord(job.directory, item.recordName);
    const bool isKnown = item.recordName == job.checkedName && now == job.found;
    if (!isKnown && IsAnythingThere(now)) { // put there by another process
        BatchItem other = item;
        if (!MayReplace(other, present.Find(item.recording.path, job.directory))) {
            item = other;
            return false;
        }
    }
    job.staging->Commit(names, sync);
    item.written = true;
    item.verified = order.verify;
    if (names.size() > item.files.size())
        item.files << item.directory + QLatin1Char('/') + names.last();
    if (job.pageIsBeside)
        WritePageBeside(item);
    if (pageError.isEmpty())
        return item.state != ItemState::Failed;
    item.Fail(reason::PageNotWritten,
              Tr("worker", "converted, but its page could not be written: %1; the recording is kept")
                  .arg(pageError));
    return false;
}

void Worker::WritePageBeside(BatchItem& item) const
{
    const QString page = item.directory + QLatin1Char('/') + item.recordName + QStringLiteral(".html");
    view::Options options;
    options.source = QFileInfo(item.recording.path).fileName();
    try {
        view::WritePage(item.files.first(), page, options);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        item.Fail(reason::PageNotWritten,
                  Tr("worker", "converted, but its page could not be written: %1; the recording is kept")
                      .arg(text::MessageOf(error)));
        return;
    }
    item.files << page;
}

// The run that wrote the record may have ended before this.
void Worker::SyncPresent(BatchItem& item)
{
    MakeDirectory(item.directory);
    try {
        sourcefiles::Sync(item.files, item.directory);
    } catch (const sourcefiles::Error& error) {
        item.Fail(reason::NotOnDisk, text::MessageOf(error));
        item.noRoom = error.trouble == sourcefiles::Trouble::NoRoom;
        item.blame = item.noRoom ? Blame::Output : Blame::Recording;
    }
}

void Worker::PutAway(BatchItem& item, Job& job)
{
    if (!job.leftOut.isEmpty()) {
        item.notes << Tr("worker", "the recording is kept, as '%1' is not in the record").arg(job.leftOut);
        return;
    }
    if (order.removeSource) {
        sourcefiles::Remove(job.chain);
        item.fate = SourceFate::Removed;
        return;
    }
    QString directory = order.archive;
    if (!item.recording.below.isEmpty())
        directory += QLatin1Char('/') + item.recording.below;
    if (!cleaned.contains(directory)) {
        sourcefiles::PrepareArchive(directory, order.archive);
        cleaned.insert(directory);
    }
    sourcefiles::Archive(job.chain, directory);
    item.fate = SourceFate::Archived;
}
