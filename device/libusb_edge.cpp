// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Two calls from libuvc that must not reach libusb unchanged: the executable's definitions take
// precedence over libusb's. libuvc makes both on its caller's thread, the GUI thread; its event
// thread only handles libusb's events.

#include <libusb.h>

#include <dlfcn.h>

#include <set>

namespace {

constexpr unsigned firstLimit = 5000; // ms; the longest that USB 2.0 allows a device
constexpr unsigned hungLimit = 1000;  // ms; for a camera whose last request timed out

// Cameras whose last request timed out. A camera that is reopened is the same device with another
// handle. One that is plugged in again is another device, whose address cannot be one of these:
// they are referenced.
std::set<libusb_device *> &hungCameras()
{
    static std::set<libusb_device *> devices;
    return devices;
}

void noteAnswer(libusb_device *camera, int result)
{
    const bool answered = result >= 0 || result == LIBUSB_ERROR_PIPE; // a stall is an answer, too
    if (result == LIBUSB_ERROR_TIMEOUT && hungCameras().insert(camera).second)
        libusb_ref_device(camera);
    else if (answered && hungCameras().erase(camera) != 0)
        libusb_unref_device(camera);
}

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

/// libuvc sets no time limit (0), so a camera that hangs would block its caller for ever. Limits
/// that are set, as in libusb's own requests, are kept.
EXPORTED int LIBUSB_CALL libusb_control_transfer(libusb_device_handle *dev_handle,
    uint8_t request_type, uint8_t bRequest, uint16_t wValue, uint16_t wIndex, unsigned char *data,
    uint16_t wLength, unsigned timeout)
{
    static const auto libusbsOwn = reinterpret_cast<decltype(&libusb_control_transfer)>(
        dlsym(RTLD_NEXT, "libusb_control_transfer"));
    if (timeout != 0)
        return libusbsOwn(
            dev_handle, request_type, bRequest, wValue, wIndex, data, wLength, timeout);

    libusb_device *const camera = libusb_get_device(dev_handle);
    timeout = hungCameras().count(camera) != 0 ? hungLimit : firstLimit;
    const int result =
        libusbsOwn(dev_handle, request_type, bRequest, wValue, wIndex, data, wLength, timeout);
    noteAnswer(camera, result);
    return result;
}

/// Every uvc_close selects alternate setting 0 of the control interface, the only one it has. With
/// the camera unplugged, libusb 1.0.25 and 1.0.26 then unlock a mutex that they never locked, and
/// libusb_close aborts. No other setting is ever chosen, so nothing needs to be done.
EXPORTED int LIBUSB_CALL libusb_set_interface_alt_setting(
    libusb_device_handle * /*handle*/, int /*interface*/, int /*setting*/)
{
    return LIBUSB_SUCCESS;
}
