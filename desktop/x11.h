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

/// Device pixels per pixel of the panel. Call once the application object is there.
qreal scaleFactor();

/// Asks the X server to repeat a held key as press, press, press, and one release at the end,
/// instead of release and press. The toolkit takes such a release for a real one when it looks
/// before the press behind it has arrived. True when every release is a real one from now on, even
/// one that the toolkit marks as a repeat.
bool detectAutoRepeat();

/// Whether the key of that X keycode is down at this moment; true where no X server can tell.
bool isKeyDown(quint32 keycode);

} // namespace desktop
