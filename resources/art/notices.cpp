// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/body.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

const Style sentence { 10, 7, 1.6, 1.3, 2, 1.0 };
const Style help { 8, 6, 1.0, 1.0, 1, 1.0 };

Canvas emptyNotice()
{
    Canvas canvas = plate(noticeWidth, noticeHeight);
    const Shape edge = outline(noticeWidth, noticeHeight);
    canvas.fill(without(edge, grown(edge, -2)), frame);
    return canvas;
}

// A camera on its foot, seen from the front, around a point.
Shape camera(double x, double y)
{
    const Shape head = box(x - 15, y - 16, 30, 24, 9);
    const Shape arms = without(box(x - 20, y - 8, 40, 24, 6), box(x - 16.5, y - 12, 33, 23, 8));
    const Shape foot = box(x - 13, y + 16, 26, 5, 2);
    return either(either(head, arms), foot);
}

void drawLens(Canvas &canvas, double x, double y)
{
    canvas.fill(disc(x, y - 4, 8.5), cut);
    canvas.fill(ring(x, y - 4, 6, 1.2), rgb(0x7c838a));
    canvas.fill(disc(x - 2, y - 6, 1.4), bright);
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
    const double x = noticeWidth / 2.0;
    canvas.fill(camera(x - 40, 46), plain);
    drawLens(canvas, x - 40, 46);
    letterNotice(canvas, "No camera is connected", "Plug one in, then start the panel again.");
    sinkKey(canvas, noticeQuit);
    sinkKey(canvas, noticeOk);
    return canvas;
}

Canvas drawNoMoreCameraNotice()
{
    Canvas canvas = emptyNotice();
    const double x = noticeWidth / 2.0;
    const Shape ghost = camera(x, 46);
    canvas.fill(without(ghost, grown(ghost, -1.4)), quiet);
    letterNotice(canvas, "This camera position is empty", "Choose another one.");
    sinkKey(canvas, onlyNoticeOk);
    return canvas;
}

} // namespace art
