// The catalogue held against the files and against itself.
#pragma once

#include <QString>

#include <functional>

namespace archive {

struct CheckOrder
{
    QString catalogue;   ///< address of one that is there
    QString below;       ///< only what is below this directory is checked; empty: everything. Absolute
    QString searched;    ///< directory in which files are searched that the catalogue lacks; empty: none
    bool isFast = false; ///< without reading files: their names, sizes and times alone
};

struct CheckFinding
{
    const char* reason; ///< word for programs
    QString path;       ///< absolute; empty: it is about the whole catalogue
    QString text;
};

struct CheckCounts
{
    qint64 entries = 0; ///< that are there according to the catalogue
    qint64 gone = 0;    ///< that are gone according to it
    qint64 files = 0;   ///< of the former
    qint64 bytes = 0;   ///< in these
    qint64 findings = 0;
};

struct Checking
{
    std::function<void(const CheckFinding&)> find;
    std::function<void(size_t done, size_t total)> show; ///< after each entry
    std::function<bool()> isToEnd;                       ///< before each entry
};

/// Changes nothing, and neither waits for others that write nor keeps them from it; what they do meanwhile
/// may be found as if it were wrong. Throws text::Error if the catalogue cannot be read at all.
CheckCounts Check(const CheckOrder& order, const Checking& checking);

} // namespace archive
