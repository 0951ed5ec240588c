// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/log_format.h"

namespace virtual_camera {

/// A capture as the kernel's usbmon makes it, for Wireshark: each control transfer, those that
/// every USB device gets, too. The n-th device is at address n + 1 until it is plugged in again
/// at another. Lost records leave no trace.
LogFormat pcapLog();

} // namespace virtual_camera
