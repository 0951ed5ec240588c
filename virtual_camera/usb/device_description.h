// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"

#include <vector>

namespace virtual_camera {

/// Something that can be plugged in.
struct DeviceDescription
{
    enum class Kind {
        Camera,
        Storage ///< a memory stick: not a camera at all
    };

    Kind kind = Kind::Camera;
    CameraDescription camera;

    static DeviceDescription ptzCamera(CameraDescription description = {});
    /// So many, alike but for their serial numbers.
    static std::vector<DeviceDescription> ptzCameras(int count);
    /// A video class camera of another make.
    static DeviceDescription otherCamera();
    static DeviceDescription storage();
};

} // namespace virtual_camera
