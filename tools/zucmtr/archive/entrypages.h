// The pages of single entries, for the page of the archive to link to.
#pragma once

#include "archivepage/archivepage.h"
#include "zucmtr/archive/look.h"
#include "zucmtr/archive/update.h"

#include <vector>

namespace archive {

/// The same for pages.
struct PageReading : Reading
{
    QString encoding; ///< of records; empty: found out
};

struct PageCounts
{
    qint64 made = 0;
    qint64 failed = 0;
};

/// Makes the page of each entry that has none yet, whole or not at all. What cannot be made is complained of.
/// Throws ConfigurationError as Look.
PageCounts MakePages(const std::vector<archivepage::Shown>& entries, const PageReading& reading,
                     const Progressing& progressing);

} // namespace archive
