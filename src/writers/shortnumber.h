// Numbers of the CFG file, with eight significant digits.
#pragma once

#include <QLatin1String>

namespace zu {

/// The digits of value, as QString::setNum gives them for 'g' and 8, until the next call of this thread. The
/// channels of a recorder have few different values, so the last ones are kept.
QLatin1String Digits8(float value);

} // namespace zu
