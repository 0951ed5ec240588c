// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A device and the cameras that it may open.
#pragma once

#include "device/base_device.h"
#include "tests/device/wire.h"
#include "virtual_camera/testbed/testbed.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

/// A device that is kept until the process ends, as all devices are.
BaseDevice *makeDevice();

/// A camera that takes every number that fits a control, so that what arrives is what was sent.
virtual_camera::CameraDescription tolerantCamera();

/// A testbed with a device made after its cameras were plugged in; nothing is open.
class PluggedIn : public testing::Test
{
protected:
    explicit PluggedIn(std::vector<virtual_camera::DeviceDescription> devices);
    PluggedIn(); // one tolerant camera
    void TearDown() override { device->CloseDevice(); }

    virtual_camera::RequestLog &log() { return testbed.log(); }
    virtual_camera::Device &camera(int number = 1) { return testbed.device(number); }
    wire::Requests received(int number = 0) { return wire::received(testbed.log(), number); }

    virtual_camera::Testbed testbed;
    BaseDevice *device = makeDevice();
};

/// The same with camera 1 open and the log empty.
class OpenCamera : public PluggedIn
{
protected:
    explicit OpenCamera(std::vector<virtual_camera::DeviceDescription> devices);
    OpenCamera();
    void SetUp() override;
};
