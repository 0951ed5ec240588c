// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/device_node.h"
#include "virtual_camera/umockdev/program_memory.h"
#include "virtual_camera/usbfs/usbfs_calls.h"

#include <cerrno>
#include <linux/usb/ch9.h>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <thread>

// The system calls on the node: fetch from the program's memory, act with the lock held, give back.

namespace virtual_camera {

namespace {

// What stays of a transfer between submit and reap.
struct UrbMemory
{
    Memory urb;
    Memory buffer;
};

constexpr std::size_t setupSize = sizeof(usb_ctrlrequest);
constexpr std::size_t largestBuffer = 1 << 20;
// A program that has nothing to reap but sees the node ready, because another file has, asks
// again at once; this keeps it from using up a processor. Once in vain is no circle: every program
// reaps until there is nothing left.
constexpr std::chrono::milliseconds vainReapPause{ 1 };

} // namespace

struct DeviceNode::Call
{
    UMockdevIoctlClient *client;
    UMockdevIoctlData *argument;
    unsigned long request;
    File file;
    // The pointer itself. umockdev writes over its own copy when it is followed.
    std::uint64_t pointer = read<std::uint64_t>(*argument);

    Memory memory(std::size_t size) const { return follow(argument, 0, size); }
};

void DeviceNode::serve(UMockdevIoctlClient *client)
{
    Call call{ client, umockdev_ioctl_client_get_arg(client),
        umockdev_ioctl_client_get_request(client), {} };
    {
        const std::lock_guard lock(m_mutex);
        call.file = m_files[client];
    }
    const int result = call.file.device ? perform(call) : -ENODEV;
    umockdev_ioctl_client_complete(client, result < 0 ? -1 : result, result < 0 ? -result : 0);
}

int DeviceNode::perform(const Call &call)
{
    switch (call.request) {
    case USBDEVFS_SUBMITURB:
        return submitUrb(call);
    case USBDEVFS_DISCARDURB:
        return discardUrb(call);
    case USBDEVFS_REAPURB:
    case USBDEVFS_REAPURBNDELAY:
        return reapUrb(call);
    case USBDEVFS_CONTROL:
        return controlTransfer(call);
    default:
        return simpleCall(call);
    }
}

int DeviceNode::onDevice(const Call &call, const std::function<int(Usbfs &, int file)> &action)
{
    const std::lock_guard lock(m_mutex);
    Usbfs &device = *call.file.device;
    const int result = device.unplugged() ? -ENODEV : action(device, call.file.number);
    settle();
    return result;
}

int DeviceNode::simpleCall(const Call &call)
{
    const UsbfsCall *known = findUsbfsCall(call.request);
    if (known == nullptr)
        return -ENOTTY;
    const std::size_t size = _IOC_SIZE(call.request);
    const Memory memory = call.memory(size);
    if (size > 0 && !memory)
        return -EFAULT;
    Bytes argument;
    if (size > 0)
        argument.assign(memory->data, memory->data + size);
    const int result = onDevice(call,
        [&](Usbfs &device, int file) { return known->perform(device, file, argument.data()); });
    if (result >= 0 && known->answers)
        write(memory, 0, argument.data(), size);
    return result;
}

int DeviceNode::submitUrb(const Call &call)
{
    auto memory = std::make_shared<UrbMemory>();
    memory->urb = call.memory(sizeof(usbdevfs_urb));
    if (!memory->urb)
        return -EFAULT;
    const auto wanted = read<usbdevfs_urb>(*memory->urb);
    const auto size = static_cast<std::size_t>(wanted.buffer_length);
    if (wanted.buffer_length < 0 || size > largestBuffer)
        return -EINVAL;
    if (size > 0) {
        memory->buffer = follow(memory->urb.get(), offsetof(usbdevfs_urb, buffer), size);
        if (!memory->buffer)
            return -EFAULT;
    }
    Urb urb;
    urb.address = call.pointer;
    urb.endpoint = wanted.endpoint;
    if (wanted.type == USBDEVFS_URB_TYPE_CONTROL) {
        if ((wanted.endpoint & USB_ENDPOINT_NUMBER_MASK) != 0 || !memory->buffer)
            return -EINVAL;
        const auto request = parseControlRequest(memory->buffer->data, size);
        if (!request)
            return -EINVAL;
        urb.endpoint = 0;
        urb.request = *request;
    } else if (wanted.endpoint == 0) {
        return -EINVAL;
    }
    urb.memory = memory;
    return onDevice(
        call, [&](Usbfs &device, int file) { return device.submit(file, std::move(urb)); });
}

int DeviceNode::discardUrb(const Call &call)
{
    return onDevice(
        call, [&](Usbfs &device, int file) { return device.discard(file, call.pointer); });
}

// Transfers come back after an unplug, too.
std::unique_ptr<Urb> DeviceNode::nextDone(const Call &call, int &error)
{
    std::unique_lock lock(m_mutex);
    Usbfs &device = *call.file.device;
    const int file = call.file.number;
    if (call.request == USBDEVFS_REAPURB)
        m_settled.wait(lock, [&] { return device.anythingToReap(file) || device.unplugged(); });
    auto urb = device.reap(file);
    if (!urb)
        error = device.unplugged() ? -ENODEV : -EAGAIN;
    int &vain = m_files[call.client].vainReaps;
    vain = error == -EAGAIN && m_pipe.ready() ? vain + 1 : 0;
    const bool again = vain > 1;
    settle();
    lock.unlock();
    if (again)
        std::this_thread::sleep_for(vainReapPause);
    return urb;
}

int DeviceNode::reapUrb(const Call &call)
{
    int error = 0;
    const std::unique_ptr<Urb> urb = nextDone(call, error);
    if (!urb)
        return error;
    const auto &memory = *static_cast<UrbMemory *>(urb->memory.get());
    if (!urb->answer.empty())
        write(memory.buffer, setupSize, urb->answer.data(), urb->answer.size());
    const int status = urb->status;
    const int transferred = static_cast<int>(urb->transferred);
    write(memory.urb, offsetof(usbdevfs_urb, status), &status, sizeof status);
    write(memory.urb, offsetof(usbdevfs_urb, actual_length), &transferred, sizeof transferred);
    const Memory slot = call.memory(sizeof(void *));
    if (slot)
        umockdev_ioctl_data_set_ptr(slot.get(), 0, memory.urb.get());
    return slot ? 0 : -EFAULT;
}

std::unique_ptr<Urb> DeviceNode::waitForAnswer(
    const Call &call, const ControlRequest &request, unsigned timeout, int &error)
{
    std::unique_lock lock(m_mutex);
    Usbfs &device = *call.file.device;
    const int file = call.file.number;
    const std::int64_t begun = device.unplugged() ? -ENODEV : device.begin(file, request);
    if (begun < 0) {
        error = static_cast<int>(begun);
        return nullptr;
    }
    const auto ticket = static_cast<std::uint64_t>(begun);
    settle();
    std::unique_ptr<Urb> urb;
    const auto answered = [&] { return (urb = device.finish(file, ticket)) != nullptr; };
    if (timeout == 0) {
        m_settled.wait(lock, answered);
    } else if (!m_settled.wait_for(lock, std::chrono::milliseconds(timeout), answered)) {
        device.giveUp(file, ticket);
        settle();
        error = -ETIMEDOUT;
    }
    return urb;
}

int DeviceNode::controlTransfer(const Call &call)
{
    const Memory memory = call.memory(sizeof(usbdevfs_ctrltransfer));
    if (!memory)
        return -EFAULT;
    const auto wanted = read<usbdevfs_ctrltransfer>(*memory);
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
    int error = 0;
    const std::unique_ptr<Urb> urb = waitForAnswer(call, request, wanted.timeout, error);
    if (!urb || urb->status != 0)
        return urb ? urb->status : error;
    if (request.hostReads())
        write(data, 0, urb->answer.data(), urb->answer.size());
    return static_cast<int>(urb->transferred);
}

} // namespace virtual_camera
