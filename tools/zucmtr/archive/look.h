// What an archive's catalogue is told about a recording or record.
#pragma once

#include "catalogue/entry.h"
#include "zucmtr/host/devicechoice.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/host/recordsource.h"

namespace archive {

/// How recordings and records are read.
struct Reading
{
    DeviceChoice choice; ///< of recordings; completed for each as `events` does
    bool isPlain = false;
    QString lines; ///< file of --lines; empty: found for each
};

/// For one thread; one at a time in a process.
class Looker
{
public:
    /// The process then keeps memory that it has given back, up to 256 MB, for the next recording.
    explicit Looker(Reading reading_);

    /// Reads it and looks for what happened. What cannot be read gives an entry that says why, with a reason.
    /// An ini file or a lines.ini that was found but is of no use is left out: the error says why, and there
    /// is no reason. Throws ConfigurationError if what the user has chosen is wrong.
    catalogue::Entry Look(const QString& path, catalogue::Kind kind);

private:
    void LookInto(catalogue::Entry& entry);
    RecordMaker::Made Make(catalogue::Entry& entry);
    const LineData& LinesFor(const QString& ini, catalogue::Entry& entry);

    const Reading reading;
    RecordMaker maker;
    QString linesFor; // ini file and directory
    LineData lines;
    QString linesWhy; // there are none: the file is of no use
    QString plainFor; // directory whose ini file is of no use
    QString plainWhy;
};

} // namespace archive
