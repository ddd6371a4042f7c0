// Whether a file that a recording's chain leaves out has content that does not belong to the chain, or merely
// could not be read.
#pragma once

#include <QString>

namespace verify {

/// Loads the first file and one of its continuations, each alone. True if the continuation is bad or differs
/// from the first file, so that the chain rightly ends before it; false if nothing is wrong with it now, or
/// if memory was short: then something else kept it out. Throws std::bad_alloc.
bool IsRightlyLeftOut(const QString& firstFile, const QString& continuation);

} // namespace verify
