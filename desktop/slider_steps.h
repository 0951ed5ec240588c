// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace desktop {

/// Makes the sliders of `window` mean what they show when an assistive program moves them, which
/// does not hold them as a mouse does. Call once, after the form is built.
///
/// - A lens slider (vertical) would start the lens and never let go. It is let go for the user a
///   fifth of a second after the last step, so a step is a nudge.
/// - A settings slider (horizontal) would show a value that the camera never got. The step is
///   reported as a movement of the slider, and the camera gets the value.
void fitSliders(QWidget &window);

/// Lets go at once of every lens slider that is still to be let go after a step.
void letGoOfSteps(QWidget &window);

} // namespace desktop
