// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/axis.h"
#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/camera_state.h"
#include "virtual_camera/camera/clock.h"

#include <array>

namespace virtual_camera {

/// What a relative control asks of a motor, and what it answers.
struct Drive
{
    int direction = 0; ///< -1, 0 or +1
    int speed = 0;     ///< as in the speed byte; 0 stands still
};

/// The highest speed byte that makes a difference, by motor; beyond it a motor cannot go faster.
constexpr int fastestPan = 24;
constexpr int fastestTilt = 20;
constexpr int fastestZoom = 7;
constexpr int fastestFocus = 7;

/// The camera's four motors. Full speed is 120 degrees per second in pan, 90 in tilt, and the
/// whole travel of zoom or focus in 2.5 seconds.
class Mechanics
{
public:
    enum class Motor : std::uint8_t { Pan, Tilt, Zoom, Focus };

    /// Ends and places are those of the description's ranges; cur may lie outside the ends.
    Mechanics(const CameraDescription &description, Clock clock);

    /// Until it is stopped or reaches the end.
    void run(Motor motor, Drive drive);
    /// At full speed; no further than the end.
    void travel(Motor motor, std::int64_t target);
    void travel(const Place &place);
    void stop(Motor motor);
    void stop();

    AxisState state(Motor motor);
    /// How far the motor is from its lower to its upper end, from 0 to 1.
    double share(Motor motor);
    /// What the motor does now: a journey counts as a drive at full speed.
    Drive drive(Motor motor);

private:
    void catchUp();
    Axis &axis(Motor motor) { return m_axes[static_cast<std::size_t>(motor)]; }
    double fullSpeed(Motor motor);

    Clock m_clock;
    std::chrono::microseconds m_now;
    std::array<Axis, 4> m_axes;
};

} // namespace virtual_camera
