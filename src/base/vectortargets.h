// The instruction sets that there is vector code for.
#pragma once

#include <cstdint>

namespace zu {

/// Instruction sets as bits, those of Highway's targets (HWY_AVX2 and so on).
using VectorTargets = int64_t;

/// Those for which there is code and that this processor has; 0 if there are none.
VectorTargets SupportedVectorTargets();

} // namespace zu
