// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The window as screen readers and other assistive programs see it.
#pragma once

class QComboBox;

namespace desktop {

/// Lets assistive programs move a slider as a short push with the mouse does: sliderMoved, and
/// sliderReleased a fifth of a second after the last step. The toolkit's own interface only sets
/// the value: a lens would start and never stop, and a setting would not be sent. Call before the
/// first slider is made: interfaces are kept.
void exposeSliders();

/// Gives a combo box a hidden label with its accessible name. On X11 and Wayland the toolkit
/// reports the current choice as the name, and leaves it to a label to say what is chosen.
void labelChoice(QComboBox &choice);

} // namespace desktop
