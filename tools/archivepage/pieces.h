// The pieces of the entries' data, as the page loads them: web/pieces.js reads them.
#pragma once

#include "archivepage/columns.h"
#include "archivepage/rows.h"

#include <QByteArray>
#include <QSet>

#include <vector>

namespace archivepage {

/// Contents of the scripts of some entries, the oldest first.
struct Piece
{
    int count = 0;
    QByteArray entries;               ///< what the list shows and filters by
    QByteArray details;               ///< the rest, for an entry that is chosen
    QByteArray words;                 ///< by which an entry is found besides its names
    std::vector<QByteArray> pictures; ///< of the faults, in their order, so many in each
};

/// How an entry stands to the others and to the page's directory.
struct Standing
{
    bool isAgain = false; ///< the same event is there as another entry too, which counts
    bool hasPage = false;
};

/// Puts a piece together.
class PieceBuilder
{
public:
    /// pictures: so many in a piece.
    explicit PieceBuilder(int pictures_) : mostPictures(pictures_) {}

    void Add(const Row& row, const Standing& standing, const QStringList& changed);
    int Count() const { return piece.count; }

    /// The piece; the builder is of no use any more.
    Piece Finish();

private:
    void AddDetails(const Row& row);
    void AddWords(const Row& row, const QStringList& changed);
    void AddFault(const Row& row);
    void AddPicture(const Row& row);
    void FinishPictures();

    int mostPictures;
    Piece piece;

    // Of the list.
    Rising times;
    Column offsets, states, names, lengths, pageAt, pageNames;
    Words stations, recorders, circuits;

    // Of the faults in it.
    int faults = 0;
    Column faultAt, durations, currents, kilometres, percents, reclosed, pictured;
    Words kinds, faultCircuits, directions;

    // Details.
    Words folders, goneTimes, reasons, errors, causes, settings, rates;
    Column triggers, samples, analog, digital, events, bytes, forgiven;
    Column resistances, starts, trips, breakers, deadTimes;

    // Words.
    Words found;
    Column foundCounts, foundPlaces;

    // Pictures of the piece that is being filled.
    int pictures = 0;
    Column pictureFrom, pictureTo, peakCurrents, peakVoltages, waves;
};

} // namespace archivepage
