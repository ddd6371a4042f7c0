#include "picture/drawing/chart.h"

#include "picture/drawing/pens.h"

#include <algorithm>
#include <cmath>

namespace picture {

namespace {

constexpr int AxisWidth = 70; // pixels

// The channels of a quantity in a circuit.
std::vector<size_t> ChannelsOf(const analysis::Oscillogram& oscillogram, const QString& circuit,
                               analysis::Quantity quantity)
{
    std::vector<size_t> channels;
    for (size_t i = 0; i < oscillogram.config.analog.size(); ++i) {
        const comtrade::AnalogChannel& channel = oscillogram.config.analog[i];
        if (channel.circuit == circuit && analysis::RoleOf(channel).quantity == quantity)
            channels.push_back(i);
    }
    return channels;
}

} // namespace

Chart::Chart(QPainter& painter_, const analysis::Oscillogram& oscillogram_, const Stretch& stretch_,
             const QString& circuit_, analysis::Quantity quantity, const QRectF& plot_)
    : painter(painter_), oscillogram(oscillogram_), stretch(stretch_), circuit(circuit_),
      channels(ChannelsOf(oscillogram_, circuit_, quantity)), plot(plot_)
{}

double Chart::Value(size_t channel, double code) const
{
    const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
    return (known.a * code + known.b) * analysis::PrimaryFactor(known) /
           (analysis::IsBaseUnit(known.unit) ? 1000 : 1);
}

void Chart::Draw()
{
    if (channels.empty() || oscillogram.Count() == 0)
        return;
    double low = 0;
    double high = 0;
    for (const size_t channel : channels)
        for (size_t i = stretch.Begin(); i < stretch.End(); ++i) {
            const double value = Value(channel, oscillogram.analog[channel].At(i));
            low = std::isfinite(value) ? std::min(low, value) : low;
            high = std::isfinite(value) ? std::max(high, value) : high;
        }
    const double air = high > low ? (high - low) * 0.05 : 1;
    DrawValues(low - air, high + air);
    painter.save();
    painter.setClipRect(plot);
    for (const size_t channel : channels)
        DrawTrace(channel, low - air, high + air);
    painter.restore();
    DrawNames();
}

void Chart::DrawValues(double low, double high)
{
    const double step = NiceStep(high - low, 6);
    SetFont(painter, 13);
    for (double value = std::ceil(low / step) * step; value <= high; value += step) {
        const double y = plot.bottom() - (value - low) / (high - low) * plot.height();
        painter.setPen(Rule);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(Quiet);
        const QString text = QString::number(std::abs(value) < step / 1000 ? 0 : value, 'g', 6);
        painter.drawText(QRectF(plot.left() - AxisWidth, y - 10, AxisWidth - 8, 20),
                         Qt::AlignRight | Qt::AlignVCenter, text);
    }
}

// Runs of samples without a missing one, each drawn on its own.
void Chart::DrawTrace(size_t channel, double low, double high)
{
    const analysis::Codes& codes = oscillogram.analog[channel];
    painter.setPen(QPen(ColorOf(analysis::RoleOf(oscillogram.config.analog[channel]).phase), 1.6));
    const size_t end = stretch.End();
    for (size_t sample = stretch.Begin(); sample < end; ++sample) {
        const size_t from = sample;
        while (sample < end && std::isfinite(codes.At(sample)))
            ++sample;
        if (sample == from)
            continue;
        QPolygonF line;
        for (const size_t extreme : Extremes(codes, from, sample)) {
            const double part = (Value(channel, codes.At(extreme)) - low) / (high - low);
            line << QPointF(stretch.XOf(plot, stretch.TimeOf(extreme)), plot.bottom() - part * plot.height());
        }
        if (sample == from + 1)
            painter.drawPoint(line.first());
        else
            painter.drawPolyline(line);
    }
}

// Samples with the least and the greatest code of each pixel column, so that no peak is lost.
std::vector<size_t> Chart::Extremes(const analysis::Codes& codes, size_t sample, size_t end) const
{
    std::vector<size_t> extremes;
    while (sample < end) {
        const double column = std::floor(stretch.XOf(plot, stretch.TimeOf(sample)));
        size_t least = sample;
        size_t greatest = sample;
        for (; sample < end && std::floor(stretch.XOf(plot, stretch.TimeOf(sample))) <= column; ++sample) {
            least = codes.At(sample) < codes.At(least) ? sample : least;
            greatest = codes.At(sample) > codes.At(greatest) ? sample : greatest;
        }
        extremes.push_back(std::min(least, greatest));
        extremes.push_back(std::max(least, greatest));
    }
    return extremes;
}

void Chart::DrawNames()
{
    double x = plot.left();
    SetFont(painter, 13, true);
    for (const size_t channel : channels) {
        const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
        const QString name = QString(known.name).remove(circuit).trimmed();
        const QString text =
            (name.isEmpty() ? known.name : name) + QStringLiteral(", ") + analysis::WithKilo(known.unit);
        painter.setPen(ColorOf(analysis::RoleOf(known).phase));
        painter.drawText(QRectF(x, plot.top() - 21, 140, 18), Qt::AlignVCenter, text);
        x += painter.fontMetrics().horizontalAdvance(text) + 22;
    }
}

} // namespace picture
