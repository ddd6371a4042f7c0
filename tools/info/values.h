// Values as cells: a number for programs, a text with its unit for people.
#pragma once

#include "info/description.h"

class QDateTime;

namespace info {

Cell TextCell(const QString& text);
Cell CountCell(qint64 count);
Cell NumberCell(double number);
Cell FlagCell(bool flag);

/// A count that is not known.
Cell UnknownCell();

/// A point in time, ISO 8601 with six decimals and its offset from UTC.
Cell MomentCell(const QDateTime& seconds, qint32 microseconds);

/// Seconds with six decimals; NaN: they are unknown.
Cell SecondsCell(double seconds);

/// Bytes, for people also in kB, MB or GB.
Cell BytesCell(qint64 bytes);

} // namespace info
