// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The console's process-wide state. Plain integers, 0 at start, read and written on the GUI
// thread only. What the notices read stands in widgets/notice_state.h, the ranges of the image
// properties in device/property_ranges.h.
#pragma once

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by name, by design.

/// 1 when the start-up poll found a camera, else 0. Every control that talks to the camera does so
/// only then. Written by MainWindow::TimerInit alone.
extern int usb_mode;

/// Number of cameras that the start-up poll found. Written by MainWindow::TimerInit alone.
extern int maxcam;

/// 1 while the settings panel is shown, else 0.
extern int right_flag;

/// Declared and used by nothing.
extern int PressFlag;

/// Declared and used by nothing: automatic white balance is only ever switched off.
extern int WhiteBalanceAutoflag;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
