// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/body.h"

namespace art {

Shape outline(int width, int height) { return box(0, 0, width, height, cornerRadius); }

Canvas plate(int width, int height)
{
    Canvas canvas(width, height);
    const Shape edge = outline(width, height);
    canvas.fill(edge, downward(0, panelHeight, bodyTop, bodyBottom));
    const Shape rim = without(grown(edge, -2), grown(edge, -3));
    canvas.fill(rim, downward(0, height, light, rgb(0x000000, 0.25)));
    return canvas;
}

void sinkKey(Canvas &canvas, const Place &place)
{
    const double right = place.x + place.width;
    const double below = place.y + place.height;
    canvas.fill(
        box(place.x - 1, place.y - 1, place.width + 2, place.height + 2, 1.5), rgb(0x000000, 0.55));
    canvas.fill(box(place.x, below, place.width, 1), rgb(0x5d636b));
    canvas.fill(box(place.x - 1, place.y, 1, place.height), rgb(0x000000, 0.3));
    canvas.fill(box(right, place.y, 1, place.height), rgb(0x000000, 0.3));
    canvas.fill(place.shape(), key);
}

void drawHead(Canvas &canvas, const char *title)
{
    constexpr double height = 28;
    canvas.fill(box(0, 0, canvas.width(), height), rgb(0x000000, 0.16));
    scoreLine(canvas, 0, height, canvas.width());
    letterFrom(canvas, title, { 8, 6, 1.5, 1.2, 2, 1.0 }, 33, 12, plain);
}

void scoreLine(Canvas &canvas, double x, double y, double width)
{
    canvas.fill(box(x, y, width, 1), shade);
    canvas.fill(box(x, y + 1, width, 1), light);
}

} // namespace art
