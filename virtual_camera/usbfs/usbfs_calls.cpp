// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usbfs/usbfs_calls.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <linux/usb/ch9.h>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

namespace virtual_camera {

namespace {

template<typename T> T &as(void *argument) { return *static_cast<T *>(argument); }

int capabilities(Usbfs &, int, void *argument)
{
    as<std::uint32_t>(argument) = USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_BULK_CONTINUATION
        | USBDEVFS_CAP_NO_PACKET_SIZE_LIM | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
    return 0;
}

int claimInterface(Usbfs &usbfs, int file, void *argument)
{
    return usbfs.claim(file, as<unsigned>(argument));
}

int releaseInterface(Usbfs &usbfs, int file, void *argument)
{
    return usbfs.release(file, as<unsigned>(argument));
}

int setInterface(Usbfs &usbfs, int file, void *argument)
{
    const auto &wanted = as<usbdevfs_setinterface>(argument);
    return usbfs.setInterface(file, wanted.interface, wanted.altsetting);
}

int setConfiguration(Usbfs &usbfs, int file, void *argument)
{
    return usbfs.setConfiguration(file, as<int>(argument));
}

int clearHalt(Usbfs &usbfs, int file, void *argument)
{
    return usbfs.clearHalt(file, as<unsigned>(argument));
}

int reset(Usbfs &usbfs, int file, void *) { return usbfs.reset(file); }

int speed(Usbfs &, int, void *) { return USB_SPEED_HIGH; }

int getDriver(Usbfs &usbfs, int, void *argument)
{
    auto &answer = as<usbdevfs_getdriver>(argument);
    const std::string name = usbfs.driver(answer.interface);
    if (name.empty())
        return -ENODATA;
    std::fill(std::begin(answer.driver), std::end(answer.driver), '\0');
    name.copy(answer.driver, sizeof answer.driver - 1);
    return 0;
}

int driverIoctl(Usbfs &usbfs, int, void *argument)
{
    const auto &wanted = as<usbdevfs_ioctl>(argument);
    const auto number = static_cast<unsigned>(wanted.ifno);
    switch (static_cast<unsigned>(wanted.ioctl_code)) {
    case USBDEVFS_DISCONNECT:
        return usbfs.detachDriver(number);
    case USBDEVFS_CONNECT:
        return usbfs.attachDriver(number);
    default:
        return -ENOTTY;
    }
}

int disconnectAndClaim(Usbfs &usbfs, int file, void *argument)
{
    auto &wanted = as<usbdevfs_disconnect_claim>(argument);
    const std::string name = usbfs.driver(wanted.interface);
    wanted.driver[sizeof wanted.driver - 1] = '\0';
    const bool named = name == wanted.driver;
    if (!name.empty()
        && (((wanted.flags & USBDEVFS_DISCONNECT_CLAIM_IF_DRIVER) != 0 && !named)
            || ((wanted.flags & USBDEVFS_DISCONNECT_CLAIM_EXCEPT_DRIVER) != 0 && named)))
        return -EBUSY;
    if (!name.empty())
        usbfs.detachDriver(wanted.interface);
    return usbfs.claim(file, wanted.interface);
}

} // namespace

const UsbfsCall *findUsbfsCall(unsigned long request)
{
    static const std::array<UsbfsCall, 11> calls{ {
        { USBDEVFS_GET_CAPABILITIES, capabilities, true },
        { USBDEVFS_CLAIMINTERFACE, claimInterface, false },
        { USBDEVFS_RELEASEINTERFACE, releaseInterface, false },
        { USBDEVFS_SETINTERFACE, setInterface, false },
        { USBDEVFS_SETCONFIGURATION, setConfiguration, false },
        { USBDEVFS_CLEAR_HALT, clearHalt, false },
        { USBDEVFS_RESET, reset, false },
        { USBDEVFS_GET_SPEED, speed, false },
        { USBDEVFS_GETDRIVER, getDriver, true },
        { USBDEVFS_IOCTL, driverIoctl, false },
        { USBDEVFS_DISCONNECT_CLAIM, disconnectAndClaim, false },
    } };
    const auto *const found = std::find_if(calls.begin(), calls.end(),
        [request](const UsbfsCall &call) { return call.request == request; });
    return found == calls.end() ? nullptr : found;
}

} // namespace virtual_camera
