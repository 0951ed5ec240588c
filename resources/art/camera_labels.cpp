// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/palette.h"
#include "resources/art/pictures.h"

#include <array>

namespace art {

namespace {

constexpr int height = 10;
constexpr int lampWidth = 11; // with the gap before the name
constexpr std::array<int, 5> widths{ 37, 39, 39, 39, 40 };

// A lamp and the camera's name. The selected camera is green; its lamp is filled and its name
// bolder, so that it stands out without colour too.
Canvas drawLabel(int camera, int width, bool selected)
{
    Canvas canvas(width, height);
    const Colour &colour = selected ? ink : print;
    const std::string text = "CAM" + std::to_string(camera);
    const Style style{ 9, 6, selected ? 2.0 : 1.4, selected ? 1.6 : 1.2, 1, 1.0 };
    const Mask name = lettered(text, fitted(text, style, width - lampWidth));
    const int left = (width - lampWidth - name.width) / 2;
    canvas.fill(selected ? disc(left + 4.5, 4.5, 4) : ring(left + 4.5, 4.5, 3, 1.2), colour);
    canvas.stamp(name, left + lampWidth, 0, colour);
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
