// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usbfs_node.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <umockdev.h>
#include <utility>

namespace virtual_camera {

namespace {

// A piece of the program's memory.
struct Unref
{
    void operator()(UMockdevIoctlData *data) const { g_object_unref(data); }
};
using Memory = std::unique_ptr<UMockdevIoctlData, Unref>;

// What the pointer at this offset points to; null when the program cannot be read.
Memory follow(UMockdevIoctlData *data, std::size_t offset, std::size_t size)
{
    return data == nullptr ? nullptr
                           : Memory(umockdev_ioctl_data_resolve(data, offset, size, nullptr));
}

template<typename T> T read(const UMockdevIoctlData &memory)
{
    T value;
    std::memcpy(&value, memory.data, sizeof value);
    return value;
}

void write(const Memory &memory, std::size_t offset, const void *bytes, std::size_t size)
{
    if (size == 0)
        return;
    // umockdev takes the bytes without const, but only copies them.
    auto *source = static_cast<guint8 *>(const_cast<void *>(bytes));
    umockdev_ioctl_data_update(memory.get(), offset, source, static_cast<gint>(size));
}

// What stays of a transfer between submit and reap.
struct UrbMemory
{
    Memory urb;
    Memory buffer;
};

constexpr std::size_t setupSize = 8;
constexpr std::size_t largestBuffer = 1 << 20;
constexpr int answerComesLater = 1 << 30;
// A program that has nothing to reap but sees the node ready, because another file has, asks
// again at once; this keeps it from using up a processor.
constexpr std::chrono::milliseconds emptyReapPause{ 1 };

} // namespace

// One system call: its arguments and what it may need to know of who makes it.
struct UsbfsNode::Call
{
    UMockdevIoctlClient *client;
    UMockdevIoctlData *argument;
    unsigned long request;
    int file;
    // The pointer itself. umockdev writes over its own copy when it is followed.
    std::uint64_t pointer = virtual_camera::read<std::uint64_t>(*argument);

    Memory memory(std::size_t size) const { return follow(argument, 0, size); }
    template<typename T> bool read(T &value) const
    {
        const Memory found = memory(sizeof value);
        if (!found)
            return false;
        value = virtual_camera::read<T>(*found);
        return true;
    }
    template<typename T> bool write(const T &value) const
    {
        const Memory found = memory(sizeof value);
        if (!found)
            return false;
        virtual_camera::write(found, 0, &value, sizeof value);
        return true;
    }
};

struct UsbfsNode::Ioctl
{
    unsigned long request;
    IoctlFunction function;
    bool worksUnplugged;
};

const UsbfsNode::Ioctl *UsbfsNode::findIoctl(unsigned long request)
{
    static const std::array<Ioctl, 16> ioctls{ {
        { USBDEVFS_SUBMITURB, &UsbfsNode::submitUrb, false },
        { USBDEVFS_REAPURBNDELAY, &UsbfsNode::reapUrb, true },
        { USBDEVFS_REAPURB, &UsbfsNode::reapUrb, true },
        { USBDEVFS_DISCARDURB, &UsbfsNode::discardUrb, false },
        { USBDEVFS_CONTROL, &UsbfsNode::controlTransfer, false },
        { USBDEVFS_GET_CAPABILITIES, &UsbfsNode::capabilities, false },
        { USBDEVFS_CLAIMINTERFACE, &UsbfsNode::claimInterface, false },
        { USBDEVFS_RELEASEINTERFACE, &UsbfsNode::releaseInterface, false },
        { USBDEVFS_SETINTERFACE, &UsbfsNode::setInterface, false },
        { USBDEVFS_SETCONFIGURATION, &UsbfsNode::setConfiguration, false },
        { USBDEVFS_CLEAR_HALT, &UsbfsNode::clearHalt, false },
        { USBDEVFS_RESET, &UsbfsNode::reset, false },
        { USBDEVFS_GET_SPEED, &UsbfsNode::speed, false },
        { USBDEVFS_GETDRIVER, &UsbfsNode::getDriver, false },
        { USBDEVFS_IOCTL, &UsbfsNode::driverIoctl, false },
        { USBDEVFS_DISCONNECT_CLAIM, &UsbfsNode::disconnectAndClaim, false },
    } };
    const auto *const found = std::find_if(ioctls.begin(), ioctls.end(),
        [request](const Ioctl &known) { return known.request == request; });
    return found == ioctls.end() ? nullptr : found;
}

UsbfsNode::UsbfsNode(const std::string &path, std::mutex &mutex, UsbfsDevice::Wiring wiring)
    : m_mutex(mutex), m_device([this, &wiring] {
          wiring.later = [this](auto wait, auto what) { later(wait, std::move(what)); };
          return std::move(wiring);
      }()),
      m_pipe(path), m_handler(umockdev_ioctl_base_new())
{
    g_signal_connect(m_handler, "handle-ioctl", G_CALLBACK(onIoctl), this);
    g_signal_connect(m_handler, "client-connected", G_CALLBACK(onConnected), this);
}

UsbfsNode::~UsbfsNode()
{
    g_signal_handlers_disconnect_by_data(m_handler, this);
    for (const auto &[client, file] : m_files)
        g_object_weak_unref(reinterpret_cast<GObject *>(client), onClosed, this);
    g_object_unref(m_handler);
}

void UsbfsNode::unplug()
{
    m_device.unplug();
    m_pipe.setReady(m_device.anythingToReap());
    m_pipe.remove();
}

void UsbfsNode::onConnected(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node)
{
    auto *self = static_cast<UsbfsNode *>(node);
    const std::lock_guard lock(self->m_mutex);
    self->m_files[client] = self->m_device.openFile();
    // umockdev announces a signal for files that are closed, but drops the client silently.
    g_object_weak_ref(reinterpret_cast<GObject *>(client), onClosed, self);
}

void UsbfsNode::onClosed(void *node, GObject *client)
{
    auto *self = static_cast<UsbfsNode *>(node);
    const std::lock_guard lock(self->m_mutex);
    const auto found = self->m_files.find(reinterpret_cast<UMockdevIoctlClient *>(client));
    if (found == self->m_files.end())
        return;
    self->m_device.closeFile(found->second);
    self->m_files.erase(found);
    self->m_pipe.setReady(self->m_device.anythingToReap());
}

int UsbfsNode::onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node)
{
    return static_cast<UsbfsNode *>(node)->dispatch(client) ? TRUE : FALSE;
}

