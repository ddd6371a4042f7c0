// What a worker does with a damaged recording if it is to save what is whole.
#include "salvage/write.h"
#include "text/texts.h"
#include "verify/leftout.h"
#include "zucmtr/host/recordform.h"
#include "zucmtr/run/worker.h"
#include "zucmtr/run/workerjob.h"

#include "explain/system.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

namespace {

std::unique_ptr<output::TemporaryDirectory> MakeTemporary()
{
    auto directory = std::make_unique<output::TemporaryDirectory>(QDir::tempPath());
    if (directory->Error() != 0)
        throw salvage::WriteError(
            Tr("worker", "no temporary directory: %1").arg(explain::SystemText(directory->Error())),
            directory->Error());
    return directory;
}

} // namespace

Worker::Job::Job(Worker& worker, const BatchItem& item)
    : chain(item.recording.path), directory(item.directory), source(item.recording.path),
      devices(&worker.usual)
{
    if (!worker.order.salvage)
        return;
    salvage::Examination examined = salvage::Examine(chain.Paths());
    isHopeless = examined.isDamaged && !examined.plan;
    if (!examined.plan)
        return;
    devices->verifier.NameLost(*examined.plan);
    loss = examined.plan->loss;
    if (!loss->LosesChannels()) // the library leaves bad files out by itself
        return;
    copy = MakeTemporary();
    source = salvage::Write(examined.plan->segments, examined.plan->choice, copy->Path());
    devices = &worker.DevicesFor(examined.plan->choice, examined.plan->segments.front());
}

// In the INF file the equipment has its channels by their places in the sorting dictionary, which are those
// in the record only if the recording has all of the dictionary's channels.
Worker::Devices& Worker::DevicesFor(const salvage::Choice& choice, const salvage::Segment& first)
{
    const QString keys = usual.verifier.KeysWithout(choice, first);
    if (keys.isEmpty())
        return usual;
    std::unique_ptr<Devices>& devices = narrowed[keys];
    if (devices == nullptr) {
        host.Alone([&] {
            const ChangedIni ini(own, order.form.Keys() + keys);
            const unsigned int device = host.LoadDevice(ini.Choice().ini, ini.Choice().device);
            Host::TakeNotes(device); // reported when the ini file was loaded
            devices = std::make_unique<Devices>(device, ini.Choice());
        });
    }
    return *devices;
}

QString Worker::Job::AboutOriginal(QString text) const
{
    return HasCopy() ? text.replace(copy->Path(), QFileInfo(chain.Paths().first()).path()) : text;
}

QStringList Worker::Job::Originals(const QStringList& converted) const
{
    return HasCopy() ? QStringList(chain.Paths().mid(0, converted.size())) : converted;
}

// The files of the copy fit each other as far as was looked at. The library looks at more.
bool Worker::CheckCopysEnd(BatchItem& item, Job& job)
{
    if (!job.loss || !job.copy) // then the library looked at the files themselves
        return true;
    const int count = item.sources.size();
    if (count < job.loss->files) {
        const QString next = QFileInfo(job.chain.Paths()[count]).fileName();
        if (!verify::IsRightlyLeftOut(job.source, job.copy->FilePath(next))) {
            item.Fail(reason::SourceUnreadable,
                      Tr("worker", "not converted: '%1' could not be read at first; convert again")
                          .arg(job.chain.Paths()[count]));
            return false;
        }
        job.loss->files = count;
        job.loss->lostFiles = job.chain.Paths().mid(count);
    }
    return true;
}

void Worker::ReportLoss(BatchItem& item, const Job& job)
{
    if (job.isHopeless && item.state == ItemState::Failed)
        item.error += Tr("worker", "; no channel of it is whole, so that there is nothing to salvage");
    item.error = job.AboutOriginal(item.error);
    for (QString& note : item.notes)
        note = job.AboutOriginal(note);
    if (!job.loss || item.state == ItemState::Failed)
        return;
    item.notes += salvage::NotesOf(*job.loss);
    item.salvaged = salvage::TextOf(*job.loss);
    item.loss = QString::fromUtf8(QJsonDocument(salvage::JsonOf(*job.loss)).toJson(QJsonDocument::Compact));
}

// What is there under the name of the recording's record. One with some of its channels is what was salvaged
// when it was damaged (more than it is now).
verify::Presence Worker::FindThere(const Job& job, const QString& name)
{
    verify::Presence presence = job.devices->present.Find(job.source, job.directory, name);
    if (presence.standing.state != verify::RecordState::Foreign)
        return presence;
    if (IsPartThere(job, presence, name))
        presence.standing.state = verify::RecordState::Own;
    else if (job.loss)
        presence.standing.reason +=
            Tr("worker", "; the recording is damaged, so that this may be the record of the whole one");
    return presence;
}

bool Worker::IsPartThere(const Job& job, const verify::Presence& presence, const QString& name)
{
    const std::optional<salvage::Choice> choice =
        job.devices->present.ChannelsThere(job.source, job.directory, name);
    if (!choice)
        return false;
    std::vector<salvage::Segment> segments;
    for (const QString& file : presence.examined.files) {
        segments.push_back(salvage::ReadSegment(file));
        if (!choice->CanBeJoined())
            break;
    }
    const std::unique_ptr<output::TemporaryDirectory> part = MakeTemporary();
    const QString first = salvage::Write(segments, *choice, part->Path());
    const verify::RecordState state = job.devices->present.Find(first, job.directory, name).standing.state;
    return state == verify::RecordState::Same || state == verify::RecordState::Own ||
           state == verify::RecordState::Unfinished;
}
