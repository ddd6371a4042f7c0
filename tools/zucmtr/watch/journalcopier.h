// Writes the copy of a journal into a catalogue: what the side process of JournalCopy does.
#pragma once

#include "zucmtr/run/sideprocess.h"
#include "zucmtr/watch/watchjournal.h"

#include <QString>

namespace journalcopier {

/// Which journal it is.
struct Name
{
    QString file;      ///< absolute path of its own file
    QString directory; ///< absolute path of that of the records
    QString recorder;
    qint64 process = 0; ///< of the watch
};

enum class Request : quint8 {
    Open, ///< open the catalogue and find the journal there
    All,  ///< the copy is to have these contents and no others
    News  ///< these have changed
};

QByteArray Packed(Request request, const WatchJournal::Contents& contents = {});

/// Answers each request with why it could not be done, in UTF-8; empty: it is done, and on the disk. After a
/// failure the next request opens the catalogue anew.
std::unique_ptr<SideProcess::Clerk> New(const QString& catalogue, const Name& name);

} // namespace journalcopier
