// Start comments in the recorder's shorthand.
#pragma once

#include "station/bays.h"
#include "station/station.h"

#include <QString>

#include <optional>
#include <vector>

namespace station {

// The comment of a start of the given kind with its time stamp (dd.MM.yy hh:mm:ss.uuuuuu, 24 characters).
// Nothing if the station lacks the channel that such a start refers to. Values are secondary ones.
std::optional<QString> StartComment(StartKind start, const std::vector<AnalogSignal>& analog,
                                    const std::vector<DiscreteSignal>& discrete, const QString& stamp);

} // namespace station
