// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/faults.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_camera {

/// Reads what stands behind the number of the device in a control command that sets a fault:
/// [TARGET [REQUEST]] [BYTES | EPROTO | ETIME] [WHEN], as far as the fault's effect has it.
/// Returns what is wrong, in words.
std::optional<std::string> readFault(Fault &fault, std::vector<std::string_view> words);

} // namespace virtual_camera
