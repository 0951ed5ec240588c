// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <functional>
#include <vector>

// A small painter. It computes every pixel from the distance to a shape's edge, in plain double
// arithmetic, so that the same source draws the same picture on every machine.
namespace art {

struct Colour
{
    double red;
    double green;
    double blue;
    double alpha = 1.0;
};

// A colour as 0xRRGGBB.
Colour rgb(unsigned hex, double alpha = 1.0);
// From `from` at t = 0 to `to` at t = 1; t beyond is clamped.
Colour mix(const Colour &from, const Colour &to, double t);

struct Point
{
    double x;
    double y;
};

// An area of the plane: `distance` is negative inside and positive outside, in pixels. Nothing is
// painted farther than one pixel outside the rectangle left, top, right, bottom.
struct Shape
{
    double left;
    double top;
    double right;
    double bottom;
    std::function<double(double x, double y)> distance;
};

Shape disc(double x, double y, double radius);
// A circle line of the given width, centred on the radius.
Shape ring(double x, double y, double radius, double width);
Shape box(double x, double y, double width, double height, double radius = 0.0);
// A line through the points, with round ends.
Shape stroke(const std::vector<Point> &points, double width);
Shape polygon(const std::vector<Point> &points);
Shape both(const Shape &a, const Shape &b);
Shape either(const Shape &a, const Shape &b);
Shape without(const Shape &a, const Shape &hole);
Shape moved(const Shape &shape, double dx, double dy);
// Lengths and places alike multiplied by the factor.
Shape scaled(const Shape &shape, double factor);
// The shape made larger by `by` on all sides (smaller where negative).
Shape grown(const Shape &shape, double by);
// Turned by a number of eighths of a full turn about a point.
Shape turned(const Shape &shape, double x, double y, int eighths);

using Paint = std::function<Colour(double x, double y)>;
// From `top` at y = from to `bottom` at y = to.
Paint downward(double from, double to, const Colour &top, const Colour &bottom);
// From `centre` at the point to `rim` at the radius.
Paint outward(double x, double y, double radius, const Colour &centre, const Colour &rim);

// How much of each pixel is covered, 0 to 1, row by row.
struct Mask
{
    int width = 0;
    int height = 0;
    std::vector<double> cover;
};

Mask turnedLeft(const Mask &mask);

class Canvas
{
public:
    // A transparent picture.
    Canvas(int width, int height);

    int width() const { return m_width; }
    int height() const { return m_height; }

    void fill(const Shape &shape, const Paint &paint);
    void fill(const Shape &shape, const Colour &colour);
    // A fill that fades out over `reach` pixels outside the shape: a shadow or a gleam.
    void glow(const Shape &shape, const Colour &colour, double reach);
    void stamp(const Mask &mask, int x, int y, const Colour &colour);
    // Keeps only what lies inside the shape.
    void clip(const Shape &shape);

    // 8 bits per channel, red, green, blue, alpha.
    QImage image() const;

private:
    void blend(int x, int y, const Colour &colour, double cover);

    int m_width;
    int m_height;
    std::vector<Colour> m_pixels; // premultiplied
};

} // namespace art
