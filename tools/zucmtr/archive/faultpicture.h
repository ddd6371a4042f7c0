// The small picture of a fault that the catalogue keeps.
#pragma once

#include "analysis/summary.h"
#include "catalogue/entry.h"

#include <optional>

namespace archive {

/// Voltages and currents of the faulted circuit from two periods before the onset to two after the clearing,
/// at least eight and at most twelve in all. None without a fault, and where the circuit has neither. The
/// summary must be that of the oscillogram.
std::optional<catalogue::PictureFacts> PictureOf(const analysis::Oscillogram& oscillogram,
                                                 const analysis::Summary& summary);

} // namespace archive
