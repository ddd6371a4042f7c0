#include "picture/drawing/overview.h"

#include "analysis/channelrole.h"
#include "analysis/linematch.h"
#include "picture/drawing/chart.h"
#include "picture/drawing/faultmarks.h"
#include "picture/drawing/faultpanel.h"
#include "picture/drawing/pens.h"
#include "picture/drawing/statetracks.h"
#include "text/texts.h"
#include "view/pagedata.h"
#include "view/report.h"
#include "view/shown.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace picture {

namespace {

constexpr int Width = 1400; // pixels
constexpr int Margin = 24;
constexpr int FiguresWidth = 400;
constexpr int AxisWidth = 70;
constexpr int TitleHeight = 64;
constexpr int RulerHeight = 26;
constexpr int LeadGap = 8;
constexpr int StartChartHeight = 361;
constexpr int FaultChartHeight = 300;

// The circuit that the report names, or the first one with voltages or currents.
QString ShownCircuit(const analysis::Oscillogram& oscillogram)
{
    QString started = view::StartedCircuit(oscillogram);
    if (!started.isEmpty())
        return started;
    for (const comtrade::AnalogChannel& channel : oscillogram.config.analog)
        if (analysis::RoleOf(channel).quantity != analysis::Quantity::Other)
            return channel.circuit;
    return QString();
}

void DrawTitle(QPainter& painter, const comtrade::Configuration& config, const QString& circuit)
{
    SetFont(painter, 24, true);
    painter.setPen(Ink);
    painter.drawText(QRectF(Margin, 14, Width - 2 * Margin, 30), Qt::AlignVCenter,
                     Fitting(config.station, Width - 2 * Margin, 24, true));
    SetFont(painter, 15);
    painter.setPen(Quiet);
    const QStringList parts = {config.device, view::StampText(config.trigger), circuit};
    painter.drawText(QRectF(Margin, 44, Width - 2 * Margin, 22), Qt::AlignVCenter,
                     Fitting(parts.join(QStringLiteral("  ·  ")), Width - 2 * Margin, 15));
}

// The time axis, below and through all charts.
void DrawTimes(QPainter& painter, const Stretch& stretch, const QRectF& charts)
{
    constexpr double milliseconds = 1000;
    const double step = NiceStep((stretch.To() - stretch.From()) * milliseconds, 10);
    SetFont(painter, 13);
    for (double time = std::ceil(stretch.From() * milliseconds / step) * step;
         time <= stretch.To() * milliseconds; time += step) {
        const double x = stretch.XOf(charts, time / milliseconds);
        painter.setPen(Quiet);
        painter.drawText(QRectF(x - 50, charts.bottom() + 4, 100, RulerHeight - 4), Qt::AlignCenter,
                         Tr("view", "%1 ms").arg(std::abs(time) < step / 1000 ? 0 : time));
        painter.setPen(Rule);
        painter.drawLine(QPointF(x, charts.top()), QPointF(x, charts.bottom()));
    }
}

void DrawTrigger(QPainter& painter, const Stretch& stretch, const QRectF& charts)
{
    if (stretch.From() > 0 || stretch.To() < 0)
        return;
    painter.setPen(QPen(TriggerColor, 1.5, Qt::DashLine));
    painter.drawLine(QPointF(stretch.XOf(charts, 0), charts.top()),
                     QPointF(stretch.XOf(charts, 0), charts.bottom()));
}

void DrawFigures(QPainter& painter, const QStringList& figures, const QRectF& area)
{
    SetFont(painter, 14);
    double y = area.top();
    for (const QString& line : figures) {
        painter.setPen(line.endsWith(QLatin1Char(':')) ? Quiet : Ink);
        const QRectF room(area.left(), y, area.width(), area.bottom() - y);
        const QRectF taken = painter.boundingRect(room, Qt::TextWordWrap, line);
        painter.drawText(room, Qt::TextWordWrap, line);
        y += std::max(taken.height(), 8.0) + 3;
    }
}

// The sentences: the first one large, the others as one paragraph.
class Lead
{
public:
    explicit Lead(QStringList sentences)
        : first(sentences.takeFirst()), others(sentences.join(QLatin1Char(' ')))
    {}

    /// Pixels.
    int Height() const { return static_cast<int>(std::ceil(FirstHeight() + OthersHeight())); }

    void Draw(QPainter& painter) const
    {
        const QRectF area(Margin, TitleHeight + LeadGap, Width - 2 * Margin, Height());
        painter.setPen(Ink);
        painter.setFont(FontOf(FirstSize, true));
        painter.drawText(area, Qt::TextWordWrap, first);
        painter.setFont(FontOf(OthersSize));
        painter.drawText(area.adjusted(0, FirstHeight(), 0, LeadGap), Qt::TextWordWrap, others);
    }

private:
    static constexpr int FirstSize = 19;
    static constexpr int OthersSize = 15;

