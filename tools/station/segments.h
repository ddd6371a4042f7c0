// A recording in one piece as a recorder stores a long one: a first file and its continuations.
#pragma once

#include "recorderfile/recorderfile.h"

#include <vector>

namespace station {

// The recording cut into segments of so many samples of each analog channel; what is left over at the end is
// dropped. All channels have one rate, and a segment lasts a whole number of microseconds. Time runs on from
// one segment to the next, the trigger stays; the discrete records of each start at 0 with the state then.
std::vector<recorderfile::Recording> CutIntoSegments(const recorderfile::Recording& recording,
                                                     size_t samples);

} // namespace station
