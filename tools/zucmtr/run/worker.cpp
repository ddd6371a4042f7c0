#include "zucmtr/run/worker.h"

#include "explain/file.h"
#include "explain/system.h"
#include "text/error.h"
#include "text/texts.h"
#include "verify/leftout.h"
#include "verify/recordname.h"
#include "zucmtr/run/recordplace.h"
#include "zucmtr/run/workerjob.h"
#include "zucmtr/run/workfailure.h"
#include "zucmtr/terminal/command.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <new>

namespace {

// How often in a row a recording is converted if it keeps changing meanwhile.
constexpr int MostTries = 3;

void FailForAMoment(BatchItem& item)
{
    item.Fail(reason::SourceUnreadable, Tr("worker", "not converted: for a moment the recording could not be "
                                                     "read, or its record not be written; convert again"));
}

void FailBy(BatchItem& item, const Outcome& outcome)
{
    if (std::strcmp(outcome.reason, reason::OutOfMemory) == 0)
        item.blame = Blame::Memory;
    item.Fail(explain::WordOf(item.recording.path, outcome.reason),
              Tr("worker", "not converted: %1").arg(outcome.error));
}

// Whether the library may have failed because a file could not be read at that moment.
bool MayBeTheReading(const BatchItem& item, const Outcome& outcome)
{
    return !outcome.couldNotWrite && item.blame != Blame::Memory;
}

verify::Verifier MakeVerifier(const DeviceChoice& choice)
{
    try {
        return verify::Verifier(choice.ini, choice.defaults, choice.device);
    } catch (const verify::Unreadable& error) {
        throw ConfigurationError(text::MessageOf(error));
    }
}

} // namespace

Worker::Devices::Devices(unsigned int device_, const DeviceChoice& choice)
    : device(device_), verifier(MakeVerifier(choice)), present(MakeVerifier(choice))
{}

void Worker::Follow(const WorkOrder& next)
{
    order = next;
    cleaned.clear();
    onDisk.clear();
}

Worker::Worker(Host& host_, unsigned int device, const DeviceChoice& choice, DeviceChoice own_,
               WorkOrder order_)
    : host(host_), own(std::move(own_)), order(std::move(order_)), usual(device, choice)
{}

RecordPlace Worker::PlaceOf(const Recording& recording) const
{
    const verify::RecordHead head = verify::RecordHeadOf(recording.path, usual.verifier.Parameters());
    if (!order.layout.IsGiven())
        return {order.mirror ? recording.below : QString(), head.name};
    return order.layout.PlaceOf(head, recording.path, recording.below);
}

bool Worker::LibraryDeletes() const
{
    return usual.verifier.Parameters().DeletesSources();
}

// Nothing is opened that cannot be a recording.
QString Worker::BelowOf(const Recording& recording) const
{
    if (!order.layout.IsGiven())
        return order.mirror ? recording.below : QString();
    return explain::NotConvertible(recording.path).isEmpty() ? PlaceOf(recording).below : QString();
}

BatchItem Worker::Work(const Recording& recording)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    BatchItem item;
    try {
        QStringList before; // what became of files in earlier tries
        for (int tries = 1; tries <= MostTries; ++tries) {
            item = TryOnce(recording);
            if (std::strcmp(item.reason, reason::SourceChanged) != 0)
                break;
            before << item.error;
        }
        if (item.state != ItemState::Failed)
            item.notes += before;
    } catch (...) {
        FailByCurrent(item);
    }
    item.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return item;
}

BatchItem Worker::TryOnce(const Recording& recording)
{
    BatchItem item;
    item.recording = recording;
    try {
        const QString below = BelowOf(recording);
        item.directory = below.isEmpty() ? order.out : order.out + QLatin1Char('/') + below;
        Try(item);
    } catch (...) {
        FailByCurrent(item);
    }
    return item;
}

