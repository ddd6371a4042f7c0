#include "zucmtr/archive/update.h"

#include <QDir>

#include <algorithm>
#include <random>
#include <unistd.h>

namespace archive {

namespace {

using catalogue::Catalogue;
using catalogue::Entry;
using catalogue::Known;

// So many entries are written together: a transaction takes as long as several of them.
constexpr size_t EntriesTogether = 32;

bool IsSame(const Known& known, const std::vector<catalogue::Piece>& pieces)
{
    return std::equal(known.pieces.begin(), known.pieces.end(), pieces.begin(), pieces.end(),
                      catalogue::IsSameState);
}

struct Work
{
    std::vector<Found> toRead;
    QStringList gone;
};

Work Compare(Catalogue& catalogue, const QStringList& directories, UpdateCounts& counts,
             const Progressing& progressing)
{
    Work work;
    for (const QString& directory : directories) {
        Listing listing = List(directory);
        for (const Unlisted& one : listing.unlisted)
            progressing.complain(one.path, one.text);
        QHash<QString, Known> known = catalogue.KnownBelow(directory);
        for (Found& found : listing.found) {
            const auto entry = known.find(found.path);
            if (entry != known.end() && IsSame(*entry, found.pieces))
                ++counts.unchanged;
            else
                work.toRead.push_back(std::move(found));
            if (entry != known.end())
                known.erase(entry);
        }
        for (auto left = known.begin(); left != known.end(); ++left)
            work.gone << left.key();
    }
    return work;
}

void ReadInto(Catalogue& catalogue, const std::vector<Found>& toRead, const Reading& reading,
              UpdateCounts& counts, const Progressing& progressing)
{
    std::vector<Entry> ready;
    const auto write = [&] {
        catalogue.Put(ready);
        ready.clear();
    };
    qint64 done = 0;
    for (const Found& found : toRead) {
        if (progressing.isToEnd())
            break;
        progressing.show(done++, static_cast<qint64>(toRead.size()));
        std::vector<catalogue::Piece> pieces = found.pieces;
        HashPieces(found.path, pieces);
        if (catalogue.Move(found.path, pieces)) {
            ++counts.moved;
            continue;
        }
        Entry entry = Look(found.path, found.kind, reading);
        entry.pieces = pieces;
        ++counts.read;
        if (!entry.reason.isEmpty()) {
            ++counts.unread;
            progressing.complain(found.path, entry.error);
        }
        ready.push_back(std::move(entry));
        if (ready.size() == EntriesTogether)
            write();
    }
    write();
}

} // namespace

UpdateCounts Update(Catalogue& catalogue, const QStringList& directories, const Reading& reading,
                    const Progressing& progressing)
{
    UpdateCounts counts;
    Work work = Compare(catalogue, directories, counts, progressing);
    // In another order than other processes that are at work.
    std::mt19937 random(static_cast<unsigned int>(getpid()));
    std::shuffle(work.toRead.begin(), work.toRead.end(), random);
    ReadInto(catalogue, work.toRead, reading, counts, progressing);
    if (!progressing.isToEnd()) {
        catalogue.MarkGone(work.gone);
        counts.gone = work.gone.size();
    }
    return counts;
}

} // namespace archive
