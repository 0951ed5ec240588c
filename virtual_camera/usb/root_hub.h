// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/bus.h"

#include <array>
#include <atomic>
#include <memory>

namespace virtual_camera {

/// The hub that every bus begins with. What it is asked stands in no log.
class RootHub
{
public:
    static constexpr int address = 1;
    static constexpr int mostPorts = 127;

    explicit RootHub(int ports);

    Bus::Plug plug() const;
    /// Whether a device is in the port, from 1.
    void setConnected(int port, bool connected);

private:
    using Connected = std::array<std::atomic<bool>, mostPorts + 1>;

    std::shared_ptr<Connected> m_connected = std::make_shared<Connected>();
    const int m_ports;
    std::shared_ptr<Cable> m_cable;
};

} // namespace virtual_camera
