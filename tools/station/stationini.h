// The ini file of the sample station.
#pragma once

#include "station/bays.h"

#include <QMap>
#include <QString>

#include <vector>

namespace station {

// Text of the ini file: the defaults, the device with these further keys in place of its own, and the sorting
// dictionary of the channels and their bays.
QString MakeIni(const std::vector<AnalogSignal>& analog, const std::vector<DiscreteSignal>& discrete,
                const QMap<QString, QString>& deviceKeys);

} // namespace station
