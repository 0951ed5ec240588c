// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/umockdev/uevent.h"
#include "virtual_camera/usb/bus.h"

#include <string>

namespace virtual_camera {

/// The part of /sys that shows a bus: its devices with their interfaces, as the kernel does. A port
/// of 0 is the root hub, which holds all others.
class Sysfs
{
public:
    explicit Sysfs(std::string rootDirectory);

    /// Programs find the device when all of it is there.
    void add(const Bus::Plug &plug) const;
    void remove(const Bus::Plug &plug) const;
    /// What is to be sent after add() or before remove().
    static Uevent event(const std::string &action, const Bus::Plug &plug);

private:
    std::string m_root;
};

/// As a program sees it: "/dev/bus/usb/001/002".
std::string devicePath(int address);

} // namespace virtual_camera
