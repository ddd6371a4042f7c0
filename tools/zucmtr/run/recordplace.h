// The place of a record: its directory, and what lies there under its names.
#pragma once

#include "zucmtr/files/systemfile.h"

#include <QString>

#include <vector>

/// Which files lie at the names of a record, in which state; to see whether they have changed.
std::vector<systemfile::Identity> LookAtRecord(const QString& directory, const QString& recordName);

/// Whether one of these files is there.
bool IsAnythingThere(const std::vector<systemfile::Identity>& files);

/// Makes the directory of a record, which is `top` or lies below it. sync: the names of all directories up to
/// `top` are on the disk when it returns, even if a run that was killed has made them. Throws StagingError.
void MakeRecordDirectory(const QString& directory, const QString& top, bool sync);
