// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/usb/descriptors.h"

#include <vector>

namespace virtual_camera {

class CameraModel;

// A device at the end of a cable: answers the requests that every USB device answers, and hands
// those of the video class to its camera if it is one. Not locked: one thread at a time.
class UsbDevice
{
public:
    // The camera stays the caller's; null for a device that is none.
    UsbDevice(Descriptors descriptors, CameraModel *camera);

    Answer answer(const ControlRequest &request);
    const Descriptors &descriptors() const { return m_descriptors; }
    const InterfaceLayout &layout() const { return m_layout; }

private:
    Answer answerStandard(const ControlRequest &request);
    Answer descriptor(const ControlRequest &request) const;
    Answer setAlternate(const ControlRequest &request);

    Descriptors m_descriptors;
    InterfaceLayout m_layout;
    std::vector<std::uint8_t> m_alternates; // chosen setting of each interface
    CameraModel *m_camera;
};

} // namespace virtual_camera
