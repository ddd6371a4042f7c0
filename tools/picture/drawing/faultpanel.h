// What stands beside the waves of a fault in the still picture: the fault on its line, operating times,
// distances, magnitudes.
#pragma once

#include "analysis/summary.h"

#include <QPainter>

namespace picture {

class FaultPanel
{
public:
    /// The summary must have a fault, and outlive the panel.
    explicit FaultPanel(const analysis::Summary& summary_) : summary(summary_) {}

    /// Pixels.
    int Height() const;

    void Draw(QPainter& painter, const QRectF& area) const;

private:
    const analysis::Summary& summary;
};

} // namespace picture
