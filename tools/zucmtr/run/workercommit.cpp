// What a worker does when a record is right: it gives the record its names and puts the recording away.
#include "text/error.h"
#include "text/texts.h"
#include "view/view.h"
#include "zucmtr/files/archivecopies.h"
#include "zucmtr/files/sourcefiles.h"
#include "zucmtr/run/eventfiles.h"
#include "zucmtr/run/recordplace.h"
#include "zucmtr/run/worker.h"
#include "zucmtr/run/workerjob.h"

#include <QFile>
#include <QFileInfo>

#include <new>
#include <optional>

namespace {

void FailForPage(BatchItem& item, const QString& error)
{
    item.Fail(
        reason::PageNotWritten,
        Tr("worker", "converted, but its page could not be written: %1; the recording is kept").arg(error));
}

void FailForEvents(BatchItem& item, const QString& error)
{
    item.Fail(
        reason::EventsNotWritten,
        Tr("worker", "converted, but its events could not be written: %1; the recording is kept").arg(error));
}

} // namespace

// The names of the record's files in the staging directory, the page among them; pageError says why there is
// none.
QStringList Worker::WritePieces(Job& job, const QString& recordName, QString& pageError) const
{
    QStringList names = usual.verifier.Parameters().RecordFiles(recordName);
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
    std::optional<QString> failure = text::FailureOf([&] {
        view::WritePage(directory + names.first(), directory + page, PageOptions(job.chain.Paths().first()));
    });
    if (!failure)
        return names << page;
    pageError = failure->replace(directory, job.directory + QLatin1Char('/'));
    QFile::remove(directory + page);
    return names;
}

// Finds out what happened in the record, writes that to the directory if it is asked for, and gives the item
// the short form; error says why the files could not be written.
void Worker::Summarise(BatchItem& item, const QString& directory, const QString& configuration,
                       QString& error) const
{
    if (!order.events && !order.summary)
        return;
    const QString shown = item.directory + QLatin1Char('/') + configuration;
    try {
        const EventTexts texts =
            EventTextsOf({directory + QLatin1Char('/') + configuration, order.lines, order.lineFile}, shown);
        if (!order.events || WriteEventFiles(directory, item.recordName, texts, error))
            item.summary = texts.summary;
    } catch (const std::bad_alloc&) {
        if (order.events)
            throw;
    } catch (const std::exception& failure) {
        error = text::MessageOf(failure);
    }
}

// Adds the files with the events to those of the record in the staging directory. Returns why there are none.
QString Worker::AddEvents(BatchItem& item, Job& job, QStringList& names) const
{
    const QString obstacle = order.events ? ObstacleToEvents(job.directory, item.recordName) : QString();
    if (!obstacle.isEmpty())
        return Tr("worker", "'%1' is not a regular file; move it away").arg(obstacle);
    QString error;
    Summarise(item, job.staging->Directory(), names.first(), error);
    if (!order.events)
        return QString();
    if (error.isEmpty())
        names << EventFilesOf(item.recordName);
    return error.replace(job.staging->Directory(), job.directory);
}

void Worker::WriteEventsBeside(BatchItem& item) const
{
    QString error;
    const QString obstacle = order.events ? ObstacleToEvents(item.directory, item.recordName) : QString();
    if (!obstacle.isEmpty())
        error = Tr("worker", "'%1' is not a regular file; move it away").arg(obstacle);
    else
        Summarise(item, item.directory, QFileInfo(item.files.first()).fileName(), error);
    if (!order.events)
        return;
    if (!error.isEmpty())
        FailForEvents(item, error);
    else
        for (const QString& name : EventFilesOf(item.recordName))
            item.files << item.directory + QLatin1Char('/') + name;
}

// Of a record that is at its final names.
void Worker::WriteFurtherBeside(BatchItem& item) const
{
    if (order.view)
        WritePageBeside(item);
    if (item.state != ItemState::Failed)
        WriteEventsBeside(item);
}

