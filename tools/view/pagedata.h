// What the page's scripts know about the record, as JSON. The keys are those that web/*.js read.
#pragma once

#include "analysis/channelrole.h"
#include "view/shown.h"

#include <QByteArray>
#include <QJsonObject>

namespace view {

/// Everything but the analog samples; overlay, unless it is empty, is what a second record has besides. No
/// "<" stands in it, so that it cannot end the element that holds it.
QByteArray PageData(const analysis::Oscillogram& oscillogram, const analysis::Summary& summary,
                    const QString& source, const QJsonObject& overlay = {});

/// The axis of count samples from first: {"pieces": [[from, at, step, hertz] ...]}, or {"stamps": base64 of
/// little-endian 64-bit floating point, "resolution": of the stamps}. Times in milliseconds.
QJsonObject TimeJson(const analysis::TimeAxis& axis, qint64 first, qint64 count);

/// "U" for a voltage, "I" for a current, otherwise empty.
QString QuantityName(analysis::Quantity quantity);

/// Date and time of day with the decimals of the configuration: 2024-01-31 12:00:00.250000.
QString StampText(const comtrade::TimeStamp& stamp);

} // namespace view
