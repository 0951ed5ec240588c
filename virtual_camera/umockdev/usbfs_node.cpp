// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/usbfs_node.h"

#include "virtual_camera/umockdev/usbfs_call.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <utility>

namespace virtual_camera {

namespace {

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
