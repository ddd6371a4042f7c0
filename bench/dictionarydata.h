// Large sorting dictionaries, and recordings of as many channels in the reverse order.
#pragma once

#include "recording/zufileformat.h"

#include <QString>

namespace bench {

/// Ini file of a device that has an analog dictionary with this many entries, each of its own equipment.
QString LargeDictionary(int entries);

/// Appends an analog channel without samples to file for each entry of the dictionary, the last entry first.
void AddChannelsInReverse(ZuFileFormat& file, int entries);

} // namespace bench
