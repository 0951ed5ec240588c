// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_model.h"
#include "virtual_camera/testbed/testbed.h"
#include "virtual_camera/umockdev/emulated_bus.h"
#include "virtual_camera/usb/usb_device.h"

#include <mutex>

namespace virtual_camera {

// What a device consists of; for device.cpp and testbed.cpp.
struct Device::Inside
{
    Inside(EmulatedBus &where, RequestLog &log, int ownNumber, int ownPort, DeviceDescription what,
        const Clock &clock);

    EmulatedBus &bus;
    RequestLog &log;
    int number;
    int port;
    int address;
    DeviceDescription description;

    // Guards what a node touches on umockdev's thread: camera, usb, faults.
    mutable std::mutex mutex;
    std::unique_ptr<CameraModel> camera;
    std::unique_ptr<UsbDevice> usb;
    Faults faults;

    // Guards plugging; taken before the other.
    mutable std::mutex plugMutex;
    std::optional<EmulatedBus::Plug> plug;
    // Files that are open when the device is unplugged go on with their node.
    std::vector<std::shared_ptr<UsbfsNode>> oldNodes;

    void plugIn();
    void pullOut();
    void tellOpenError() const;
    void logEvent(LogRecord::Event event) const;
    CameraModel &theCamera() const;
};

} // namespace virtual_camera
