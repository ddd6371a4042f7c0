// The fault on its line, part of the still picture: busbar with the recorder, the breaker, three conductors,
// and the fault where it is.
#pragma once

#include "analysis/summary.h"

#include <QPainter>

namespace picture {

/// Pixels.
constexpr int LineDiagramHeight = 190;

/// There must be a fault. Without a distance it stands somewhere on the line, and is said to.
void DrawLineDiagram(QPainter& painter, const analysis::Summary& summary, const QRectF& area);

} // namespace picture
