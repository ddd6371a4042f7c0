#include "archivepage/archivepage.h"

#include "archivepage/pieces.h"
#include "archivepage/place.h"
#include "archivepage/rows.h"
#include "archivepage/site.h"

#include <algorithm>
#include <utility>

namespace archivepage {

namespace {

// The one of the entries of one event that counts: a recording before its record, and both before what is
// gone or cannot be read.
int Rank(const Row& row)
{
    return (row.IsThere() ? 0 : 2) + (row.isRecord ? 1 : 0);
}

bool IsSameEvent(const Row& a, const Row& b)
{
    return a.moment && a.moment == b.moment && a.station == b.station && a.recorder == b.recorder;
}

// Makes pieces of rows and writes them.
class Writing
{
public:
    Writing(Place& place_, Site& site_, const Settings& settings_, QHash<qint64, QStringList> changed_)
        : place(place_), site(site_), settings(settings_), changed(std::move(changed_)),
          builder(settings.pictures)
    {}

    // Rows of one moment stand side by side.
    void Take(const Row& row)
    {
        if (!together.empty() && together.front().moment != row.moment)
            FinishMoment();
        together.push_back(row);
        if (!row.moment)
            FinishMoment();
    }

    Written Finish()
    {
        FinishMoment();
        FinishPiece();
        place.KeepPages(pages);
        return written;
    }

private:
    void FinishMoment()
    {
        for (const Row& row : together) {
            const bool isAgain = std::any_of(together.begin(), together.end(), [&row](const Row& other) {
                return IsSameEvent(row, other) &&
                       std::make_pair(Rank(other), other.id) < std::make_pair(Rank(row), row.id);
            });
            Add(row, isAgain);
        }
        together.clear();
    }

    void Add(const Row& row, bool isAgain)
    {
        // Those without a time are in pieces of their own, so that the others stay what they are.
        if (builder.Count() == settings.entries || (builder.Count() > 0 && isTimed != row.moment.has_value()))
            FinishPiece();
        isTimed = row.moment.has_value();
        const QString page = row.PageName();
        const bool hasPage = place.Pages().contains(page);
        if (hasPage)
            pages.insert(page);
        builder.Add(row, {isAgain, hasPage}, changed.take(row.id));
        ++written.entries;
        written.faults += row.IsFault() && !isAgain ? 1 : 0;
        written.pages += hasPage ? 1 : 0;
    }

    void FinishPiece()
    {
        if (builder.Count() == 0)
            return;
        const Piece piece = std::exchange(builder, PieceBuilder(settings.pictures)).Finish();
        PieceNames names;
        names.count = piece.count;
        names.isTimed = isTimed;
        names.entries = place.Put("entries", piece.entries);
        names.details = place.Put("details", piece.details);
        names.words = place.Put("words", piece.words);
        for (const QByteArray& pictures : piece.pictures)
            names.pictures << place.Put("pictures", pictures);
        site.Add(names);
    }

    Place& place;
    Site& site;
    const Settings& settings;
    QHash<qint64, QStringList> changed;
    PieceBuilder builder;
    bool isTimed = true; // what the builder has
    std::vector<Row> together;
    QSet<QString> pages; // of the entries
    Written written;
};

} // namespace

Written Write(catalogue::Catalogue& catalogue, const QString& directory, const Settings& settings)
{
    Place place(directory);
    Site site(settings, catalogue.Absolute(QStringLiteral(".")));
    Written written;
    AtOneMoment(catalogue, [&] {
        Writing writing(place, site, settings, ChangedChannels(catalogue));
        ForEachRow(catalogue, [&writing](const Row& row) { writing.Take(row); });
        written = writing.Finish();
    });
    place.PutIndex(site.Page());
    return written;
}

std::vector<Shown> EntriesToShow(catalogue::Catalogue& catalogue, const QString& directory)
{
    const Place place(directory);
    std::vector<Shown> entries;
    AtOneMoment(catalogue, [&] {
        ForEachRow(catalogue, [&](const Row& row) {
            if (row.IsThere())
                entries.push_back(
                    {catalogue.Absolute(row.path), place.PagePath(row.PageName()), row.IsFault()});
        });
    });
    std::reverse(entries.begin(), entries.end());
    return entries;
}

} // namespace archivepage
