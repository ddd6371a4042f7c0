// What a reader forgives and what is damage all the same.
#pragma once

#include "comtrade/finding.h"

namespace verify {

/// Adds what the reader forgave to wrong: of a record of this converter, which has nothing to be forgiven,
/// all but the notes; of others, whose writers have their own ways, what shows that data are missing or left
/// over. What is in wrong already is not said again.
void AddForgivenDamage(const comtrade::Findings& forgiven, bool isConverters, comtrade::Findings& wrong);

} // namespace verify
