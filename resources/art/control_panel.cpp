// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/body.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

constexpr double signLine = 16.5; // the middle of the signs in the title's strip

void drawWindowSigns(Canvas &canvas)
{
    const double line = minimise.centreX();
    canvas.fill(box(line - 5.5, 19, 11, 2), plain);
    const double cross = close.centreX();
    canvas.fill(stroke({ { cross - 5, signLine - 5 }, { cross + 5, signLine + 5 } }, 1.8), plain);
    canvas.fill(stroke({ { cross - 5, signLine + 5 }, { cross + 5, signLine - 5 } }, 1.8), plain);
}

// Eight teeth around a ring.
void drawGear(Canvas &canvas)
{
    const double x = setting.centreX();
    const double y = setting.centreY();
    Shape gear = disc(x, y, 6.4);
    for (int eighth = 0; eighth < 4; ++eighth)
        gear = either(gear, turned(box(x - 1.7, y - 8.7, 3.4, 17.4, 0.8), x, y, eighth));
    canvas.fill(without(gear, disc(x, y, 2.8)), plain);
}

void drawDirections(Canvas &canvas, double x, double y)
{
    const Shape up = stroke({ { x - 6, y - 44 }, { x, y - 50 }, { x + 6, y - 44 } }, 2.2);
    const Shape dot = disc(x, y - 47, 1.3);
    for (int eighth = 0; eighth < 8; eighth += 2) {
        canvas.fill(turned(up, x, y, eighth), plain);
        canvas.fill(turned(dot, x, y, eighth + 1), rgb(0x7c838a));
    }
}

// The well in which the handle runs. The handle is a flat disc of radius 22 that the joystick
// paints; it jumps from the middle to the circle of radius 36.
void drawJoystick(Canvas &canvas)
{
    const double x = joystick.centreX();
    const double y = joystick.centreY();
    canvas.fill(disc(x, y, 61), downward(y - 61, y + 61, rgb(0x17191c), rgb(0x6a7078)));
    canvas.fill(disc(x, y, 59.5), rgb(0x060708));
    canvas.fill(disc(x, y, 58), outward(x, y - 20, 80, rgb(0x15171a), rgb(0x24272b)));
    canvas.fill(ring(x, y, 57.5, 1), downward(y - 58, y + 58, rgb(0x000000, 0.6), light));
    canvas.fill(ring(x, y, 36, 1), rgb(0x565c63));
    drawDirections(canvas, x, y);
    // Where the handle rests.
    canvas.glow(disc(x, y + 1, 22), rgb(0x000000, 0.7), 7);
    canvas.fill(disc(x, y, 22), rgb(0x08090a));
    canvas.fill(ring(x, y, 24.5, 1.4), lamp);
}

void drawScale(Canvas &canvas, double centre, double middle)
{
    for (int step = -5; step <= 5; ++step) {
        const double length = step % 5 == 0 ? 5 : 3;
        const double y = middle + step * 10;
        canvas.fill(box(centre - 15 - length, y, length, 1), rgb(0x7c838a));
        canvas.fill(box(centre + 15, y, length, 1), rgb(0x7c838a));
    }
}

// A slider that springs back: its handle rests a little below the middle of the scale.
void drawLensSlider(
    Canvas &canvas, const Place &place, const char *name, const char *up, const char *down)
{
    const double centre = place.centreX();
    const double middle = place.y + 64;
    canvas.fill(box(centre - 3, place.y + 3, 6, place.height - 6, 3), rgb(0x5b6067));
    canvas.fill(box(centre - 3, place.y + 2, 6, place.height - 6, 3), rgb(0x060708));
    drawScale(canvas, centre, middle);
    canvas.fill(box(centre - 20, middle - 1, 5, 2), lamp);
    canvas.fill(box(centre + 15, middle - 1, 5, 2), lamp);
    letterCentred(canvas, name, labelStyle, centre, place.y - 17, plain);
    letterCentred(canvas, up, captionStyle, centre, place.y - 7, quiet);
    letterCentred(canvas, down, captionStyle, centre, place.y + place.height + 2, quiet);
}

void drawKeys(Canvas &canvas)
{
    for (const Place &place : keys)
        sinkKey(canvas, place);
    const int above = keys[0].y - 10;
    letterCentred(canvas, "FOCUS", captionStyle, keys[0].centreX(), above, quiet);
    letterCentred(canvas, "AUTO FRAMING", captionStyle, keys[1].centreX(), above, quiet);
    letterCentred(canvas, "FRAMING OFF", captionStyle, keys[2].centreX(), above, quiet);
    const int below = keys[17].y + keys[17].height + 6;
    letterFrom(canvas, "SET + DIGIT STORES", captionStyle, keys[0].x, below, quiet);
    letterCentred(canvas, "DIGIT RECALLS", captionStyle, keys[1].centreX() - 1, below, quiet);
    letterRight(canvas, "CLEAR + DIGIT ERASES", captionStyle, setting.x - 3, below, quiet);
}

// Holds the digits and the two keys that go before a digit together.
void drawPresetBracket(Canvas &canvas)
{
    const Colour line = rgb(0x7c838a);
    const double top = keys[3].y + 1;
    const double bottom = keys[14].y + keys[14].height - 1;
    canvas.fill(box(25, top, 1, bottom - top), line);
    canvas.fill(box(25, top, 4, 1), line);
    canvas.fill(box(25, bottom - 1, 4, 1), line);
    const Mask name = turnedLeft(lettered("PRESETS", captionStyle));
    canvas.stamp(name, 14, static_cast<int>((top + bottom - name.height) / 2), quiet);
}

// Light keycaps, on which black and green print both read.
void drawCameraKeys(Canvas &canvas)
{
    const Shape edge = outline(controlPanelWidth, panelHeight);
    canvas.fill(both(edge, box(0, 386, controlPanelWidth, 50)), cut);
    canvas.fill(box(0, 385, controlPanelWidth, 1), shade);
    const Shape area = grown(edge, -4);
    for (const Place &place : cameraButtons) {
        const Shape cap = both(area, box(place.x + 2.0, 390, place.width - 4.0, 42, 3));
        canvas.fill(cap, downward(390, 432, rgb(0xe4e6e8), rgb(0xc6cace)));
        canvas.fill(both(cap, box(0, 390, controlPanelWidth, 1)), rgb(0xffffff, 0.8));
    }
}

} // namespace

Canvas drawControlPanel()
{
    Canvas canvas = plate(controlPanelWidth, panelHeight);
    drawHead(canvas, "PTZ CONTROL");
    drawWindowSigns(canvas);
    drawJoystick(canvas);
    drawLensSlider(canvas, zoom, "ZOOM", "TELE", "WIDE");
    drawLensSlider(canvas, focus, "FOCUS", "FAR", "NEAR");
    drawKeys(canvas);
    drawPresetBracket(canvas);
    drawGear(canvas);
    drawCameraKeys(canvas);
    canvas.clip(outline(controlPanelWidth, panelHeight));
    return canvas;
}

} // namespace art
