// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/palette.h"
#include "resources/art/pictures.h"

#include <array>

namespace art {

namespace {

constexpr int height = 10;
constexpr std::array<int, 5> widths { 37, 39, 39, 39, 40 };

// The selected camera is green, bolder, and has a bar beneath its name, so that it stands out
// without colour too.
Canvas drawLabel(int camera, int width, bool selected)
{
    Canvas canvas(width, height);
    const std::string text = "CAM" + std::to_string(camera);
    const Style style { 7, 5, selected ? 2.0 : 1.25, selected ? 1.3 : 1.0, selected ? 1 : 2, 1.1 };
    const Colour &colour = selected ? ink : print;
    letterCentred(canvas, text, fitted(text, style, width), width / 2.0, 0, colour);
    if (selected)
        canvas.fill(box(0, 8, width, 2), colour);
    return canvas;
}

} // namespace

std::vector<Drawing> drawCameraLabels()
{
    std::vector<Drawing> drawings;
    int camera = 0;
    for (const int width : widths) {
        const QString name = QStringLiteral("cam%1_").arg(++camera);
        drawings.push_back({ name + "black.png", drawLabel(camera, width, false) });
        drawings.push_back({ name + "green.png", drawLabel(camera, width, true) });
    }
    return drawings;
}

} // namespace art
