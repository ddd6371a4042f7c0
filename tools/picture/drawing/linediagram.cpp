#include "picture/drawing/linediagram.h"

#include "analysis/linematch.h"
#include "picture/drawing/pens.h"
#include "text/texts.h"

#include <QLatin1String>

#include <algorithm>
#include <array>
#include <cmath>

namespace picture {

namespace {

constexpr std::array<double, analysis::Phases> ConductorAt = {50, 66, 82}; // pixels below the top
constexpr double Joint = 102;     // where the phases of the fault meet
constexpr double ScaleAt = 148;   // of the kilometres
constexpr double BusAt = 20;      // pixels right of the left edge
constexpr double BusBehind = 130; // likewise, if the fault is behind it
constexpr double FarGap = 40;     // pixels right of the far end

class LineDiagram
{
public:
    LineDiagram(QPainter& painter_, const analysis::Summary& summary_, const QRectF& area_)
        : painter(painter_), summary(summary_), fault(*summary_.findings.fault), part(fault.Located()),
          line(analysis::LineOf(summary_.FaultedCircuit()->name, summary_.lines)), area(area_),
          isBehind(fault.direction == analysis::Direction::Reverse),
          bus(area_.left() + (isBehind ? BusBehind : BusAt)), end(area_.right() - FarGap)
    {}

    void Draw()
    {
        DrawRange();
        DrawConductors();
        DrawStation();
        DrawFault();
        if (IsPlaced())
            DrawScale();
        else
            Note(Place(), ScaleAt,
                 isBehind ? Tr("view", "behind the busbar") : Tr("view", "somewhere on the line"), true);
    }

private:
    bool IsPlaced() const { return !isBehind && line != nullptr && (part.best || part.range); }
    const analysis::Distance* Best() const { return part.best ? &part.distances[*part.best] : nullptr; }
    bool Has(size_t phase) const
    {
        return QLatin1String(analysis::NameOf(fault.Kind())).contains(QLatin1Char("ABC"[phase]));
    }
    bool HasEarth() const { return QLatin1String(analysis::NameOf(fault.Kind())).contains(QLatin1Char('G')); }
    double Y(double below) const { return area.top() + below; }

    double XOf(double percent) const
    {
        constexpr double most = 103; // a little beyond the far end
        return bus + std::clamp(percent, 0.0, most) / 100 * (end - bus);
    }

    double Place() const
    {
        if (isBehind)
            return bus - 60;
        if (line == nullptr)
            return (bus + end) / 2;
        if (part.best)
            return XOf(Best()->percent);
        if (part.range)
            return XOf((part.range->fromPercent + part.range->toPercent) / 2);
        return (bus + end) / 2;
    }

    // A text below a place, as far as the area allows.
    void Note(double x, double below, const QString& text, bool isBold) const
    {
        SetFont(painter, isBold ? 14 : 12, isBold);
        painter.setPen(isBold ? Ink : Quiet);
        const double half = WidthOf(text, isBold ? 14 : 12, isBold) / 2;
        const double middle = std::max(area.left() + half, std::min(x, area.right() - half));
        painter.drawText(QRectF(middle - half - 4, Y(below), 2 * half + 8, 20), Qt::AlignCenter, text);
    }

    void DrawRange() const
    {
        if (!IsPlaced() || !part.range)
            return;
        QColor fill = FaultColor;
        fill.setAlpha(40);
        const double from = XOf(part.range->fromPercent);
        const double width = std::max(XOf(part.range->toPercent) - from, 2.0);
        painter.fillRect(QRectF(from, Y(38), width, ScaleAt - 38), fill);
    }

    void DrawConductors() const
    {
        SetFont(painter, 13, true);
        for (size_t phase = 0; phase < analysis::Phases; ++phase) {
            QColor color = ColorOf("abc"[phase]);
            const double y = Y(ConductorAt[phase]);
            painter.setPen(color);
            painter.drawText(QRectF(end + 10, y - 9, 20, 18), Qt::AlignVCenter,
                             QString(QLatin1Char("ABC"[phase])));
            color.setAlpha(Has(phase) ? 255 : 110);
            painter.setPen(QPen(color, Has(phase) ? 2.4 : 1.5));
            painter.drawLine(QPointF(isBehind ? area.left() : bus, y), QPointF(end, y));
        }
        painter.setPen(QPen(Quiet, 3));
        painter.drawLine(QPointF(end, Y(40)), QPointF(end, Y(92)));
    }

