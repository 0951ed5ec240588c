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
    canvas.fill(box(place.x - 1, place.y - 1, place.width + 2, place.height + 2, 1.5),
                rgb(0x000000, 0.55));
    canvas.fill(box(place.x, below, place.width, 1), rgb(0x6c727a));
    canvas.fill(box(place.x - 1, place.y, 1, place.height), rgb(0x000000, 0.3));
    canvas.fill(box(right, place.y, 1, place.height), rgb(0x000000, 0.3));
    canvas.fill(place.shape(), key);
}

void scoreLine(Canvas &canvas, double x, double y, double width)
{
    canvas.fill(box(x, y, width, 1), shade);
    canvas.fill(box(x, y + 1, width, 1), light);
}

} // namespace art
