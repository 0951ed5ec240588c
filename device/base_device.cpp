// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/base_device.h"

#include <new>

#include "device/usb_device.h"

void BaseDevice::Initial() { }

void BaseDevice::Release() { }

bool BaseDevice::EnumUSBDevices(std::vector<DeviceInfo> &list)
{
    return USBDevice::EnumDevices(list);
}

BaseDevice *BaseDevice::CreateDevice(DeviceType type)
{
    if (type != USB)
        return nullptr;
    return new USBDevice;
}

void BaseDevice::DeleteDevice(BaseDevice *device)
{
    // Storage only: an open camera stays as it is, whatever kind of device stands behind the
    // pointer.
    ::operator delete(device);
}
