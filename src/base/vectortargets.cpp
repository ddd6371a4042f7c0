#include "base/vectortargets.h"

#include "base/vectorcode.h"

zu::VectorTargets zu::SupportedVectorTargets()
{
    VectorTargets targets = HWY_STATIC_TARGET; // the compiler takes it for granted
#ifdef __x86_64__
    if (__builtin_cpu_supports("ssse3") != 0)
        targets |= HWY_SSSE3;
    if (__builtin_cpu_supports("avx2") != 0)
        targets |= HWY_AVX2;
#endif
    return targets & HWY_TARGETS & ~(HWY_SCALAR | HWY_EMU128);
}
