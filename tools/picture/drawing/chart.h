// The traces of one quantity of a circuit over a common scale, part of the still picture.
#pragma once

#include "analysis/channelrole.h"
#include "picture/drawing/stretch.h"

#include <QPainter>

#include <vector>

namespace picture {

class Chart
{
public:
    /// plot is the area of the traces; names are above it and values to the left. Painter, oscillogram and
    /// stretch must outlive the chart.
    Chart(QPainter& painter_, const analysis::Oscillogram& oscillogram_, const Stretch& stretch_,
          const QString& circuit_, analysis::Quantity quantity, const QRectF& plot_);

    /// Draws nothing if the circuit has no such channels.
    void Draw();

private:
    double Value(size_t channel, double code) const;
    void DrawValues(double low, double high);
    void DrawTrace(size_t channel, double low, double high);
    std::vector<size_t> Extremes(const analysis::Codes& codes, size_t sample, size_t end) const;
    void DrawNames();

    QPainter& painter;
    const analysis::Oscillogram& oscillogram;
    const Stretch& stretch;
    const QString circuit;
    const std::vector<size_t> channels; // by their places in the configuration
    const QRectF plot;
};

} // namespace picture
