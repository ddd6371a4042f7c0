// Points in time of a record.
#pragma once

#include "comtrade/record.h"

#include <optional>

namespace comtrade {

/// Minutes from UTC of the record's times by its time code (revision 2013): "+3", "-7h15", "0"; nothing if
/// the zone is not known ("x", revision 1999).
std::optional<int> UtcOffset(const Configuration& configuration);

/// Minutes from UTC as "+03:00"; empty if they are not known.
QString OffsetText(std::optional<int> minutes);

/// ISO 8601 with as many decimals as the stamp was written with, at most nine, and the offset from UTC if it
/// is known.
QString MomentText(const TimeStamp& stamp, const std::optional<int>& offset);

/// The moment so many seconds after a stamp, to the microsecond.
TimeStamp After(const TimeStamp& stamp, double seconds);

/// Nanoseconds from one stamp to another of the same clock. Stamps that are more than 100,000 days apart
/// count as so far: one of them is a typing mistake.
qint64 NanosecondsBetween(const TimeStamp& from, const TimeStamp& to);

/// How far the triggers of two records are from each other.
struct TriggerDistance
{
    double seconds = 0; ///< from the first record's trigger to the second's
    bool inUtc = false; ///< both records have their offset from UTC; otherwise their clocks count as they are
};

TriggerDistance DistanceOfTriggers(const Configuration& first, const Configuration& second);

/// Its time of day: "12:00:00.250000" with the decimals of the stamp.
QString ClockText(const TimeStamp& stamp);

} // namespace comtrade
