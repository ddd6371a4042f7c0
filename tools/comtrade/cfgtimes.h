// The lines of a CFG text that say when the record starts and when it was triggered.
#pragma once

#include "comtrade/cfglines.h"

namespace comtrade {

/// Reads both lines, as the order of day and month is the same in both: mm/dd/yy in revision 1991,
/// dd/mm/yyyy later, or the other one where only that gives two dates.
void ReadStamps(CfgLines& lines, Configuration& configuration, Places& places);

/// Whether the line looks like one of the two.
bool IsStamp(const Place& place);
bool IsStamp(const QString& firstField);

/// Whether its year has two digits, as in revision 1991.
bool HasShortYear(const Place& place);

} // namespace comtrade