    // Busbar, breaker (hollow if it opened), current transformers and the recorder.
    void DrawStation() const
    {
        painter.setPen(QPen(Ink, 6));
        painter.drawLine(QPointF(bus, Y(38)), QPointF(bus, Y(94)));
        const double transformer = bus + 52;
        painter.setPen(QPen(Quiet, 1.2));
        painter.drawLine(QPointF(transformer, Y(22)), QPointF(transformer, Y(ConductorAt.back())));
        for (const double conductor : ConductorAt) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(Quiet, 1.2));
            painter.drawEllipse(QPointF(transformer, Y(conductor)), 4, 4);
            painter.setBrush(summary.operating.breaker ? QBrush(Qt::white) : QBrush(Ink));
            painter.setPen(QPen(Ink, 1.4));
            painter.drawRect(QRectF(bus + 18, Y(conductor) - 5, 10, 10));
        }
        const QString recorder = Tr("view", "recorder");
        const double half = WidthOf(recorder, 12) / 2 + 8;
        painter.setBrush(Qt::white);
        painter.setPen(Quiet);
        const QRectF box(transformer - half, Y(2), 2 * half, 20);
        painter.drawRoundedRect(box, 4, 4);
        SetFont(painter, 12);
        painter.drawText(box, Qt::AlignCenter, recorder);
        painter.setBrush(Qt::NoBrush);
        const QString length =
            line == nullptr ? QString() : Tr("view", "%1 km").arg(analysis::Decimal(line->length, 1));
        painter.drawText(QRectF(box.right() + 8, Y(2), end - box.right() - 8, 20),
                         Qt::AlignRight | Qt::AlignVCenter, length);
    }

    // A dot on each phase, joined below the conductors, and from there to earth.
    void DrawFault() const
    {
        std::vector<size_t> phases;
        for (size_t phase = 0; phase < analysis::Phases; ++phase)
            if (Has(phase))
                phases.push_back(phase);
        constexpr double apart = 12; // pixels between their drops
        const double first = Place() - apart * static_cast<double>(phases.size() - 1) / 2;
        double x = first;
        painter.setPen(QPen(FaultColor, 2));
        painter.setBrush(FaultColor);
        for (const size_t phase : phases) {
            painter.drawLine(QPointF(x, Y(ConductorAt[phase])), QPointF(x, Y(Joint)));
            painter.drawEllipse(QPointF(x, Y(ConductorAt[phase])), 3, 3);
            x += apart;
        }
        painter.drawLine(QPointF(first, Y(Joint)), QPointF(x - apart, Y(Joint)));
        if (HasEarth())
            DrawEarth();
        painter.setBrush(Qt::NoBrush);
        DrawResistance(x);
    }

    void DrawEarth() const
    {
        const double below = Y(Joint + 22);
        painter.drawLine(QPointF(Place(), Y(Joint)), QPointF(Place(), below));
        for (const int bar : {0, 1, 2})
            painter.drawLine(QPointF(Place() - 9 + 3 * bar, below + 4 * bar),
                             QPointF(Place() + 9 - 3 * bar, below + 4 * bar));
    }

    void DrawResistance(double x) const
    {
        if (!IsPlaced() || Best() == nullptr || !std::isfinite(Best()->resistance))
            return;
        const QString text = Tr("view", "%1 ohm").arg(analysis::Decimal(Best()->resistance, 1));
        const double width = WidthOf(text, 12, true) + 4;
        const double left = x + width < area.right() ? x : 2 * Place() - x - width;
        SetFont(painter, 12, true);
        painter.setPen(Ink);
        painter.drawText(QRectF(left, Y(Joint), width, 18), Qt::AlignVCenter, text);
    }

    void DrawScale() const
    {
        painter.setPen(Quiet);
        painter.drawLine(QPointF(bus, Y(ScaleAt)), QPointF(end, Y(ScaleAt)));
        for (const int percent : {0, 25, 50, 75, 100})
            painter.drawLine(QPointF(XOf(percent), Y(ScaleAt)), QPointF(XOf(percent), Y(ScaleAt) + 5));
        painter.setPen(Qt::NoPen);
        painter.setBrush(FaultColor);
        const QPointF tip(Place(), Y(ScaleAt));
        painter.drawPolygon(QPolygonF({tip, tip + QPointF(-5, -8), tip + QPointF(5, -8)}));
        painter.setBrush(Qt::NoBrush);
        Note(Place(), ScaleAt + 8, DistanceText(), true);
        SetFont(painter, 12);
        painter.setPen(Quiet);
    }

    QString DistanceText() const
    {
        QString range = part.range ? Tr("view", "%1 to %2 %")
                                         .arg(analysis::Decimal(part.range->fromPercent, 1),
                                              analysis::Decimal(part.range->toPercent, 1))
                                   : QString();
        if (Best() == nullptr)
            return range;
        const QString text =
            Tr("view", "%1 km, %2 %")
                .arg(analysis::Decimal(Best()->km, 1), analysis::Decimal(Best()->percent, 1));
        return range.isEmpty() ? text : text + QStringLiteral(" (") + range + QLatin1Char(')');
    }

    QPainter& painter;
    const analysis::Summary& summary;
    const analysis::Fault& fault;
    const analysis::FaultPart& part;
    const analysis::Line* line;
    const QRectF area;
    const bool isBehind;
    const double bus;
    const double end;
};

} // namespace

void DrawLineDiagram(QPainter& painter, const analysis::Summary& summary, const QRectF& area)
{
    LineDiagram(painter, summary, area).Draw();
}

} // namespace picture
