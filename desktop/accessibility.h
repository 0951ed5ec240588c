// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The window as screen readers and other assistive programs see it.
#pragma once

class QComboBox;

namespace desktop {

/// Has assistive programs nudge sliders, see hold_guard.h. The toolkit's own way changes the value
/// behind everyone's back: a lens would start and never stop, and a setting would not reach the
/// camera. Call before the first slider is made: interfaces are kept.
void exposeSliders();

/// Gives a combo box a hidden label with its accessible name. On X11 and Wayland the toolkit
/// reports the current choice as the name, and leaves it to a label to say what is chosen.
void labelChoice(QComboBox &choice);

} // namespace desktop
