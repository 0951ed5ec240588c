// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/descriptors.h"
#include "virtual_camera/usb/interface_layout.h"

#include <string>

namespace fuzz {

// Walks through a camera's descriptors as a host does and holds every length, number and
// announcement in them to the others and to the description.
void checkDescriptors(const virtual_camera::Descriptors &descriptors,
    const virtual_camera::CameraDescription &description);

// A string descriptor must say the text, or as much of its beginning as has room.
void checkString(const virtual_camera::Bytes &descriptor, const std::string &utf8);

} // namespace fuzz
