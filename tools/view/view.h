// Shows a record as one HTML page that opens in any browser and loads nothing from the network.
//
//     view::WritePage("record.cfg", "record.html", {});
#pragma once

#include "analysis/linedata.h"
#include "text/error.h"

#include <QString>

namespace view {

/// What goes into a page.
struct Options
{
    double window = 0;     ///< seconds around the trigger that the page holds; 0: all, or what fits the page
    bool full = false;     ///< hold all samples, however large the page becomes
    QString source;        ///< file name to show as the origin; empty: that of the record
    analysis::Lines lines; ///< data of the lines, for the distance to a fault and the zones
    QString lineFile;      ///< path of the file that has them; empty: there is none
    QString encoding;      ///< of the record's texts; empty: found out
};

/// A page or picture that cannot be written; the message names the file and says what to do. A record that
/// cannot be read throws comtrade::Error.
class Error : public text::Error
{
public:
    using text::Error::Error;
};

/// How much of its record a page or picture holds, and what is odd about the record.
struct Held
{
    qint64 samples = 0;     ///< in the page or picture
    qint64 total = 0;       ///< in the data of the record
    qint64 announced = 0;   ///< in the record, as its configuration has it
    bool hasTrigger = true; ///< the trigger is within the time of the samples
    qint64 missing = 0;     ///< analog values that the record lacks, of the samples held
    qint64 incomplete = 0;  ///< analog channels with such values
};

/// What a second record has in common with the first: the clocks, or the moment of the trigger.
enum class Alignment { Time, Trigger };

/// Another record, laid over the first one of a page.
struct Second
{
    QString recordPath;
    Options options; ///< its source and lines; the window is that of the first
    Alignment alignment = Alignment::Time;
};

/// The same of a page with two records.
struct HeldBoth
{
    Held first;
    Held second;
    bool isApart = false; ///< the second is too far from the first in time for both to be seen
};

/// Bytes of samples beyond which a page holds a window around the trigger, unless Options::full is set. Two
/// records share them.
constexpr qint64 LargestSamples = qint64(64) * 1024 * 1024;

/// Writes the page of a COMTRADE record (a .cfg with its files beside it, or a .cff). An older page is
/// replaced only when the new one is whole; for paths that lead elsewhere see output/outputfile.h.
Held WritePage(const QString& recordPath, const QString& pagePath, const Options& options);

/// Writes a page with a second record over the first. What options choose around the trigger is, of the
/// second one, what is around the same moment.
HeldBoth WritePage(const QString& recordPath, const Second& second, const QString& pagePath,
                   const Options& options);

} // namespace view
