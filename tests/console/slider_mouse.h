// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A slider's handle, grabbed and dragged with the mouse as a hand does it.
#pragma once

#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>

#include <cstdlib>

#include "tests/widgets/mouse.h"

namespace slider_mouse {

/// Where the middle of the handle is when the slider stands at `value`.
inline QPoint handleAt(const QSlider *slider, int value)
{
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.subControls = QStyle::SC_None;
    option.orientation = slider->orientation();
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    // The toolkit's vertical sliders have their minimum at the bottom.
    option.upsideDown = slider->orientation() == Qt::Horizontal ? slider->invertedAppearance()
                                                                : !slider->invertedAppearance();
    option.direction = Qt::LeftToRight;
    option.sliderPosition = value;
    option.sliderValue = value;
    return slider->style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
        .center();
}

inline void grab(QSlider *slider) { mouse::press(slider, handleAt(slider, slider->value())); }

/// Moves the handle that was grabbed. A slider has fewer pixels than values may be: the value that
/// it takes is the nearest that the mouse can reach.
inline void dragTo(QSlider *slider, int value) { mouse::move(slider, handleAt(slider, value)); }

inline void letGo(QSlider *slider) { mouse::release(slider, handleAt(slider, slider->value())); }

} // namespace slider_mouse
