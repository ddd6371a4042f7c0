// Colours and fonts of the still picture.
#pragma once

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>

namespace picture {

const QColor Ink(0x17, 0x20, 0x2e);
const QColor Quiet(0x5d, 0x6b, 0x80);
const QColor Rule(0xdd, 0xe3, 0xec);
const QColor TriggerColor(0xd9, 0x48, 0x0f);
const QColor StateColor(0x2f, 0x6f, 0xcb);
const QColor FaultColor(0xd9, 0x48, 0x0f);
const QColor StartColor(0x1f, 0x5f, 0xbf);
const QColor TripColor(0xb0, 0x2a, 0x72);
const QColor BreakerColor(0x7a, 0x3f, 0xc0);
const QColor ReclosingColor(0x0d, 0x7f, 0x86);

/// phase: 'a', 'b', 'c'; anything else is the residual's or another quantity.
inline QColor ColorOf(char phase)
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

inline QFont FontOf(int pixels, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

inline void SetFont(QPainter& painter, int pixels, bool bold = false)
{
    painter.setFont(FontOf(pixels, bold));
}

/// Pixels that a text takes.
inline double WidthOf(const QString& text, int pixels, bool bold = false)
{
    return QFontMetricsF(FontOf(pixels, bold)).horizontalAdvance(text);
}

/// As much of a text as a width has room for.
inline QString Fitting(const QString& text, double width, int pixels, bool bold = false)
{
    return QFontMetricsF(FontOf(pixels, bold)).elidedText(text, Qt::ElideRight, width);
}

} // namespace picture
