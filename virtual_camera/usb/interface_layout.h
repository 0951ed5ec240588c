// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"

#include <cstdint>
#include <vector>

namespace virtual_camera {

/// The interfaces and endpoints of a configuration descriptor.
struct InterfaceLayout
{
    /// One alternate setting of one interface.
    struct Setting
    {
        int interfaceNumber;
        int alternate;
        std::uint8_t deviceClass;
        std::uint8_t subclass;
        std::uint8_t protocol;
        std::vector<std::uint8_t> endpoints; ///< their addresses
    };
    std::vector<Setting> settings;

    int interfaces() const;
    /// Null when the interface has no such setting.
    const Setting *find(int interfaceNumber, int alternate) const;
    /// The interface that has the endpoint in any of its settings; -1 when none has.
    int interfaceOf(std::uint8_t endpoint) const;
};

InterfaceLayout readLayout(const Bytes &configuration);

} // namespace virtual_camera
