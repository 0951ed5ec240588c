// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/camera_drawing.h"
#include "resources/art/palette.h"
#include "resources/art/pictures.h"

#include <QDataStream>
#include <algorithm>
#include <array>

namespace art {

namespace {

constexpr std::array<int, 5> sizes{ 16, 24, 32, 48, 256 };

constexpr int smallestDetailed = 32;

// A camera of which only the outline is left, for sizes at which no more can be told apart.
void drawPlainCamera(Canvas &canvas, double unit)
{
    canvas.fill(scaled(box(3, 3, 10, 7, 3), unit), bright);
    canvas.fill(scaled(disc(8, 6.5, 2.5), unit), rgb(0x1c1f22));
    canvas.fill(scaled(disc(8, 6.5, 1.3), unit), lamp);
    canvas.fill(scaled(box(7, 10, 2, 2), unit), bright);
    canvas.fill(scaled(box(4, 12, 8, 1), unit), bright);
}

void drawDetailedCamera(Canvas &canvas, double unit)
{
    const double scale = unit * 0.25;
    canvas.fill(cameraBody(8 * unit, 8 * unit, scale), bright);
    drawLens(canvas, 8 * unit, 8 * unit, scale, lamp);
}

// The pixels of one size as an icon file keeps them: a bitmap header, rows from the bottom up,
// and an empty one-bit mask.
QByteArray bitmap(const QImage &image)
{
    const int side = image.width();
    const int maskRow = (side + 31) / 32 * 4;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint32{ 40 } << qint32{ side } << qint32{ side * 2 } << quint16{ 1 } << quint16{ 32 }
        << quint32{ 0 } << quint32(side * side * 4 + maskRow * side) << qint32{ 0 } << qint32{ 0 }
        << quint32{ 0 } << quint32{ 0 };
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = side - 1; y >= 0; --y) {
        for (int x = 0; x < side; ++x)
            out << quint32{ pixels.pixel(x, y) };
    }
    bytes.append(QByteArray(maskRow * side, '\0'));
    return bytes;
}

} // namespace

Canvas drawSign(int size)
{
    Canvas canvas(size, size);
    const double unit = size / 16.0;
    // A dark tile with a light edge stands out from light and from dark trays.
    canvas.fill(scaled(box(0, 0, 16, 16, 4), unit), rgb(0xaab0b6));
    const double edge = std::max(1.0, unit * 0.6);
    canvas.fill(grown(scaled(box(0, 0, 16, 16, 4), unit), -edge),
        downward(0, size, bodyTop, rgb(0x16181b)));
    if (size < smallestDetailed)
        drawPlainCamera(canvas, unit);
    else
        drawDetailedCamera(canvas, unit);
    return canvas;
}

QByteArray iconFile()
{
    std::array<QByteArray, sizes.size()> images;
    for (size_t i = 0; i < sizes.size(); ++i) {
        const QImage image = drawSign(sizes[i]).image();
        // Only the largest is stored as PNG: older readers know bitmaps alone.
        images[i] = sizes[i] < 256 ? bitmap(image) : pngFile(image);
    }
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16{ 0 } << quint16{ 1 } << quint16{ sizes.size() };
    auto offset = static_cast<quint32>(6 + 16 * sizes.size());
    for (size_t i = 0; i < sizes.size(); ++i) {
        const auto side = static_cast<quint8>(sizes[i] & 0xff); // 0 stands for 256
        const auto length = static_cast<quint32>(images[i].size());
        out << side << side << quint8{ 0 } << quint8{ 0 } << quint16{ 1 } << quint16{ 32 } << length
            << offset;
        offset += length;
    }
    for (const QByteArray &image : images)
        bytes.append(image);
    return bytes;
}

} // namespace art
