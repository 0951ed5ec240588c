// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Closing a camera that was unplugged must not end the program. libuvc's close sets the streaming
// interface's alternate setting; libusb 1.0.25 and 1.0.26 then unlock a mutex that they never
// locked, which aborts the process (mended in 1.0.27). For those versions the call is answered
// here when the device is gone. The executable's definition is found before libusb's.

#include <libusb.h>

#include <dlfcn.h>

namespace {

using SetAltSetting = int (*)(libusb_device_handle *, int, int);

SetAltSetting libusbsOwn()
{
    static const auto function =
        reinterpret_cast<SetAltSetting>(dlsym(RTLD_NEXT, "libusb_set_interface_alt_setting"));
    return function;
}

bool versionAborts()
{
    const libusb_version *const version = libusb_get_version();
    return version->major == 1 && version->minor == 0
        && (version->micro == 25 || version->micro == 26);
}

} // namespace

extern "C" __attribute__((visibility("default"))) int LIBUSB_CALL libusb_set_interface_alt_setting(
    libusb_device_handle *handle, int interface, int setting)
{
    // Claiming an interface again changes nothing, and libusb answers it with this error once it
    // has heard that the device is gone.
    if (versionAborts() && libusb_claim_interface(handle, interface) == LIBUSB_ERROR_NO_DEVICE)
        return LIBUSB_ERROR_NO_DEVICE;
    const SetAltSetting real = libusbsOwn();
    return real ? real(handle, interface, setting) : LIBUSB_ERROR_NOT_SUPPORTED;
}
