// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <iostream>

#include "device/usb_device.h"
#include "device/uvc_edge.h"

using uvc_edge::succeeded;

USBDevice::USBDevice()
{
    const uvc_error_t started = uvc_init(&ctx, nullptr);
    const uvc_error_t listed = uvc_edge::deviceList(ctx, &devList);
    status = succeeded(started) && succeeded(listed) ? 0 : -1;
}

namespace {

// The accepted camera's record; nothing is added for any other device.
void appendIfAccepted(uvc_device_t *device, std::vector<DeviceInfo> &list)
{
    uvc_device_descriptor_t *descriptor = nullptr;
    uvc_get_device_descriptor(device, &descriptor);
    if (!descriptor)
        return;
    if (descriptor->idProduct == USBDevice::PRODUCT_ID_FILTER) {
        DeviceInfo camera;
        camera.index = static_cast<std::int32_t>(list.size());
        // A camera that may not be opened has no strings that could be read.
        camera.name = descriptor->product ? descriptor->product : "";
        list.push_back(camera);
    }
    uvc_free_device_descriptor(descriptor);
}

} // namespace

bool USBDevice::EnumDevices(std::vector<DeviceInfo> &list)
{
    list.clear();
    // A context of its own: the device's list was taken once and stays as it is.
    uvc_context_t *context = nullptr;
    if (!succeeded(uvc_init(&context, nullptr)))
        return false;
    std::cout << "one: init success" << std::endl;
    uvc_device_t **devices = nullptr;
    if (!succeeded(uvc_edge::deviceList(context, &devices)))
        return false;
    std::cout << "one: get list success" << std::endl;
    for (uvc_device_t **device = devices; *device; ++device)
        appendIfAccepted(*device, list);
    uvc_free_device_list(devices, 1);
    uvc_exit(context);
    return true;
}

bool USBDevice::OpenDevice(const char * /*name*/, int index)
{
    if (!succeeded(status))
        return false;
    openIndex = index;
    return succeeded(uvc_edge::open(devList, index, devh));
}

void USBDevice::CloseDevice()
{
    if (openIndex == -1)
        return;
    uvc_edge::close(devh);
}

bool USBDevice::GetDeviceInfo() { return false; }
