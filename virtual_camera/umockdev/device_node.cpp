// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/device_node.h"

#include "virtual_camera/umockdev/workers.h"

#include <algorithm>
#include <umockdev.h>
#include <utility>

namespace virtual_camera {

namespace {

using Weak = std::weak_ptr<DeviceNode>;

void deleteWeak(void *node, GClosure *) { delete static_cast<Weak *>(node); }

} // namespace

DeviceNode::DeviceNode(const std::string &path, std::shared_ptr<Workers> workers)
    : m_workers(std::move(workers)), m_handler(umockdev_ioctl_base_new()), m_pipe(path)
{ }

DeviceNode::~DeviceNode()
{
    stopTimer();
    g_object_unref(m_handler);
    if (m_context != nullptr)
        g_main_context_unref(m_context);
}

UMockdevIoctlBase *DeviceNode::connectHandler()
{
    // umockdev's thread goes on for a while when the bus is gone; it must not find a dead node.
    const auto connect = [this](const char *signal, GCallback callback) {
        g_signal_connect_data(m_handler, signal, callback, new Weak(weak_from_this()), deleteWeak,
            static_cast<GConnectFlags>(0));
    };
    connect("handle-ioctl", G_CALLBACK(onIoctl));
    connect("client-connected", G_CALLBACK(onConnected));
    return m_handler;
}

void DeviceNode::plug(std::shared_ptr<Usbfs> device)
{
    const std::lock_guard lock(m_mutex);
    m_device = std::move(device);
}

void DeviceNode::unplug()
{
    const std::lock_guard lock(m_mutex);
    m_device->unplug();
    m_device.reset();
    settle();
}

void DeviceNode::update()
{
    const std::lock_guard lock(m_mutex);
    settle();
}

void DeviceNode::onConnected(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node)
{
    if (const auto self = static_cast<Weak *>(node)->lock())
        self->connected(client);
}

void DeviceNode::connected(UMockdevIoctlClient *client)
{
    const std::lock_guard lock(m_mutex);
    if (m_context == nullptr)
        m_context = g_main_context_ref(g_main_context_get_thread_default());
    m_files[client] = { m_device, m_device ? m_device->openFile() : 0 };
    // umockdev announces a signal for files that are closed, but drops the client silently.
    g_object_weak_ref(reinterpret_cast<GObject *>(client), onClosed, new Weak(weak_from_this()));
}

void DeviceNode::onClosed(void *node, GObject *client)
{
    const std::unique_ptr<Weak> weak(static_cast<Weak *>(node));
    if (const auto self = weak->lock())
        self->closed(reinterpret_cast<UMockdevIoctlClient *>(client));
}

void DeviceNode::closed(UMockdevIoctlClient *client)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_files.find(client);
    if (found == m_files.end())
        return;
    if (found->second.device)
        found->second.device->closeFile(found->second.number);
    m_files.erase(found);
    settle();
}

int DeviceNode::onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node)
{
    const auto self = static_cast<Weak *>(node)->lock();
    if (!self)
        return FALSE;
    // To read the program's memory is to wait for the program, so umockdev's thread must not.
    const std::shared_ptr<UMockdevIoctlClient> kept(
        static_cast<UMockdevIoctlClient *>(g_object_ref(client)), g_object_unref);
    self->m_workers->run([self, kept] { self->serve(kept.get()); });
    return TRUE;
}

// Brings everything up to date that depends on what the devices have done.
void DeviceNode::settle()
{
    stopTimer();
    if (m_device) {
        m_device->collect();
        if (const auto wait = m_device->nextAnswer())
            settleIn(*wait);
    }
    m_pipe.setReady(std::any_of(m_files.begin(), m_files.end(), [](const auto &file) {
        const File &open = file.second;
        return open.device && open.device->anythingToReap(open.number);
    }));
    m_settled.notify_all();
}

void DeviceNode::settleIn(std::chrono::microseconds wait)
{
    if (m_context == nullptr)
        return;
    // Rounded up, so as not to come too early and again and again.
    const auto rounded = std::chrono::ceil<std::chrono::milliseconds>(
        std::min<std::chrono::microseconds>(wait, std::chrono::hours(1)));
    m_timer = g_timeout_source_new(static_cast<guint>(rounded.count()));
    g_source_set_callback(
        m_timer,
        [](void *node) -> gboolean {
            if (const auto self = static_cast<Weak *>(node)->lock())
                self->update();
            return G_SOURCE_REMOVE;
        },
        new Weak(weak_from_this()), [](void *node) { delete static_cast<Weak *>(node); });
    g_source_attach(m_timer, m_context);
}

void DeviceNode::stopTimer()
{
    if (m_timer == nullptr)
        return;
    g_source_destroy(m_timer);
    g_source_unref(m_timer);
    m_timer = nullptr;
}

} // namespace virtual_camera
