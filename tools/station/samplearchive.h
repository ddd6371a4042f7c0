// A sample archive: what the recorders of four substations have recorded in a year.
//
// Each recorder has a directory with its ini file, the data of its lines and its recordings: random faults
// and quiet ones (linescenario.h) on its own lines and clock, most of them in the summer. As in any archive,
// not all is well: one recording is cut off, one has lost a continuation file, and one recorder has been
// silent since the spring. The same options give the same bytes on every platform.
#pragma once

#include "station/linestation.h"

#include "recorderfile/recorderfile.h"

#include <QStringList>

#include <cstdint>
#include <functional>

namespace station {

struct ArchiveOptions
{
    int recordings = 500; // at least FewestArchived
    uint32_t seed = 1;
};

constexpr int FewestArchived = 10;
constexpr int MostArchived = 100000;

// The directories of the recorders, relative to that of the archive.
QStringList ArchiveDirectories();

// Makes the files one after the other, their names with the directory of the recorder. Ends when `take`
// returns false, and then returns false, too.
bool MakeArchive(const ArchiveOptions& options,
                 const std::function<bool(const recorderfile::NamedFile& file)>& take);

} // namespace station
