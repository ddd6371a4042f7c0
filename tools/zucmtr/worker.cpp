#include "worker.h"

#include "command.h"
#include "sourcefiles.h"
#include "texts.h"

#include <explain/file.h>
#include <verify/recordname.h>
#include <view/view.h>

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <new>
#include <stdexcept>

namespace {

bool IsOutOfMemory(const std::exception& error)
{
    return dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
}

// The text of whatever ended the work on a recording.
QString TextOf(const std::exception& error)
{
    if (IsOutOfMemory(error))
        return Tr("worker",
                  "not enough memory; give more by --max-memory, or fewer recordings at once by --jobs");
    return QString::fromUtf8(error.what());
}

// The word of it for programs.
const char* ReasonOf(const std::exception& error)
{
    if (IsOutOfMemory(error))
        return reason::OutOfMemory;
    if (dynamic_cast<const verify::Unreadable*>(&error) != nullptr)
        return reason::NotConverted;
    if (dynamic_cast<const sourcefiles::Error*>(&error) != nullptr)
        return reason::NotPutAway;
    return reason::Unexpected;
}

verify::Verifier MakeVerifier(const DeviceChoice& choice)
{
    try {
        return verify::Verifier(choice.ini, choice.defaults, choice.device);
    } catch (const verify::Unreadable& error) {
        throw ConfigurationError(QString::fromUtf8(error.what()));
    }
}

} // namespace

Worker::Worker(Host& host_, unsigned int device_, const DeviceChoice& choice, WorkOrder order_)
    : host(host_), device(device_), order(std::move(order_)), verifier(MakeVerifier(choice))
{
    if (PutsAway())
        present = std::make_unique<verify::Verifier>(choice.ini, choice.defaults, choice.device);
}

QString Worker::RecordName(const QString& file) const
{
    return verify::RecordNameOf(file, verifier.Parameters());
}

bool Worker::LibraryDeletes() const
{
    return verifier.Parameters().DeletesSources();
}

BatchItem Worker::Work(const Recording& recording)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    BatchItem item;
    item.recording = recording;
    item.directory = order.out;
    try {
        Do(item);
    } catch (const std::exception& error) {
        item.Fail(ReasonOf(error), TextOf(error));
    }
    item.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return item;
}

void Worker::Do(BatchItem& item)
{
    const QString unfit = explain::NotConvertible(item.recording.path);
    if (!unfit.isEmpty()) {
        item.Fail(explain::WordOf(item.recording.path, reason::NotARecording),
                  Tr("worker", "not converted: %1").arg(unfit));
        return;
    }
    if (order.dryRun) {
        Plan(item);
        return;
    }
    if (!PutsAway() || !TakePresent(item, RecordName(item.recording.path))) {
        Convert(item);
        if (item.state == ItemState::Failed)
            return;
        if (order.verify)
            Verify(item);
    }
    if (order.view && item.state != ItemState::Failed)
        WritePage(item);
    if (PutsAway() && item.state != ItemState::Failed)
        PutAway(item);
}

void Worker::Name(BatchItem& item, const QString& recordName) const
{
    item.recordName = recordName;
    for (const QString& name : verifier.Parameters().RecordFiles(recordName))
        item.files << order.out + QLatin1Char('/') + name;
}

void Worker::Plan(BatchItem& item)
{
    const verify::Examined examined = verifier.Examine(item.recording.path);
    Name(item, examined.recordName);
    item.sources = examined.files;
    item.notes = examined.notes;
    item.state = ItemState::Planned;
}

// A record that is there may be this recording's, of a run that ended before the recording was put away, or
// it may be all that is left of another recording: such a one is never replaced. False if there is none.
bool Worker::TakePresent(BatchItem& item, const QString& recordName)
{
    if (recordName.isEmpty())
        return false;
    const QString first =
        order.out + QLatin1Char('/') + verifier.Parameters().RecordFiles(recordName).first();
    if (!QFile::exists(first))
        return false;
    Name(item, recordName);
    try {
        item.sources = present->Check(item.recording.path, order.out).files;
    } catch (const std::exception& error) {
        item.Fail(reason::OtherRecordPresent,
                  Tr("worker",
                     "not converted: '%1' is there already and is not the record of this recording (%2); "
                     "move it away, or choose another directory by --out")
                      .arg(first, TextOf(error)));
        return true;
    }
    item.verified = true;
    item.state = ItemState::Present;
    return true;
}

void Worker::Convert(BatchItem& item)
{
    const Outcome outcome = host.Convert(item.recording.path, order.out, device);
    item.notes = outcome.notes;
    if (outcome.converted) {
        Name(item, outcome.outputName);
        item.state = ItemState::Converted;
        item.written = true;
        return;
    }
    item.Fail(explain::WordOf(item.recording.path, outcome.reason),
              Tr("worker", "not converted: %1").arg(outcome.error));
    try {
        // The library's device may have taken the channel order of this recording: the verifier's takes it
        // too.
        if (order.verify)
            verifier.Examine(item.recording.path);
    } catch (const std::exception&) { // told by the library already
    }
}

void Worker::Verify(BatchItem& item)
{
    try {
        Compare(item);
    } catch (const std::exception& error) {
        item.Fail(reason::RecordWrong,
                  Tr("worker", "converted, but the record is not right: %1; the recording is kept")
                      .arg(TextOf(error)));
    }
}

void Worker::Compare(BatchItem& item)
{
    if (order.trustWriter && LibraryDeletes()) {
        verify::ReadThrough(item.recordName, order.out, verifier.Parameters());
        item.notes << Tr("worker",
                         "the record was read, but could not be compared: the recording is deleted");
        return;
    }
    item.sources = verifier.Check(item.recording.path, order.out).files;
    item.verified = true;
}

void Worker::WritePage(BatchItem& item) const
{
    const QString page = order.out + QLatin1Char('/') + item.recordName + QStringLiteral(".html");
    view::Options options;
    options.source = QFileInfo(item.recording.path).fileName();
    try {
        view::WritePage(item.files.first(), page, options);
    } catch (const std::exception& error) {
        item.Fail(reason::PageNotWritten,
                  Tr("worker", "converted, but its page could not be written: %1; the recording is kept")
                      .arg(TextOf(error)));
        return;
    }
    item.files << page;
}

void Worker::PutAway(BatchItem& item) const
{
    sourcefiles::Sync(item.files, order.out);
    if (order.removeSource) {
        sourcefiles::Remove(item.sources);
        item.fate = SourceFate::Removed;
        return;
    }
    QString directory = order.archive;
    if (!item.recording.below.isEmpty())
        directory += QLatin1Char('/') + item.recording.below;
    sourcefiles::Archive(item.sources, directory);
    item.fate = SourceFate::Archived;
}
