// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/device/camera_fixture.h"

using virtual_camera::CameraDescription;
using virtual_camera::DeviceDescription;

BaseDevice *makeDevice()
{
    static auto *const kept = new std::vector<BaseDevice *>;
    kept->push_back(BaseDevice::CreateDevice(USB));
    return kept->back();
}

CameraDescription tolerantCamera()
{
    CameraDescription description;
    for (const auto &control : virtual_camera::allControls()) {
        if (control.fields.size() != 1)
            continue;
        auto &range = description.range(control.control);
        range.min = control.fields[0].lowest();
        range.max = control.fields[0].highest();
    }
    // A camera in automatic focus refuses to move its lens.
    description.range(virtual_camera::Control::FocusAuto).cur = 0;
    return description;
}

PluggedIn::PluggedIn(std::vector<DeviceDescription> devices) : testbed(std::move(devices)) { }

PluggedIn::PluggedIn() : PluggedIn({ DeviceDescription::ptzCamera(tolerantCamera()) }) { }

OpenCamera::OpenCamera(std::vector<DeviceDescription> devices) : PluggedIn(std::move(devices)) { }

OpenCamera::OpenCamera() = default;

void OpenCamera::SetUp()
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    log().clear();
}
