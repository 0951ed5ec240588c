// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/canvas.h"

#include <QByteArray>
#include <QString>
#include <vector>

namespace art {

struct Picture
{
    QString name;     // of the file in resources/img
    QByteArray bytes; // of the file
};

// All pictures of the user interface, each drawn anew.
std::vector<Picture> drawPictures();

struct Drawing
{
    QString name;
    Canvas canvas;
};

// The faces of the keys and of the buttons in the settings panel and the notices.
std::vector<Drawing> drawFaces();
// CAM1 to CAM5, each in black and in green.
std::vector<Drawing> drawCameraLabels();
// The faces of the mute and the stay-on-top button, each in both states.
std::vector<Drawing> drawToggles();
// Handles and grooves.
std::vector<Drawing> drawSliderParts();
Canvas drawControlPanel();
Canvas drawSettingsPanel();
Canvas drawNoDeviceNotice();
Canvas drawNoMoreCameraNotice();
// The program's sign at a size in pixels.
Canvas drawSign(int size);

QByteArray pngFile(const QImage &image);
// An icon file with the sign in all the sizes that trays ask for.
QByteArray iconFile();

} // namespace art
