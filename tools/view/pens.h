// Colours and fonts of the still picture.
#pragma once

#include <QColor>
#include <QPainter>

namespace view {

const QColor Ink(0x17, 0x20, 0x2e);
const QColor Quiet(0x5d, 0x6b, 0x80);
const QColor Rule(0xdd, 0xe3, 0xec);
const QColor TriggerColor(0xd9, 0x48, 0x0f);
const QColor StateColor(0x2f, 0x6f, 0xcb);

inline void SetFont(QPainter& painter, int pixels, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    painter.setFont(font);
}

} // namespace view
