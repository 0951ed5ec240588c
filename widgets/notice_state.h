// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the notices read when they are created: plain integers, 0 at start, GUI thread only.
#pragma once

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by name, by design.

/// The main window's top-left corner on the screen, from which the no-camera notice is placed.
/// Written by the main window when it shows that notice, opens the first camera or is dragged.
extern int main_position_x;
extern int main_position_y;

/// The same for the no-such-camera notice. Written by the main window when it shows that notice.
extern int main2_position_x;
extern int main2_position_y;

/// 1: no-camera notices created from now on stay on top. Set to 1 by the main window's constructor,
/// then toggled by the on-top button.
extern int TopFlag;

/// The same for the no-such-camera notice.
extern int Top2Flag;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
