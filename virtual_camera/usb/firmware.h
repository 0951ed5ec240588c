// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/usb/descriptors.h"
#include "virtual_camera/usb/interface_layout.h"

#include <functional>
#include <vector>

namespace virtual_camera {

/// What runs inside a device: answers the requests that every USB device answers, and hands those
/// of its class on. Not locked: one thread at a time.
class Firmware
{
public:
    using ClassRequests = std::function<Answer(const ControlRequest &)>;

    /// Without class requests, every request of a class stalls.
    explicit Firmware(Descriptors descriptors, ClassRequests classRequests = {});

    Answer answer(const ControlRequest &request);
    /// All interfaces go back to their first setting.
    void reset();

    const Descriptors &descriptors() const { return m_descriptors; }
    const InterfaceLayout &layout() const { return m_layout; }

private:
    Answer answerStandard(const ControlRequest &request);
    std::uint8_t status(const ControlRequest &request) const;
    Answer descriptor(const ControlRequest &request) const;
    Answer setAlternate(const ControlRequest &request);

    Descriptors m_descriptors;
    InterfaceLayout m_layout;
    std::vector<std::uint8_t> m_alternates; // chosen setting of each interface
    ClassRequests m_classRequests;
};

} // namespace virtual_camera
