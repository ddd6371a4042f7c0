// The place of a record: its directory, and the files there that have its names.
#pragma once

#include "zucmtr/files/systemfile.h"

#include <QString>

#include <vector>

/// The state of the files that have the names of a record, to see later whether they have changed.
std::vector<systemfile::Identity> IdentifyRecord(const QString& directory, const QString& recordName);

/// Whether one of these files exists.
bool IsAnythingThere(const std::vector<systemfile::Identity>& files);

/// Makes the directory of a record, which is `top` or lies below it. sync: the names of all directories up to
/// `top` are on the disk when it returns, even if a killed run made them. Throws StagingError.
void MakeRecordDirectory(const QString& directory, const QString& top, bool sync);
