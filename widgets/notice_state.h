// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the notices read when they are made. Plain integers, 0 at start, read and written on the
// GUI thread only.
#pragma once

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by name, by design.

/// The main window's top-left corner on the screen, from which the no-camera notice places itself.
/// Written by the main window when it puts up that notice, opens the first camera or is dragged.
extern int main_position_x;
extern int main_position_y;

/// The same for the empty-position notice. Written by the main window when it puts up that notice.
extern int main2_position_x;
extern int main2_position_y;

/// 1: no-camera notices made from now on stay above all other windows. Set to 1 when the main
/// window is made, then written by the on-top button.
extern int TopFlag;

/// The same for the empty-position notice.
extern int Top2Flag;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
