// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/camera_state.h"

#include <cmath>

namespace virtual_camera {

Place CameraState::place() const
{
    return { std::llround(pan.position), std::llround(tilt.position), std::llround(zoom.position),
        std::llround(focus.position) };
}

bool CameraState::moving() const
{
    return pan.velocity != 0 || tilt.velocity != 0 || zoom.velocity != 0 || focus.velocity != 0;
}

} // namespace virtual_camera
