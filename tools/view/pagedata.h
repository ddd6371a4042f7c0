// What the page's scripts know about the record, as JSON. The keys are those that web/*.js read.
#pragma once

#include "view/oscillogram.h"

#include <QByteArray>

namespace view {

/// Everything but the analog samples. No "<" stands in it, so that it cannot end the element that holds it.
QByteArray PageData(const Oscillogram& oscillogram, const QString& source);

/// Date and time of day with the decimals of the configuration: 2024-01-31 12:00:00.250000.
QString StampText(const comtrade::TimeStamp& stamp);

} // namespace view
