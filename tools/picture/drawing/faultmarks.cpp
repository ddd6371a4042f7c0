#include "picture/drawing/faultmarks.h"

#include "picture/drawing/pens.h"
#include "text/texts.h"

#include <algorithm>
#include <array>

namespace picture {

namespace {

constexpr double RowHeight = 18;       // pixels of a line of names
constexpr double NamesOfChannels = 22; // pixels between the charts and the marks' names

struct Mark
{
    double time; // s from the trigger
    QString name;
    QColor color;
};

std::vector<Mark> MarksOf(const analysis::Summary& summary)
{
    if (!summary.findings.fault)
        return {};
    const analysis::Fault& fault = *summary.findings.fault;
    const analysis::Operating& operating = summary.operating;
    std::vector<Mark> marks = {{fault.Onset(), Tr("view", "onset"), Ink}};
    if (operating.from && operating.trip)
        marks.push_back({*operating.from + *operating.trip,
                         Tr("view", "trip %1").arg(analysis::DurationText(*operating.trip)), TripColor});
    if (const std::optional<double> clearing = fault.Clearing())
        marks.push_back({*clearing,
                         Tr("view", "cleared %1").arg(analysis::DurationText(*clearing - fault.Onset())),
                         FaultColor});
    return marks;
}

} // namespace

void DrawFaultMarks(QPainter& painter, const analysis::Summary& summary, const Stretch& stretch,
                    const QRectF& charts)
{
    const double bottom = charts.top() - NamesOfChannels;                                     // of the names
    std::array<double, 2> taken = {charts.left() - MarksHeight, charts.left() - MarksHeight}; // up to there
    for (const Mark& mark : MarksOf(summary)) {
        if (mark.time < stretch.From() || mark.time > stretch.To())
            continue;
        const double x = stretch.XOf(charts, mark.time);
        const double width = WidthOf(mark.name, 13, true) + 8;
        const double left = std::min(x - width / 2, charts.right() - width);
        const size_t row = left >= taken[0] ? 0 : 1;
        taken[row] = left + width;
        const double top = bottom - RowHeight * static_cast<double>(row + 1);
        SetFont(painter, 13, true);
        painter.setPen(mark.color);
        painter.drawText(QRectF(left, top, width, RowHeight), Qt::AlignCenter, mark.name);
        painter.setPen(QPen(mark.color, 1.3));
        painter.drawLine(QPointF(x, charts.top()), QPointF(x, charts.bottom()));
    }
}

} // namespace picture
