// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/canvas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace art {

namespace {

double clamped(double value) { return std::clamp(value, 0.0, 1.0); }

double length(double x, double y) { return std::sqrt(x * x + y * y); }

double distanceToSegment(Point p, Point a, Point b)
{
    const double abx = b.x - a.x;
    const double aby = b.y - a.y;
    const double square = abx * abx + aby * aby;
    const double along =
        square > 0.0 ? clamped(((p.x - a.x) * abx + (p.y - a.y) * aby) / square) : 0.0;
    return length(p.x - a.x - along * abx, p.y - a.y - along * aby);
}

Shape aroundPoints(const std::vector<Point> &points, double margin)
{
    Shape shape{ 1e9, 1e9, -1e9, -1e9, nullptr };
    for (const Point &p : points) {
        shape.left = std::min(shape.left, p.x - margin);
        shape.top = std::min(shape.top, p.y - margin);
        shape.right = std::max(shape.right, p.x + margin);
        shape.bottom = std::max(shape.bottom, p.y + margin);
    }
    return shape;
}

// Spreads the rounding of slow gradients over neighbouring pixels, or they show as bands.
double ditherAt(int x, int y)
{
    static constexpr std::array<std::array<int, 4>, 4> order{ { { 0, 8, 2, 10 }, { 12, 4, 14, 6 },
        { 3, 11, 1, 9 }, { 15, 7, 13, 5 } } };
    return (order[static_cast<size_t>(y % 4)][static_cast<size_t>(x % 4)] + 0.5) / 16.0;
}

int level(double value, double dither)
{
    return static_cast<int>(std::floor(clamped(value) * 255.0 + dither));
}

} // namespace

Colour rgb(unsigned hex, double alpha)
{
    return { ((hex >> 16) & 0xff) / 255.0, ((hex >> 8) & 0xff) / 255.0, (hex & 0xff) / 255.0,
        alpha };
}

Colour mix(const Colour &from, const Colour &to, double t)
{
    const double part = clamped(t);
    const auto between = [part](double a, double b) { return a + (b - a) * part; };
    return { between(from.red, to.red), between(from.green, to.green), between(from.blue, to.blue),
        between(from.alpha, to.alpha) };
}

Shape disc(double x, double y, double radius)
{
    return { x - radius, y - radius, x + radius, y + radius,
        [=](double px, double py) { return length(px - x, py - y) - radius; } };
}

Shape ring(double x, double y, double radius, double width)
{
    Shape shape = disc(x, y, radius + width / 2);
    shape.distance = [=](double px, double py) {
        return std::abs(length(px - x, py - y) - radius) - width / 2;
    };
    return shape;
}

Shape box(double x, double y, double width, double height, double radius)
{
    const double cx = x + width / 2;
    const double cy = y + height / 2;
    return { x, y, x + width, y + height, [=](double px, double py) {
                const double dx = std::abs(px - cx) - width / 2 + radius;
                const double dy = std::abs(py - cy) - height / 2 + radius;
                return length(std::max(dx, 0.0), std::max(dy, 0.0))
                    + std::min(std::max(dx, dy), 0.0) - radius;
            } };
}

Shape stroke(const std::vector<Point> &points, double width)
{
    Shape shape = aroundPoints(points, width / 2);
    shape.distance = [=](double px, double py) {
        double nearest = 1e9;
        for (size_t i = 1; i < points.size(); ++i)
            nearest = std::min(nearest, distanceToSegment({ px, py }, points[i - 1], points[i]));
        return nearest - width / 2;
    };
    return shape;
}

Shape polygon(const std::vector<Point> &points)
{
    Shape shape = aroundPoints(points, 0.0);
    shape.distance = [=](double px, double py) {
        double nearest = 1e9;
        bool inside = false;
        for (size_t i = 0, last = points.size() - 1; i < points.size(); last = i++) {
            const Point &a = points[i];
            const Point &b = points[last];
            nearest = std::min(nearest, distanceToSegment({ px, py }, a, b));
            if ((a.y > py) != (b.y > py) && px < (b.x - a.x) * (py - a.y) / (b.y - a.y) + a.x)
                inside = !inside;
        }
        return inside ? -nearest : nearest;
    };
    return shape;
}

Shape both(const Shape &a, const Shape &b)
{
    return { std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
        std::min(a.bottom, b.bottom),
        [a, b](double x, double y) { return std::max(a.distance(x, y), b.distance(x, y)); } };
}

Shape either(const Shape &a, const Shape &b)
{
    return { std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
        std::max(a.bottom, b.bottom),
        [a, b](double x, double y) { return std::min(a.distance(x, y), b.distance(x, y)); } };
}

Shape without(const Shape &a, const Shape &hole)
{
    Shape shape = a;
    shape.distance = [a, hole](double x, double y) {
        return std::max(a.distance(x, y), -hole.distance(x, y));
    };
    return shape;
}

Shape moved(const Shape &shape, double dx, double dy)
{
    return { shape.left + dx, shape.top + dy, shape.right + dx, shape.bottom + dy,
        [=](double x, double y) { return shape.distance(x - dx, y - dy); } };
}

Shape scaled(const Shape &shape, double factor)
{
    return { shape.left * factor, shape.top * factor, shape.right * factor, shape.bottom * factor,
        [=](double x, double y) { return shape.distance(x / factor, y / factor) * factor; } };
}

