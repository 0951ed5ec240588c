// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/umockdev/sysfs.h"
#include "virtual_camera/usb/bus.h"
#include "virtual_camera/usb/root_hub.h"

#include <map>
#include <memory>
#include <string>

using UMockdevTestbed = struct _UMockdevTestbed;

namespace virtual_camera {

class DeviceNode;
class Workers;

/// A bus that exists only for programs beneath umockdev's preload library: their /sys and
/// /dev/bus/usb show its devices.
class UmockdevBus : public Bus
{
public:
    explicit UmockdevBus(int ports);
    ~UmockdevBus() override;
    UmockdevBus(const UmockdevBus &) = delete;
    UmockdevBus &operator=(const UmockdevBus &) = delete;

    void plug(const Plug &plug) override;
    void unplug(int address) override;
    bool occupied(int address) const override { return m_plugs.count(address) != 0; }
    std::string rootDirectory() const override { return m_root; }

private:
    struct Node
    {
        std::string pipe; // its path
        std::shared_ptr<DeviceNode> node;
    };
    const Node &nodeAt(int address);

    UMockdevTestbed *m_testbed;
    std::string m_root;
    Sysfs m_sysfs;
    std::shared_ptr<Workers> m_workers;
    RootHub m_hub;
    std::map<int, Node> m_nodes; // by address, for the life of the bus
    std::map<int, Plug> m_plugs; // by address
};

} // namespace virtual_camera
