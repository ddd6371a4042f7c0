// What could be saved of a damaged recording.
#pragma once

#include "info/description.h"

namespace info {

/// Adds how much of the description's recording is whole, if it is damaged, and how to convert that.
void AddSalvageable(Description& description);

} // namespace info
