// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Sliders as screen readers and other assistive programs see them.
#pragma once

namespace desktop {

/// Makes a slider that is moved by an assistive program move as by a step of its user. The
/// toolkit's own way changes its value behind everyone's back: a lens would start and never be let
/// go, a setting would show a value that the camera never got. A disabled slider stays where it is,
/// as it does under the mouse.
///
/// Call after the application object is made and before the first slider is. What a step does is
/// told in slider_steps.h.
void installAccessibleSliders();

} // namespace desktop
