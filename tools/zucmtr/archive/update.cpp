#include "zucmtr/archive/update.h"

#include "text/texts.h"
#include "zucmtr/run/crew.h"

#include <QDataStream>
#include <QSet>

#include <algorithm>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace archive {

namespace {

using catalogue::Catalogue;
using catalogue::Entry;
using catalogue::Known;
using catalogue::Piece;

// So many entries are written together: a transaction takes as long as several of them.
constexpr size_t EntriesTogether = 32;

// What was read without its ini file is read again: that may have been put right.
bool IsSame(const Known& known, const std::vector<Piece>& pieces)
{
    return !known.isPlain && std::equal(known.pieces.begin(), known.pieces.end(), pieces.begin(),
                                        pieces.end(), catalogue::IsSameState);
}

struct Work
{
    std::vector<Found> toRead;
    QStringList missing;
};

Work Compare(const UpdateOrder& order, UpdateCounts& counts, const Progressing& progressing)
{
    Catalogue catalogue(order.catalogue);
    Work work;
    for (const QString& directory : order.directories) {
        Listing listing = List(directory);
        for (const Unlisted& one : listing.unlisted)
            progressing.complain({one.path, one.text, false});
        QHash<QString, Known> known = catalogue.KnownBelow(directory);
        for (Found& found : listing.found) {
            const auto entry = known.find(found.path);
            const bool isKnown = entry != known.end();
            if (isKnown && IsSame(*entry, found.pieces))
                ++counts.unchanged;
            else
                work.toRead.push_back(std::move(found));
            if (isKnown)
                known.erase(entry);
        }
        for (auto left = known.begin(); left != known.end(); ++left) {
            if (!IsUnlisted(left.key(), listing.unlisted))
                work.missing << left.key();
        }
    }
    return work;
}

// Neighbours stay together, as they have the same ini file; but each program takes them in an order of its
// own, so that several at work on the same catalogue seldom do the same.
void Shuffle(std::vector<Found>& found)
{
    std::vector<std::vector<Found>> runs;
    for (size_t i = 0; i < found.size(); i += EntriesTogether) {
        const auto begin = found.begin() + static_cast<std::ptrdiff_t>(i);
        const auto end =
            found.begin() + static_cast<std::ptrdiff_t>(std::min(i + EntriesTogether, found.size()));
        runs.emplace_back(std::make_move_iterator(begin), std::make_move_iterator(end));
    }
    // A shorter one would move the others from their places.
    std::mt19937 random(static_cast<unsigned int>(getpid()));
    std::shuffle(runs.begin(), runs.empty() ? runs.end() : runs.end() - 1, random);
    found.clear();
    for (std::vector<Found>& run : runs)
        found.insert(found.end(), std::make_move_iterator(run.begin()), std::make_move_iterator(run.end()));
}

// What a process of the crew tells: counts, or a complaint if there is a text.
struct Message
{
    qint32 read = 0;
    qint32 unread = 0;
    qint32 moved = 0;
    Complaint complaint{};
};

QByteArray Packed(const Message& message)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly)
        << message.read << message.unread << message.moved << message.complaint.path << message.complaint.text
        << message.complaint.isCatalogued;
    return bytes;
}

Message Unpacked(const QByteArray& bytes)
{
    Message message;
    QDataStream(bytes) >> message.read >> message.unread >> message.moved >> message.complaint.path >>
        message.complaint.text >> message.complaint.isCatalogued;
    return message;
}

// One process of the crew.
class Reader
{
public:
    Reader(const UpdateOrder& order, const std::vector<Found>& toRead_, Crew::Member& member_)
        : catalogue(order.catalogue), looker(order.reading), toRead(toRead_), member(member_)
    {}

