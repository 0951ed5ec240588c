// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A slider that sets the brightness: the panel's own, alone.

#include <QApplication>
#include <QSlider>

#include "camera.h"

namespace {

// The form's own.
const char *const look = R"(
    QSlider::groove:horizontal { border-image: url(:/img/slider_bg.png) 1 1; border-width: 1 1;
        height: 5px; }
    QSlider::handle:horizontal { border: 0px; border-image: url(:/img/slider_button.png);
        width: 24px; margin: -5px 0px -5px -2px; }
    QSlider::sub-page:horizontal { background: qlineargradient(spread: pad, x1: 0, y1: 1, x2: 0,
        y2: 0, stop: 0 #cacaca, stop: 1 #ffffff); })";

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    uvc_device_handle_t *const camera = openCamera();
    QWidget window;
    window.setFixedSize(653, 436);
    QSlider slider(Qt::Horizontal, &window);
    slider.setGeometry(421, 202, 149, 22);
    slider.setStyleSheet(look);
    slider.setRange(0, 250);
    slider.setValue(120);
    QObject::connect(&slider, &QSlider::sliderMoved,
        [camera](int value) { uvc_set_brightness(camera, static_cast<std::int16_t>(value)); });
    window.show();
    return QApplication::exec();
}
