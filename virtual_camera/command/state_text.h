// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace virtual_camera {

class Device;

/// A camera's state in one line of name=value pairs:
/// "plugged=yes address=2 requests_under_way=0 pan=3600 pan_velocity=378000 ... mute=off ...
/// presets=0:0,0,0,2048;3:..."
std::string stateText(const Device &device);

} // namespace virtual_camera