void Worker::Try(BatchItem& item)
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
    if (LibraryDeletes()) {
        Job job(*this, item);
        if (!IsForeignThere(item, job))
            ConvertUnseen(item, job);
        Keep(item);
        ReportLoss(item, job);
        return;
    }
    Prepare(item.directory);
    Job job(*this, item);
    try {
        if (!TakePresent(item, job))
            Do(item, job);
    } catch (const verify::Unreadable&) {
        FailByCurrent(item);
        if (CanBeRead(item.recording.path, *job.devices, job.source))
            FailForAMoment(item);
    }
    ReportLoss(item, job);
    if (item.state == ItemState::Present && (order.sync || PutsAway()))
        SyncPresent(item);
    item.leftOut = !job.leftOut.isEmpty() || job.HasCopy();
    Keep(item);
    if (item.state != ItemState::Failed && PutsAway())
        PutAway(item, job);
    if (item.fate != SourceFate::Kept)
        KeepAway(item);
}

// Clears a directory of what killed runs have left there.
void Worker::Prepare(const QString& directory)
{
    if (cleaned.contains(directory))
        return;
    Staging::RemoveLeft(directory);
    cleaned.insert(directory);
}

void Worker::Do(BatchItem& item, Job& job)
{
    MakeDirectory(job.directory);
    job.staging = std::make_unique<Staging>(job.directory);
    const bool done = Convert(item, job) && (order.verify ? Verify(item, job) : FindSources(item, job)) &&
                      CheckEnd(item, job) && CheckUnchanged(item, job) && Commit(item, job);
    if (done)
        return;
    const QString& staged = job.staging->Directory();
    item.error.replace(staged, job.directory); // where the record would be
    item.error = job.AboutOriginal(item.error);
    if (job.mayLackRoom && job.staging->IsDiskFull(MostRecordSize(job))) {
        item.noRoom = true;
        item.blame = Blame::Output;
        item.Fail(
            reason::NoRoom,
            Tr("worker", "not converted: %1; free some").arg(explain::SystemText(ENOSPC, job.directory)));
    } else if (job.isDoubtful) {
        job.staging.reset();
        ConvertAgain(item);
    }
}

// All files could be read when the work started. If the library, or the verification, could not read one of
// them since, that is not the recording's fault: bad content fails again, in the same words. Nothing else is
// taken from this second conversion.
void Worker::ConvertAgain(BatchItem& item)
{
    Job job(*this, item); // throws if a file cannot be read now
    job.staging = std::make_unique<Staging>(job.directory);
    BatchItem again = item;
    const bool done = Convert(again, job) && (!order.verify || Verify(again, job));
    again.error.replace(job.staging->Directory(), job.directory);
    again.error = job.AboutOriginal(again.error);
    if (!done && again.error == item.error)
        return;
    if (!done && (again.blame == Blame::Memory || std::strcmp(again.reason, reason::SourceChanged) == 0))
        item = again;
    else
        FailForAMoment(item);
}

// Bytes; 0 if that is unknown.
qint64 Worker::MostRecordSize(const Job& job)
{
    try {
        return job.devices->verifier.Examine(job.source).mostRecordSize;
    } catch (const std::exception&) { // it has failed already
        return 0;
    }
}

// Throws ChainFiles::Unreadable if a file cannot be read at this moment; false if its content is bad.
bool Worker::CanBeRead(const QString& file, Devices& devices, const QString& source)
{
    const ChainFiles chain(file);
    try {
        devices.verifier.Examine(source);
        return true;
    } catch (const verify::Unreadable&) {
        return false;
    }
}

void Worker::Name(BatchItem& item, const QString& recordName) const
{
    item.recordName = recordName;
    item.form = usual.verifier.Parameters().Form();
    item.files.clear();
    for (const QString& name : usual.verifier.Parameters().RecordFiles(recordName))
        item.files << item.directory + QLatin1Char('/') + name;
}

void Worker::Plan(BatchItem& item)
{
    if (!order.salvage) {
        PlanFrom(item, usual, item.recording.path);
        return;
    }
    Job job(*this, item);
    try {
        PlanFrom(item, *job.devices, job.source);
        if (job.HasCopy())
            CheckCopysEnd(item, job);
    } catch (const verify::Unreadable&) {
        FailByCurrent(item);
    }
    item.sources = job.Originals(item.sources);
    ReportLoss(item, job);
}

