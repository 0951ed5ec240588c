// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/clock.h"

namespace virtual_camera {

Clock steadyClock()
{
    return [] {
        return std::chrono::duration_cast<std::chrono::microseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    };
}

} // namespace virtual_camera
