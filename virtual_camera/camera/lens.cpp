// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/lens.h"

#include <cmath>

namespace virtual_camera {

namespace {

double viewDegrees(double sensor, double focalLength)
{
    constexpr double degreesPerRadian = 180 / 3.14159265358979323846;
    return 2 * std::atan(sensor / 2 / focalLength) * degreesPerRadian;
}

} // namespace

double Lens::focalLength(double share) const
{
    return shortestFocalLength + share * (longestFocalLength - shortestFocalLength);
}

double Lens::horizontalDegrees(double share) const
{
    return viewDegrees(sensorWidth, focalLength(share));
}

double Lens::verticalDegrees(double share) const
{
    return viewDegrees(sensorHeight, focalLength(share));
}

} // namespace virtual_camera
