// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/letter_drawing.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace art {

namespace {

constexpr int fineness = 8;      // samples per pixel and axis
constexpr double kappa = 0.5523; // the handle length that makes a curve a quarter circle

struct Corner
{
    Point at;
    double rounding; // 0 sharp to 1 as round as the sides allow
};

struct Line
{
    std::vector<Corner> corners;
    bool closed = false;
};

double lengthOf(Point from, Point to)
{
    return std::sqrt((to.x - from.x) * (to.x - from.x) + (to.y - from.y) * (to.y - from.y));
}

Point towards(Point from, Point to, double distance)
{
    const double whole = lengthOf(from, to);
    const double part = whole > 0.0 ? distance / whole : 0.0;
    return { from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part };
}

// Moves a stroke so that its edge lies on a multiple of `step`.
double onGrid(double position, double strokeWidth, double step)
{
    return std::round((position - strokeWidth / 2) / step) * step + strokeWidth / 2;
}

// Where a letter's coordinates lie in pixels.
class Grid
{
public:
    Grid(const Letter &letter, const Style &style) : m_style(style)
    {
        const double wanted = letter.width * style.capHeight / 12.0 * style.width;
        m_width =
            std::max(static_cast<int>(std::round(wanted)), static_cast<int>(std::ceil(style.stem)));
        m_span = letter.width > 0.0 ? m_width - style.stem : 0.0;
    }

    int width() const { return m_width; }

    // Level strokes may also fill half a pixel: small letters are too low for whole ones only.
    Point pixel(Point p, bool onWholePixels) const
    {
        const double x = m_style.stem / 2 + p.x / 10.0 * m_span;
        const double y = onGrid(row(p.y), m_style.bar, 0.5);
        return { onWholePixels ? onGrid(x, m_style.stem, 1.0) : x, y };
    }

private:
    // The top of small letters lies where the style wants it; heights between go along.
    double row(double y) const
    {
        const double half = m_style.bar / 2;
        const double line = m_style.capHeight - half;
        const double small = m_style.capHeight - m_style.xHeight + half;
        if (y >= 4.0)
            return small + (y - 4.0) / 8.0 * (line - small);
        return half + y / 4.0 * (small - half);
    }

    Style m_style;
    int m_width;
    double m_span; // from the middle of the left stem to that of the right one
};

// One point, written "x,y", "x,y~", "x,y~6" or any of these with '!' behind.
Corner readCorner(std::string word, const Grid &grid)
{
    const bool onWholePixels = word.back() == '!';
    if (onWholePixels)
        word.pop_back();
    Point at{};
    double rounding = 0.0;
    char sign = 0;
    std::istringstream parts(word);
    parts >> at.x >> sign >> at.y;
    if (parts >> sign) {
        double tenths = 10.0;
        if (!(parts >> tenths))
            tenths = 10.0;
        rounding = tenths / 10.0;
    }
    return { grid.pixel(at, onWholePixels), rounding };
}

Line readLine(const std::string &text, const Grid &grid)
{
    Line line;
    std::istringstream words(text);
    std::string word;
    while (words >> word) {
        if (word == "z")
            line.closed = true;
        else
            line.corners.push_back(readCorner(word, grid));
    }
    return line;
}

// How much of the side between two corners the rounding of the first may use.
double share(const Corner &corner, const Corner &neighbour)
{
    const double side = lengthOf(corner.at, neighbour.at);
    return neighbour.rounding > 0.0 ? side / 2 : side;
}

void addCurve(
    std::vector<Point> &path, const Corner &before, const Corner &corner, const Corner &after)
{
    const double reach = corner.rounding * std::min(share(corner, before), share(corner, after));
    const Point start = towards(corner.at, before.at, reach);
    const Point end = towards(corner.at, after.at, reach);
    const Point first = towards(start, corner.at, reach * kappa);
    const Point second = towards(end, corner.at, reach * kappa);
    constexpr int steps = 12;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        const double u = 1.0 - t;
        const double a = u * u * u;
        const double b = 3 * u * u * t;
        const double c = 3 * u * t * t;
        const double d = t * t * t;
        path.push_back({ a * start.x + b * first.x + c * second.x + d * end.x,
            a * start.y + b * first.y + c * second.y + d * end.y });
    }
}

std::vector<Point> pathOf(const Line &line)
{
    std::vector<Point> path;
    const size_t count = line.corners.size();
    for (size_t i = 0; i < count; ++i) {
        const Corner &corner = line.corners[i];
        const bool end = !line.closed && (i == 0 || i + 1 == count);
        if (end || corner.rounding <= 0.0) {
            path.push_back(corner.at);
        } else {
            addCurve(
                path, line.corners[(i + count - 1) % count], corner, line.corners[(i + 1) % count]);
        }
    }
    if (line.closed)
        path.push_back(path.front());
    return path;
}

// The samples of one letter that the pen has touched.
class Sheet
{
public:
    Sheet(int width, int height, const Style &style)
        : m_width(width * fineness), m_height(height * fineness), m_stem(style.stem * fineness),
          m_bar(style.bar * fineness), m_inked(static_cast<size_t>(m_width * m_height))
    { }

    void draw(const std::vector<Point> &path)
    {
        press(path.front());
        for (size_t i = 1; i < path.size(); ++i) {
            const double length = lengthOf(path[i - 1], path[i]);
            const int steps = static_cast<int>(std::ceil(length * fineness * 2));
            for (int step = 1; step <= steps; ++step)
                press(towards(path[i - 1], path[i], length * step / steps));
        }
    }

    double cover(int x, int y) const
    {
        int inked = 0;
        for (int row = 0; row < fineness; ++row) {
            for (int column = 0; column < fineness; ++column)
                inked += m_inked[index(x * fineness + column, y * fineness + row)] ? 1 : 0;
        }
        return inked / static_cast<double>(fineness * fineness);
    }

private:
    size_t index(int x, int y) const { return static_cast<size_t>(y * m_width + x); }

    // The pen's tip is a rectangle with its corners rounded off: ends stay square and crisp.
    void press(Point at)
    {
        const double cx = at.x * fineness;
        const double cy = at.y * fineness;
        const int top = std::max(0, static_cast<int>(std::floor(cy - m_bar / 2)));
        const int bottom = std::min(m_height - 1, static_cast<int>(std::ceil(cy + m_bar / 2)));
        const int left = std::max(0, static_cast<int>(std::floor(cx - m_stem / 2)));
        const int right = std::min(m_width - 1, static_cast<int>(std::ceil(cx + m_stem / 2)));
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x) {
                const double dx = (x + 0.5 - cx) / (m_stem / 2);
                const double dy = (y + 0.5 - cy) / (m_bar / 2);
                if (dx * dx * dx * dx + dy * dy * dy * dy <= 1.15)
                    m_inked[index(x, y)] = true;
            }
        }
    }

    int m_width;
    int m_height;
    double m_stem;
    double m_bar;
    std::vector<bool> m_inked;
};

} // namespace

Mask drawLetter(const Letter &letter, const Style &style, int height)
{
    const Grid grid(letter, style);
    Sheet sheet(grid.width(), height, style);
    std::istringstream lines(letter.path);
    std::string line;
    while (std::getline(lines, line, ';'))
        sheet.draw(pathOf(readLine(line, grid)));
    Mask mask{ grid.width(), height, {} };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < mask.width; ++x)
            mask.cover.push_back(sheet.cover(x, y));
    }
    return mask;
}

} // namespace art
