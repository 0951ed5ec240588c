// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace desktop {

/// Gives each combo box of `window` a label that is never shown, with the accessible name of the
/// combo box for its text. On X11 and Wayland the toolkit tells screen readers a combo box's choice
/// for its name, and leaves it to a label to say what is chosen. Call once, after the form is
/// built.
void labelChoices(QWidget &window);

} // namespace desktop
