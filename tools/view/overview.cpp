// The still picture: voltages and currents of the started circuit, the states that change, and beside them
// the figures of the report.
#include "channelrole.h"
#include "oscillogram.h"
#include "output/outputfile.h"
#include "pagedata.h"
#include "report.h"
#include "view.h"
#include "zucmtr/texts.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace view {

namespace {

constexpr int width = 1400; // pixels
constexpr int height = 860; // without states
constexpr int margin = 24;
constexpr int figuresWidth = 400;
constexpr int axisWidth = 70;
constexpr int titleHeight = 64;
constexpr int rulerHeight = 26;
constexpr int stateHeight = 22;
constexpr size_t mostStates = 14;
constexpr double periodsBefore = 3;
constexpr double periodsShown = 12;

const QColor ink(0x17, 0x20, 0x2e);
const QColor quiet(0x5d, 0x6b, 0x80);
const QColor rule(0xdd, 0xe3, 0xec);
const QColor triggerColor(0xd9, 0x48, 0x0f);
const QColor stateColor(0x2f, 0x6f, 0xcb);

QColor ColorOf(char phase)
{
    switch (phase) {
    case 'a':
        return {0xc0, 0x8a, 0x00};
    case 'b':
        return {0x17, 0x80, 0x3d};
    case 'c':
        return {0xcf, 0x22, 0x33};
    default:
        return {0x47, 0x56, 0x6f};
    }
}

using Channels = std::vector<size_t>; // by their places in the configuration

struct Span
{
    double from, to; // s from the trigger
};

// The channels of a quantity in a circuit.
Channels Of(const Oscillogram& oscillogram, const QString& circuit, Quantity quantity)
{
    Channels channels;
    for (size_t i = 0; i < oscillogram.config.analog.size(); ++i) {
        const comtrade::AnalogChannel& channel = oscillogram.config.analog[i];
        if (channel.circuit == circuit && RoleOf(channel).quantity == quantity)
            channels.push_back(i);
    }
    return channels;
}

// The circuit that the report names, or the first one with voltages or currents.
QString ShownCircuit(const Oscillogram& oscillogram)
{
    QString started = StartedCircuit(oscillogram);
    if (!started.isEmpty())
        return started;
    for (const comtrade::AnalogChannel& channel : oscillogram.config.analog)
        if (RoleOf(channel).quantity != Quantity::Other)
            return channel.circuit;
    return QString();
}

Channels ChangingStates(const Oscillogram& oscillogram)
{
    Channels changing;
    for (size_t i = 0; i < oscillogram.states.size() && changing.size() < mostStates; ++i)
        if (oscillogram.states[i].Changes() > 0)
            changing.push_back(i);
    return changing;
}

// A step of 1, 2 or 5 times a power of ten, so that a range has at most so many of them.
double NiceStep(double range, int most)
{
    const double raw = range / most;
    const double power = std::pow(10, std::floor(std::log10(raw)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= raw)
            return factor * power;
    return 10 * power;
}

class Overview
{
public:
    Overview(QPainter& painter_, const Oscillogram& oscillogram_)
        : painter(painter_), oscillogram(oscillogram_), states(ChangingStates(oscillogram_)),
          circuit(ShownCircuit(oscillogram_)), figures(Figures()), span(ShownSpan())
    {}

    static int HeightOf(const Oscillogram& oscillogram)
    {
        return height + stateHeight * static_cast<int>(ChangingStates(oscillogram).size());
    }

    void Draw()
    {
        const int statesTop = height - margin - rulerHeight;
        painter.fillRect(0, 0, width, HeightOf(oscillogram), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawTitle();
        const int chartHeight = (statesTop - titleHeight - margin) / 2;
        const int beside = figures.isEmpty() ? 0 : figuresWidth;
        const QRectF plot(margin + axisWidth, titleHeight + margin, width - 3 * margin - axisWidth - beside,
                          chartHeight - margin);
        const QRectF tracks(plot.left(), statesTop, plot.width(),
                            stateHeight * static_cast<double>(states.size()));
        const QRectF charts(plot.topLeft(), tracks.bottomRight());
        DrawTimes(charts);
        DrawChart(plot, Of(oscillogram, circuit, Quantity::Voltage));
        DrawChart(plot.translated(0, chartHeight), Of(oscillogram, circuit, Quantity::Current));
        DrawStates(tracks);
        DrawTrigger(charts);
        DrawFigures(QRectF(width - margin - figuresWidth, titleHeight + margin, figuresWidth, statesTop));
    }

private:
    // Three periods ahead of the trigger and nine behind it, as far as there are samples.
    Span ShownSpan() const
    {
        const TimeAxis& axis = oscillogram.axis;
        const qint64 last = oscillogram.first + std::max<qint64>(oscillogram.Count() - 1, 0);
        const double start = axis.TimeOf(oscillogram.first);
        const double end = axis.TimeOf(last);
        const double period = 1 / MainsFrequency(oscillogram.config);
        const double from = std::max(start, -periodsBefore * period);
        const double to = std::min(end, from + periodsShown * period);
        return from < to ? Span{from, to} : Span{start, std::max(end, start + period)};
    }

    void SetFont(int pixels, bool bold = false)
    {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(pixels);
        font.setBold(bold);
        painter.setFont(font);
    }

    void DrawTitle()
    {
        const comtrade::Configuration& config = oscillogram.config;
        SetFont(24, true);
        painter.setPen(ink);
        painter.drawText(QRectF(margin, 14, width - 2 * margin, 30), Qt::AlignVCenter, config.station);
        SetFont(15);
        painter.setPen(quiet);
        const QStringList parts = {config.device, StampText(config.trigger), circuit};
        painter.drawText(QRectF(margin, 44, width - 2 * margin, 22), Qt::AlignVCenter,
                         parts.join(QStringLiteral("  ·  ")));
    }

    double Value(size_t channel, double code) const
    {
        const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
        return (known.a * code + known.b) * PrimaryFactor(known) / (IsBaseUnit(known.unit) ? 1000 : 1);
    }

    double XOf(const QRectF& plot, double time) const
    {
        return plot.left() + (time - span.from) / (span.to - span.from) * plot.width();
    }

    size_t SampleAt(double time) const
    {
        const qint64 end = oscillogram.first + oscillogram.Count();
        return static_cast<size_t>(
            std::max<qint64>(oscillogram.axis.SampleAt(time, end) - oscillogram.first, 0));
    }

    double TimeOf(size_t sample) const
    {
        return oscillogram.axis.TimeOf(oscillogram.first + static_cast<qint64>(sample));
    }

    void DrawChart(const QRectF& plot, const Channels& channels)
    {
        if (channels.empty() || oscillogram.Count() == 0)
            return;
        double low = 0;
        double high = 0;
        for (const size_t channel : channels)
            for (size_t i = SampleAt(span.from); i <= SampleAt(span.to); ++i) {
                const double value = Value(channel, oscillogram.analog[channel].At(i));
                low = std::isfinite(value) ? std::min(low, value) : low;
                high = std::isfinite(value) ? std::max(high, value) : high;
            }
        const double air = high > low ? (high - low) * 0.05 : 1;
        DrawValues(plot, low - air, high + air);
        painter.save();
        painter.setClipRect(plot);
        for (const size_t channel : channels)
            DrawTrace(plot, channel, low - air, high + air);
        painter.restore();
        DrawNames(plot, channels);
    }

    void DrawValues(const QRectF& plot, double low, double high)
    {
        const double step = NiceStep(high - low, 6);
        SetFont(13);
        for (double value = std::ceil(low / step) * step; value <= high; value += step) {
            const double y = plot.bottom() - (value - low) / (high - low) * plot.height();
            painter.setPen(rule);
            painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
            painter.setPen(quiet);
            const QString text = QString::number(std::abs(value) < step / 1000 ? 0 : value, 'g', 6);
            painter.drawText(QRectF(plot.left() - axisWidth, y - 10, axisWidth - 8, 20),
                             Qt::AlignRight | Qt::AlignVCenter, text);
        }
    }

    // The runs of samples without a missing one, each on its own.
    void DrawTrace(const QRectF& plot, size_t channel, double low, double high)
    {
        const Codes& codes = oscillogram.analog[channel];
        painter.setPen(QPen(ColorOf(RoleOf(oscillogram.config.analog[channel]).phase), 1.6));
        const size_t end = SampleAt(span.to) + 1;
        for (size_t sample = SampleAt(span.from); sample < end; ++sample) {
            const size_t from = sample;
            while (sample < end && std::isfinite(codes.At(sample)))
                ++sample;
            if (sample == from)
                continue;
            QPolygonF line;
            for (const size_t extreme : Extremes(plot, codes, from, sample)) {
                const double part = (Value(channel, codes.At(extreme)) - low) / (high - low);
                line << QPointF(XOf(plot, TimeOf(extreme)), plot.bottom() - part * plot.height());
            }
            if (sample == from + 1)
                painter.drawPoint(line.first());
            else
                painter.drawPolyline(line);
        }
    }

    // Samples with the least and the greatest code of each pixel column, so that no peak is lost.
    std::vector<size_t> Extremes(const QRectF& plot, const Codes& codes, size_t sample, size_t end) const
    {
        std::vector<size_t> extremes;
        while (sample < end) {
            const double column = std::floor(XOf(plot, TimeOf(sample)));
            size_t least = sample;
            size_t greatest = sample;
            for (; sample < end && std::floor(XOf(plot, TimeOf(sample))) <= column; ++sample) {
                least = codes.At(sample) < codes.At(least) ? sample : least;
                greatest = codes.At(sample) > codes.At(greatest) ? sample : greatest;
            }
            extremes.push_back(std::min(least, greatest));
            extremes.push_back(std::max(least, greatest));
        }
        return extremes;
    }

    void DrawNames(const QRectF& plot, const Channels& channels)
    {
        double x = plot.left();
        SetFont(13, true);
        for (const size_t channel : channels) {
            const comtrade::AnalogChannel& known = oscillogram.config.analog[channel];
            const QString name = QString(known.name).remove(circuit).trimmed();
            const QString text =
                (name.isEmpty() ? known.name : name) + QStringLiteral(", ") + WithKilo(known.unit);
            painter.setPen(ColorOf(RoleOf(known).phase));
            painter.drawText(QRectF(x, plot.top() - 21, 140, 18), Qt::AlignVCenter, text);
            x += painter.fontMetrics().horizontalAdvance(text) + 22;
        }
    }

    void DrawStates(const QRectF& tracks)
    {
        SetFont(12);
        for (size_t row = 0; row < states.size(); ++row) {
            const QRectF track(tracks.left(), tracks.top() + stateHeight * static_cast<double>(row),
                               tracks.width(), stateHeight - 5);
            DrawState(track, oscillogram.states[states[row]]);
            painter.setPen(ink);
            painter.drawText(track.adjusted(6, 0, 0, 0), Qt::AlignVCenter,
                             oscillogram.config.states[states[row]].name);
        }
    }

    void DrawState(const QRectF& track, const States& channel)
    {
        painter.setPen(rule);
        painter.drawLine(track.bottomLeft(), track.bottomRight());
        QColor fill = stateColor;
        fill.setAlpha(90);
        const size_t end = SampleAt(span.to) + 1;
        for (size_t sample = SampleAt(span.from); sample < end; ++sample) {
            if (!channel.At(sample))
                continue;
            const size_t from = sample;
            while (sample < end && channel.At(sample))
                ++sample;
            const double left = XOf(track, TimeOf(from));
            const double right = sample < end ? XOf(track, TimeOf(sample)) : track.right();
            painter.fillRect(QRectF(left, track.top(), std::max(right - left, 1.0), track.height()), fill);
        }
    }

    // The time axis under and behind all charts.
    void DrawTimes(const QRectF& charts)
    {
        constexpr double milliseconds = 1000;
        const double step = NiceStep((span.to - span.from) * milliseconds, 10);
        SetFont(13);
        for (double time = std::ceil(span.from * milliseconds / step) * step; time <= span.to * milliseconds;
             time += step) {
            const double x = XOf(charts, time / milliseconds);
            painter.setPen(quiet);
            painter.drawText(QRectF(x - 50, charts.bottom() + 4, 100, rulerHeight - 4), Qt::AlignCenter,
                             Tr("view", "%1 ms").arg(std::abs(time) < step / 1000 ? 0 : time));
            painter.setPen(rule);
            painter.drawLine(QPointF(x, charts.top()), QPointF(x, charts.bottom()));
        }
    }

    void DrawTrigger(const QRectF& charts)
    {
        if (span.from > 0 || span.to < 0)
            return;
        painter.setPen(QPen(triggerColor, 1.5, Qt::DashLine));
        painter.drawLine(QPointF(XOf(charts, 0), charts.top()), QPointF(XOf(charts, 0), charts.bottom()));
    }

    // The lines of the report that say most, as they stand.
    QStringList Figures() const
    {
        const QString& report = oscillogram.report;
        QStringList lines;
        for (const char* label : {"Условие пуска №1:", "Уставка пуска:"}) {
            const QString value = ReportValue(report, QString::fromUtf8(label));
            if (!value.isEmpty())
                lines << QString::fromUtf8(label) << value << QString();
        }
        const QStringList extremes = ExtremeLines(report);
        if (!extremes.isEmpty())
            lines << QStringLiteral("Экстремальные значения:") << extremes << QString();
        lines << ValuesAtStart(report);
        if (!lines.isEmpty()) // its formulas are not those of the page
            lines = QStringList{Tr("view", "As in the fault report:"), QString()} + lines;
        return lines;
    }

    // The phase values and the components at the start: the second pair of the report's tables.
    static QStringList ValuesAtStart(const QString& report)
    {
        QStringList lines;
        bool isAtStart = false;
        const QStringList all = report.split(QLatin1Char('\n'));
        for (const QString& line : all) {
            if (line.endsWith(QStringLiteral("в момент срабатывания по условию пуска:"))) {
                isAtStart = true;
                lines << (lines.isEmpty() ? QStringLiteral("В момент срабатывания:") : QString());
            } else if (isAtStart && line.contains(QStringLiteral("модуль ="))) {
                if (!line.contains(QStringLiteral("= -- ")))
                    lines << QString(line).replace(QStringLiteral("модуль ="), QString()).simplified();
            } else {
                isAtStart = false;
            }
        }
        return lines;
    }

    void DrawFigures(const QRectF& area)
    {
        SetFont(14);
        double y = area.top();
        for (const QString& line : figures) {
            painter.setPen(line.endsWith(QLatin1Char(':')) ? quiet : ink);
            const QRectF room(area.left(), y, area.width(), area.bottom() - y);
            const QRectF taken = painter.boundingRect(room, Qt::TextWordWrap, line);
            painter.drawText(room, Qt::TextWordWrap, line);
            y += std::max(taken.height(), 8.0) + 3;
        }
    }

    QPainter& painter;
    const Oscillogram& oscillogram;
    const Channels states;
    const QString circuit;
    const QStringList figures;
    const Span span;
};

QByteArray SvgOf(const Oscillogram& oscillogram)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const int tall = Overview::HeightOf(oscillogram);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(QSize(width, tall));
    generator.setViewBox(QRect(0, 0, width, tall));
    generator.setTitle(oscillogram.config.station);
    QPainter painter(&generator);
    Overview(painter, oscillogram).Draw();
    painter.end();
    return bytes;
}

QByteArray PngOf(const Oscillogram& oscillogram)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage image(width, Overview::HeightOf(oscillogram), QImage::Format_RGB32);
    QPainter painter(&image);
    Overview(painter, oscillogram).Draw();
    painter.end();
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

Held WritePicture(const QString& recordPath, const QString& picturePath, Picture format,
                  const Options& options)
{
    const Oscillogram oscillogram = Load(recordPath, options);
    const QByteArray bytes = format == Picture::Svg ? SvgOf(oscillogram) : PngOf(oscillogram);
    QString error;
    if (!output::WriteOutput(picturePath, bytes, error))
        throw Error(Tr("view", "'%1' cannot be written: %2").arg(picturePath, error));
    return Holding(oscillogram);
}

} // namespace view
