// Clears what killed runs have left, and reports on standard error what no run could have known.
#pragma once

#include "zucmtr/host/recordinglist.h"

#include <QString>
#include <QStringList>

/// To be called before the recordings of a command line are searched for: files that were moved aside get
/// their names back, unfinished records in `out` and unfinished copies in `archive` (empty: none) are
/// removed; with `recursive` also in the directories below these that mirror those of the recordings, even if
/// no recording is left there. What a running program is using stays.
void ClearLeftovers(const QStringList& arguments, bool recursive, const QString& out, const QString& archive);

/// To be called after a process crashed at the recording, whose record goes to the directory `out`: removes
/// what it left there and in `archive` (the directory of --archive; empty: none).
void ClearAfter(const Recording& recording, const QString& out, const QString& archive);

/// To be called after the work: reports each continuation file in the directories of the recordings whose
/// first file is not there, as one that came too late. Nobody would ever convert it.
void ReportOrphans(const RecordingList& list);
