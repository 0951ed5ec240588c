// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/body.h"
#include "resources/art/pictures.h"

#include <array>
#include <cmath>

namespace art {

namespace {

constexpr int labelRight = 86;
constexpr int labelWidth = 72;

struct Row
{
    const char *name;
    const char *addition;
};

// In the order of the sliders.
constexpr std::array<Row, 7> rows{ { { "BACKLIGHT", "COMPENSATION" }, { "GAMMA", "" },
    { "CONTRAST", "" }, { "SATURATION", "" }, { "BRIGHTNESS", "" }, { "SHARPNESS", "" },
    { "WHITE BALANCE", "TEMPERATURE" } } };

void drawRow(Canvas &canvas, const Place &slider, const Row &row)
{
    const int middle = static_cast<int>(slider.centreY());
    const Style style = fitted(row.name, labelStyle, labelWidth);
    letterRight(canvas, row.name, style, labelRight, middle - 4, plain);
    letterRight(canvas, row.addition, captionStyle, labelRight, middle + 6, quiet);
    // A scale under the slider; the handle's middle runs from 12 pixels inside one end to the
    // other.
    for (int step = 0; step <= 10; ++step) {
        const double x = std::round(slider.x + 11 + step * (slider.width - 23) / 10.0);
        const double length = step % 5 == 0 ? 5 : 3;
        canvas.fill(box(x, slider.y + slider.height + 1, 1, length), rgb(0x7c838a));
    }
}

} // namespace

Canvas drawSettingsPanel()
{
    Canvas canvas = plate(settingsPanelWidth, panelHeight);
    drawHead(canvas, "IMAGE SETTINGS");
    for (size_t i = 0; i < rows.size(); ++i)
        drawRow(canvas, settingSliders[i], rows[i]);
    letterRight(canvas, "ANTI-FLICKER", labelStyle, antiFlicker.x - 12,
        static_cast<int>(antiFlicker.centreY()) - 4, plain);
    scoreLine(canvas, 24, 376, settingsPanelWidth - 48);
    sinkKey(canvas, defaults);
    sinkKey(canvas, settingsOk);
    canvas.clip(outline(settingsPanelWidth, panelHeight));
    return canvas;
}

} // namespace art
