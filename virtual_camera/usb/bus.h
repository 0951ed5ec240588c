// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/cable.h"

#include <memory>
#include <string>

namespace virtual_camera {

/// What devices are plugged into, and how programs get at them. One thread at a time.
class Bus
{
public:
    /// What the kernel knows of a device.
    struct Plug
    {
        int address = 0; ///< 1 to 127, no two at a time alike
        int port = 0;    ///< of the hub
        /// The names in /sys; they may be longer than the descriptors.
        std::string manufacturer;
        std::string product;
        std::string serial;
        std::string driver; ///< holds the interfaces at first
        std::shared_ptr<Cable> cable;
        int ports = 0; ///< that a hub has
    };

    virtual ~Bus();

    virtual void plug(const Plug &plug) = 0;
    /// The order is the kernel's: transfers fail, calls fail, programs are told.
    virtual void unplug(int address) = 0;
    virtual bool occupied(int address) const = 0;
    /// Where programs find the bus's /sys and /dev; empty when they are the computer's own.
    virtual std::string rootDirectory() const = 0;
};

} // namespace virtual_camera
