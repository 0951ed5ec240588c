// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "console/console_state.h"

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
int usb_mode = 0;
int maxcam = 0;
int right_flag = 0;
int PressFlag = 0;
int WhiteBalanceAutoflag = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