Shape grown(const Shape &shape, double by)
{
    return { shape.left - by, shape.top - by, shape.right + by, shape.bottom + by,
        [=](double x, double y) { return shape.distance(x, y) - by; } };
}

Shape turned(const Shape &shape, double x, double y, int eighths)
{
    static const double diagonal = std::sqrt(0.5);
    static const std::array<Point, 8> turns{ { { 1, 0 }, { diagonal, diagonal }, { 0, 1 },
        { -diagonal, diagonal }, { -1, 0 }, { -diagonal, -diagonal }, { 0, -1 },
        { diagonal, -diagonal } } };
    const Point turn = turns[static_cast<size_t>(eighths & 7)];
    const double reach =
        std::max({ length(shape.left - x, shape.top - y), length(shape.right - x, shape.top - y),
            length(shape.left - x, shape.bottom - y), length(shape.right - x, shape.bottom - y) });
    return { x - reach, y - reach, x + reach, y + reach, [=](double px, double py) {
                const double dx = px - x;
                const double dy = py - y;
                return shape.distance(x + dx * turn.x + dy * turn.y, y - dx * turn.y + dy * turn.x);
            } };
}

Paint downward(double from, double to, const Colour &top, const Colour &bottom)
{
    return [=](double, double y) { return mix(top, bottom, (y - from) / (to - from)); };
}

Paint outward(double x, double y, double radius, const Colour &centre, const Colour &rim)
{
    return [=](double px, double py) { return mix(centre, rim, length(px - x, py - y) / radius); };
}

Mask turnedLeft(const Mask &mask)
{
    Mask result{ mask.height, mask.width, std::vector<double>(mask.cover.size()) };
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            result.cover[static_cast<size_t>(y * result.width + x)] =
                mask.cover[static_cast<size_t>(x * mask.width + mask.width - 1 - y)];
        }
    }
    return result;
}

Canvas::Canvas(int width, int height)
    : m_width(width), m_height(height),
      m_pixels(static_cast<size_t>(width * height), Colour{ 0, 0, 0, 0 })
{ }

void Canvas::blend(int x, int y, const Colour &colour, double cover)
{
    Colour &below = m_pixels[static_cast<size_t>(y * m_width + x)];
    const double alpha = colour.alpha * cover;
    const auto over = [alpha](double top, double old) { return top * alpha + old * (1 - alpha); };
    below = { over(colour.red, below.red), over(colour.green, below.green),
        over(colour.blue, below.blue), over(1.0, below.alpha) };
}

void Canvas::fill(const Shape &shape, const Paint &paint)
{
    const int left = std::max(0, static_cast<int>(std::floor(shape.left)) - 1);
    const int top = std::max(0, static_cast<int>(std::floor(shape.top)) - 1);
    const int right = std::min(m_width, static_cast<int>(std::ceil(shape.right)) + 1);
    const int bottom = std::min(m_height, static_cast<int>(std::ceil(shape.bottom)) + 1);
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            const double cover = clamped(0.5 - shape.distance(x + 0.5, y + 0.5));
            if (cover > 0.0)
                blend(x, y, paint(x + 0.5, y + 0.5), cover);
        }
    }
}

void Canvas::fill(const Shape &shape, const Colour &colour)
{
    fill(shape, [colour](double, double) { return colour; });
}

void Canvas::glow(const Shape &shape, const Colour &colour, double reach)
{
    fill(grown(shape, reach), [=](double x, double y) {
        const double near = clamped(1.0 - shape.distance(x, y) / reach);
        return Colour{ colour.red, colour.green, colour.blue, colour.alpha * near * near };
    });
}

void Canvas::stamp(const Mask &mask, int x, int y, const Colour &colour)
{
    for (int row = std::max(0, -y); row < mask.height && y + row < m_height; ++row) {
        for (int column = std::max(0, -x); column < mask.width && x + column < m_width; ++column) {
            const double cover = mask.cover[static_cast<size_t>(row * mask.width + column)];
            if (cover > 0.0)
                blend(x + column, y + row, colour, cover);
        }
    }
}

void Canvas::clip(const Shape &shape)
{
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            Colour &pixel = m_pixels[static_cast<size_t>(y * m_width + x)];
            const double cover = clamped(0.5 - shape.distance(x + 0.5, y + 0.5));
            pixel = { pixel.red * cover, pixel.green * cover, pixel.blue * cover,
                pixel.alpha * cover };
        }
    }
}

QImage Canvas::image() const
{
    QImage result(m_width, m_height, QImage::Format_RGBA8888);
    for (int y = 0; y < m_height; ++y) {
        uchar *out = result.scanLine(y);
        for (int x = 0; x < m_width; ++x) {
            const Colour &pixel = m_pixels[static_cast<size_t>(y * m_width + x)];
            const int alpha = level(pixel.alpha, 0.5);
            const double scale = alpha > 0 ? 1.0 / pixel.alpha : 0.0;
            // Only whole pixels are dithered: lettering keeps its exact levels.
            const double dither = pixel.alpha > 0.999 ? ditherAt(x, y) : 0.5;
            *out++ = static_cast<uchar>(level(pixel.red * scale, dither));
            *out++ = static_cast<uchar>(level(pixel.green * scale, dither));
            *out++ = static_cast<uchar>(level(pixel.blue * scale, dither));
            *out++ = static_cast<uchar>(alpha);
        }
    }
    return result;
}

} // namespace art
