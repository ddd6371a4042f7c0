// The item decoders that this machine can run, each for a processor with one instruction set.
#pragma once

#include "recording/itemdecoder.h"

#include <vector>

/// The portable ones first.
inline std::vector<const zu::ItemDecoderTable*> AllItemDecoders()
{
    std::vector<const zu::ItemDecoderTable*> tables = {&zu::ItemDecodersFor(0)};
    const auto supported = static_cast<uint64_t>(zu::SupportedVectorTargets());
    for (uint64_t rest = supported; rest != 0; rest &= rest - 1)
        tables.push_back(&zu::ItemDecodersFor(static_cast<zu::VectorTargets>(rest & ~(rest - 1))));
    return tables;
}
