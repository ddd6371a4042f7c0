#include "picture/drawing/faultpanel.h"

#include "analysis/channelrole.h"
#include "analysis/linematch.h"
#include "picture/drawing/linediagram.h"
#include "picture/drawing/pens.h"
#include "text/texts.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace picture {

namespace {

constexpr int HeadHeight = 28; // pixels
constexpr int RowHeight = 21;
constexpr int Gap = 16; // between the blocks

struct Bar
{
    QString name;
    double from; // s from the reference
    double to;
    QColor color;
};

std::vector<Bar> BarsOf(const analysis::Summary& summary)
{
    const analysis::Operating& operating = summary.operating;
    std::vector<Bar> bars;
    const auto add = [&bars](const QString& name, double from, const std::optional<double>& time,
                             const QColor& color) {
        if (time)
            bars.push_back({name, from, from + *time, color});
    };
    add(Tr("view", "Fault current"), 0, operating.clearing, FaultColor);
    add(Tr("view", "Protection starts"), 0, operating.start, StartColor);
    add(Tr("view", "Trip"), 0, operating.trip, TripColor);
    add(Tr("view", "Breaker opens"), 0, operating.breaker, BreakerColor);
    add(Tr("view", "Dead time"), operating.breaker.value_or(0), operating.deadTime, ReclosingColor);
    return bars;
}

using Rows = std::vector<QStringList>;

// Methods with km, percent and resistance; the one that counts is marked.
Rows DistanceRows(const analysis::FaultPart& part)
{
    if (part.distances.empty())
        return {};
    Rows rows = {{QString(), Tr("view", "km"), QStringLiteral("%"), Tr("view", "ohm")}};
    for (size_t i = 0; i < part.distances.size(); ++i) {
        const analysis::Distance& one = part.distances[i];
        const QString resistance =
            std::isfinite(one.resistance) ? analysis::Decimal(one.resistance, 2) : QStringLiteral("—");
        const QString mark = part.best == i ? QStringLiteral("● ") : QString();
        rows.push_back({mark + analysis::MethodText(one.method), analysis::Decimal(one.km, 2),
                        analysis::Decimal(one.percent, 1), resistance});
    }
    return rows;
}

// Volts or amperes in the unit in which the pictures show the channel.
QString Magnitude(const analysis::Phasor& phasor, const QString& unit)
{
    const double value =
        std::abs(phasor) / analysis::BaseFactor(unit) / (analysis::IsBaseUnit(unit) ? 1000 : 1);
    return std::isfinite(value) ? analysis::Decimal(value, 3) : QStringLiteral("—");
}

// Those that make up the faulted circuit, with the voltages that serve it.
bool IsOwn(size_t channel, const analysis::Summary& summary)
{
    const analysis::Circuit& circuit = *summary.FaultedCircuit();
    const analysis::Line* line = analysis::LineOf(circuit.name, summary.lines);
    const analysis::Circuit* voltages = analysis::VoltagesOf(circuit, summary.circuits, line);
    const auto has = [channel](const analysis::Circuit::Channels& channels) {
        return std::find(channels.begin(), channels.end(), static_cast<int>(channel)) != channels.end();
    };
    return has(circuit.currents) || has((voltages == nullptr ? circuit : *voltages).voltages);
}

Rows MagnitudeRows(const analysis::Summary& summary)
{
    if (!summary.findings.fault)
        return {};
    Rows rows = {{Tr("view", "RMS"), Tr("view", "before"), Tr("view", "during"), Tr("view", "after")}};
    for (const analysis::ChannelPhasors& one : summary.findings.fault->phasors) {
        const comtrade::AnalogChannel& channel = summary.config.analog[one.channel];
        if (!IsOwn(one.channel, summary))
            continue;
        const QString name = QString(channel.name).remove(channel.circuit).trimmed();
        rows.push_back(
            {(name.isEmpty() ? channel.name : name) + QStringLiteral(", ") + analysis::WithKilo(channel.unit),
             Magnitude(one.before, channel.unit), Magnitude(one.during, channel.unit),
             Magnitude(one.after, channel.unit)});
    }
    return rows;
}

// A row of heads and rows of values in columns of one width, the first one wider.
void DrawRows(QPainter& painter, const Rows& rows, const QRectF& area)
{
    constexpr double column = 62;
    double y = area.top();
    for (const QStringList& row : rows) {
        const bool isHead = &row == &rows.front();
        const bool isMarked = row[0].startsWith(QChar(0x25cf));
        SetFont(painter, 13, isMarked);
        painter.setPen(isHead ? Quiet : Ink);
        const double first = area.width() - column * (row.size() - 1);
        painter.drawText(QRectF(area.left(), y, first, RowHeight), Qt::AlignVCenter,
                         Fitting(row[0], first, 13, isMarked));
        for (int i = 1; i < row.size(); ++i)
            painter.drawText(QRectF(area.left() + first + column * (i - 1), y, column, RowHeight),
                             Qt::AlignRight | Qt::AlignVCenter, row[i]);
        y += RowHeight;
        painter.setPen(Rule);
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
}

void DrawBars(QPainter& painter, const std::vector<Bar>& bars, const QRectF& area)
{
    double names = 0;
    double numbers = 0;
    double last = 0;
    for (const Bar& bar : bars) {
        names = std::max(names, WidthOf(bar.name, 13) + 10);
        numbers = std::max(numbers, WidthOf(analysis::DurationText(bar.to - bar.from), 13, true) + 10);
        last = std::max(last, bar.to);
    }
    const double scale = std::max(area.width() - names - numbers, 20.0) / (last > 0 ? last : 1);
    double y = area.top();
    for (const Bar& bar : bars) {
        SetFont(painter, 13);
        painter.setPen(Ink);
        painter.drawText(QRectF(area.left(), y, names - 10, RowHeight), Qt::AlignRight | Qt::AlignVCenter,
                         bar.name);
        const double left = area.left() + names + std::min(bar.from, bar.to) * scale;
        const double width = std::max(std::abs(bar.to - bar.from) * scale, 2.0);
        painter.fillRect(QRectF(left, y + 5, width, RowHeight - 10), bar.color);
        SetFont(painter, 13, true);
        painter.drawText(QRectF(left + width + 6, y, numbers, RowHeight), Qt::AlignVCenter,
                         analysis::DurationText(bar.to - bar.from));
        y += RowHeight;
    }
}

// A titled part of the panel.
struct Block
{
    QString title;
    int height;
    std::function<void(QPainter&, const QRectF&)> draw;
};

Block RowsBlock(const QString& title, const Rows& rows)
{
    return {title, RowHeight * static_cast<int>(rows.size()),
            [rows](QPainter& painter, const QRectF& area) { DrawRows(painter, rows, area); }};
}

std::vector<Block> BlocksOf(const analysis::Summary& summary)
{
    if (!summary.findings.fault)
        return {};
    const std::vector<Bar> bars = BarsOf(summary);
    const std::vector<Block> all = {
        {summary.FaultedCircuit()->name, LineDiagramHeight,
         [&summary](QPainter& painter, const QRectF& area) { DrawLineDiagram(painter, summary, area); }},
        {Tr("view", "Operating times from the onset"), RowHeight * static_cast<int>(bars.size()),
         [bars](QPainter& painter, const QRectF& area) { DrawBars(painter, bars, area); }},
        RowsBlock(Tr("view", "Distance by method"), DistanceRows(summary.findings.fault->Located())),
        RowsBlock(Tr("view", "Magnitudes"), MagnitudeRows(summary))};
    std::vector<Block> blocks;
    std::copy_if(all.begin(), all.end(), std::back_inserter(blocks),
                 [](const Block& block) { return block.height > 0; });
    return blocks;
}

} // namespace

int FaultPanel::Height() const
{
    int height = 0;
    for (const Block& block : BlocksOf(summary))
        height += HeadHeight + block.height + Gap;
    return height;
}

void FaultPanel::Draw(QPainter& painter, const QRectF& area) const
{
    double y = area.top();
    for (const Block& block : BlocksOf(summary)) {
        SetFont(painter, 15, true);
        painter.setPen(Ink);
        painter.drawText(QRectF(area.left(), y, area.width(), HeadHeight - 4), Qt::AlignVCenter,
                         Fitting(block.title, area.width(), 15, true));
        block.draw(painter, QRectF(area.left(), y + HeadHeight, area.width(), block.height));
        y += HeadHeight + block.height + Gap;
    }
}

} // namespace picture
