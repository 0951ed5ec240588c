// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Zoom and focus. Each slider is a three-way switch, not a position: above its rest value the lens
// moves one way, below it the other way, at rest it stops. Released, it springs back.

#include "console/main_window.h"

#include "console/console_state.h"
#include "ui_main_window.h"

using Form = Ui::MainWindow;

namespace {

constexpr int SLIDER_CENTRE = 45; // the rest value, below the middle of the range 0 to 99
constexpr int lensSpeed = 1;      // however far the slider is pushed

} // namespace

struct MainWindow::Lens
{
    QSlider *Form::*slider;
    bool (BaseDevice::*above)(int);
    bool (BaseDevice::*below)(int);
    bool (BaseDevice::*stop)();

    static const Lens zoom;
    static const Lens focus;
};

const MainWindow::Lens MainWindow::Lens::zoom = { &Form::slider_zoom, //
    &BaseDevice::StartZoomTele, &BaseDevice::StartZoomWide, &BaseDevice::StopZoom };
const MainWindow::Lens MainWindow::Lens::focus = { &Form::slider_focus, //
    &BaseDevice::StartFocusFar, &BaseDevice::StartFocusNear, &BaseDevice::StopFocus };

void MainWindow::restLensSliders()
{
    for (QSlider *const slider : { form->slider_zoom, form->slider_focus }) {
        slider->setSliderPosition(SLIDER_CENTRE);
        slider->setPageStep(0);
    }
}

// Every change of the value sends the start of its side again.
void MainWindow::driveLens(const Lens &lens)
{
    if (usb_mode != 1)
        return;
    const int value = (form.get()->*lens.slider)->value();
    if (value > SLIDER_CENTRE)
        (device->*lens.above)(lensSpeed);
    else if (value < SLIDER_CENTRE)
        (device->*lens.below)(lensSpeed);
    else
        (device->*lens.stop)();
}

// Springing back changes the value, which sends a first stop; this sends the second. A slider
// released at rest sends only this one.
void MainWindow::springBack(const Lens &lens)
{
    (form.get()->*lens.slider)->setValue(SLIDER_CENTRE);
    if (usb_mode == 1)
        (device->*lens.stop)();
}

void MainWindow::zoomchanged() { driveLens(Lens::zoom); }
void MainWindow::zoomstop() { springBack(Lens::zoom); }
void MainWindow::focuschanged() { driveLens(Lens::focus); }
void MainWindow::focusstop() { springBack(Lens::focus); }
