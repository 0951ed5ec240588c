// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/umockdev/usbfs_node.h"

#include <memory>
#include <mutex>
#include <set>
#include <string>

using UMockdevTestbed = struct _UMockdevTestbed;

namespace virtual_camera {

// A USB bus that exists only for programs beneath umockdev's preload library: their /sys and
// /dev/bus/usb show its devices.
class EmulatedBus
{
public:
    EmulatedBus();
    ~EmulatedBus();
    EmulatedBus(const EmulatedBus &) = delete;
    EmulatedBus &operator=(const EmulatedBus &) = delete;

    // A device in a socket of the bus.
    struct Plug
    {
        int address; // 1 to 127, no two at a time alike
        int port;
        std::string systemPath; // in /sys
        std::shared_ptr<UsbfsNode> node;
    };

    // The names are what the kernel shows in /sys; they may be longer than the descriptors.
    struct Names
    {
        std::string manufacturer;
        std::string product;
        std::string serial;
    };

    Plug plug(
        int address, int port, const Names &names, std::mutex &mutex, UsbfsDevice::Wiring wiring);
    // The order is the kernel's: transfers fail, calls fail, programs are told.
    void unplug(const Plug &plug, std::mutex &mutex);

    bool occupied(int address) const;

    const std::string &rootDirectory() const { return m_root; }
    // As a program sees it: "/dev/bus/usb/001/002".
    static std::string devicePath(int address);

private:
    UMockdevTestbed *m_testbed;
    std::string m_root;
    mutable std::mutex m_addressMutex;
    std::set<int> m_addresses;
};

} // namespace virtual_camera
