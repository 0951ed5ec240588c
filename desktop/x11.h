// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// What X11, screen readers and the operating system need around any window.
namespace desktop {

/// Sets up the environment that the toolkit reads; call before the application object is made.
///
/// - A logical resolution of 72 dpi, whatever the environment says: the joystick's bands and the
///   lettering depend on it.
/// - On X11 a scale factor from the desktop's own setting, Xft.dpi, else from the screen's
///   resolution: in quarters, 1 at 96 dpi, at most 4. A factor that the user has set wins.
/// - X11 where an X server can be reached: Wayland gives clients no global position.
/// - No OpenGL, with which nothing here draws, unless the user has chosen an integration.
void prepareEnvironment();

/// Turns on the X server's detectable auto-repeat: a held key repeats as presses alone, with one
/// release at the end. Otherwise each repeat is a release and a press, and the toolkit takes the
/// release for a real one if the press has not arrived yet. Returns whether it is on; every release
/// is then a real one, even if the toolkit marks it as a repeat.
bool detectAutoRepeat();

/// Whether the X server has this keycode down now; true without an X server.
bool isKeyDown(quint32 keycode);

} // namespace desktop
