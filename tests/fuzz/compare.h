// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/camera_state.h"

namespace fuzz {

// Alike in everything, to the last bit.
bool same(const virtual_camera::CameraState &a, const virtual_camera::CameraState &b);
bool same(const virtual_camera::Range &a, const virtual_camera::Range &b);
bool same(const virtual_camera::CameraDescription &a, const virtual_camera::CameraDescription &b);

} // namespace fuzz
