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

int libusb_control_transfer(libusb_device_handle *dev_handle, uint8_t request_type,
    uint8_t bRequest, uint16_t wValue, uint16_t wIndex, unsigned char *data, uint16_t wLength,
    unsigned timeout)
{
    libusb_calls::limits.push_back(timeout);
    if (libusb_calls::answer)
        return *libusb_calls::answer;
    return libusbsOwn<decltype(libusb_control_transfer)>("libusb_control_transfer")(
        dev_handle, request_type, bRequest, wValue, wIndex, data, wLength, timeout);
}

int libusb_claim_interface(libusb_device_handle *dev_handle, int interface_number)
{
    return closing<decltype(libusb_claim_interface)>("libusb_claim_interface")(
        dev_handle, interface_number);
}

int libusb_set_interface_alt_setting(
    libusb_device_handle *dev_handle, int interface_number, int alternate_setting)
{
    return closing<decltype(libusb_set_interface_alt_setting)>("libusb_set_interface_alt_setting")(
        dev_handle, interface_number, alternate_setting);
}

int libusb_release_interface(libusb_device_handle *dev_handle, int interface_number)
{
    return closing<decltype(libusb_release_interface)>("libusb_release_interface")(
        dev_handle, interface_number);
}

int libusb_attach_kernel_driver(libusb_device_handle *dev_handle, int interface_number)
{
    return closing<decltype(libusb_attach_kernel_driver)>("libusb_attach_kernel_driver")(
        dev_handle, interface_number);
}

void libusb_close(libusb_device_handle *dev_handle)
{
    closing<decltype(libusb_close)>("libusb_close")(dev_handle);
}
