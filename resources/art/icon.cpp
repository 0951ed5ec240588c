// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/palette.h"
#include "resources/art/pictures.h"

#include <QBuffer>
#include <QDataStream>
#include <array>

namespace art {

namespace {

constexpr std::array<int, 5> sizes { 16, 24, 32, 48, 256 };

// A camera head on its foot, on a dark tile with a light edge: it reads on light and dark trays.
// All lengths are in sixteenths of the sign.
Shape scaled(const Shape &shape, double factor)
{
    return { shape.left * factor, shape.top * factor, shape.right * factor, shape.bottom * factor,
             [=](double x, double y) { return shape.distance(x / factor, y / factor) * factor; } };
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
    out << quint32 { 40 } << qint32 { side } << qint32 { side * 2 } << quint16 { 1 }
        << quint16 { 32 } << quint32 { 0 } << quint32(side * side * 4 + maskRow * side)
        << qint32 { 0 } << qint32 { 0 } << quint32 { 0 } << quint32 { 0 };
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = side - 1; y >= 0; --y) {
        for (int x = 0; x < side; ++x)
            out << quint32 { pixels.pixel(x, y) };
    }
    bytes.append(QByteArray(maskRow * side, '\0'));
    return bytes;
}

} // namespace

Canvas drawSign(int size)
{
    Canvas canvas(size, size);
    const double unit = size / 16.0;
    const auto draw = [&](const Shape &shape, const Colour &colour) {
        canvas.fill(scaled(shape, unit), colour);
    };
    draw(box(0, 0, 16, 16, 4), rgb(0xaab0b6));
    draw(box(1, 1, 14, 14, 3), rgb(0x1c1f22));
    draw(box(3, 3, 10, 7, 3), bright);
    draw(disc(8, 6.5, 2.5), rgb(0x1c1f22));
    draw(disc(8, 6.5, 1.2), lamp);
    draw(box(7, 10, 2, 2), bright);
    draw(box(4, 12, 8, 1.5), bright);
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
    out << quint16 { 0 } << quint16 { 1 } << quint16 { sizes.size() };
    auto offset = static_cast<quint32>(6 + 16 * sizes.size());
    for (size_t i = 0; i < sizes.size(); ++i) {
        const auto side = static_cast<quint8>(sizes[i] & 0xff); // 0 stands for 256
        const auto length = static_cast<quint32>(images[i].size());
        out << side << side << quint8 { 0 } << quint8 { 0 } << quint16 { 1 } << quint16 { 32 }
            << length << offset;
        offset += length;
    }
    for (const QByteArray &image : images)
        bytes.append(image);
    return bytes;
}

} // namespace art
