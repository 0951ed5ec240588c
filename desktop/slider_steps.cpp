// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/slider_steps.h"

#include <QSlider>
#include <QTimer>

#include <chrono>

namespace desktop {

namespace {

// The timer of a lens slider runs under this name from each step until it is let go.
constexpr QLatin1String stepTimer("stepTimer");

bool isStep(const QSlider *slider)
{
    return !slider->isSliderDown() && slider->sliderPosition() != slider->value();
}

void letGo(QSlider *slider)
{
    if (slider->isSliderDown())
        return;
    slider->setSliderDown(true);
    slider->setSliderDown(false);
}

void letGoAfterSteps(QSlider *slider)
{
    using namespace std::chrono_literals;
    auto *const timer = new QTimer(slider);
    timer->setObjectName(stepTimer);
    timer->setSingleShot(true);
    timer->setInterval(200ms);
    QObject::connect(timer, &QTimer::timeout, slider, [slider] { letGo(slider); });
    QObject::connect(slider, &QSlider::actionTriggered, timer, [slider, timer] {
        if (isStep(slider))
            timer->start();
    });
}

void reportSteps(QSlider *slider)
{
    QObject::connect(slider, &QSlider::actionTriggered, slider, [slider] {
        if (isStep(slider))
            emit slider->sliderMoved(slider->sliderPosition());
    });
}

} // namespace

void fitSliders(QWidget &window)
{
    const auto sliders = window.findChildren<QSlider *>();
    for (QSlider *const slider : sliders) {
        if (slider->orientation() == Qt::Vertical)
            letGoAfterSteps(slider);
        else
            reportSteps(slider);
    }
}

void letGoOfSteps(QWidget &window)
{
    const auto timers = window.findChildren<QTimer *>(stepTimer);
    for (QTimer *const timer : timers) {
        if (!timer->isActive())
            continue;
        timer->stop();
        letGo(qobject_cast<QSlider *>(timer->parent()));
    }
}

} // namespace desktop
