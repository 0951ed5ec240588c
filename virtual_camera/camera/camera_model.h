// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/camera_state.h"
#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/camera/mechanics.h"

#include <array>
#include <map>

namespace virtual_camera {

// Why the last request stalled, as the camera tells when it is asked (USB Video Class, request
// error code control).
enum class RequestError : std::uint8_t {
    None = 0,
    NotReady = 1,
    WrongState = 2,
    Power = 3,
    OutOfRange = 4,
    InvalidUnit = 5,
    InvalidControl = 6,
    InvalidRequest = 7
};

// The camera behind the plug: answers the class requests of the USB Video Class and moves. It
// knows nothing of how requests reach it. Not locked: one thread at a time.
class CameraModel
{
public:
    CameraModel(CameraDescription description, Clock clock);

    Answer answer(const ControlRequest &request);
    CameraState state();
    const CameraDescription &description() const { return m_description; }
    RequestError lastError() const { return m_lastError; }

    // The camera announces another range from now on, and the control takes the value cur.
    // Ranges of what moves (pan, zoom, focus) are announced and checked, but the motors keep
    // theirs.
    void setRange(Control control, const Range &range);
    // The power goes: motion ends, everything else is remembered.
    void cutPower();

private:
    Answer refuse(RequestError error);
    Answer answerControl(const ControlTraits &control, const ControlRequest &request);
    Answer answerErrorCode(const ControlRequest &request);
    Answer answerStreaming(const ControlRequest &request);
    Answer set(const ControlTraits &control, const ControlRequest &request);
    Bytes current(const ControlTraits &control);
    Bytes limit(const ControlTraits &control, RequestCode code) const;
    RequestError checkValues(
        const ControlTraits &control, const std::vector<std::int64_t> &values) const;
    void apply(const ControlTraits &control, const std::vector<std::int64_t> &values);
    void applyVendorCommand(int code);
    // The control has this value now, and what it switches is switched.
    void store(Control control, std::int64_t value);

    CameraDescription m_description;
    Mechanics m_mechanics;
    CameraState m_state;
    // The bytes last written to the controls that start a motion.
    std::array<Bytes, controlCount> m_motion;
    Bytes m_streamingProbe;
    RequestError m_lastError = RequestError::None;
};

} // namespace virtual_camera
