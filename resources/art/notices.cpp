// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/body.h"
#include "resources/art/camera_drawing.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

const Style sentence{ 10, 7, 1.6, 1.3, 2, 1.0 };
const Style help{ 8, 6, 1.0, 1.0, 1, 1.0 };

Canvas emptyNotice()
{
    Canvas canvas = plate(noticeWidth, noticeHeight);
    const Shape edge = outline(noticeWidth, noticeHeight);
    canvas.fill(without(edge, grown(edge, -2)), frame);
    return canvas;
}

constexpr double drawingMiddle = 50;

// A cable that ends in a plug, and beyond a gap the socket that it is not in.
void drawLooseCable(Canvas &canvas, double x, double y)
{
    canvas.fill(box(x, y - 1, 30, 2), plain);
    canvas.fill(box(x + 29, y - 5, 13, 10, 2), plain);
    canvas.fill(box(x + 43, y - 3.5, 8, 7), quiet);
    canvas.fill(box(x + 46, y - 2, 3, 1.5), cut);
    canvas.fill(box(x + 46, y + 0.5, 3, 1.5), cut);
    canvas.fill(box(x + 68, y - 8, 13, 16, 2), plain);
    canvas.fill(box(x + 68, y - 4, 7, 8), cut);
    canvas.fill(box(x + 80, y - 1, 20, 2), plain);
}

void letterNotice(Canvas &canvas, const char *text, const char *next)
{
    letterCentred(canvas, text, sentence, noticeWidth / 2.0, 88, bright);
    letterCentred(canvas, next, help, noticeWidth / 2.0, 111, quiet);
}

} // namespace

Canvas drawNoDeviceNotice()
{
    Canvas canvas = emptyNotice();
    const double x = noticeWidth / 2.0 - 46;
    canvas.fill(cameraBody(x, drawingMiddle), plain);
    drawLens(canvas, x, drawingMiddle);
    drawLooseCable(canvas, x + 13, drawingMiddle + 19);
    letterNotice(canvas, "No camera is connected", "Plug one in, then start the panel again.");
    sinkKey(canvas, noticeQuit);
    sinkKey(canvas, noticeOk);
    return canvas;
}

Canvas drawNoMoreCameraNotice()
{
    Canvas canvas = emptyNotice();
    const double x = noticeWidth / 2.0;
    for (const double neighbour : { x - 70, x + 70 }) {
        canvas.fill(cameraBody(neighbour, drawingMiddle), rgb(0x7c838a));
        drawLens(canvas, neighbour, drawingMiddle);
    }
    const Shape missing = cameraBody(x, drawingMiddle);
    canvas.fill(without(missing, grown(missing, -1.5)), plain);
    letterNotice(canvas, "This camera position is empty", "Choose another one.");
    sinkKey(canvas, onlyNoticeOk);
    return canvas;
}

} // namespace art
