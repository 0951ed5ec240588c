// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

namespace virtual_camera {

/// What the zoom lens and the sensor behind it take in. Lengths are in millimetres.
struct Lens
{
    double shortestFocalLength = 4.42; // 60 degrees from left to right
    double longestFocalLength = 88.4;  // 20 times as near
    double sensorWidth = 5.18;
    double sensorHeight = 2.914;

    /// The share is how far the zoom has gone, from 0 (wide) to 1 (tele). The focal length grows
    /// evenly with it, as the USB Video Class has it.
    double focalLength(double share) const;
    double horizontalDegrees(double share) const;
    double verticalDegrees(double share) const;
};

} // namespace virtual_camera
