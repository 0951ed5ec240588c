// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A slider's handle, grabbed and dragged with the mouse as a hand does it.
#pragma once

#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>

#include "tests/widgets/mouse.h"

namespace slider_mouse {

/// What the style needs to know of a slider that stands at `value`.
inline QStyleOptionSlider optionAt(const QSlider *slider, int value)
{
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    if (slider->orientation() == Qt::Horizontal)
        option.state |= QStyle::State_Horizontal; // style sheets ask for it
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    // The minimum of a vertical slider is at its lower end.
    option.upsideDown = slider->orientation() == Qt::Vertical;
    option.sliderPosition = value;
    option.sliderValue = value;
    return option;
}

inline QRect partAt(const QSlider *slider, int value, QStyle::SubControl part)
{
    const QStyleOptionSlider option = optionAt(slider, value);
    return slider->style()->subControlRect(QStyle::CC_Slider, &option, part, slider);
}

/// Where a hand takes the handle: its middle.
inline QPoint handleAt(const QSlider *slider, int value)
{
    return partAt(slider, value, QStyle::SC_SliderHandle).center();
}

/// Where the pointer, which took the handle by its middle, brings the slider to `value`.
inline QPoint pointerFor(const QSlider *slider, int value)
{
    const QRect handle = partAt(slider, slider->value(), QStyle::SC_SliderHandle);
    const QRect groove = partAt(slider, slider->value(), QStyle::SC_SliderGroove);
    const bool vertical = slider->orientation() == Qt::Vertical;
    const int travel =
        vertical ? groove.height() - handle.height() : groove.width() - handle.width();
    const int along = QStyle::sliderPositionFromValue(
        slider->minimum(), slider->maximum(), value, travel, vertical);
    const QPoint taken = handle.center() - handle.topLeft();
    return vertical ? QPoint(handle.center().x(), groove.y() + along + taken.y())
                    : QPoint(groove.x() + along + taken.x(), handle.center().y());
}

inline void grab(QSlider *slider) { mouse::press(slider, handleAt(slider, slider->value())); }

/// Moves the handle that was grabbed. Exact as long as the slider has a pixel for each value.
inline void dragTo(QSlider *slider, int value) { mouse::move(slider, pointerFor(slider, value)); }

inline void release(QSlider *slider)
{
    mouse::release(slider, pointerFor(slider, slider->value()));
}

} // namespace slider_mouse