void Worker::PlanFrom(BatchItem& item, Devices& devices, const QString& source)
{
    verify::Examined examined;
    try {
        examined = devices.verifier.Examine(source);
    } catch (const verify::Unreadable&) { // perhaps for a moment
        if (!CanBeRead(item.recording.path, devices, source))
            throw;
        examined = devices.verifier.Examine(source);
    }
    Name(item, order.layout.IsGiven() ? PlaceOf(item.recording).name : examined.recordName);
    item.sources = examined.files;
    item.notes = examined.notes;
    item.state = ItemState::Planned;
}

// The library deletes the recording as soon as it has written the record, so that goes right to its place.
void Worker::ConvertUnseen(BatchItem& item, const Job& job)
{
    MakeDirectory(item.directory);
    const Outcome outcome = host.Convert(job.source, item.directory, job.devices->device);
    item.notes = outcome.notes;
    if (!outcome.converted) {
        FailBy(item, outcome);
        if (MayBeTheReading(item, outcome) && CanBeRead(item.recording.path, *job.devices, job.source))
            FailForAMoment(item);
        return;
    }
    Name(item, outcome.outputName);
    item.state = ItemState::Converted;
    item.written = true;
    item.fate = QFile::exists(item.recording.path) ? SourceFate::Kept : SourceFate::Removed;
    try {
        if (order.verify) {
            verify::ReadThrough(item.recordName, item.directory, usual.verifier.Parameters());
            item.notes << Tr("worker",
                             "the record was read, but could not be compared: the recording is deleted");
        }
    } catch (const std::exception& error) {
        item.Fail(reason::RecordWrong,
                  Tr("worker", "converted, but the record is not right: %1; the recording is deleted")
                      .arg(text::MessageOf(error)));
        return;
    }
    WriteFurtherBeside(item);
}

void Worker::MakeDirectory(const QString& directory)
{
    const bool sync = (order.sync || PutsAway()) && !onDisk.contains(directory);
    MakeRecordDirectory(directory, order.out, sync);
    if (sync)
        onDisk.insert(directory);
}

// Whether the name belongs to another recording's record; the item fails then.
bool Worker::IsForeignThere(BatchItem& item, Job& job)
{
    const QString name = PlaceOf(item.recording).name;
    return !name.isEmpty() && IsAnythingThere(IdentifyRecord(job.directory, name)) &&
           !MayReplace(item, FindThere(job, name));
}

// True if nothing is to be converted: the record is there and is right, or another one has its name.
bool Worker::TakePresent(BatchItem& item, Job& job)
{
    job.checkedName = PlaceOf(item.recording).name;
    if (job.checkedName.isEmpty())
        return false;
    job.found = IdentifyRecord(job.directory, job.checkedName);
    if (!IsAnythingThere(job.found))
        return false;
    const verify::Presence presence = FindThere(job, job.checkedName);
    // Nothing can be said about a recording that could only be read in part.
    item.sources = job.Originals(presence.examined.files);
    if (!CheckEnd(item, job) || !MayReplace(item, presence))
        return true;
    if (presence.standing.state != verify::RecordState::Same || order.again)
        return false;
    Name(item, presence.examined.recordName);
    item.notes = presence.examined.notes;
    item.verified = true;
    item.state = ItemState::Present;
    if (CheckUnchanged(item, job))
        WriteFurtherBeside(item);
    return true;
}

bool Worker::MayReplace(BatchItem& item, const verify::Presence& presence) const
{
    const bool isLonger = presence.standing.state == verify::RecordState::Longer;
    if (order.replace || (!isLonger && presence.standing.state != verify::RecordState::Foreign))
        return true;
    Name(item, presence.examined.recordName);
    if (isLonger)
        item.Fail(reason::LongerRecordPresent,
                  Tr("worker",
                     "not converted: '%1' is there already and is longer: it starts like this recording and "
                     "goes on after its end, so continuation files of the recording are missing; bring them "
                     "back beside '%2', or replace the record by this shorter one with --replace")
                      .arg(item.files.first(), item.recording.path));
    else
        item.Fail(reason::OtherRecordPresent,
                  Tr("worker",
                     "not converted: '%1' is there already and is not the record of this recording (%2); "
                     "move it away, choose another directory by --out, or replace it by --replace")
                      .arg(item.files.first(), presence.standing.reason));
    item.files.clear();
    return false;
}

