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
    qint64 read = 0; ///< new ones and those that have changed
    qint64 moved = 0;
    qint64 gone = 0;
    qint64 unread = 0; ///< of those read: could not be
};

struct UpdateOrder
{
    QString catalogue;       ///< address
    QStringList directories; ///< absolute
    Reading reading;
    size_t processes = 1;
};

struct Complaint
{
    QString
        path; ///< absolute; empty: of an ini file that is of no use, whose recordings were read without it
    QString text;
    bool isCatalogued = false; ///< there is an entry that says it
};

struct Progressing
{
    std::function<void(size_t done, size_t total)> show; ///< about ten times a second
    std::function<bool()> isToEnd;                       ///< likewise
    std::function<void(const Complaint& complaint)> complain;
};

/// Looks through the directories and writes what has changed. Several may be at work on one catalogue, with
/// several processes each. Throws text::Error if the catalogue cannot be used, and ConfigurationError.
UpdateCounts Update(const UpdateOrder& order, const Progressing& progressing);

} // namespace archive
