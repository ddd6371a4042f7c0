// What runs of the program that were killed have left, and what they could not have foreseen. Reported on
// standard error.
#pragma once

#include "zucmtr/host/recordinglist.h"

#include <QString>
#include <QStringList>

/// Before the recordings of a command line are looked for: files that were moved aside get their names back,
/// unfinished records in `out` and unfinished copies in `archive` (empty: none) are removed. What a running
/// program has in its hands stays.
void ClearLeftovers(const QStringList& arguments, bool recursive, const QString& out, const QString& archive);

/// After a process came down at the recording, whose record goes to the directory `out`: removes what it has
/// left there and in `archive` (the directory of --archive; empty: none).
void ClearAfter(const Recording& recording, const QString& out, const QString& archive);

/// After the work: names each continuation file in the directories of the recordings whose first file is not
/// there, as one that came too late. Nobody would ever convert it.
void ReportOrphans(const RecordingList& list);
