// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Preloaded: notes each request that libuvc hands to libusb, and lets it pass.

#include "record.h"

#include <libusb.h>

#include <dlfcn.h>

extern "C" int LIBUSB_CALL libusb_control_transfer(libusb_device_handle *dev_handle,
    uint8_t request_type, uint8_t bRequest, uint16_t wValue, uint16_t wIndex, unsigned char *data,
    uint16_t wLength, unsigned timeout)
{
    static const auto libusbsOwn = reinterpret_cast<decltype(&libusb_control_transfer)>(
        dlsym(RTLD_NEXT, "libusb_control_transfer"));
    constexpr unsigned toClassInterface =
        LIBUSB_REQUEST_TYPE_CLASS | static_cast<unsigned>(LIBUSB_RECIPIENT_INTERFACE);
    if (request_type == toClassInterface)
        record::noteSetting();
    else if (request_type == (toClassInterface | LIBUSB_ENDPOINT_IN))
        record::noteReading();
    return libusbsOwn(dev_handle, request_type, bRequest, wValue, wIndex, data, wLength, timeout);
}
