// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/usb/interface_layout.h"
#include "virtual_camera/usb/string_descriptor.h"

#include <vector>

namespace virtual_camera {

// Endpoints of a camera.
constexpr std::uint8_t statusEndpoint = 0x81;  ///< interrupt; nothing ever happens
constexpr std::uint8_t pictureEndpoint = 0x82; ///< isochronous, in alternate setting 1 only

/// What a device says of itself when it is plugged in.
struct Descriptors
{
    Bytes device;
    Bytes configuration; ///< with all interfaces and endpoints
    Bytes qualifier;
    std::vector<Bytes> strings; ///< by index; the first names the languages
};

Descriptors describeCamera(const CameraDescription &description);
/// A memory stick: something on the bus that is not a camera.
Descriptors describeStorage();

} // namespace virtual_camera
