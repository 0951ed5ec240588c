// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_model.h"
#include "virtual_camera/testbed/testbed.h"

#include <string>

namespace virtual_camera {

inline ControlRequest setRequest(const ControlTraits &control, Bytes data)
{
    ControlRequest request;
    request.requestType = 0x21;
    request.request = static_cast<std::uint8_t>(RequestCode::SetCur);
    request.value = static_cast<std::uint16_t>(control.selector << 8);
    request.index = static_cast<std::uint16_t>(control.entity << 8);
    request.length = static_cast<std::uint16_t>(data.size());
    request.data = std::move(data);
    return request;
}

inline ControlRequest getRequest(const ControlTraits &control, RequestCode code)
{
    ControlRequest request;
    request.requestType = 0xa1;
    request.request = static_cast<std::uint8_t>(code);
    request.value = static_cast<std::uint16_t>(control.selector << 8);
    request.index = static_cast<std::uint16_t>(control.entity << 8);
    request.length = static_cast<std::uint16_t>(code == RequestCode::GetInfo ? 1
            : code == RequestCode::GetLen                                    ? 2
                                                                             : control.length());
    return request;
}

// A camera that lacks nothing, with the controls in the user's hands that an automatic can take.
inline CameraDescription completeCamera()
{
    CameraDescription description;
    description.hasExtensionUnit = true;
    description.range(Control::FocusAuto).cur = 0;
    return description;
}

// A camera and the clock on its wall.
struct CameraOnTheBench
{
    explicit CameraOnTheBench(CameraDescription description = {})
        : model(std::move(description), clock.clock())
    { }

    Answer set(Control control, const std::vector<std::int64_t> &values)
    {
        return model.answer(setRequest(traits(control), encodeFields(traits(control), values)));
    }
    Answer get(Control control, RequestCode code)
    {
        return model.answer(getRequest(traits(control), code));
    }
    // The numbers in an answer; empty when it stalled.
    std::vector<std::int64_t> read(Control control, RequestCode code = RequestCode::GetCur)
    {
        const Answer answer = get(control, code);
        if (answer.stalled || answer.data.size() != traits(control).length())
            return {};
        return decodeFields(traits(control), answer.data.data());
    }
    void pass(std::chrono::microseconds time) { clock.advance(time); }
    bool vendor(int code) { return !set(Control::RollAbsolute, { code }).stalled; }

    ManualClock clock;
    CameraModel model;
};

} // namespace virtual_camera
