// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/palette.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

const Colour metalTop = rgb(0xf4f5f6);
const Colour metalBottom = rgb(0xb4b9be);

Canvas drawHandle()
{
    Canvas canvas(23, 15);
    canvas.fill(box(0, 0, 23, 15, 4), rgb(0x08090a));
    canvas.fill(box(1, 1, 21, 13, 3), downward(1, 14, metalTop, metalBottom));
    canvas.fill(box(2, 1, 19, 1), rgb(0xffffff, 0.7));
    return canvas;
}

// The handle of the upright sliders, with a line across that meets the rest mark.
Canvas drawUprightHandle()
{
    Canvas canvas = drawHandle();
    canvas.fill(box(4, 8, 15, 1.5), rgb(0xffffff, 0.8));
    canvas.fill(box(4, 6.5, 15, 2), rgb(0x2a2e32));
    return canvas;
}

Canvas drawLevelHandle()
{
    Canvas canvas = drawHandle();
    canvas.fill(box(11, 3, 1, 9), rgb(0x2a2e32));
    canvas.fill(box(12, 3, 1, 9), rgb(0xffffff, 0.8));
    return canvas;
}

Canvas drawGroove()
{
    Canvas canvas(149, 8);
    canvas.fill(box(0, 0, 149, 8), rgb(0x000000));
    canvas.fill(box(1, 1, 147, 6), downward(1, 7, rgb(0x0b0c0e), rgb(0x1d2024)));
    canvas.fill(box(0, 7, 149, 1), rgb(0x5b6067));
    return canvas;
}

Canvas drawFilledGroove()
{
    Canvas canvas(50, 5);
    canvas.fill(box(0, 0, 50, 5), downward(0, 5, rgb(0xffffff), rgb(0xcacaca)));
    return canvas;
}

} // namespace

std::vector<Drawing> drawSliderParts()
{
    return { { "slider_af.png", drawUprightHandle() }, { "slider_button.png", drawLevelHandle() },
        { "slider_bg.png", drawGroove() }, { "slider_now.png", drawFilledGroove() } };
}

} // namespace art
