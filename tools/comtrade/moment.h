// Points in time of a record.
#pragma once

#include "comtrade/record.h"

#include <optional>

namespace comtrade {

/// Minutes from UTC of the record's times by its time code (revision 2013): "+3", "-7h15", "0"; nothing if
/// the zone is not known ("x", revision 1999).
std::optional<int> UtcOffset(const Configuration& configuration);

/// Minutes from UTC as "+03:00".
QString OffsetText(int minutes);

/// ISO 8601 with as many decimals as the stamp was written with, at most nine, and the offset from UTC if it
/// is known.
QString MomentText(const TimeStamp& stamp, const std::optional<int>& offset);

/// The moment so many seconds after a stamp, to the microsecond.
TimeStamp After(const TimeStamp& stamp, double seconds);

/// Its time of day: "12:00:00.250000" with the decimals of the stamp.
QString ClockText(const TimeStamp& stamp);

} // namespace comtrade