// Gives the files in the staging directory the names of the layout, before anybody looks at them.
void Worker::TakeName(BatchItem& item, Job& job, const QString& libraryName) const
{
    const QString name = order.layout.IsGiven() ? PlaceOf(item.recording).name : libraryName;
    if (!name.isEmpty() && name != libraryName) {
        const QStringList from = usual.verifier.Parameters().RecordFiles(libraryName);
        const QStringList to = usual.verifier.Parameters().RecordFiles(name);
        for (int i = 0; i < from.size(); ++i)
            job.staging->Name(from[i], to[i]);
    }
    Name(item, name.isEmpty() ? libraryName : name);
}

bool Worker::Convert(BatchItem& item, Job& job)
{
    const Outcome outcome = host.Convert(job.source, job.staging->Directory(), job.devices->device);
    item.notes = outcome.notes;
    job.lackedMemory = outcome.lackedMemory;
    job.mayLackRoom = outcome.couldNotWrite;
    if (outcome.converted) {
        TakeName(item, job, outcome.outputName);
        item.state = ItemState::Converted;
        return true;
    }
    FailBy(item, outcome);
    job.isDoubtful = MayBeTheReading(item, outcome);
    try {
        // The library's device may have taken this recording's channel order, so the verifier's must take it.
        if (order.verify)
            job.devices->verifier.Examine(job.source);
    } catch (const std::exception&) { // reported by the library already
    }
    return false;
}

bool Worker::Verify(BatchItem& item, Job& job)
{
    const std::optional<QString> failure = text::FailureOf([&] {
        item.sources = job.Originals(
            job.devices->verifier.Check(job.source, job.staging->Directory(), item.recordName).files);
    });
    if (!failure)
        return true;
    if (!CheckUnchanged(item, job)) // a change explains the failure
        return false;
    job.mayLackRoom = true;
    job.isDoubtful = true;
    item.Fail(reason::RecordWrong,
              Tr("worker", "not converted: the record that was written is not right: %1").arg(*failure));
    return false;
}

// Finds which files went into a record that is not compared with them.
bool Worker::FindSources(BatchItem& item, Job& job)
{
    if (job.HasCopy()) {
        item.sources = job.Originals(job.devices->verifier.Examine(job.source).files);
        return true;
    }
    const bool mayBeCut = !item.notes.isEmpty() && job.chain.Count() > 1;
    item.sources = mayBeCut ? usual.verifier.Examine(item.recording.path).files : job.chain.Paths();
    if (!mayBeCut || item.sources.size() < job.chain.Paths().size())
        return true;
    item.Fail(reason::SourceUnreadable,
              Tr("worker", "not converted: '%1' could not be read at first; convert again")
                  .arg(job.chain.Paths().last()));
    return false;
}

// The library takes a file that it cannot read for the end of the recording. It is the end only if the file
// is bad; then nothing of the recording is put away.
bool Worker::CheckEnd(BatchItem& item, Job& job) const
{
    if (job.lackedMemory) {
        item.blame = Blame::Memory;
        item.Fail(reason::OutOfMemory, Tr("worker", "not converted: %1").arg(text::MemoryMessage()));
        return false;
    }
    if (job.HasCopy())
        return CheckCopysEnd(item, job);
    const QStringList& files = job.chain.Paths();
    if (item.sources.size() >= files.size()) {
        job.leftOut = job.chain.Beyond().value(0);
        return true;
    }
    job.leftOut = files[item.sources.size()];
    bool same = false;
    const int error = job.chain.CompareContent(static_cast<size_t>(item.sources.size()), same);
    if (error == 0 && same && verify::IsRightlyLeftOut(files.first(), job.leftOut))
        return true;
    item.Fail(reason::SourceUnreadable,
              Tr("worker", "not converted: '%1' could not be read at first; convert again").arg(job.leftOut));
    return false;
}

bool Worker::CheckUnchanged(BatchItem& item, Job& job) const
{
    QString what;
    if (job.chain.IsUnchanged(&what))
        return true;
    item.Fail(reason::SourceChanged,
              Tr("worker", "not converted: the recording changed meanwhile: %1; convert again").arg(what));
    return false;
}
