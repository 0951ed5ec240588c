// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/icons.h"

#include <QPainter>
#include <QPixmap>

namespace virtual_camera {

namespace {

const QColor ink("#e8ecef");
const QColor warning("#ff7a5c");

QPen pen(const QColor &colour, double width)
{
    return { colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin };
}

// All in a square of 32 around the middle.

void plug(QPainter &painter, bool in)
{
    painter.setPen(pen(in ? ink : warning, 2.6));
    const double gap = in ? 0 : 3.5;
    painter.drawLine(QPointF(-15, 0), QPointF(-9 - gap, 0));
    painter.drawRoundedRect(QRectF(-9 - gap, -5, 7, 10), 1.5, 1.5);
    painter.drawLine(QPointF(-2 - gap, -2.5), QPointF(2 - gap, -2.5));
    painter.drawLine(QPointF(-2 - gap, 2.5), QPointF(2 - gap, 2.5));
    painter.drawRoundedRect(QRectF(2 + gap, -6, 6, 12), 1.5, 1.5);
    painter.drawLine(QPointF(8 + gap, 0), QPointF(15, 0));
}

void refuse(QPainter &painter)
{
    painter.setPen(pen(warning, 3));
    painter.drawEllipse(QPointF(0, 0), 11, 11);
    painter.drawLine(QPointF(-7.5, 7.5), QPointF(7.5, -7.5));
}

void slow(QPainter &painter)
{
    painter.setPen(pen(ink, 2.4));
    painter.drawLine(QPointF(-8, -12), QPointF(8, -12));
    painter.drawLine(QPointF(-8, 12), QPointF(8, 12));
    painter.drawPolygon(QPolygonF({ { -7, -12 }, { 7, -12 }, { -7, 12 }, { 7, 12 } }));
    painter.setBrush(ink);
    painter.drawPolygon(QPolygonF({ { -5, 11 }, { 5, 11 }, { 0, 5 } }));
}

} // namespace

QIcon signIcon(Sign sign)
{
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(32, 32);
    painter.scale(2, 2);
    switch (sign) {
    case Sign::Plug:
    case Sign::Unplug:
        plug(painter, sign == Sign::Plug);
        break;
    case Sign::Refuse:
        refuse(painter);
        break;
    case Sign::Slow:
        slow(painter);
        break;
    }
    return QIcon(pixmap);
}

} // namespace virtual_camera
