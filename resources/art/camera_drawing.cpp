// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/camera_drawing.h"

namespace art {

Shape cameraBody(double x, double y, double scale)
{
    const Shape head = box(-14, -21, 28, 26, 9);
    const Shape yoke = without(box(-20, -12, 40, 27, 7), box(-16.5, -30, 33, 38, 11));
    const Shape foot = box(-13, 17, 26, 5, 2);
    return moved(scaled(either(either(head, yoke), foot), scale), x, y);
}

void drawLens(Canvas &canvas, double x, double y, double scale, const Colour &pupil)
{
    const auto draw = [&](const Shape &shape, const Colour &colour) {
        canvas.fill(moved(scaled(shape, scale), x, y), colour);
    };
    draw(disc(0, -8, 9), cut);
    draw(ring(0, -8, 6, 1.3), rgb(0x7c838a));
    draw(disc(0, -8, 3.2), pupil);
    draw(disc(-2.2, -10.2, 1.5), bright);
}

} // namespace art
