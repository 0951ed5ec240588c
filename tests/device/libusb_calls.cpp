// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/device/libusb_calls.h"

#include <dlfcn.h>
#include <libusb.h>

namespace libusb_calls {

std::function<void(const std::string &)> beforeClosing;
std::vector<unsigned> limits;
std::optional<int> answer;

} // namespace libusb_calls

namespace {

template<typename Function> Function *libusbsOwn(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

template<typename Function> Function *closing(const char *name)
{
    if (libusb_calls::beforeClosing)
        libusb_calls::beforeClosing(name);
    return libusbsOwn<Function>(name);
}

} // namespace

int libusb_control_transfer(libusb_device_handle *handle, uint8_t requestType, uint8_t request,
    uint16_t value, uint16_t index, unsigned char *data, uint16_t length, unsigned timeout)
{
    libusb_calls::limits.push_back(timeout);
    if (libusb_calls::answer)
        return *libusb_calls::answer;
    return libusbsOwn<decltype(libusb_control_transfer)>("libusb_control_transfer")(
        handle, requestType, request, value, index, data, length, timeout);
}

int libusb_claim_interface(libusb_device_handle *handle, int interface)
{
    return closing<decltype(libusb_claim_interface)>("libusb_claim_interface")(handle, interface);
}

int libusb_set_interface_alt_setting(libusb_device_handle *handle, int interface, int setting)
{
    return closing<decltype(libusb_set_interface_alt_setting)>("libusb_set_interface_alt_setting")(
        handle, interface, setting);
}

int libusb_release_interface(libusb_device_handle *handle, int interface)
{
    return closing<decltype(libusb_release_interface)>("libusb_release_interface")(
        handle, interface);
}

int libusb_attach_kernel_driver(libusb_device_handle *handle, int interface)
{
    return closing<decltype(libusb_attach_kernel_driver)>("libusb_attach_kernel_driver")(
        handle, interface);
}

void libusb_close(libusb_device_handle *handle)
{
    closing<decltype(libusb_close)>("libusb_close")(handle);
}