bool UsbfsNode::dispatch(UMockdevIoctlClient *client)
{
    const std::lock_guard lock(m_mutex);
    Call call{ client, umockdev_ioctl_client_get_arg(client),
        umockdev_ioctl_client_get_request(client), m_files[client] };
    const Ioctl *ioctl = findIoctl(call.request);
    int result = -ENOTTY;
    if (ioctl != nullptr)
        result = m_device.unplugged() && !ioctl->worksUnplugged ? -ENODEV
                                                                : (this->*ioctl->function)(call);
    m_pipe.setReady(m_device.anythingToReap());
    if (result != answerComesLater)
        umockdev_ioctl_client_complete(client, result < 0 ? -1 : result, result < 0 ? -result : 0);
    return true;
}

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

int UsbfsNode::submitUrb(Call &call)
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
        if ((wanted.endpoint & 0x7fU) != 0 || !memory->buffer)
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
    return m_device.submit(call.file, std::move(urb));
}

int UsbfsNode::discardUrb(Call &call) { return m_device.discard(call.file, call.pointer); }

bool UsbfsNode::giveBack(Call &call)
{
    const std::unique_ptr<Urb> urb = m_device.reap(call.file);
    if (urb == nullptr)
        return false;
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
    return true;
}

int UsbfsNode::reapUrb(Call &call)
{
    if (giveBack(call))
        return 0;
    if (m_device.unplugged())
        return -ENODEV;
    const bool blocking = call.request == USBDEVFS_REAPURB;
    if (!blocking && !m_pipe.ready())
        return -EAGAIN;
    answerLater(call.client, call.file);
    return answerComesLater;
}

// Keeps the call waiting, then looks again.
void UsbfsNode::answerLater(UMockdevIoctlClient *client, int file)
{
    const std::shared_ptr<UMockdevIoctlClient> kept(
        static_cast<UMockdevIoctlClient *>(g_object_ref(client)), g_object_unref);
    later(emptyReapPause, [this, kept, file] {
        Call call{ kept.get(), umockdev_ioctl_client_get_arg(kept.get()),
            umockdev_ioctl_client_get_request(kept.get()), file };
        if (m_files.count(kept.get()) == 0)
            return;
        int error = 0;
        if (!giveBack(call)) {
            if (call.request == USBDEVFS_REAPURB && !m_device.unplugged())
                return answerLater(kept.get(), file);
            error = m_device.unplugged() ? ENODEV : EAGAIN;
        }
        m_pipe.setReady(m_device.anythingToReap());
        umockdev_ioctl_client_complete(kept.get(), error == 0 ? 0 : -1, error);
    });
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

void UsbfsNode::later(std::chrono::milliseconds wait, std::function<void()> what)
{
    struct Task
    {
        std::weak_ptr<UsbfsNode> node;
        std::function<void()> what;
    };
    auto *task = new Task{ weak_from_this(), std::move(what) };
    GSource *source = g_timeout_source_new(static_cast<guint>(wait.count()));
    g_source_set_callback(
        source,
        [](void *data) -> gboolean {
            auto *due = static_cast<Task *>(data);
            if (const std::shared_ptr<UsbfsNode> node = due->node.lock()) {
                const std::lock_guard lock(node->m_mutex);
                due->what();
                node->m_pipe.setReady(node->m_device.anythingToReap());
            }
            return G_SOURCE_REMOVE;
        },
        task, [](void *data) { delete static_cast<Task *>(data); });
    g_source_attach(source, g_main_context_get_thread_default());
    g_source_unref(source);
}

} // namespace virtual_camera
