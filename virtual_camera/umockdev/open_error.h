// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace virtual_camera {

/// Makes every open of the device fail with this errno (0: lets it through again); device_paths.cpp
/// does so in the programs. The root directory is the bus's, the path the one that programs see
/// ("/dev/bus/usb/001/002").
void setOpenError(const std::string &rootDirectory, const std::string &path, int error);

} // namespace virtual_camera
