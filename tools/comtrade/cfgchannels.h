// The lines of a CFG text that describe channels.
#pragma once

#include "comtrade/cfglines.h"

namespace comtrade {

/// How many channels there are.
struct Counts
{
    qint64 analog = 0;
    qint64 states = 0;
};

Counts ReadCounts(CfgLines& lines, Place& place);

/// The next line as an analog channel, the given one of the record (from 1). In revision 1991 it has ten
/// fields, later thirteen.
AnalogChannel ReadAnalog(CfgLines& lines, Revision revision, int ordinal, Place& place);

/// The same for a status channel, of three fields and five.
StateChannel ReadState(CfgLines& lines, Revision revision, int ordinal, Place& place);

/// The fields of the line if its quotation marks keep commas inside of fields; none if there are no such
/// marks.
QStringList Unquoted(const Place& place);

} // namespace comtrade
