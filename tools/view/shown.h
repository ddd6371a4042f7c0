// What of a record a page or picture shows.
#pragma once

#include "analysis/summary.h"
#include "view/view.h"

#include <utility>

namespace view {

/// Reads the part of a record that the options choose. Throws comtrade::Error.
analysis::Oscillogram Load(const QString& recordPath, const Options& options);

/// The same of two records. Throws comtrade::Error.
std::pair<analysis::Oscillogram, analysis::Oscillogram>
LoadBoth(const QString& recordPath, const Second& second, const Options& options);

/// What happened in the record, also outside of the part that is held. Throws comtrade::Error.
analysis::Summary SummaryOf(const QString& recordPath, const analysis::Oscillogram& oscillogram,
                            const Options& options);

/// How much of its record an oscillogram holds, and what is odd about it.
Held Holding(const analysis::Oscillogram& oscillogram);

/// The circuit whose start made the recording, empty if that is not known.
QString StartedCircuit(const analysis::Oscillogram& oscillogram);

} // namespace view
