// Older processors, for which this one stands in.
#pragma once

#include <cstdint>
#include <vector>

namespace bench {

struct Processor
{
    const char* name; // its best instruction set
    int64_t targets;  // as bits of Highway
};

/// Those whose instruction sets this machine has, without the others that it has; the last one has none.
std::vector<Processor> OlderProcessors();

} // namespace bench
