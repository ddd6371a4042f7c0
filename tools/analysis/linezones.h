// Values of lines.ini: numbers, and zones in the R-X plane.
#pragma once

#include "analysis/linedata.h"

namespace analysis {

/// Reads a number with a decimal point. Returns why that is not possible, and what to do; else empty.
QString NumberTrouble(const QString& text, double& value);

/// Reads "mho R X radius" or "polygon R,X R,X R,X ...", primary ohms, into zone. Returns like NumberTrouble.
QString ParseZone(const QString& text, Zone& zone);

} // namespace analysis
