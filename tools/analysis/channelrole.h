// What an analog channel measures, read from its unit, name and phase.
#pragma once

#include "comtrade/record.h"

namespace analysis {

/// The quantity by the unit.
enum class Quantity { Voltage, Current, Other };

/// The place of a channel in its circuit. The fault report looks for phases and the residual by their names,
/// so the name decides ("Ua", "3I0"), and the phase where the name says nothing.
struct Role
{
    Quantity quantity = Quantity::Other;
    char phase = ' '; ///< 'a', 'b', 'c', '0' of the residual, or ' '
};

Role RoleOf(const comtrade::AnalogChannel& channel);

/// Whether values of the unit can be a sine of the line frequency: false for frequencies, percentages,
/// temperatures, angles and times.
bool IsWave(const QString& unit);

/// Whether the unit is volt or ampere without prefix, in Latin or Cyrillic letters: values read in thousands.
bool IsBaseUnit(const QString& unit);

/// Factor from values in the unit to volts or amperes (кВ, kA: 1000); 1 for any other unit.
double BaseFactor(const QString& unit);

/// The unit with the prefix kilo, in the script of the unit.
QString WithKilo(const QString& unit);

} // namespace analysis
