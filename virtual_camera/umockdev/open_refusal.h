// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// Opening a device can be made to fail. The root user may open everything, so the failure is made
// where the program calls open(): open_refusal.cpp puts itself before it, either as part of the
// program (a test that links virtual_camera_umockdev) or preloaded into it.

namespace virtual_camera {

// Makes every open of the device fail with this errno (0: lets it through again). The root
// directory is the testbed's, the path the one that the program sees ("/dev/bus/usb/001/002").
void setOpenError(const std::string &rootDirectory, const std::string &path, int error);

} // namespace virtual_camera
