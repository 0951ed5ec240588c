// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace virtual_camera {

/// A uevent as udev sends it on. umockdev has the same, but ends the process when a listener does
/// not keep up; here such a listener misses the event, as it would with the kernel.
struct Uevent
{
    std::string action;     ///< "add" or "remove"
    std::string devicePath; ///< below /sys: "/devices/..."
    std::string subsystem;
    std::string deviceType;
    std::string properties; ///< the uevent file
};

/// Sends it to every program in this root directory that listens to udev.
void sendUevent(const std::string &rootDirectory, const Uevent &event);

} // namespace virtual_camera
