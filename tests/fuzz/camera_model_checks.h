// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fuzz/expect.h"
#include "virtual_camera/camera/camera_model.h"

namespace fuzz {

virtual_camera::ControlRequest setRequest(
    const virtual_camera::ControlTraits &control, virtual_camera::Bytes data);
virtual_camera::ControlRequest getRequest(const virtual_camera::ControlTraits &control,
    virtual_camera::RequestCode code, std::uint16_t length);

// A camera of which, whatever is asked of it, is checked what holds for every camera: a request
// that stalls or reads changes nothing, what was accepted is what is read back, motors stay
// between their ends and come to rest at them.
class CheckedCamera
{
public:
    explicit CheckedCamera(virtual_camera::CameraDescription description);

    void request(const virtual_camera::ControlRequest &request);
    void wait(std::chrono::microseconds time);
    void announce(const virtual_camera::ControlTraits &control, const virtual_camera::Range &range,
        std::size_t field);
    void go(const virtual_camera::Place &place);
    void cutPower();
    void switchOn();
    // Everything that moves comes to rest.
    void finish();

private:
    virtual_camera::Bytes valueOf(const virtual_camera::ControlRequest &request) const;
    void checkState();
    void checkRead(
        const virtual_camera::ControlRequest &request, const virtual_camera::Bytes &data);
    void checkWritten(const virtual_camera::ControlRequest &request);
    void checkCommand(int code);
    void checkMotion(const virtual_camera::ControlTraits &control,
        const std::vector<std::int64_t> &asked, const std::vector<std::int64_t> &answered);
    void checkReadBack(
        const virtual_camera::ControlTraits &control, const virtual_camera::Bytes &written);
    void checkArrival(virtual_camera::Control control, const std::vector<std::int64_t> &values);
    void checkArrival(const virtual_camera::Place &place);
    virtual_camera::CameraState stateAtRest();

    // The camera's motors keep the ends that it was switched on with.
    virtual_camera::CameraDescription m_made;
    std::chrono::microseconds m_now{ 0 };
    virtual_camera::CameraModel m_camera;
};

} // namespace fuzz
