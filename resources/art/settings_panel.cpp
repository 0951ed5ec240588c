// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/body.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

constexpr int labelRight = 86;

const char *const rowNames[] = { "BACKLIGHT", "GAMMA",     "CONTRAST", "SATURATION",
                                 "BRIGHTNESS", "SHARPNESS", "WHITE BAL." };

void letterRight(Canvas &canvas, const char *text, const Style &style, int right, int top,
                 const Colour &colour)
{
    const Mask line = lettered(text, style);
    canvas.stamp(line, right - line.width, top, colour);
}

void drawRow(Canvas &canvas, const Place &slider, const char *name)
{
    letterRight(canvas, name, labelStyle, labelRight, static_cast<int>(slider.centreY()) - 4, plain);
    // A scale under the slider; the handle's middle runs from 12 pixels inside one end to the
    // other.
    for (int step = 0; step <= 10; ++step) {
        const double x = slider.x + 11 + step * (slider.width - 23) / 10.0;
        const double length = step % 5 == 0 ? 5 : 3;
        canvas.fill(box(x, slider.y + slider.height + 1, 1, length), rgb(0x7c838a));
    }
}

} // namespace

Canvas drawSettingsPanel()
{
    Canvas canvas = plate(settingsPanelWidth, panelHeight);
    const Style title { 8, 6, 1.5, 1.2, 2, 1.0 };
    letterCentred(canvas, "IMAGE SETTINGS", title, settingsPanelWidth / 2.0, 11, plain);
    size_t row = 0;
    for (const Place &slider : settingSliders)
        drawRow(canvas, slider, rowNames[row++]);
    letterRight(canvas, "ANTI-FLICKER", labelStyle, antiFlicker.x - 12,
                static_cast<int>(antiFlicker.centreY()) - 4, plain);
    scoreLine(canvas, 24, 376, settingsPanelWidth - 48);
    sinkKey(canvas, defaults);
    sinkKey(canvas, settingsOk);
    canvas.clip(outline(settingsPanelWidth, panelHeight));
    return canvas;
}

} // namespace art
