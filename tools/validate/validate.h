// A record held against the rules of the standard (IEEE C37.111, revisions 1999 and 2013).
#pragma once

#include "comtrade/record.h"

#include <QString>

#include <vector>

namespace validate {

/// Everything about a record, a .cfg or a .cff, that the standard does not allow or that readers do not
/// expect: what the reader forgives, and what it does not mind. A record that cannot be read is a finding as
/// well. File by file, each in the order of its lines; where there are more of a kind than are kept, the last
/// one of them says how many. The data are read once, in blocks.
std::vector<comtrade::Finding> Validate(const QString& path, const comtrade::ReadingOptions& options = {});

} // namespace validate
