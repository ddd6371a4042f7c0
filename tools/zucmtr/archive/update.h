// The catalogue brought up to date with the files.
#pragma once

#include "catalogue/catalogue.h"
#include "zucmtr/archive/files.h"
#include "zucmtr/archive/look.h"

#include <functional>

namespace archive {

struct UpdateCounts
{
    qint64 unchanged = 0;
    qint64 read = 0;   ///< new ones and those that have changed
    qint64 moved = 0;
    qint64 gone = 0;
    qint64 unread = 0; ///< of those read: could not be
};

struct Progressing
{
    std::function<void(qint64 done, qint64 total)> show;
    std::function<bool()> isToEnd;                             ///< asked after each file
    std::function<void(const QString& path, const QString& text)> complain; ///< of what cannot be read
};

/// Looks through the directories and writes what has changed. Several may be at work on one catalogue.
UpdateCounts Update(catalogue::Catalogue& catalogue, const QStringList& directories, const Reading& reading,
                    const Progressing& progressing);

} // namespace archive
