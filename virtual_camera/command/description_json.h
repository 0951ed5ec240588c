// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/json.h"

namespace virtual_camera {

class Device;

/// What stays the same about a device unless somebody changes its ranges: names, units, lens, the
/// controls with their ranges. virtual_camera/README.md names the members.
json::Object describe(const Device &device);

} // namespace virtual_camera
