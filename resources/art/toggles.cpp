// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/palette.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

// Both toggles are drawn around one line, some 17 pixels below the panel's upper edge, where the
// minimise and close signs stand too.
constexpr double muteLine = 5.0;
constexpr double topLine = 6.75;

Shape speaker()
{
    return either(box(1, muteLine - 2, 4, 4),
        polygon({ { 3, muteLine }, { 8.5, muteLine - 5.5 }, { 8.5, muteLine + 5.5 } }));
}

// The sound is cut off: a crossed speaker.
Canvas drawMute()
{
    Canvas canvas(20, 13);
    canvas.fill(speaker(), plain);
    canvas.fill(stroke({ { 12, muteLine - 3 }, { 18, muteLine + 3 } }, 1.8), plain);
    canvas.fill(stroke({ { 12, muteLine + 3 }, { 18, muteLine - 3 } }, 1.8), plain);
    return canvas;
}

// The sound is on: a speaker with two waves.
Canvas drawNoMute()
{
    Canvas canvas(20, 13);
    canvas.fill(speaker(), plain);
    const Shape front = polygon({ { 7, muteLine }, { 20, muteLine - 8 }, { 20, muteLine + 8 } });
    canvas.fill(both(ring(7, muteLine, 6, 1.6), front), lamp);
    canvas.fill(both(ring(7, muteLine, 10, 1.6), front), lamp);
    return canvas;
}

// Notices stay on top: a pin that is stuck in.
Shape pin()
{
    const Shape head = either(box(4.5, 0, 8, 2, 0.8), box(6, 1, 5, 5));
    const Shape collar = polygon({ { 5.6, 5 }, { 11.4, 5 }, { 13.5, 8.2 }, { 3.5, 8.2 } });
    const Shape needle = box(7.75, 8, 1.5, 5.5);
    return either(either(head, collar), needle);
}

Canvas drawTop()
{
    Canvas canvas(17, 17);
    canvas.fill(pin(), lamp);
    return canvas;
}

Canvas drawNoTop()
{
    Canvas canvas(17, 17);
    const Shape slash = stroke({ { 2.5, topLine - 6 }, { 14.5, topLine + 6 } }, 1.6);
    canvas.fill(without(pin(), grown(slash, 1.0)), plain);
    canvas.fill(slash, plain);
    return canvas;
}

} // namespace

std::vector<Drawing> drawToggles()
{
    return { { "mute.png", drawMute() }, { "no_mute.png", drawNoMute() }, { "top.png", drawTop() },
        { "no_top.png", drawNoTop() } };
}

} // namespace art
