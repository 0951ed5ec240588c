// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// libusb 1.0.25 and 1.0.26 end the program when libuvc closes a camera that was unplugged: setting
// an interface fails, and a mutex that was never locked is unlocked. The test program puts itself
// before that one function, so that the tests may close what they have opened.

#include <dlfcn.h>
#include <libusb.h>

extern "C" int libusb_set_interface_alt_setting(
    libusb_device_handle *handle, int interfaceNumber, int alternate)
{
    if (libusb_claim_interface(handle, interfaceNumber) == LIBUSB_ERROR_NO_DEVICE)
        return LIBUSB_ERROR_NO_DEVICE;
    using Function = int(libusb_device_handle *, int, int);
    auto *real = reinterpret_cast<Function *>(dlsym(RTLD_NEXT, "libusb_set_interface_alt_setting"));
    return real(handle, interfaceNumber, alternate);
}