    static double HeightOf(const QString& text, const QFont& font)
    {
        constexpr double most = 10000; // pixels, more than any text takes
        const QRectF room(0, 0, Width - 2 * Margin, most);
        return QFontMetricsF(font).boundingRect(room, Qt::TextWordWrap, text).height();
    }
    double FirstHeight() const { return HeightOf(first, FontOf(FirstSize, true)) + LeadGap; }
    double OthersHeight() const
    {
        return others.isEmpty() ? 0 : HeightOf(others, FontOf(OthersSize)) + LeadGap;
    }

    const QString first;
    const QString others;
};

// With a fault its circuit, otherwise the one that started the recorder.
class Overview
{
public:
    Overview(const analysis::Oscillogram& oscillogram_, const analysis::Summary& summary_)
        : oscillogram(oscillogram_), summary(summary_), faulted(summary_.FaultedCircuit()),
          circuit(faulted != nullptr ? faulted->name : ShownCircuit(oscillogram_)),
          lead(analysis::SentencesOf(summary_)),
          figures(faulted != nullptr ? QStringList() : view::Figures(oscillogram_.report)),
          stretch(faulted != nullptr && summary_.findings.fault
                      ? Stretch(oscillogram_, *summary_.findings.fault)
                      : Stretch(oscillogram_)),
          states(oscillogram_, faulted != nullptr ? faulted->states : std::vector<size_t>())
    {}

    QSize Size() const
    {
        const int beside = faulted != nullptr ? Top() - Margin + FaultPanel(summary).Height() : 0;
        return {Width, std::max(StatesTop() + states.Height() + RulerHeight, beside) + Margin};
    }

    void Draw(QPaintDevice& device) const
    {
        const int beside = faulted == nullptr && figures.isEmpty() ? 0 : FiguresWidth;
        const QRectF plot(Margin + AxisWidth, Top(), Width - 3 * Margin - AxisWidth - beside,
                          ChartHeight() - Margin);
        const QRectF tracks(plot.left(), StatesTop(), plot.width(), states.Height());
        const QRectF charts(plot.topLeft(), tracks.bottomRight());
        const QRectF panel(Width - Margin - FiguresWidth, Top() - (faulted != nullptr ? Margin : 0),
                           FiguresWidth, Size().height() - Top());
        QPainter painter(&device);
        painter.fillRect(QRect(QPoint(0, 0), Size()), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawTitle(painter, oscillogram.config, circuit);
        lead.Draw(painter);
        DrawTimes(painter, stretch, charts);
        Chart(painter, oscillogram, stretch, VoltageCircuit(), analysis::Quantity::Voltage, plot).Draw();
        Chart(painter, oscillogram, stretch, circuit, analysis::Quantity::Current,
              plot.translated(0, ChartHeight()))
            .Draw();
        states.Draw(painter, stretch, tracks);
        DrawTrigger(painter, stretch, charts);
        DrawFigures(painter, figures, panel);
        if (faulted == nullptr)
            return;
        DrawFaultMarks(painter, summary, stretch, charts);
        FaultPanel(summary).Draw(painter, panel);
    }

private:
    int Top() const // of the charts
    {
        return TitleHeight + LeadGap + lead.Height() + Margin + (faulted != nullptr ? MarksHeight : 0);
    }
    int ChartHeight() const { return faulted != nullptr ? FaultChartHeight : StartChartHeight; }
    int StatesTop() const { return Top() + 2 * ChartHeight(); }

    // Of a line without voltages of its own: that of the busbar.
    QString VoltageCircuit() const
    {
        if (faulted == nullptr)
            return circuit;
        const analysis::Line* line = analysis::LineOf(faulted->name, summary.lines);
        const analysis::Circuit* voltages = analysis::VoltagesOf(*faulted, summary.circuits, line);
        return voltages == nullptr ? circuit : voltages->name;
    }

    const analysis::Oscillogram& oscillogram;
    const analysis::Summary& summary;
    const analysis::Circuit* const faulted; // null without a fault
    const QString circuit;
    const Lead lead;
    const QStringList figures;
    const Stretch stretch;
    const StateTracks states;
};

QByteArray SvgOf(const Overview& overview, const QString& title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(overview.Size());
    generator.setViewBox(QRect(QPoint(0, 0), overview.Size()));
    generator.setTitle(title);
    overview.Draw(generator);
    return bytes;
}

QByteArray PngOf(const Overview& overview)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage image(overview.Size(), QImage::Format_RGB32);
    overview.Draw(image);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

QByteArray DrawOverview(const analysis::Oscillogram& oscillogram, const analysis::Summary& summary,
                        Format format)
{
    const Overview overview(oscillogram, summary);
    return format == Format::Svg ? SvgOf(overview, oscillogram.config.station) : PngOf(overview);
}

} // namespace picture
