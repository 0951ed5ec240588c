// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Two calls of libuvc's into libusb that must not reach it as they are. The executable's
// definitions are found before libusb's. libuvc makes both on the thread that called it, which is
// the GUI thread: its event thread only waits for libusb's events.

#include <libusb.h>

#include <dlfcn.h>

#include <set>

namespace {

constexpr unsigned longestAnswer = 5000; // ms; USB 2.0 allows a device no more
constexpr unsigned patience = 1000;      // ms; for a camera that has used that up

// Cameras that let their last request time out. A camera that is opened again is the same device
// with another handle; one that is plugged in again is another device, and cannot get the address
// of a device that is kept here.
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

/// libuvc sets no time limit (0), so a camera that hangs would block its caller for ever. libusb's
/// own requests come with limits and keep them.
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
    timeout = hungCameras().count(camera) != 0 ? patience : longestAnswer;
    const int result =
        libusbsOwn(dev_handle, request_type, bRequest, wValue, wIndex, data, wLength, timeout);
    noteAnswer(camera, result);
    return result;
}

/// libuvc ends every close by setting the control interface back to its only setting, 0. With the
/// camera unplugged, libusb 1.0.25 and 1.0.26 then unlock a mutex that they never locked, and
/// libusb_close aborts. There is nothing to set back: no other setting is ever chosen.
EXPORTED int LIBUSB_CALL libusb_set_interface_alt_setting(
    libusb_device_handle * /*handle*/, int /*interface*/, int setting)
{
    return setting == 0 ? LIBUSB_SUCCESS : LIBUSB_ERROR_NOT_SUPPORTED;
}