bool Worker::Commit(BatchItem& item, Job& job)
{
    QString pageError;
    QStringList names = WritePieces(job, item.recordName, pageError);
    const QString eventsError = AddEvents(item, job, names);
    const bool sync = order.sync || PutsAway();
    if (sync)
        job.staging->Sync(names);
    job.staging->Lock();
    const std::vector<systemfile::Identity> now = IdentifyRecord(job.directory, item.recordName);
    const bool isKnown = item.recordName == job.checkedName && now == job.found;
    if (!isKnown && IsAnythingThere(now)) { // put there by another process
        BatchItem other = item;
        if (!MayReplace(other, FindThere(job, item.recordName))) {
            item = other;
            return false;
        }
    }
    job.staging->Commit(names, sync);
    item.written = true;
    item.verified = order.verify;
    for (const QString& name : names.mid(item.files.size()))
        item.files << item.directory + QLatin1Char('/') + name;
    if (job.pageIsBeside)
        WritePageBeside(item);
    if (!pageError.isEmpty())
        FailForPage(item, pageError);
    else if (!eventsError.isEmpty())
        FailForEvents(item, eventsError);
    return item.state != ItemState::Failed;
}

view::Options Worker::PageOptions(const QString& recording) const
{
    view::Options options;
    options.source = QFileInfo(recording).fileName();
    options.lines = order.lines;
    options.lineFile = order.lineFile;
    return options;
}

void Worker::WritePageBeside(BatchItem& item) const
{
    const QString page = item.directory + QLatin1Char('/') + item.recordName + QStringLiteral(".html");
    const std::optional<QString> failure =
        text::FailureOf([&] { view::WritePage(item.files.first(), page, PageOptions(item.recording.path)); });
    if (failure)
        FailForPage(item, *failure);
    else
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

// If it fails, the recording is kept.
void Worker::Keep(BatchItem& item) const
{
    if (order.keeper == nullptr || item.files.isEmpty() ||
        !(item.written || item.state == ItemState::Present))
        return;
    const bool isRecordingKept = item.fate == SourceFate::Kept && !order.removeSource;
    const QString failure =
        order.keeper->Keep({item.files.first(), item.recording.path, isRecordingKept, item.verified,
                            item.fate == SourceFate::Kept ? QString() : item.recording.path});
    if (failure.isEmpty() || item.state == ItemState::Failed)
        return;
    item.blame = Blame::Catalogue;
    item.Fail(reason::NotCatalogued,
              Tr("worker",
                 "converted, but not in the catalogue: %1; the recording is kept; convert it again, or "
                 "bring the catalogue up to date with 'zucmtr archive update'")
                  .arg(failure));
}

// The recording is in another place now, or in none.
void Worker::KeepAway(BatchItem& item) const
{
    if (order.keeper == nullptr || item.files.isEmpty() || LibraryDeletes())
        return;
    const bool isRemoved = item.fate == SourceFate::Removed;
    const QString place =
        isRemoved ? item.recording.path
                  : ArchiveOf(item.recording) + QLatin1Char('/') + QFileInfo(item.recording.path).fileName();
    const QString failure = order.keeper->Keep(
        {item.files.first(), place, !isRemoved, item.verified && !isRemoved, item.recording.path});
    if (!failure.isEmpty())
        item.notes << Tr("worker",
                         "the catalogue does not know yet that the recording was put away: %1; 'zucmtr "
                         "archive update' brings it up to date")
                          .arg(failure);
}

QString Worker::ArchiveOf(const Recording& recording) const
{
    return recording.below.isEmpty() ? order.archive : order.archive + QLatin1Char('/') + recording.below;
}

void Worker::PutAway(BatchItem& item, Job& job)
{
    if (job.HasCopy()) {
        item.notes << Tr("worker", "the recording is kept, as it is damaged");
        return;
    }
    if (!job.leftOut.isEmpty()) {
        item.notes << Tr("worker", "the recording is kept, as '%1' is not in the record").arg(job.leftOut);
        return;
    }
    if (order.removeSource) {
        sourcefiles::Remove(job.chain);
        item.fate = SourceFate::Removed;
        return;
    }
    const QString directory = ArchiveOf(item.recording);
    if (!cleaned.contains(directory)) {
        sourcefiles::PrepareArchive(directory, order.archive);
        cleaned.insert(directory);
    }
    sourcefiles::Archive(job.chain, directory);
    item.fate = SourceFate::Archived;
}
