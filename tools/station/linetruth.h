// What is true of a recording of the line model, as JSON; docs/sample-truth.md explains the keys.
#pragma once

#include "station/linesignals.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace station {

// The text of STEM.truth.json for a recording file of that name.
QByteArray MakeTruth(const LineScenario& scenario, const LineOutcome& outcome,
                     const std::vector<SignalHistory>& histories, const QString& file);

} // namespace station
