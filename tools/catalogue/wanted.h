// Which entries of a catalogue are wanted.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace catalogue {

/// A point in time.
struct Instant
{
    qint64 at = 0;           ///< microseconds since 1970
    bool isOwnClock = false; ///< on the clock of each recorder; else in UTC
};

struct Range
{
    std::optional<double> from;
    std::optional<double> to;
};

enum class Sort { Newest, Oldest, Slowest, Current, Distance, Size, Station, Circuit, Path };

/// All that is given has to be true of an entry. Names are found by a part of them in whatever case, or by
/// the whole name after "="; of several names one is enough.
struct Wanted
{
    std::optional<Instant> since; ///< of the trigger
    std::optional<Instant> until; ///< the first that is too late
    QStringList stations;
    QStringList recorders;
    QStringList circuits;             ///< of the fault; without a fault: that started the recorder
    std::optional<QStringList> kinds; ///< of the fault, "AG" to "ABCG"; an empty text: none
    std::optional<double> minCurrent; ///< greatest RMS of a phase during the fault, primary amperes
    std::optional<double> longerThan; ///< duration of the fault, seconds; this long is too short
    bool isUncleared = false;         ///< the fault lasts to the end
    Range kilometres;                 ///< to the fault
    Range percent;                    ///< likewise, of the length of the line
    QString text;                 ///< beginnings of words among names, causes and the channels that changed
    QStringList changed;          ///< names of digital channels
    std::optional<QString> kind;  ///< "recording", "record"
    bool isUnread = false;        ///< it could not be read
    bool isGone = false;          ///< its files are not there any more; else they are
    std::optional<QString> below; ///< a directory, as Catalogue::Stored gives it
    Sort sort = Sort::Newest;
    bool isReverse = false;
    std::optional<qint64> limit; ///< so many at most
};

} // namespace catalogue
