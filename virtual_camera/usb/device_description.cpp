// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/device_description.h"

#include <string>
#include <utility>

namespace virtual_camera {

DeviceDescription DeviceDescription::ptzCamera(CameraDescription description)
{
    return { Kind::Camera, std::move(description) };
}

std::vector<DeviceDescription> DeviceDescription::ptzCameras(int count)
{
    std::vector<DeviceDescription> devices;
    for (int number = 1; number <= count; ++number) {
        devices.push_back(ptzCamera());
        const std::string digits = std::to_string(number);
        devices.back().camera.serial.replace(6 - digits.size(), digits.size(), digits);
    }
    return devices;
}

DeviceDescription DeviceDescription::otherCamera()
{
    DeviceDescription description;
    description.camera.productId = 0x0102;
    description.camera.product = "Desk camera";
    return description;
}

DeviceDescription DeviceDescription::storage() { return { Kind::Storage, {} }; }

} // namespace virtual_camera
