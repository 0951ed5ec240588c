// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

namespace virtual_camera {

/// One camera at one moment, in the terms of its picture. The camera's own units, ranges and
/// defaults have been divided out.
struct View
{
    double pan = 0;     ///< degrees to the right of the room's middle
    double tilt = 0;    ///< degrees upwards
    double angle = 60;  ///< that the picture takes in horizontally, in degrees
    double focus = 0.3; ///< dioptres: 0 is infinity, 1 is a metre away

    // -1 lowest, 0 default, 1 highest value of the control.
    double brightness = 0;
    double contrast = 0;
    double saturation = 0;
    double sharpness = 0;
    double gamma = 0;
    double gain = 0;
    double whiteBalance = 0; ///< above 0 the camera expects bluer light, and the picture is warmer
    double backlight = 0;    ///< 0 off to 1

    /// The mains for which exposure is timed: 0 none, 50 or 60 hertz. The room's lamps run on 50.
    int mains = 50;

    bool flip = false;
    bool mirror = false;
    bool mute = false;
    bool menu = false;
    bool freeze = false;
    bool framing = false;
    bool autoFocus = true;
    bool powered = true; ///< plugged in
};

} // namespace virtual_camera
