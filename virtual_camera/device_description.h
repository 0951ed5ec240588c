// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera_description.h"

#include <utility>

namespace virtual_camera {

// Something that can be plugged in.
struct DeviceDescription
{
    enum class Kind {
        Camera,
        Storage // a memory stick: no camera at all
    };

    Kind kind = Kind::Camera;
    CameraDescription camera;

    static DeviceDescription ptzCamera(CameraDescription description = {})
    {
        return { Kind::Camera, std::move(description) };
    }
    // A video class camera that is of another make.
    static DeviceDescription otherCamera()
    {
        DeviceDescription description;
        description.camera.productId = 0x0102;
        description.camera.product = "Desk camera";
        return description;
    }
    static DeviceDescription storage() { return { Kind::Storage, {} }; }
};

} // namespace virtual_camera
