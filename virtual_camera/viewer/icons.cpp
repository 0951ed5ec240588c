// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/icons.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>

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

// Points to the right when it is not turned.
void arrow(QPainter &painter, int quarterTurns)
{
    painter.rotate(90.0 * quarterTurns);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(QPolygonF({ { -6, -9 }, { 9, 0 }, { -6, 9 } }));
}

int quarterTurns(Sign sign)
{
    constexpr Sign clockwise[] = { Sign::Right, Sign::Down, Sign::Left, Sign::Up };
    return static_cast<int>(std::find(clockwise, clockwise + 4, sign) - clockwise);
}

void lens(QPainter &painter, bool tele)
{
    painter.setPen(pen(ink, 2.6));
    painter.drawEllipse(QPointF(-2, -2), 9, 9);
    painter.drawLine(QPointF(5, 5), QPointF(12, 12));
    painter.drawLine(QPointF(-6, -2), QPointF(2, -2));
    if (tele)
        painter.drawLine(QPointF(-2, -6), QPointF(-2, 2));
}

void house(QPainter &painter)
{
    painter.setPen(pen(ink, 2.4));
    painter.drawPolyline(QPolygonF({ { -11, 0 }, { 0, -10 }, { 11, 0 } }));
    painter.drawPolyline(QPolygonF({ { -7, -2 }, { -7, 10 }, { 7, 10 }, { 7, -2 } }));
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
    case Sign::Right:
    case Sign::Down:
    case Sign::Left:
    case Sign::Up:
        arrow(painter, quarterTurns(sign));
        break;
    case Sign::Tele:
    case Sign::Wide:
        lens(painter, sign == Sign::Tele);
        break;
    case Sign::Home:
        house(painter);
        break;
    }
    return QIcon(pixmap);
}

} // namespace virtual_camera
