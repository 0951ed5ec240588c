// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/usb/descriptor_writer.h"

namespace virtual_camera {

/// What a camera's configuration holds: the association of its two interfaces and what belongs to
/// them, laid out as the description's release of the USB Video Class wants it. The string index
/// is that of the camera's name.
DescriptorWriter videoDescriptors(const CameraDescription &description, std::int64_t name);

} // namespace virtual_camera
