// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"

#include <string>

namespace virtual_camera {

/// A string descriptor of up to 126 UTF-16 units, as USB allows no more; the rest of a longer text
/// is cut off. Bytes that are not UTF-8 become U+FFFD.
Bytes stringDescriptor(const std::string &utf8);

/// The descriptor with index 0, which names the languages: English (United States) only.
Bytes languagesDescriptor();

} // namespace virtual_camera
