// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/frame.h"

#include "virtual_camera/viewer/development.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace virtual_camera {

namespace {

// What one dioptre out of focus spreads a point to, in widths of the frame, at a field of view of
// 60 degrees. A longer lens has a larger opening and enlarges the spot, too.
constexpr double blurPerDioptre = 0.035;
constexpr double blurLimit = 0.05;

double blurWidth(const View &view, double distance, int frameWidth)
{
    const double defocus = std::abs(view.focus - 1 / distance);
    const double enlargement = std::sqrt(60 / view.angle);
    return frameWidth * std::min(defocus * blurPerDioptre * enlargement, blurLimit);
}

void aim(QPainter &painter, const View &view, QSize size)
{
    const double pixels = size.width() / view.angle;
    painter.translate(size.width() / 2.0, size.height() / 2.0);
    painter.scale(pixels, pixels);
    painter.translate(-view.pan, view.tilt);
}

// A layer that is out of focus is painted small and enlarged: cheap, and smooth enough.
void paintLayer(
    QPainter &painter, const Room &room, const Room::Layer &layer, const View &view, QSize size)
{
    const double blur = blurWidth(view, layer.distance, size.width());
    if (blur < 1.5) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        aim(painter, view, size);
        (room.*layer.paint)(painter);
        painter.restore();
        return;
    }
    const QSize small = QSize(std::max(8, static_cast<int>(size.width() / blur * 1.5)),
        std::max(5, static_cast<int>(size.height() / blur * 1.5)))
                            .boundedTo(size);
    QImage image(small, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter brush(&image);
    brush.setRenderHint(QPainter::Antialiasing);
    aim(brush, view, small);
    (room.*layer.paint)(brush);
    brush.end();
    // Twice the mean of neighbours, by way of a larger picture between.
    const QImage between =
        image.scaled((small * 2).boundedTo(size), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect(QPoint(0, 0), size), between);
}

void paintMenu(QImage &frame)
{
    QPainter painter(&frame);
    const double unit = frame.height() / 20.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(unit * 2, unit * 3);
    painter.fillRect(QRectF(0, 0, unit * 11, unit * 9), QColor(20, 40, 90, 215));
    QFont font(QStringLiteral("Liberation Mono"));
    font.setPixelSize(static_cast<int>(unit * 0.9));
    painter.setFont(font);
    painter.setPen(Qt::white);
    const char *const lines[] = { "MENU", "", "> EXPOSURE   AUTO", "  COLOR      AUTO",
        "  IMAGE      STANDARD", "  P/T/Z      NORMAL", "  SETUP" };
    double top = unit * 0.5;
    for (const char *line : lines) {
        painter.drawText(QRectF(unit * 0.7, top, unit * 10, unit * 1.2), QString::fromLatin1(line));
        top += unit * 1.15;
    }
}

} // namespace

QImage renderFrame(const Room &room, const View &view, QSize size)
{
    QImage frame(size, QImage::Format_RGB32);
    frame.fill(Qt::gray); // shows through where two antialiased edges meet
    QPainter painter(&frame);
    for (const Room::Layer &layer : Room::layers)
        paintLayer(painter, room, layer, view, size);
    painter.end();
    develop(frame, view);
    if (view.mirror || view.flip)
        frame = std::move(frame).mirrored(view.mirror, view.flip);
    if (view.menu)
        paintMenu(frame);
    return frame;
}

} // namespace virtual_camera
