// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/json.h"

namespace virtual_camera {

class Device;
class Testbed;

/// Of what goes out in JSON. It grows when a program that understood the last one would be misled;
/// members that are merely added do not count.
constexpr int protocolVersion = 1;

/// Everything about a device that changes; virtual_camera/README.md names the members.
json::Object stateJson(const Device &device);

/// Seconds on the clock that dates the log.
double secondsNow(const Testbed &testbed);
/// What the JSON answers about devices begin with: versions and time.
json::Object greeting(const Testbed &testbed);

} // namespace virtual_camera
