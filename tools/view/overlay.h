// How a second record lies over the first in time.
#pragma once

#include "analysis/oscillogram.h"
#include "view/view.h"

#include <QJsonObject>

namespace view {

struct Overlay
{
    Overlay(const analysis::Oscillogram& first, const analysis::Oscillogram& second, Alignment alignment_);

    double between; ///< s from the first record's trigger to the second's
    bool inUtc;     ///< by their time codes; otherwise by the clocks as they stand
    double reach;   ///< s between the samples of both, up to which the page shows them together
    double gap;     ///< s between them as they are aligned; below zero where they overlap
    Alignment alignment;

    bool IsApart() const { return gap > reach; }
};

/// As the page's scripts take it, times in milliseconds: {"between", "inUtc", "reach", "align": "time" or
/// "trigger", "units": {unit: ["U", "I" or "", size in V or A] ...} of all channels}.
QJsonObject OverlayJson(const Overlay& overlay, const analysis::Oscillogram& first,
                        const analysis::Oscillogram& second);

} // namespace view
