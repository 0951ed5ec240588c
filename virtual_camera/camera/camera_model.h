// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_body.h"
#include "virtual_camera/camera/control_request.h"

namespace virtual_camera {

/// A camera as programs know it: answers the class requests of the USB Video Class, refuses what a
/// real one refuses, and moves. It knows nothing of how requests reach it. Not locked: one thread
/// at a time.
class CameraModel
{
public:
    CameraModel(CameraDescription description, Clock clock);

    Answer answer(const ControlRequest &request);
    /// Why the last request stalled. Any request that succeeds sets it back to None, and so does
    /// asking the camera for it.
    RequestError lastError() const { return m_lastError; }

    CameraState state() { return m_body.state(); }
    const CameraDescription &description() const { return m_body.description(); }

    // What happens to it from outside; see CameraBody.
    void setRange(Control control, const Range &range, std::size_t field = 0);
    std::optional<std::string> go(const RemoteOrder &order) { return m_body.go(order); }
    void cutPower() { m_body.cutPower(); }
    void switchOn();

private:
    Answer refuse(RequestError error);
    Answer succeed(const Answer &answer);
    Answer answerErrorCode(const ControlRequest &request);
    Answer answerStreaming(const ControlRequest &request);
    Answer answerControl(const ControlTraits &control, const ControlRequest &request);
    Answer set(const ControlTraits &control, const ControlRequest &request);
    Bytes limit(const ControlTraits &control, RequestCode code) const;
    Bytes info(const ControlTraits &control) const;
    RequestError check(const ControlTraits &control, const std::vector<std::int64_t> &values) const;

    CameraBody m_body;
    RequestError m_lastError = RequestError::None;
};

} // namespace virtual_camera
