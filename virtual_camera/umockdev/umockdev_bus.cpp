// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/umockdev_bus.h"

#include "virtual_camera/umockdev/device_node.h"
#include "virtual_camera/umockdev/open_error.h"
#include "virtual_camera/umockdev/workers.h"

#include <filesystem>
#include <stdexcept>
#include <umockdev.h>

namespace virtual_camera {

namespace fs = std::filesystem;

namespace {

constexpr char folder[] = "/dev/bus/usb/001";

std::string rootOf(UMockdevTestbed *testbed)
{
    const std::unique_ptr<gchar, decltype(&g_free)> root(
        umockdev_testbed_get_root_dir(testbed), g_free);
    return root.get();
}

} // namespace

UmockdevBus::UmockdevBus(int ports)
    : m_testbed(umockdev_testbed_new()), m_root(rootOf(m_testbed)), m_sysfs(m_root),
      m_workers(std::make_shared<Workers>()), m_hub(ports)
{
    fs::create_directories(m_root + folder);
    fs::create_directories(m_root + "/nodes");
    UmockdevBus::plug(m_hub.plug());
}

UmockdevBus::~UmockdevBus()
{
    while (!m_plugs.empty())
        UmockdevBus::unplug(m_plugs.rbegin()->first);
    g_object_unref(m_testbed);
}

const UmockdevBus::Node &UmockdevBus::nodeAt(int address)
{
    Node &known = m_nodes[address];
    if (known.node)
        return known;
    known.pipe = m_root + "/nodes/" + std::to_string(address);
    known.node = std::make_shared<DeviceNode>(known.pipe, m_workers);
    GError *error = nullptr;
    if (!umockdev_testbed_attach_ioctl(
            m_testbed, devicePath(address).c_str(), known.node->connectHandler(), &error)) {
        const std::string message = error->message;
        g_error_free(error);
        throw std::runtime_error(message);
    }
    return known;
}

void UmockdevBus::plug(const Plug &plug)
{
    const Node &node = nodeAt(plug.address);
    m_hub.setConnected(plug.port, true);
    m_plugs[plug.address] = plug;
    const std::weak_ptr<DeviceNode> weak = node.node;
    plug.cable->plugIn([weak, root = m_root, path = devicePath(plug.address),
                           cable = std::weak_ptr<Cable>(plug.cable)] {
        const auto changed = cable.lock();
        if (changed)
            setOpenError(root, path, changed->openError());
        if (const auto open = weak.lock())
            open->update();
    });
    setOpenError(m_root, devicePath(plug.address), plug.cable->openError());
    node.node->plug(std::make_shared<Usbfs>(plug.cable, plug.driver));
    m_sysfs.add(plug);
    fs::create_hard_link(node.pipe, m_root + devicePath(plug.address));
    sendUevent(m_root, Sysfs::event("add", plug));
}

void UmockdevBus::unplug(int address)
{
    const Plug plug = m_plugs.at(address);
    m_nodes.at(address).node->unplug();
    m_hub.setConnected(plug.port, false);
    fs::remove(m_root + devicePath(address));
    setOpenError(m_root, devicePath(address), 0);
    sendUevent(m_root, Sysfs::event("remove", plug));
    m_sysfs.remove(plug);
    m_plugs.erase(address);
}

} // namespace virtual_camera
