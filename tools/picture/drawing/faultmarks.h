// Onset, trip and clearing as lines through the charts of the still picture, with their names above.
#pragma once

#include "analysis/summary.h"
#include "picture/drawing/stretch.h"

#include <QPainter>

namespace picture {

/// Pixels above the charts that the names take.
constexpr int MarksHeight = 40;

/// There must be a fault. Moments outside of the stretch are left out; charts is the area of all of them.
void DrawFaultMarks(QPainter& painter, const analysis::Summary& summary, const Stretch& stretch,
                    const QRectF& charts);

} // namespace picture
