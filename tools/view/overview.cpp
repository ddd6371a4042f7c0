// The still picture: voltages and currents of the started circuit, the states that change, and beside them
// the figures of the report.
#include "analysis/channelrole.h"
#include "output/outputfile.h"
#include "text/texts.h"
#include "view/chart.h"
#include "view/pagedata.h"
#include "view/pens.h"
#include "view/report.h"
#include "view/statetracks.h"
#include "view/view.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace view {

namespace {

constexpr int Width = 1400; // pixels
constexpr int Height = 860; // without states
constexpr int Margin = 24;
constexpr int FiguresWidth = 400;
constexpr int AxisWidth = 70;
constexpr int TitleHeight = 64;
constexpr int RulerHeight = 26;

// The circuit that the report names, or the first one with voltages or currents.
QString ShownCircuit(const analysis::Oscillogram& oscillogram)
{
    QString started = StartedCircuit(oscillogram);
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
    painter.drawText(QRectF(Margin, 14, Width - 2 * Margin, 30), Qt::AlignVCenter, config.station);
    SetFont(painter, 15);
    painter.setPen(Quiet);
    const QStringList parts = {config.device, StampText(config.trigger), circuit};
    painter.drawText(QRectF(Margin, 44, Width - 2 * Margin, 22), Qt::AlignVCenter,
                     parts.join(QStringLiteral("  ·  ")));
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

class Overview
{
public:
    explicit Overview(const analysis::Oscillogram& oscillogram_)
        : oscillogram(oscillogram_), circuit(ShownCircuit(oscillogram_)),
          figures(Figures(oscillogram_.report)), stretch(oscillogram_), states(oscillogram_)
    {}

    QSize Size() const { return {Width, Height + states.Height()}; }

    void Draw(QPaintDevice& device) const
    {
        const int statesTop = Height - Margin - RulerHeight;
        const int chartHeight = (statesTop - TitleHeight - Margin) / 2;
        const int beside = figures.isEmpty() ? 0 : FiguresWidth;
        const QRectF plot(Margin + AxisWidth, TitleHeight + Margin, Width - 3 * Margin - AxisWidth - beside,
                          chartHeight - Margin);
        const QRectF tracks(plot.left(), statesTop, plot.width(), states.Height());
        const QRectF charts(plot.topLeft(), tracks.bottomRight());
        QPainter painter(&device);
        painter.fillRect(QRect(QPoint(0, 0), Size()), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawTitle(painter, oscillogram.config, circuit);
        DrawTimes(painter, stretch, charts);
        Chart(painter, oscillogram, stretch, circuit, analysis::Quantity::Voltage, plot).Draw();
        Chart(painter, oscillogram, stretch, circuit, analysis::Quantity::Current,
              plot.translated(0, chartHeight))
            .Draw();
        states.Draw(painter, stretch, tracks);
        DrawTrigger(painter, stretch, charts);
        DrawFigures(painter, figures,
                    QRectF(Width - Margin - FiguresWidth, TitleHeight + Margin, FiguresWidth, statesTop));
    }

private:
    const analysis::Oscillogram& oscillogram;
    const QString circuit;
    const QStringList figures;
    const Stretch stretch;
    const StateTracks states;
};

QByteArray SvgOf(const analysis::Oscillogram& oscillogram)
{
    const Overview overview(oscillogram);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(overview.Size());
    generator.setViewBox(QRect(QPoint(0, 0), overview.Size()));
    generator.setTitle(oscillogram.config.station);
    overview.Draw(generator);
    return bytes;
}

QByteArray PngOf(const analysis::Oscillogram& oscillogram)
{
    const Overview overview(oscillogram);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage image(overview.Size(), QImage::Format_RGB32);
    overview.Draw(image);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

Held WritePicture(const QString& recordPath, const QString& picturePath, Picture format,
                  const Options& options)
{
    const analysis::Oscillogram oscillogram = Load(recordPath, options);
    const QByteArray bytes = format == Picture::Svg ? SvgOf(oscillogram) : PngOf(oscillogram);
    QString error;
    if (!output::WriteOutput(picturePath, bytes, error))
        throw Error(Tr("view", "'%1' cannot be written: %2").arg(picturePath, error));
    return Holding(oscillogram);
}

} // namespace view
