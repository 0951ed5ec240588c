// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/device_description.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_camera {

constexpr int mostDevices = 32;

/// Reads "camera,storage,other-camera"; what is wrong with it, or nothing.
std::optional<std::string> parseDeviceList(
    std::string_view list, std::vector<DeviceDescription> &devices);
/// Carries out "2.product=Hall" for device 2, "product=Hall" for every camera; what is wrong with
/// it, or nothing.
std::optional<std::string> applyDeviceOption(
    std::vector<DeviceDescription> &devices, std::string_view text);

} // namespace virtual_camera
