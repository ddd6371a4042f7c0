// Large sorting dictionaries, and recordings of as many channels in the reverse order.
#pragma once

#include "recording/zufileformat.h"

#include <QString>

namespace bench {

/// Ini file of a device that has an analog dictionary of that many entries, of one equipment each.
QString LargeDictionary(int entries);

/// Appends an analog channel without samples for each entry of the dictionary to file, the last entry first.
void AddChannelsInReverse(ZuFileFormat& file, int entries);

} // namespace bench
