// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Makes one request over and over, by an operation of the panel's device or by the bare call.

#include <cstdlib>
#include <string_view>

#include "device/base_device.h"
#include "opponents/camera.h"

int main(int argc, char *argv[])
{
    const std::string_view by = argc > 1 ? argv[1] : "";
    const int count = argc > 2 ? std::atoi(argv[2]) : 1;
    if (by == "device") {
        BaseDevice *const device = BaseDevice::CreateDevice(USB);
        device->OpenDevice("0", 0);
        for (int i = 0; i < count; ++i)
            device->StartMoveRight(21);
    } else {
        uvc_device_handle_t *const camera = openCamera();
        for (int i = 0; i < count; ++i)
            uvc_set_pantilt_rel(camera, 1, 21, 0, 0);
    }
    return 0;
}
