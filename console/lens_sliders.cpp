// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Zoom and focus. Each slider is a three-way switch, not a position: above its rest value the lens
// moves one way, below it the other way, at rest it stops. Let go, it springs back.

#include "console/main_window.h"

#include "console/console_state.h"
#include "console/lens_rest.h"
#include "ui_main_window.h"

namespace {

// How far the slider is pushed does not matter.
constexpr int lensSpeed = 1;

} // namespace

struct MainWindow::Lens
{
    QSlider *Ui::MainWindow::*slider;
    bool (BaseDevice::*above)(int);
    bool (BaseDevice::*below)(int);
    bool (BaseDevice::*stop)();

    static const Lens zoom;
    static const Lens focus;
};

const MainWindow::Lens MainWindow::Lens::zoom = { &Ui::MainWindow::slider_zoom,
    &BaseDevice::StartZoomTele, &BaseDevice::StartZoomWide, &BaseDevice::StopZoom };
const MainWindow::Lens MainWindow::Lens::focus = { &Ui::MainWindow::slider_focus,
    &BaseDevice::StartFocusFar, &BaseDevice::StartFocusNear, &BaseDevice::StopFocus };

// Each change of the value sends the start of its side again.
void MainWindow::driveLens(const Lens &lens)
{
    if (usb_mode != 1)
        return;
    const int value = (form->*lens.slider)->value();
    if (value > SLIDER_CENTRE)
        (device->*lens.above)(lensSpeed);
    else if (value < SLIDER_CENTRE)
        (device->*lens.below)(lensSpeed);
    else
        (device->*lens.stop)();
}

// Going back to rest changes the value, which has already sent a stop; this is the second one. A
// slider let go at rest sends this one only.
void MainWindow::springBack(const Lens &lens)
{
    (form->*lens.slider)->setValue(SLIDER_CENTRE);
    if (usb_mode == 1)
        (device->*lens.stop)();
}

void MainWindow::zoomchanged() { driveLens(Lens::zoom); }
void MainWindow::zoomstop() { springBack(Lens::zoom); }
void MainWindow::focuschanged() { driveLens(Lens::focus); }
void MainWindow::focusstop() { springBack(Lens::focus); }
