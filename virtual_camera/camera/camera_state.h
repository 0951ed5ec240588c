// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_table.h"

#include <array>
#include <cstdint>
#include <map>

namespace virtual_camera {

/// Where the camera looks: what a preset remembers.
struct Place
{
    std::int64_t pan = 0;   ///< seconds of arc, to the right
    std::int64_t tilt = 0;  ///< seconds of arc, upwards
    std::int64_t zoom = 0;  ///< units of the zoom control, towards tele
    std::int64_t focus = 0; ///< units of the focus control, towards near
};

inline bool operator==(const Place &a, const Place &b)
{
    return a.pan == b.pan && a.tilt == b.tilt && a.zoom == b.zoom && a.focus == b.focus;
}

/// A motor's place and its velocity in units per second; zero when it stands.
struct AxisState
{
    double position = 0;
    double velocity = 0;
};

/// A camera at one moment: all that a picture of what it sees needs to know.
struct CameraState
{
    AxisState pan;
    AxisState tilt;
    AxisState zoom;
    AxisState focus;
    double zoomShare = 0; ///< of the zoom travel: 0 is wide, 1 is tele

    bool mirror = false;
    bool flip = false;
    bool mute = false;
    bool menu = false;
    bool framing = false;
    bool freeze = false;
    bool autoFocus = true;
    bool autoWhiteBalance = false;

    std::map<int, Place> presets;
    /// The values of the controls that have one and do not move; zero for the others.
    std::array<std::int64_t, controlCount> values{};

    std::int64_t value(Control control) const { return values[indexOf(control)]; }
    Place place() const;
    bool moving() const;
};

} // namespace virtual_camera