    void Work()
    {
        for (Crew::Member::Pieces pieces = member.Take(); pieces.first < pieces.second;
             pieces = member.Take()) {
            // Another program may have done these since.
            const auto done = catalogue.KnownAt(PathsOf(pieces));
            for (size_t i = pieces.first; i < pieces.second && !member.IsToEnd(); ++i) {
                const auto known = done.find(toRead[i].path);
                if (known != done.end() && IsSame(*known, toRead[i].pieces))
                    member.Done();
                else if (member.Begin(i))
                    Read(toRead[i]);
            }
            Write();
        }
    }

private:
    QStringList PathsOf(const Crew::Member::Pieces& pieces) const
    {
        QStringList paths;
        for (size_t i = pieces.first; i < pieces.second; ++i)
            paths << toRead[i].path;
        return paths;
    }

    void Read(const Found& found)
    {
        const std::optional<QString> failure = text::FailureOf([&] {
            std::vector<Piece> pieces = found.pieces;
            HashPieces(found.path, pieces);
            if (catalogue.Move(found.path, pieces)) {
                ++counts.moved;
                return;
            }
            Entry entry = looker.Look(found.path, found.kind);
            const std::vector<Piece> after = PiecesOf(found.path, found.kind, pieces);
            if (!std::equal(pieces.begin(), pieces.end(), after.begin(), after.end(), catalogue::IsSameState))
                throw text::Error(Tr("archive", "it changed while it was read; the next update reads it"));
            entry.pieces = std::move(pieces);
            if (!entry.reason.isEmpty())
                Complain({entry.path, entry.error, true});
            else if (!entry.error.isEmpty())
                Complain({QString(), entry.error, false});
            ++counts.read;
            counts.unread += entry.reason.isEmpty() ? 0 : 1;
            ready.push_back(std::move(entry));
        });
        if (failure)
            Complain({found.path, *failure, false});
        member.Done();
    }

    void Complain(const Complaint& complaint) { member.Tell(Packed({0, 0, 0, complaint})); }

    void Write()
    {
        if (!ready.empty())
            catalogue.Put(ready);
        ready.clear();
        member.Tell(Packed(counts));
        counts = Message();
    }

    Catalogue catalogue;
    Looker looker;
    const std::vector<Found>& toRead;
    Crew::Member& member;
    std::vector<Entry> ready;
    Message counts;
};

void Add(UpdateCounts& counts, const Message& message)
{
    counts.read += message.read;
    counts.unread += message.unread;
    counts.moved += message.moved;
}

QString LossText(int status)
{
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        return Tr("archive", "the process that read it was ended from outside; the next update reads it");
    return Tr("archive", "the program failed while reading it (signal %1); please report that, with the file")
        .arg(WIFSIGNALED(status) ? WTERMSIG(status) : 0);
}

void ReadAll(const UpdateOrder& order, const std::vector<Found>& toRead, UpdateCounts& counts,
             const Progressing& progressing)
{
    Crew::Task task;
    task.count = toRead.size();
    task.together = EntriesTogether;
    task.work = [&](Crew::Member& member) { Reader(order, toRead, member).Work(); };
    QSet<QString> ofIniFiles; // that are of no use, once for all recordings of each
    task.hear = [&](const QByteArray& bytes) {
        const Message message = Unpacked(bytes);
        Add(counts, message);
        const Complaint& complaint = message.complaint;
        if (complaint.text.isEmpty() || (complaint.path.isEmpty() && ofIniFiles.contains(complaint.text)))
            return;
        if (complaint.path.isEmpty())
            ofIniFiles.insert(complaint.text);
        progressing.complain(complaint);
    };
    task.show = [&](size_t done) { progressing.show(done, toRead.size()); };
    task.isToEnd = progressing.isToEnd;
    for (const Crew::Loss& loss : Crew(task).Do(order.processes))
        progressing.complain({toRead[loss.piece].path, LossText(loss.status), false});
}

} // namespace

UpdateCounts Update(const UpdateOrder& order, const Progressing& progressing)
{
    UpdateCounts counts;
    Work work = Compare(order, counts, progressing);
    Shuffle(work.toRead);
    ReadAll(order, work.toRead, counts, progressing);
    if (!progressing.isToEnd() &&
        !work.missing.isEmpty()) // those that have moved are gone from there already
        counts.gone = Catalogue(order.catalogue).MarkGone(work.missing);
    return counts;
}

} // namespace archive
