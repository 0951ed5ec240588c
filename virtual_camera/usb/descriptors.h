// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/control_request.h"

#include <string>
#include <vector>

namespace virtual_camera {

// What a device says of itself when it is plugged in.
struct Descriptors
{
    Bytes device;
    Bytes configuration; // with all interfaces and endpoints
    Bytes qualifier;
    std::vector<Bytes> strings; // by index; the first names the languages
};

Descriptors describeCamera(const CameraDescription &description);
// A memory stick: something on the bus that is no camera.
Descriptors describeStorage();

// A string descriptor of up to 126 UTF-16 units, as USB allows no more; the rest of a longer text
// is cut off. Bytes that are no UTF-8 become U+FFFD.
Bytes stringDescriptor(const std::string &utf8);

// Endpoints of a camera.
constexpr std::uint8_t statusEndpoint = 0x81;
constexpr std::uint8_t pictureEndpoint = 0x82;

} // namespace virtual_camera
