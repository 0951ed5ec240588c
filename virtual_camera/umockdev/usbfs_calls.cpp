// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/usbfs_call.h"

#include <cerrno>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

// The system calls that are done at once. Those about transfers are in usbfs_node.cpp.

namespace virtual_camera {

int UsbfsNode::capabilities(Call &call)
{
    const std::uint32_t value = USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_BULK_CONTINUATION
        | USBDEVFS_CAP_NO_PACKET_SIZE_LIM | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
    return call.write(value) ? 0 : -EFAULT;
}

int UsbfsNode::claimInterface(Call &call)
{
    unsigned number = 0;
    return call.read(number) ? m_device.claim(call.file, number) : -EFAULT;
}

int UsbfsNode::releaseInterface(Call &call)
{
    unsigned number = 0;
    return call.read(number) ? m_device.release(call.file, number) : -EFAULT;
}

int UsbfsNode::setInterface(Call &call)
{
    usbdevfs_setinterface wanted{};
    return call.read(wanted) ? m_device.setInterface(call.file, wanted.interface, wanted.altsetting)
                             : -EFAULT;
}

int UsbfsNode::setConfiguration(Call &call)
{
    int value = 0;
    return call.read(value) ? m_device.setConfiguration(value) : -EFAULT;
}

int UsbfsNode::clearHalt(Call &call)
{
    unsigned endpoint = 0;
    return call.read(endpoint) ? m_device.clearHalt(endpoint) : -EFAULT;
}

int UsbfsNode::reset(Call &) { return 0; }

int UsbfsNode::speed(Call &)
{
    constexpr int highSpeed = 3;
    return highSpeed;
}

int UsbfsNode::getDriver(Call &call)
{
    usbdevfs_getdriver answer{};
    if (!call.read(answer))
        return -EFAULT;
    const std::string name = m_device.driver(answer.interface);
    if (name.empty())
        return -ENODATA;
    g_strlcpy(answer.driver, name.c_str(), sizeof answer.driver);
    return call.write(answer) ? 0 : -EFAULT;
}

int UsbfsNode::driverIoctl(Call &call)
{
    usbdevfs_ioctl wanted{};
    if (!call.read(wanted))
        return -EFAULT;
    const auto number = static_cast<unsigned>(wanted.ifno);
    switch (static_cast<unsigned>(wanted.ioctl_code)) {
    case USBDEVFS_DISCONNECT:
        return m_device.detachDriver(number);
    case USBDEVFS_CONNECT:
        return m_device.attachDriver(number);
    default:
        return -ENOTTY;
    }
}

int UsbfsNode::disconnectAndClaim(Call &call)
{
    usbdevfs_disconnect_claim wanted{};
    if (!call.read(wanted))
        return -EFAULT;
    const std::string name = m_device.driver(wanted.interface);
    wanted.driver[sizeof wanted.driver - 1] = '\0';
    const bool named = name == wanted.driver;
    if (!name.empty()
        && (((wanted.flags & USBDEVFS_DISCONNECT_CLAIM_IF_DRIVER) != 0 && !named)
            || ((wanted.flags & USBDEVFS_DISCONNECT_CLAIM_EXCEPT_DRIVER) != 0 && named)))
        return -EBUSY;
    if (!name.empty())
        m_device.detachDriver(wanted.interface);
    return m_device.claim(call.file, wanted.interface);
}

int UsbfsNode::controlTransfer(Call &call)
{
    usbdevfs_ctrltransfer wanted{};
    const Memory memory = call.memory(sizeof wanted);
    if (!memory)
        return -EFAULT;
    wanted = read<usbdevfs_ctrltransfer>(*memory);
    ControlRequest request{ wanted.bRequestType, wanted.bRequest, wanted.wValue, wanted.wIndex,
        wanted.wLength, {} };
    Memory data;
    if (wanted.wLength > 0) {
        data = follow(memory.get(), offsetof(usbdevfs_ctrltransfer, data), wanted.wLength);
        if (!data)
            return -EFAULT;
        if (!request.hostReads())
            request.data.assign(data->data, data->data + wanted.wLength);
    }
    const int result = m_device.transfer(call.file, request);
    if (result > 0 && request.hostReads())
        write(data, 0, request.data.data(), request.data.size());
    return result;
}

} // namespace virtual_camera
