#include "processors.h"

#include <hwy/targets.h>

namespace bench {

std::vector<Processor> OlderProcessors()
{
    const Processor processors[] = {
#if HWY_ARCH_X86
        {"AVX2", HWY_AVX2 | HWY_SSE4 | HWY_SSSE3},
        {"SSE4", HWY_SSE4 | HWY_SSSE3},
        {"SSSE3", HWY_SSSE3},
#elif HWY_ARCH_ARM
        {"NEON", HWY_NEON},
#endif
        {"no vectors", 0},
    };
    std::vector<Processor> found;
    for (const Processor& processor : processors) {
        hwy::DisableTargets(~processor.targets);
        const int64_t left = hwy::SupportedTargets() & ~(HWY_SCALAR | HWY_EMU128);
        if (left == processor.targets)
            found.push_back(processor);
    }
    hwy::DisableTargets(0);
    return found;
}

} // namespace bench
