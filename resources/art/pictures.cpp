// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/pictures.h"

#include <QBuffer>
#include <QImageWriter>

namespace art {

namespace {

void append(std::vector<Picture> &pictures, const std::vector<Drawing> &drawings)
{
    for (const Drawing &drawing : drawings)
        pictures.push_back({ drawing.name, pngFile(drawing.canvas.image()) });
}

} // namespace

QByteArray pngFile(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage plainImage = image;
    // A fixed resolution: else the file would tell that of the screen at which it was drawn.
    constexpr int seventyTwoPerInch = 2835;
    plainImage.setDotsPerMeterX(seventyTwoPerInch);
    plainImage.setDotsPerMeterY(seventyTwoPerInch);
    QImageWriter writer(&buffer, "png");
    writer.setCompression(100); // the most that zlib can do
    if (!writer.write(plainImage))
        qFatal("cannot write a picture: %s", qPrintable(writer.errorString()));
    return bytes;
}

std::vector<Picture> drawPictures()
{
    std::vector<Picture> pictures;
    append(pictures, drawFaces());
    append(pictures, drawCameraLabels());
    append(pictures, drawToggles());
    append(pictures, drawSliderParts());
    append(pictures,
        { { "background.png", drawControlPanel() },
            { "setting_background.png", drawSettingsPanel() },
            { "no_device.png", drawNoDeviceNotice() },
            { "no_more_camera.png", drawNoMoreCameraNotice() } });
    pictures.push_back({ "min_img.ico", iconFile() });
    return pictures;
}

} // namespace art
