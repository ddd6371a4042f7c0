#include "zucmtr/archive/scribes.h"

#include "catalogue/catalogue.h"
#include "text/texts.h"
#include "zucmtr/archive/files.h"
#include "zucmtr/host/recordinglist.h"

#include <QDataStream>

#include <algorithm>
#include <chrono>
#include <utility>

namespace archive {

namespace {

using catalogue::Catalogue;
using catalogue::Entry;
using catalogue::Kind;
using catalogue::Piece;

QByteArray Packed(const KeptRecord& record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << record.record << record.recording << record.isRecordingKept << record.isVerified << record.left;
    return bytes;
}

KeptRecord Unpacked(const QByteArray& bytes)
{
    KeptRecord record;
    QDataStream stream(bytes);
    stream >> record.record >> record.recording >> record.isRecordingKept >> record.isVerified >> record.left;
    return record;
}

// The work of one process.
class Writer
{
public:
    Writer(const QString& address, const Reading& reading) : catalogue(address), looker(reading) {}

    void Write(const KeptRecord& kept)
    {
        const QString record = Normalised(kept.record);
        const QString recording = Normalised(kept.recording);
        std::vector<Entry> entries;
        Add(record, Kind::Record, entries);
        if (kept.isRecordingKept)
            Add(recording, Kind::Recording, entries);
        if (!entries.empty())
            catalogue.Put(entries);
        if (kept.isVerified)
            catalogue.NoteRight(record, recording);
        if (!kept.left.isEmpty())
            catalogue.MarkGone({Normalised(kept.left)});
    }

private:
    // Looks at it unless the catalogue has it as it is.
    void Add(const QString& path, Kind kind, std::vector<Entry>& entries)
    {
        std::vector<Piece> pieces = PiecesOf(path, kind);
        if (pieces.empty())
            throw text::Error(Tr("archive", "'%1' is not there any more").arg(path));
        const auto known = catalogue.KnownAt({path}).value(path);
        if (std::equal(known.pieces.begin(), known.pieces.end(), pieces.begin(), pieces.end(),
                       catalogue::IsSameState))
            return;
        HashPieces(path, pieces);
        if (catalogue.Move(path, pieces))
            return;
        Entry entry = looker.Look(path, kind);
        const std::vector<Piece> after = PiecesOf(path, kind, pieces);
        if (!std::equal(pieces.begin(), pieces.end(), after.begin(), after.end(), catalogue::IsSameState))
            throw text::Error(Tr("archive", "it changed while it was read; the next update reads it"));
        entry.pieces = std::move(pieces);
        entries.push_back(std::move(entry));
    }

    Catalogue catalogue;
    Looker looker;
};

class Scribe : public SideProcess::Clerk
{
public:
    Scribe(QString address_, Reading reading_) : address(std::move(address_)), reading(std::move(reading_)) {}

    QByteArray Answer(const QByteArray& message) override
    {
        if (!writer && Clock::now() < closedUntil)
            return failure;
        try {
            if (!writer) // it may have been impossible a moment ago
                Open();
            writer->Write(Unpacked(message));
            return {};
        } catch (const std::exception& error) {
            writer.reset(); // the next one opens the catalogue anew
            failure = text::MessageOf(error).toUtf8();
            return failure;
        }
    }

private:
    using Clock = std::chrono::steady_clock;

    // A server that does not even refuse takes long to be found missing. Whoever converts need not wait for
    // that each time.
    void Open()
    {
        const Clock::time_point begin = Clock::now();
        try {
            writer = std::make_unique<Writer>(address, reading);
        } catch (...) {
            const Clock::duration taken = Clock::now() - begin;
            if (taken > LongOpening)
                closedUntil = Clock::now() + taken * OpeningRest;
            throw;
        }
    }

    static constexpr std::chrono::seconds LongOpening{1};
    static constexpr int OpeningRest = 9; // at most a tenth of the time is spent on it

    const QString address;
    const Reading reading;
    std::unique_ptr<Writer> writer;
    QByteArray failure; // the last one
    Clock::time_point closedUntil{};
};

QByteArray CrashText(int signal)
{
    return Tr("archive", "the process that looked at it has ended (signal %1)").arg(signal).toUtf8();
}

} // namespace

Scribes::Scribes(const QString& catalogue, const Reading& reading, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        scribes.push_back({std::make_unique<SideProcess>(SideProcess::Task{
                               [&] { return std::make_unique<Scribe>(catalogue, reading); }, CrashText}),
                           true});
}

QString Scribes::Keep(const KeptRecord& record)
{
    std::unique_lock<std::mutex> lock(mutex);
    auto scribe = scribes.end();
    freed.wait(lock, [&] {
        scribe = std::find_if(scribes.begin(), scribes.end(), [](const Place& one) { return one.isFree; });
        return scribe != scribes.end();
    });
    scribe->isFree = false;
    lock.unlock();
    QByteArray answer;
    const bool isAnswered = scribe->process->Ask(Packed(record)) && scribe->process->Hear(answer);
    lock.lock();
    scribe->isFree = true;
    lock.unlock();
    freed.notify_one();
    return isAnswered ? QString::fromUtf8(answer)
                      : Tr("archive", "the process that writes the catalogue has ended");
}

} // namespace archive
