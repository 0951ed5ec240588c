// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

/// The panel is laid out for a desktop whose logical resolution is 72 dots per inch, where a click
/// on a button does not take the keyboard and a held key repeats without releases. What X11 and
/// Wayland do otherwise is put right in this namespace and nowhere else: here what the application
/// object is made with, in slider_steps.h and hold_guard.h what the window needs.
namespace desktop {

/// Call before the application object is made. Sets, each only where the environment does not:
/// a logical resolution of 72 dots per inch, on which the joystick's bands and the lettering
/// depend, and X11 where an X server can be reached, because Wayland tells no window its place.
void prepare();

} // namespace desktop
