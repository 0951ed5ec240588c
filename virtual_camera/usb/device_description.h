// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"

#include <string>
#include <utility>
#include <vector>

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
    // So many, alike but for their serial numbers.
    static std::vector<DeviceDescription> ptzCameras(int count)
    {
        std::vector<DeviceDescription> devices;
        for (int number = 1; number <= count; ++number) {
            devices.push_back(ptzCamera());
            const std::string digits = std::to_string(number);
            devices.back().camera.serial.replace(6 - digits.size(), digits.size(), digits);
        }
        return devices;
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
