// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The console's process-wide state: plain integers, 0 at start, GUI thread only. What the notices
// read is in widgets/notice_state.h, the image properties' ranges in device/property_ranges.h.
#pragma once

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by name, by design.

/// 1 when the start-up poll found a camera, else 0: then no control sends anything. Written by
/// MainWindow::TimerInit alone.
extern int usb_mode;

/// Number of cameras that the start-up poll found. Written by MainWindow::TimerInit alone.
extern int maxcam;

/// 1 while the settings panel is shown, else 0.
extern int right_flag;

/// Unused.
extern int PressFlag;

/// Unused: automatic white balance is only ever switched off.
extern int WhiteBalanceAutoflag;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
