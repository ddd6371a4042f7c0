// A directory that shows a catalogue in a browser, from a disk, a share or any web server.
//
//     archivepage::Write(*catalogue, "page", {});
//
// index.html has everything but the entries. They are in data/, in pieces that it loads as scripts, since a
// page from a disk may load nothing else. The name of a piece holds the fingerprint of its content: what has
// not changed is not written again, and what an open page refers to stays as it is until the run after the
// next.
#pragma once

#include "catalogue/catalogue.h"
#include "text/error.h"

#include <QDate>

namespace archivepage {

struct Settings
{
    QString title;      ///< heading of the page
    QDate date;         ///< to which the silence of recorders is counted; null: that of the newest entry
    int entries = 4096; ///< in a piece
    int pictures = 256; ///< likewise
};

struct Written
{
    qint64 entries = 0;
    qint64 faults = 0;
    qint64 pages = 0; ///< entries with a page of their own
};

/// A directory that cannot be written, or is not one of this program's; the message names it.
class Error : public text::Error
{
public:
    using text::Error::Error;
};

/// Makes the directory, if it does not exist, or brings it up to date. At any moment what is there can be
/// opened. Removes the pieces and pages that are of no entry any more, and nothing else. Throws Error, and
/// text::Error for the catalogue.
Written Write(catalogue::Catalogue& catalogue, const QString& directory, const Settings& settings);

/// An entry that may have a page of its own.
struct Shown
{
    QString path; ///< absolute
    QString page; ///< absolute path of its page in the directory
    bool isFault = false;
};

/// The entries that are there and could be read, the newest first. Makes the place for their pages. Throws as
/// Write.
std::vector<Shown> EntriesToShow(catalogue::Catalogue& catalogue, const QString& directory);

} // namespace archivepage
