// Start comments in the recorder's shorthand.
#pragma once

#include "station/bays.h"
#include "station/station.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace station {

// The comment of a start of the given kind with its time stamp (dd.MM.yy hh:mm:ss.uuuuuu, 24 characters).
// Nothing if the station lacks the channel that such a start refers to. Values are secondary ones.
std::optional<QString> StartComment(StartKind start, const std::vector<AnalogSignal>& analog,
                                    const std::vector<DiscreteSignal>& discrete, const QString& stamp);

// The same for a start by the first phase current or the protection start of a bay that has them.
QString BayStartComment(StartKind start, const QString& bay, const QString& stamp);

// "dd.MM.yy hh:mm:ss.uuuuuu" of a moment (microseconds since 1970-01-01 00:00:00 UTC) in a zone (seconds from
// UTC).
QString StampOf(int64_t microseconds, int zoneSeconds);

} // namespace station
